#pragma once

#include "funds/fra_FundSelector.h"

#include <QDrag>
#include <QTest>
#include <QTimer>
#include <QWindow>

/// Works a fund selector frame as a person does: with clicks, keys and drags on what is on screen.
class SelectorDriver
{
public:
    explicit SelectorDriver(TfraFundSelector &selector)
        : frame(selector), tree(frame.fraFundsTreeView->tvFunds),
          list(frame.fraFundsSelectedListView->lvSelectedFunds)
    {
    }

    TfraFundSelector &frame;
    TTreeView *const tree;
    TListView *const list;

    /// The first node of that text, nullptr when there is none.
    TTreeNode *node(const QString &text) const
    {
        for (TTreeNode *n = tree->Items().GetFirstNode(); n; n = n->GetNext()) {
            if (n->Text() == text)
                return n;
        }
        return nullptr;
    }
    TTreeNode *node(const char *text) const { return node(QString::fromLatin1(text)); }
    /// The texts of all nodes in their order, each indented by two blanks per level.
    QStringList nodes() const
    {
        QStringList texts;
        for (TTreeNode *n = tree->Items().GetFirstNode(); n; n = n->GetNext())
            texts.append(QString(2 * n->Level(), QLatin1Char(' ')) + n->Text());
        return texts;
    }
    QStringList captions() const
    {
        QStringList texts;
        for (int i = 0; i < list->Items().Count(); ++i)
            texts.append(list->Items()[i]->Caption());
        return texts;
    }
    QModelIndex index(const TTreeNode *n) const
    {
        return tree->model()->index(n->Index(), 0, n->Parent() ? index(n->Parent()) : QModelIndex());
    }
    /// Where a node stands in the tree's viewport, after scrolling to it.
    QPoint place(TTreeNode *n) const
    {
        n->MakeVisible();
        return tree->visualRect(index(n)).center();
    }
    QPoint place(TListItem *item) const
    {
        item->MakeVisible();
        return list->visualRect(list->model()->index(item->Index(), 0)).center();
    }
    void click(TTreeNode *n) const { QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place(n)); }
    void click(TListItem *item) const
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place(item));
    }
    void doubleClick(TTreeNode *n) const
    {
        const QPoint at = place(n);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, at);
    }
    /// Chooses the node of that text, which has to be there, and presses Add.
    void add(const char *fund) const
    {
        TTreeNode *const found = node(fund);
        QVERIFY2(found, fund);
        click(found);
        QTest::mouseClick(frame.sbtAdd, Qt::LeftButton);
    }
    /// Chooses a row of the list and presses Remove.
    void remove(int row) const
    {
        click(list->Items()[row]);
        QTest::mouseClick(frame.sbtRemove, Qt::LeftButton);
    }

    /// Drags from the list's or tree's @p start to the list's @p target, calls @p over there and lets go.
    /// False when no drag began. Where the platform has no drags, or follows the real mouse alone as Windows
    /// does, the list is told what a drag would tell it.
    bool dragToList(QAbstractItemView *from, QPoint start, QPoint target,
                    const std::function<void()> &over) const
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb")) {
            QTest::mouseClick(from->viewport(), Qt::LeftButton, {}, start);
            for (const TDragState state : {TDragState::dsDragEnter, TDragState::dsDragMove}) {
                bool accept = true;
                list->OnDragOver(list, from, target.x(), target.y(), state, accept);
            }
            over();
            return from->dragEnabled() && list->acceptDrops();
        }
        QWindow *window = from->window()->windowHandle();
        const auto inWindow = [](QAbstractItemView *view, QPoint at) {
            return view->viewport()->mapTo(view->window(), at);
        };
        bool began = false;
        QTest::mousePress(window, Qt::LeftButton, {}, inWindow(from, start));
        QTest::mouseMove(window, inWindow(from, start + QPoint(1, 0)));
        // A drag runs a loop of its own until the button is let go.
        QTimer::singleShot(0, window, [&] {
            began = from->findChild<QDrag *>() != nullptr;
            QTest::mouseMove(window, inWindow(list, target));
            QTest::mouseMove(window, inWindow(list, target + QPoint(3, 0)));
            QTest::qWait(100);
            over();
            QTest::mouseRelease(window, Qt::LeftButton, {}, inWindow(list, target + QPoint(3, 0)));
        });
        QTest::mouseMove(window, inWindow(from, start + QPoint(QApplication::startDragDistance() + 5, 0)));
        return began;
    }
};

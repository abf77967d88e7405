#pragma once

#include "funds/fra_FundSelector.h"

#include <QDrag>
#include <QTest>
#include <QTimer>
#include <QWindow>

/// Drives a fund selector frame through its widgets: with clicks, keys and drags.
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

    /// The first node with this text; nullptr when there is none.
    TTreeNode *node(const QString &text) const
    {
        for (TTreeNode *n = tree->Items().GetFirstNode(); n; n = n->GetNext()) {
            if (n->Text() == text)
                return n;
        }
        return nullptr;
    }
    TTreeNode *node(const char *text) const { return node(QString::fromLatin1(text)); }
    /// The texts of all nodes from top to bottom, indented by two blanks per level.
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
    /// The centre of the node or list row in the viewport; scrolls to it first.
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
    /// Selects the node with this text, which must exist, and clicks Add.
    void add(const char *fund) const
    {
        TTreeNode *const found = node(fund);
        QVERIFY2(found, fund);
        click(found);
        QTest::mouseClick(frame.sbtAdd, Qt::LeftButton);
    }
    /// Selects the row of the list and clicks Remove.
    void remove(int row) const
    {
        click(list->Items()[row]);
        QTest::mouseClick(frame.sbtRemove, Qt::LeftButton);
    }

    /// Drags from @p start in the list or tree to @p target in the list, calls @p over there and drops.
    /// Returns false when no drag began. Only X11 has real drags here: other platforms have none or, like
    /// Windows, follow the real mouse. There the function calls the list's OnDragOver itself.
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
        // A drag runs its own event loop until the button is released.
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

#include "ScreenFaults.h"

#include "Contrast.h"

#include "toolkit/TPanel.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSizeGrip>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace
{

/// The window's part that names a widget for a person who reads the failure.
QString nameOf(const QWidget &widget)
{
    QString path;
    for (const QWidget *at = &widget; at && path.size() < 120; at = at->parentWidget()) {
        const QString name =
            at->objectName().isEmpty() ? QLatin1String(at->metaObject()->className()) : at->objectName();
        path.prepend(path.isEmpty() ? name : name + u'/');
    }
    return path;
}

/// The visible parts of a window.
QList<QWidget *> visibleWidgets(const QWidget &window)
{
    QList<QWidget *> result;
    for (QWidget *const widget : window.findChildren<QWidget *>()) {
        if (widget->window() == &window && widget->isVisible() && !widget->size().isEmpty())
            result.append(widget);
    }
    return result;
}

/// Whether pointing at @p at in @p widget shows a tool tip.
bool hasToolTip(QWidget &widget, const QPoint &at)
{
    if (!widget.toolTip().isEmpty())
        return true;
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QCoreApplication::sendEvent(&widget, &help);
    const bool shown = !QToolTip::text().isEmpty() && QToolTip::isVisible();
    QToolTip::hideText();
    return shown;
}

int textWidth(const QWidget &widget, const QString &text)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

/// The text of @p widget that does not fit into it; empty when it fits.
QString cutText(const QWidget &widget)
{
    if (const auto *const label = qobject_cast<const QLabel *>(&widget)) {
        if (Qt::mightBeRichText(label->text()) || label->text().isEmpty())
            return {};
        const QRect room = label->contentsRect();
        const bool cut = label->wordWrap() ? label->heightForWidth(label->width()) > label->height() + 1
                                           : textWidth(*label, label->text()) > room.width() + 1;
        return cut ? label->text() : QString();
    }
    if (const auto *const panel = qobject_cast<const TPanel *>(&widget))
        return textWidth(*panel, panel->caption()) > panel->contentsRect().width() + 1 ? panel->caption()
                                                                                       : QString();
    if (const auto *const field = qobject_cast<const QLineEdit *>(&widget)) {
        const bool shown = field->text().isEmpty();
        return shown && textWidth(*field, field->placeholderText()) > field->width()
                   ? field->placeholderText()
                   : QString();
    }
    const auto *const button = qobject_cast<const QAbstractButton *>(&widget);
    if (!button || button->text().isEmpty())
        return {};
    const auto *const tool = qobject_cast<const QToolButton *>(button);
    if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)
        return {};
    const bool beside = !tool || tool->toolButtonStyle() == Qt::ToolButtonTextBesideIcon;
    const int icon = beside && !button->icon().isNull() ? button->iconSize().width() : 0;
    return textWidth(*button, button->text()) + icon > button->width() ? button->text() : QString();
}

void checkTexts(QWidget &widget, QStringList &faults)
{
    const QString cut = cutText(widget);
    if (!cut.isEmpty() && !hasToolTip(widget, widget.rect().center()))
        faults.append(u"cut off: %1: \"%2\""_s.arg(nameOf(widget), cut));
}

void checkHead(const QHeaderView &head, QStringList &faults)
{
    if (head.orientation() != Qt::Horizontal)
        return;
    for (int section = 0; section < head.count(); ++section) {
        const QString text = head.model()->headerData(section, Qt::Horizontal).toString();
        if (head.isSectionHidden(section) || textWidth(head, text) <= head.sectionSize(section))
            continue;
        const QPoint middle(head.sectionViewportPosition(section) + head.sectionSize(section) / 2,
                            head.height() / 2);
        if (!head.model()->headerData(section, Qt::Horizontal, Qt::ToolTipRole).isValid() &&
            !hasToolTip(*head.viewport(), middle))
            faults.append(u"cut off: head of %1: \"%2\""_s.arg(nameOf(*head.parentWidget()), text));
    }
}

bool isPartOfControl(const QWidget &parent)
{
    return qobject_cast<const QAbstractSpinBox *>(&parent) || qobject_cast<const QComboBox *>(&parent) ||
           qobject_cast<const QLineEdit *>(&parent) || qobject_cast<const QTabBar *>(&parent) ||
           qobject_cast<const QStackedWidget *>(&parent) || qobject_cast<const QTabWidget *>(&parent) ||
           qobject_cast<const QSplitter *>(&parent) || qobject_cast<const QMenuBar *>(&parent);
}

/// Whether @p parent scrolls its children, so that they may be larger than it.
bool scrolls(const QWidget &parent)
{
    const auto *const area = qobject_cast<const QAbstractScrollArea *>(parent.parentWidget());
    return qobject_cast<const QAbstractScrollArea *>(&parent) || (area && area->viewport() == &parent);
}

void checkPlaces(const QWidget &parent, QStringList &faults)
{
    if (isPartOfControl(parent) || scrolls(parent))
        return;
    QList<const QWidget *> siblings;
    for (const QWidget *const child : parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isWindow() || !child->isVisible() || child->size().isEmpty())
            continue;
        // An empty state lies over the table that it stands for.
        if (qobject_cast<const QSizeGrip *>(child) || child->objectName() == u"emptyState"_s)
            continue;
        if (!parent.rect().contains(child->geometry()))
            faults.append(u"outside: %1 of %2 x %3 at %4, %5 in %6 x %7"_s.arg(nameOf(*child))
                              .arg(child->width())
                              .arg(child->height())
                              .arg(child->x())
                              .arg(child->y())
                              .arg(parent.width())
                              .arg(parent.height()));
        for (const QWidget *const other : siblings) {
            if (child->geometry().intersects(other->geometry()))
                faults.append(u"overlap: %1 and %2"_s.arg(nameOf(*child), nameOf(*other)));
        }
        siblings.append(child);
    }
}

/// The highest contrast that some pixels of @p area have to its most frequent colour.
double contrastIn(const QImage &picture, const QRect &area)
{
    constexpr int fewest = 3; // pixels, so that a single one cannot decide
    QHash<QRgb, int> counts;
    const QRect inside = area.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++counts[line[x]];
    }
    QRgb ground = 0;
    int most = 0;
    for (auto at = counts.cbegin(); at != counts.cend(); ++at) {
        if (at.value() > most) {
            most = at.value();
            ground = at.key();
        }
    }
    double best = 1;
    for (auto at = counts.cbegin(); at != counts.cend(); ++at) {
        if (at.value() >= fewest)
            best = qMax(best, Contrast(QColor(at.key()), QColor(ground)));
    }
    return best;
}

QString shownText(const QWidget &widget)
{
    if (const auto *const label = qobject_cast<const QLabel *>(&widget))
        return label->text();
    if (const auto *const panel = qobject_cast<const TPanel *>(&widget))
        return panel->caption();
    if (const auto *const field = qobject_cast<const QLineEdit *>(&widget))
        return field->text().isEmpty() ? field->placeholderText() : field->text();
    if (const auto *const box = qobject_cast<const QComboBox *>(&widget))
        return box->currentText();
    if (const auto *const button = qobject_cast<const QAbstractButton *>(&widget)) {
        const auto *const tool = qobject_cast<const QToolButton *>(button);
        return tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly ? QString() : button->text();
    }
    return {};
}

} // namespace

QStringList LayoutFaults(QWidget &window)
{
    QStringList faults;
    checkPlaces(window, faults);
    for (QWidget *const widget : visibleWidgets(window)) {
        checkTexts(*widget, faults);
        checkPlaces(*widget, faults);
        if (const auto *const head = qobject_cast<const QHeaderView *>(widget))
            checkHead(*head, faults);
    }
    return faults;
}

QStringList ContrastFaults(QWidget &window)
{
    constexpr double least = 4.5;
    QStringList faults;
    const QPixmap grabbed = window.grab();
    const qreal ratio = grabbed.devicePixelRatio();
    const QImage picture = grabbed.toImage().convertToFormat(QImage::Format_RGB32);
    const auto check = [&](const QWidget &widget, const QRect &area, const QString &text) {
        const QRect visible = widget.visibleRegion().boundingRect().intersected(area);
        if (visible.width() < area.width() / 2 || visible.height() < area.height() / 2)
            return;
        const QPoint corner = widget.mapTo(&window, visible.topLeft());
        const double found = contrastIn(
            picture, QRect((QPointF(corner) * ratio).toPoint(), (QSizeF(visible.size()) * ratio).toSize()));
        if (found < least)
            faults.append(u"contrast %1: %2: \"%3\""_s.arg(found, 0, 'f', 2).arg(nameOf(widget), text));
    };
    for (QWidget *const widget : visibleWidgets(window)) {
        if (!widget->isEnabled())
            continue;
        if (const QString text = shownText(*widget); !text.trimmed().isEmpty())
            check(*widget, widget->rect(), text);
        const auto *const view = qobject_cast<const QAbstractItemView *>(widget);
        if (!view || !view->model() || qobject_cast<const QHeaderView *>(view))
            continue;
        for (QModelIndex index = view->indexAt(QPoint(4, 4)); index.isValid();
             index = view->indexAt(QPoint(4, view->visualRect(index).bottom() + 4))) {
            for (int column = 0; column < view->model()->columnCount(index.parent()); ++column) {
                const QModelIndex cell = index.siblingAtColumn(column);
                const QRect area = view->visualRect(cell);
                if (!area.isEmpty() && cell.flags().testFlag(Qt::ItemIsEnabled) &&
                    !cell.data().toString().trimmed().isEmpty())
                    check(*view->viewport(), area, cell.data().toString());
            }
            if (view->visualRect(index).bottom() >= view->viewport()->height())
                break;
        }
    }
    return faults;
}

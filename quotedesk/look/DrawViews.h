#pragma once

#include <QStyleOption>

class QPainter;

/// The drawings of DeskStyle for tables, tabs, menus and the parts around them.
namespace QuoteDesk::Draw
{

/// The space at both sides of a table's text, in pixels.
inline constexpr int CellPadding = 12;
/// The space at both sides of a tab's text, in pixels.
inline constexpr int TabPadding = 14;

/// The ground of a table's head.
void headGround(QPainter &painter, const QStyleOptionHeader &option);
/// The caption and the sort arrow of a table's head.
void headLabel(QPainter &painter, const QStyleOptionHeader &option);
/// The font of a table's head.
QFont headFont(const QFont &body);

/// The ground of an item of @p view: chosen, under the pointer, or none; the ring or the strip of the current
/// row.
void itemGround(QPainter &painter, const QStyleOptionViewItem &option, const QWidget *view);
/// Whether itemGround marks the current item of @p view, so that no other mark of the focus is wanted.
bool marksCurrentItem(const QWidget *view);

/// The ground of a tab and the line below the current one.
void tabGround(QPainter &painter, const QStyleOptionTab &option);
/// The picture and the caption of a tab.
void tabLabel(QPainter &painter, const QStyleOptionTab &option);
/// Whether @p option is of tabs above their pages, which tabGround and tabLabel draw.
bool isTabAbove(const QStyleOptionTab &option);
/// The font of a tab's caption.
QFont tabFont(const QStyleOptionTab &option, const QFont &body);

/// An item of a menu.
void menuItem(QPainter &painter, const QStyleOptionMenuItem &option);
/// The size of an item of a menu.
QSize menuItemSize(const QStyleOptionMenuItem &option);
/// A menu in the menu bar.
void menuBarItem(QPainter &painter, const QStyleOptionMenuItem &option);

/// The handle of a scroll bar and its groove.
void scrollBar(QPainter &painter, const QStyleOptionSlider &option, const QRect &handle);
/// The line between the parts of a splitter.
void splitter(QPainter &painter, const QStyleOption &option);

} // namespace QuoteDesk::Draw

#pragma once

#include "look/Kinds.h"

#include "toolkit/Look.h"

#include <QStyleOption>

class QPainter;

/// The drawings of DeskStyle for buttons, fields and what is ticked.
namespace QuoteDesk::Draw
{

/// The value of a colour for @p option; text colours of a disabled option are the disabled colour.
QColor colorOf(LookColor color, const QStyleOption &option);
/// Whether the option is of a widget with the focus, and the focus was moved by the keyboard.
bool hasKeyboardFocus(const QStyleOption &option);

/// A chevron that points to @p arrow, in the middle of @p rect.
void chevron(QPainter &painter, const QRect &rect, Qt::ArrowType arrow, const QColor &color);
/// The picture of @p icon in one colour, in the middle of @p rect.
void tintedIcon(QPainter &painter, const QRect &rect, const QIcon &icon, const QSize &size,
                const QColor &color);
/// The focus ring, inside @p rect.
void focusRing(QPainter &painter, const QRect &rect, const QStyleOption &option);
/// A line of one device pixel along one edge of @p rect.
void edgeLine(QPainter &painter, const QRect &rect, Qt::Edge edge, const QColor &color);

/// The kind of the button with @p option.
ButtonKind kindOf(const QStyleOptionButton &option, const QWidget *widget);
/// The font of a button's caption.
QFont buttonFont(ButtonKind kind, const QFont &body);
/// The colour of a button's caption and picture.
QColor buttonInk(ButtonKind kind, const QStyleOption &option);
/// The ground and the edge of a button.
void buttonGround(QPainter &painter, const QStyleOption &option, ButtonKind kind);
/// The picture and the caption of a push button.
void buttonLabel(QPainter &painter, const QStyleOptionButton &option, ButtonKind kind, int iconGap);
/// The ground and the edge of a field.
void field(QPainter &painter, const QStyleOption &option, const QWidget *widget, bool isEditable = true);
/// A box that can be ticked.
void checkBox(QPainter &painter, const QStyleOption &option);
/// A radio button.
void radioButton(QPainter &painter, const QStyleOption &option);
/// The bar of a progress bar, without its text.
void progressBar(QPainter &painter, const QStyleOptionProgressBar &option);

} // namespace QuoteDesk::Draw

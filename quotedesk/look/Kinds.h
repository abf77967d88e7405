#pragma once

#include <optional>

class QAbstractButton;
class QWidget;

namespace QuoteDesk
{

/// How much a button asks to be pressed. A window has one filled button and at most one suggested one.
enum class ButtonKind {
    Quiet,     ///< a button with an edge
    Filled,    ///< the next step
    Suggested, ///< a step that helps, in a tint of the accent
    Flat       ///< without an edge until the pointer is over it
};
/// Sets the kind of @p button. Without a kind, a dialog's default button is filled, a flat or auto-raised
/// button is flat, and every other button is quiet.
void setButtonKind(QAbstractButton &button, ButtonKind kind);
/// The kind that setButtonKind has set; none for other widgets.
std::optional<ButtonKind> buttonKindOf(const QWidget *button);

/// What the edge of a field says about its content.
enum class FieldMark {
    None,
    Advice, ///< unusual, but allowed
    Problem ///< wrong
};
/// Marks the edge of @p field, a line edit, combo box, spin box or text edit.
void setFieldMark(QWidget &field, FieldMark mark);
/// The mark that setFieldMark has set.
FieldMark fieldMarkOf(const QWidget *field);

/// Sets the height of a field or button to that of a row in a panel or a banner: smaller than elsewhere.
void setSmall(QWidget &control, bool isSmall = true);
/// Whether setSmall has made @p control small.
bool isSmall(const QWidget *control);

} // namespace QuoteDesk

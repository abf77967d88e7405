#pragma once

#include <QMessageBox>
#include <QString>

namespace QuoteDesk
{

// Names come from clients, catalogues and other programs. Qt guesses whether a text is markup, and markup can
// open files. Everything that displays such a name uses these functions: they display it as plain text, and
// they shorten or wrap long names, which would widen windows and fill the memory.

/// The longest description of a quote that can be typed, in characters. Stored descriptions are never cut.
constexpr int longestDescription = 200;
/// The longest search text, in characters.
constexpr int longestSearch = 200;

/// @p text for one line of at most @p most characters, with "…" at the end when it is cut. Line breaks in a
/// cut text become blanks.
QString shortText(const QString &text, qsizetype most = 120);

/// @p text for a label or a page with line breaks: at most @p most characters, and very long words may be
/// broken.
QString wrappedText(const QString &text, qsizetype most = 2000);

/// @p text for a tooltip, as plain text with line breaks; blank for a blank text.
QString tipText(const QString &text);

/// A message box with plain text. Its title is the program's name.
class PlainBox : public QMessageBox
{
public:
    /// Enter presses @p standard; Esc presses Cancel, No or the only button.
    PlainBox(Icon icon, const QString &text, StandardButtons buttons, StandardButton standard,
             QWidget *parent);
    ~PlainBox() override;

    /// Shows the box and waits for the answer.
    StandardButton ask() { return static_cast<StandardButton>(exec()); }
};

} // namespace QuoteDesk

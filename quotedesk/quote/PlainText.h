#pragma once

#include <QMessageBox>
#include <QString>

namespace QuoteDesk
{

// Names come from clients, catalogues and other people's programs. The toolkit guesses whether a text is
// markup, and markup opens files and draws what it likes: whatever shows such a name goes through here, so
// that it is shown letter by letter, and so that a long one neither widens a window nor fills the memory.

/// The longest description of a quote that can be typed, in characters. What is stored already is never cut.
constexpr int longestDescription = 200;
/// The longest text to be looked for, in characters.
constexpr int longestSearch = 200;

/// @p text for one line of at most @p most characters; what is left out is shown by a "…" at the end. Line
/// breaks become blanks in a text that is cut.
QString shortText(const QString &text, qsizetype most = 120);

/// @p text for a label or a page that breaks its lines: at most @p most characters, and a word that is longer
/// than a line may be broken.
QString wrappedText(const QString &text, qsizetype most = 2000);

/// @p text for a tool tip, which shows it as it is written and breaks its lines; blank for a blank one.
QString tipText(const QString &text);

/// A message box that shows its text as it is written. Its title is the program's name.
class PlainBox : public QMessageBox
{
public:
    /// @p standard is the button that Enter presses; Esc presses Cancel, No or the only button there is.
    PlainBox(Icon icon, const QString &text, StandardButtons buttons, StandardButton standard,
             QWidget *parent);
    ~PlainBox() override;

    /// Shows the box and waits for the answer.
    StandardButton ask() { return static_cast<StandardButton>(exec()); }
};

} // namespace QuoteDesk

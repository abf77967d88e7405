#pragma once

#include "desk/Language.h"
#include "look/Appearance.h"
#include "quote/Letterhead.h"
#include "quote/Shortcuts.h"
#include "quote/ShownNumbers.h"

#include <QByteArray>
#include <QSettings>

namespace QuoteDesk
{

/// What the user can choose in the settings.
struct Settings {
    Language language = Language::English;
    ColourScheme colours = ColourScheme::System;
    TextSize textSize = TextSize::Normal;
    NumberNotation notation;
    Letterhead letterhead;
    ShortcutKeys shortcuts; ///< only those that differ from the program's own
    friend bool operator==(const Settings &, const Settings &) = default;
};

/// The user's preferences, in a file in the user's settings folder. Whatever is missing or damaged in the
/// file has its default.
class Preferences
{
public:
    Preferences();

    /// The last settings. Without a language, the system's if the program has it, otherwise English.
    Settings settings() const;
    QByteArray geometry() const; ///< from QWidget::saveGeometry()

    /// Throws Exception with the file when it cannot be written.
    void remember(const Settings &settings);
    /// Remembers where the window is. Does nothing when the file cannot be written.
    void rememberPlace(const QByteArray &geometry);

    QVariantMap columns() const; ///< from StartPage::columns()
    void rememberColumns(const QVariantMap &columns);

private:
    QString text(const char *key, int longest) const;

    QSettings m_settings;
};

} // namespace QuoteDesk

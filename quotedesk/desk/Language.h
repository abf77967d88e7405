#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace QuoteDesk
{

/// The languages of the program.
enum class Language { English, Afrikaans };

/// All languages, in the order of the menu.
QList<Language> allLanguages();
/// "en" or "af".
QString languageCode(Language language);
/// The language with this code, ignoring case; none for any other text.
std::optional<Language> languageByCode(const QString &code);
/// The language's own name for itself.
QString languageName(Language language);

/// The current language; English until another one was set.
Language currentLanguage();
/// Switches the whole program to @p language; every window gets a LanguageChange event. Needs the application
/// object.
void setCurrentLanguage(Language language);

} // namespace QuoteDesk

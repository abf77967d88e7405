#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace QuoteDesk
{

/// The languages that the program speaks.
enum class Language { English, Afrikaans };

/// All of them, in the order in which they are offered.
QList<Language> allLanguages();
/// "en" or "af".
QString languageCode(Language language);
/// The language with that code, without regard to case; none for any other text.
std::optional<Language> languageByCode(const QString &code);
/// What the language calls itself.
QString languageName(Language language);

/// The language in force; English until another was set.
Language currentLanguage();
/// Puts the whole program into @p language. Every window is told with a LanguageChange event. Needs the
/// application object.
void setCurrentLanguage(Language language);

} // namespace QuoteDesk

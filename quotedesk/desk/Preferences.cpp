#include "desk/Preferences.h"

#include <QLocale>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto LanguageKey = "language";
constexpr auto DarkKey = "dark";
constexpr auto GeometryKey = "geometry";

} // namespace

Preferences::Preferences()
    : m_settings(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + u"/quotedesk.ini"_s,
                 QSettings::IniFormat)
{
}

Language Preferences::language() const
{
    const auto remembered = languageByCode(m_settings.value(QLatin1StringView(LanguageKey)).toString());
    if (remembered)
        return *remembered;
    return QLocale::system().language() == QLocale::Afrikaans ? Language::Afrikaans : Language::English;
}

bool Preferences::dark() const
{
    return m_settings.value(QLatin1StringView(DarkKey)).toBool();
}

QByteArray Preferences::geometry() const
{
    return m_settings.value(QLatin1StringView(GeometryKey)).toByteArray();
}

void Preferences::remember(const QByteArray &geometry, Language language, bool dark)
{
    m_settings.setValue(QLatin1StringView(GeometryKey), geometry);
    m_settings.setValue(QLatin1StringView(LanguageKey), languageCode(language));
    m_settings.setValue(QLatin1StringView(DarkKey), dark);
}

} // namespace QuoteDesk

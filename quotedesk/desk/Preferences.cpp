#include "desk/Preferences.h"

#include "data/Exceptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QStandardPaths>

#include <array>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Preferences)
};

constexpr auto LanguageKey = "language";
constexpr auto ColoursKey = "colours";
constexpr auto DarkKey = "dark"; // of versions that knew light and dark only
constexpr auto TextSizeKey = "textsize";
constexpr auto CurrencyKey = "numbers/currency";
constexpr auto NumberFormatKey = "numbers/format";
constexpr auto ShortcutsGroup = "shortcuts";
constexpr auto GeometryKey = "geometry";
constexpr auto ColumnsKey = "quoteColumns";

constexpr std::array colourNames{"system", "light", "dark"};
constexpr std::array sizeNames{"small", "normal", "large", "largest"};
/// In the order of NumberNotation::choices().
constexpr std::array formatNames{"comma-point", "blank-point", "blank-comma", "point-comma", "none-point"};

/// The entries of the letterhead that are texts.
struct LetterheadEntry {
    const char *key;
    QString Letterhead::*text;
};
constexpr std::array letterheadEntries{LetterheadEntry{"letterhead/firm", &Letterhead::firm},
                                       LetterheadEntry{"letterhead/adviser", &Letterhead::adviser},
                                       LetterheadEntry{"letterhead/licence", &Letterhead::licence},
                                       LetterheadEntry{"letterhead/address", &Letterhead::address},
                                       LetterheadEntry{"letterhead/telephone", &Letterhead::telephone},
                                       LetterheadEntry{"letterhead/email", &Letterhead::email}};

/// The place of @p name in @p names; -1 for an unknown one.
template <std::size_t Count> int placeOf(const std::array<const char *, Count> &names, const QString &name)
{
    for (std::size_t i = 0; i < Count; ++i) {
        if (name.compare(QLatin1StringView(names.at(i)), Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

int formatOf(const NumberNotation &notation)
{
    const QList<NumberNotation> choices = NumberNotation::choices();
    for (qsizetype i = 0; i < choices.size(); ++i) {
        if (choices.at(i).grouping == notation.grouping && choices.at(i).decimal == notation.decimal)
            return static_cast<int>(i);
    }
    return 0;
}

QString folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
}

QString logoFile()
{
    return folder() + u"/logo.png"_s;
}

Exception notWritten(const QString &file, const QString &reason)
{
    return Exception(
        Text::tr("The settings cannot be kept, because %1 cannot be written: %2. They apply until the "
                 "program ends.")
            .arg(QDir::toNativeSeparators(file), reason));
}

void writeLogo(const QImage &logo)
{
    const QString path = logoFile();
    if (logo.isNull()) {
        QFile file(path);
        if (file.exists() && !file.remove())
            throw notWritten(path, file.errorString());
        return;
    }
    QDir().mkpath(folder());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !logo.save(&file, "PNG") || !file.commit())
        throw notWritten(path, file.errorString());
}

} // namespace

Preferences::Preferences() : m_settings(folder() + u"/quotedesk.ini"_s, QSettings::IniFormat) {}

QString Preferences::text(const char *key, int longest) const
{
    QString text = m_settings.value(QLatin1StringView(key)).toString().left(longest);
    text.remove(QChar::Null);
    return text;
}

Settings Preferences::settings() const
{
    constexpr int longestName = 20;
    Settings settings;
    const auto language = languageByCode(text(LanguageKey, longestName));
    settings.language = language                                             ? *language
                        : QLocale::system().language() == QLocale::Afrikaans ? Language::Afrikaans
                                                                             : Language::English;
    if (const int colours = placeOf(colourNames, text(ColoursKey, longestName)); colours >= 0)
        settings.colours = static_cast<ColourScheme>(colours);
    else if (m_settings.value(QLatin1StringView(DarkKey)).toBool())
        settings.colours = ColourScheme::Dark;
    if (const int size = placeOf(sizeNames, text(TextSizeKey, longestName)); size >= 0)
        settings.textSize = static_cast<TextSize>(size);
    if (const int format = placeOf(formatNames, text(NumberFormatKey, longestName)); format >= 0)
        settings.notation = NumberNotation::choices().at(format);
    if (const QString sign = text(CurrencyKey, longestName); NumberNotation::isCurrency(sign))
        settings.notation.currency = sign;
    for (const LetterheadEntry &entry : letterheadEntries)
        settings.letterhead.*entry.text = text(entry.key, Letterhead::LongestEntry);
    settings.letterhead.logo.load(logoFile(), "PNG");
    QSettings keys(m_settings.fileName(), QSettings::IniFormat);
    keys.beginGroup(QLatin1StringView(ShortcutsGroup));
    for (const QString &name : keys.childKeys()) {
        const QVariant value = keys.value(name);
        if (value.metaType().id() != QMetaType::QString)
            continue;
        const QString written = value.toString();
        const QKeySequence sequence = QKeySequence::fromString(written, QKeySequence::PortableText);
        if (written.isEmpty() || isUsableShortcut(sequence))
            settings.shortcuts.insert(name, sequence);
    }
    return settings;
}

QByteArray Preferences::geometry() const
{
    return m_settings.value(QLatin1StringView(GeometryKey)).toByteArray();
}

void Preferences::remember(const Settings &settings)
{
    const auto set = [this](const char *key, const QString &value) {
        m_settings.setValue(QLatin1StringView(key), value);
    };
    const auto nameOf = [](const auto &names, auto place) {
        return QString::fromLatin1(names.at(static_cast<std::size_t>(place)));
    };
    set(LanguageKey, languageCode(settings.language));
    set(ColoursKey, nameOf(colourNames, settings.colours));
    m_settings.remove(QLatin1StringView(DarkKey));
    set(TextSizeKey, nameOf(sizeNames, settings.textSize));
    set(CurrencyKey, settings.notation.currency);
    set(NumberFormatKey, nameOf(formatNames, formatOf(settings.notation)));
    for (const LetterheadEntry &entry : letterheadEntries)
        set(entry.key, settings.letterhead.*entry.text);
    m_settings.beginGroup(QLatin1StringView(ShortcutsGroup));
    m_settings.remove(QString());
    for (auto keys = settings.shortcuts.cbegin(); keys != settings.shortcuts.cend(); ++keys)
        m_settings.setValue(keys.key(), keys.value().toString(QKeySequence::PortableText));
    m_settings.endGroup();
    m_settings.sync();
    if (m_settings.status() == QSettings::AccessError)
        throw notWritten(m_settings.fileName(), Text::tr("access is denied"));
    writeLogo(settings.letterhead.logo);
}

void Preferences::rememberPlace(const QByteArray &geometry)
{
    m_settings.setValue(QLatin1StringView(GeometryKey), geometry);
}

QVariantMap Preferences::columns() const
{
    return m_settings.value(QLatin1StringView(ColumnsKey)).toMap();
}

void Preferences::rememberColumns(const QVariantMap &columns)
{
    m_settings.setValue(QLatin1StringView(ColumnsKey), columns);
}

} // namespace QuoteDesk

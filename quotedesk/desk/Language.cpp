#include "desk/Language.h"

#include "desk/TranslationTable.h"

#include <QCoreApplication>
#include <QLatin1StringView>
#include <QLocale>
#include <QTranslator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// An embedded translation; the application owns it while it is installed.
class EmbeddedTranslator : public QTranslator
{
public:
    EmbeddedTranslator(QObject *parent, Language language) : QTranslator(parent), m_language(language) {}
    Language language() const noexcept { return m_language; }

private:
    Language m_language;
};

QList<EmbeddedTranslator *> translatorsInForce()
{
    QList<EmbeddedTranslator *> found;
    for (QObject *child : QCoreApplication::instance()->children()) {
        if (auto *const translator = dynamic_cast<EmbeddedTranslator *>(child))
            found.append(translator);
    }
    return found;
}

} // namespace

QList<Language> allLanguages()
{
    return {Language::English, Language::Afrikaans};
}

QString languageCode(Language language)
{
    return language == Language::Afrikaans ? u"af"_s : u"en"_s;
}

std::optional<Language> languageByCode(const QString &code)
{
    for (const Language language : allLanguages()) {
        if (languageCode(language).compare(code, Qt::CaseInsensitive) == 0)
            return language;
    }
    return std::nullopt;
}

QString languageName(Language language)
{
    // Each language appears under its own name, whatever the current language is.
    return language == Language::Afrikaans ? u"Afrikaans"_s : u"English"_s;
}

Language currentLanguage()
{
    const QList<EmbeddedTranslator *> inForce = translatorsInForce();
    return inForce.isEmpty() ? Language::English : inForce.constFirst()->language();
}

void setCurrentLanguage(Language language)
{
    const QList<EmbeddedTranslator *> former = translatorsInForce();
    if (!former.isEmpty() && former.constFirst()->language() == language)
        return;
    QLocale::setDefault(QLocale(languageCode(language)));
    // Installs the new translations before the old ones are removed; windows update in the event loop, after
    // both.
    const QString ending = u'_' + languageCode(language);
    std::for_each(translationTable, translationTable + translationCount, [&](const Translation &translation) {
        if (!QLatin1StringView(translation.name).endsWith(ending))
            return;
        auto *const translator = new EmbeddedTranslator(QCoreApplication::instance(), language);
        if (translator->load(translation.bytes, static_cast<int>(translation.size)))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    });
    qDeleteAll(former);
}

} // namespace QuoteDesk

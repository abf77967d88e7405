#include "desk/Manual.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

QStringList Manual::pages()
{
    return {u"first-steps"_s, u"quotes"_s,    u"clients"_s,  u"details"_s, u"allocation"_s, u"funds"_s,
            u"summary"_s,     u"catalogue"_s, u"settings"_s, u"office"_s,  u"keys"_s,       u"trouble"_s};
}

QUrl Manual::address(const QString &page, Language language)
{
    return QUrl(u"qrc:/manual/%1/%2.md"_s.arg(languageCode(language), page));
}

QString Manual::pageAt(const QUrl &address)
{
    const QString name = QFileInfo(address.path()).completeBaseName();
    return pages().contains(name) ? name : QString();
}

QString Manual::text(const QString &page, Language language)
{
    QFile file(u":/manual/%1/%2.md"_s.arg(languageCode(language), page));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString Manual::title(const QString &page, Language language)
{
    return text(page, language).section(u'\n', 0, 0).mid(2).trimmed();
}

} // namespace QuoteDesk

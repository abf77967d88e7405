#include "database/StoreLocation.h"

#include "database/StoreError.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(StoreLocation)
};

/// Throws StoreError for an unknown part of an address. The parts are passed to the connection as options: a
/// blank or semicolon in them would begin another option.
void checkOption(const QString &part, const QString &value)
{
    static const QRegularExpression word(u"^[A-Za-z0-9_.-]+$"_s);
    static const QStringList modes{u"disable"_s, u"allow"_s,     u"prefer"_s,
                                   u"require"_s, u"verify-ca"_s, u"verify-full"_s};
    if (part == u"sslmode"_s) {
        if (!modes.contains(value))
            throw StoreError(Text::tr("The database address has an unknown sslmode. Use one of %1")
                                 .arg(modes.join(u", "_s)));
    } else if (part == u"service"_s) {
        if (!word.match(value).hasMatch())
            throw StoreError(
                Text::tr("The database address has a service with a name that cannot be used. Name it with "
                         "letters, digits, \"_\", \".\" and \"-\" only"));
    } else {
        throw StoreError(Text::tr("The database address has an unknown part \"%1\". It may have host, "
                                  "sslmode and service")
                             .arg(part.left(20)));
    }
}

} // namespace

StoreLocation StoreLocation::fromText(const QString &text)
{
    StoreLocation location;
    const QString trimmed = text.trimmed();
    // Text with a scheme is an address; a scheme of one letter is a Windows drive. A file with such a name is
    // written ./a:b.
    static const QRegularExpression schemeOf(u"^([a-z][a-z0-9+.-]+):(//)?"_s,
                                             QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch scheme = schemeOf.match(trimmed);
    const QString name = scheme.captured(1).toLower();
    const bool isServer = !scheme.captured(2).isEmpty() && (name == u"postgresql"_s || name == u"postgres"_s);
    if (!isServer) {
        // The address may contain a password, so the message repeats its scheme only.
        if (trimmed.isEmpty() || scheme.hasMatch())
            throw StoreError(Text::tr("\"%1\" is neither a file nor a database server. Write the path of a "
                                      "file, or postgresql://user@host:port/database")
                                 .arg(scheme.hasMatch() ? scheme.captured() + u"..."_s : QString()));
        location.file = QFileInfo(trimmed).absoluteFilePath();
        return location;
    }

    location.server = QUrl(trimmed, QUrl::StrictMode);
    // Part of a password may have been read as another component of the address, even as its end.
    const qsizetype end = trimmed.indexOf(QRegularExpression(u"[/?#]"_s), scheme.capturedLength());
    if (!location.server.isValid() || location.server.hasFragment() ||
        (end >= 0 && trimmed.indexOf(u'@', end) >= 0))
        throw StoreError(Text::tr(
            "The database address cannot be read. Write it as postgresql://user@host:port/database. Inside a "
            "name or a password write the characters / ? # @ : % as %2F %3F %23 %40 %3A %25"));
    const QUrlQuery parts(location.server);
    for (const auto &[part, value] : parts.queryItems(QUrl::FullyDecoded)) {
        if (part == u"host"_s)
            continue;
        checkOption(part, value);
        location.options.append(part + u'=' + value);
    }
    const QString database = location.server.path();
    const bool named = database.size() > 1 && database.indexOf(u'/', 1) < 0;
    const bool byService = database.size() < 2 && parts.hasQueryItem(u"service"_s);
    if (!named && !byService)
        throw StoreError(Text::tr("The database address does not name a database. Write it as "
                                  "postgresql://user@host:port/database"));
    return location;
}

StoreLocation StoreLocation::inUserData()
{
    StoreLocation location;
    location.file =
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(u"quotes.db"_s);
    return location;
}

QString StoreLocation::text() const
{
    return isServer() ? server.toString(QUrl::RemovePassword) : QDir::toNativeSeparators(file);
}

} // namespace QuoteDesk

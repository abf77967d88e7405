#include "store/StoreLocation.h"

#include "store/StoreError.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrlQuery>

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(StoreLocation)
};

} // namespace

StoreLocation StoreLocation::fromText(const QString &text)
{
    StoreLocation location;
    const QString trimmed = text.trimmed();
    // Whatever has a scheme is an address; one letter is a drive. A file of such a name is written ./a:b.
    static const QRegularExpression schemeOf(QStringLiteral("^([a-z][a-z0-9+.-]+):(//)?"),
                                             QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch scheme = schemeOf.match(trimmed);
    const QString name = scheme.captured(1).toLower();
    const bool isServer = !scheme.captured(2).isEmpty() &&
                          (name == QStringLiteral("postgresql") || name == QStringLiteral("postgres"));
    if (!isServer) {
        // A password may be in an address, so no more than its scheme is repeated in a message.
        if (trimmed.isEmpty() || scheme.hasMatch())
            throw StoreError(
                Text::tr("\"%1\" is neither a file nor postgresql://user@host:port/database; a "
                         "file is given by its path alone")
                    .arg(scheme.hasMatch() ? scheme.captured() + QStringLiteral("...") : QString()));
        location.file = QFileInfo(trimmed).absoluteFilePath();
        return location;
    }

    location.server = QUrl(trimmed, QUrl::StrictMode);
    // What was meant for the password may have been read as anything, the end of it in particular.
    const qsizetype end =
        trimmed.indexOf(QRegularExpression(QStringLiteral("[/?#]")), scheme.capturedLength());
    if (!location.server.isValid() || location.server.hasFragment() ||
        (end >= 0 && trimmed.indexOf(u'@', end) >= 0))
        throw StoreError(Text::tr("The database address is not understood; it is to be "
                                  "postgresql://user@host:port/database. Inside a name or a password the "
                                  "characters / ? # @ : % are written %2F %3F %23 %40 %3A %25"));
    const QUrlQuery parts(location.server);
    for (const auto &[part, value] : parts.queryItems(QUrl::FullyDecoded)) {
        // Those that the connection takes as words of their own; a blank or a semicolon would begin another
        // option.
        static const QRegularExpression word(QStringLiteral("^[A-Za-z0-9_.-]+$"));
        static const QStringList modes{QStringLiteral("disable"),   QStringLiteral("allow"),
                                       QStringLiteral("prefer"),    QStringLiteral("require"),
                                       QStringLiteral("verify-ca"), QStringLiteral("verify-full")};
        if (part == QStringLiteral("host"))
            continue;
        if (part == QStringLiteral("sslmode")) {
            if (!modes.contains(value))
                throw StoreError(Text::tr("The database address has an sslmode that is none of %1")
                                     .arg(modes.join(QStringLiteral(", "))));
        } else if (part == QStringLiteral("service")) {
            if (!word.match(value).hasMatch())
                throw StoreError(Text::tr("The database address has a service whose name is not of letters, "
                                          "digits, \"_\", \".\" and \"-\""));
        } else {
            throw StoreError(Text::tr("The database address has an unknown part \"%1\"").arg(part.left(20)));
        }
        location.options.append(part + u'=' + value);
    }
    const QString database = location.server.path();
    const bool named = database.size() > 1 && database.indexOf(u'/', 1) < 0;
    const bool byService = database.size() < 2 && parts.hasQueryItem(QStringLiteral("service"));
    if (!named && !byService)
        throw StoreError(Text::tr("The database address does not name a database; it is to be "
                                  "postgresql://user@host:port/database"));
    return location;
}

StoreLocation StoreLocation::inUserData()
{
    StoreLocation location;
    location.file = QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
                        .filePath(QStringLiteral("quotes.db"));
    return location;
}

QString StoreLocation::text() const
{
    return isServer() ? server.toString(QUrl::RemovePassword) : QDir::toNativeSeparators(file);
}

} // namespace QuoteDesk

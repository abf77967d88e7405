#include "catalogue/TwinCaptions.h"

#include <QList>
#include <QMap>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Twin {
    int fundID;
    QString name;
    QString group;
    bool inManyGroups;
};

/// The funds with one name, and the index of each by its id.
struct Twins {
    QList<Twin> list;
    QHash<int, qsizetype> at;
};

/// The form in which captions are compared.
QString keyOf(const QString &caption)
{
    return caption.trimmed().toLower();
}

QString withWord(const QString &name, const QString &word)
{
    return u"%1 (%2)"_s.arg(name, word);
}

/// One caption per fund; empty when two captions are equal or one belongs to another fund.
template <typename Caption>
QStringList captionsBy(const QList<Twin> &twins, const QSet<size_t> &taken, Caption caption)
{
    QStringList captions;
    QSet<QString> keys;
    for (const Twin &twin : twins) {
        captions.append(caption(twin));
        const QString key = keyOf(captions.constLast());
        if (keys.contains(key) || taken.contains(qHash(key)))
            return {};
        keys.insert(key);
    }
    return captions;
}

QStringList captionsOf(const QList<Twin> &twins, const QSet<size_t> &taken)
{
    const bool groupsTell = std::none_of(twins.cbegin(), twins.cend(), [](const Twin &twin) {
        return twin.group.isEmpty() || twin.inManyGroups;
    });
    QStringList captions;
    if (groupsTell)
        captions = captionsBy(twins, taken, [](const Twin &twin) { return withWord(twin.name, twin.group); });
    // A fund's real name may equal such a caption; then the id is appended once more.
    for (int times = 1; captions.isEmpty(); ++times) {
        captions = captionsBy(twins, taken, [times](const Twin &twin) {
            QString caption = twin.name;
            for (int i = 0; i < times; ++i)
                caption = withWord(caption, QString::number(twin.fundID));
            return caption;
        });
    }
    return captions;
}

} // namespace

TwinCaptions twinCaptions(const FundWalk &walk)
{
    // A list may have a million funds, and most lists have no shared names; so only hashes are kept.
    QHash<size_t, int> fundOfName;
    QSet<size_t> shared;
    walk([&](int fundID, const QString &name, const QString &) {
        const size_t key = qHash(keyOf(name));
        const auto known = fundOfName.constFind(key);
        if (known == fundOfName.constEnd())
            fundOfName.insert(key, fundID);
        else if (*known != fundID)
            shared.insert(key);
    });
    if (shared.isEmpty())
        return {};

    QMap<QString, Twins> twinsOfName;
    walk([&](int fundID, const QString &name, const QString &group) {
        const QString key = keyOf(name);
        if (!shared.contains(qHash(key)))
            return;
        Twins &twins = twinsOfName[key];
        const qsizetype known = twins.at.value(fundID, -1);
        if (known < 0) {
            twins.at.insert(fundID, twins.list.size());
            twins.list.append({fundID, name.trimmed(), group.trimmed(), false});
        } else if (twins.list.at(known).group != group.trimmed()) {
            twins.list[known].inManyGroups = true;
        }
    });
    QSet<size_t> taken(fundOfName.keyBegin(), fundOfName.keyEnd());
    TwinCaptions result;
    for (const Twins &twins : std::as_const(twinsOfName)) {
        if (twins.list.size() < 2)
            continue; // different names with the same hash
        const QStringList captions = captionsOf(twins.list, taken);
        for (qsizetype i = 0; i < captions.size(); ++i) {
            const Twin &twin = twins.list.at(i);
            result.insert({twin.fundID, twin.name}, captions.at(i));
            taken.insert(qHash(keyOf(captions.at(i))));
        }
    }
    return result;
}

} // namespace QuoteDesk

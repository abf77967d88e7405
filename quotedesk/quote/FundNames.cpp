#include "quote/FundNames.h"

#include <QStringList>

namespace QuoteDesk
{

void FundNames::add(int fundID, const Fund &fund)
{
    if (m_funds.contains(fundID))
        return;
    m_funds.insert(fundID, fund);
    m_order.append(fundID);
    m_byName.clear();
}

const FundNames::Fund *FundNames::find(int fundID) const
{
    const auto found = m_funds.constFind(fundID);
    return found == m_funds.cend() ? nullptr : &*found;
}

void FundNames::addOtherName(int fundID, const QString &name)
{
    m_byOtherName[folded(name)].append(fundID);
}

QString FundNames::folded(const QString &name)
{
    constexpr QChar minus(0x2212);
    constexpr QChar softHyphen(0xad);
    QString result = name.simplified().toCaseFolded();
    result.remove(softHyphen);
    // Word processors replace the keyboard's hyphen by dashes and non-breaking hyphens.
    for (QChar &c : result) {
        if (c.category() == QChar::Punctuation_Dash || c == minus)
            c = u'-';
    }
    return result;
}

QList<int> FundNames::named(const QString &name) const
{
    if (m_byName.isEmpty()) {
        for (const int fundID : m_order) {
            const auto fund = m_funds.constFind(fundID);
            QStringList keys;
            for (const QString &each : {fund->name, fund->nameAfrikaans, fund->nameEnglish, fund->caption}) {
                if (const QString key = folded(each); !key.isEmpty() && !keys.contains(key))
                    keys.append(key);
            }
            for (const QString &key : std::as_const(keys))
                m_byName[key].append(fundID);
        }
    }
    const QString key = folded(name);
    QList<int> found = m_byName.value(key);
    for (const int fundID : m_byOtherName.value(key)) {
        if (!found.contains(fundID))
            found.append(fundID);
    }
    return found;
}

} // namespace QuoteDesk

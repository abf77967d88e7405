#include "quote/OfferedFunds.h"

#include "quote/QuoteSession.h"

#include "catalogue/CatalogueProviders.h"
#include "catalogue/TwinCaptions.h"

#include "data/ClientDataSet.h"

namespace QuoteDesk
{
void OfferedFunds::setUp(const QuoteSession &session, int productID)
{
    m_session = &session;
    m_productID = productID;
}

void OfferedFunds::read(bool all, const QSet<int> &wanted)
{
    const CatalogueProviders &providers = m_session->providers();
    const QVariant packet =
        all ? providers.fundPacket(m_productID) : providers.fundPacket(m_productID, wanted.values());
    const bool isAfrikaans = m_session->catalogue().isAfrikaans();
    FundNames names;
    TClientDataSet rows;
    rows.SetData(packet);
    const auto field = [&rows](const char *name) { return rows.FieldByName(QLatin1String(name)); };
    const TField *const id = field("FundID");
    const TField *const caption = field("FundName");
    const TField *const english = field("FundName_ENG");
    const TField *const afrikaans = field("FundName_AFR");
    const TField *const sheet = field("FundSheetURL");
    const TField *const group = field("FundGroupID");
    const TField *const groupName = field("FundGroupName");
    for (; !rows.Eof(); rows.Next()) {
        FundNames::Fund fund;
        fund.nameEnglish = english->AsString().trimmed();
        fund.nameAfrikaans = afrikaans->AsString().trimmed();
        fund.name = isAfrikaans && !fund.nameAfrikaans.isEmpty() ? fund.nameAfrikaans : fund.nameEnglish;
        fund.factSheet = sheet->AsString().trimmed();
        fund.groupID = group->AsInteger();
        fund.groupName = groupName->AsString();
        if (QString text = caption->AsString().trimmed(); text != fund.name)
            fund.caption = std::move(text);
        names.add(id->AsInteger(), fund);
    }
    m_packet = packet;
    m_names = std::move(names);
    m_hasAll = all;
    m_wanted = wanted;
}

bool OfferedFunds::want(const QList<QuotedFund> &funds)
{
    QSet<int> wanted = m_wanted;
    for (const QuotedFund &fund : funds)
        wanted.insert(fund.fundID);
    if (m_packet.isValid() && (m_hasAll || wanted.size() == m_wanted.size()))
        return false;
    read(m_hasAll, wanted);
    return true;
}

bool OfferedFunds::wantAll()
{
    if (m_hasAll)
        return false;
    read(true, m_wanted);
    return true;
}

bool OfferedFunds::isRenamed(const QuotedFund &fund) const
{
    const FundNames::Fund *const known = m_names.find(fund.fundID);
    return known && !known->isCalled(fund.name);
}

void OfferedFunds::takeNames(QList<QuotedFund> &funds) const
{
    for (QuotedFund &fund : funds) {
        const FundNames::Fund *const known = m_names.find(fund.fundID);
        // Very old quotes have no names.
        if (known && (fund.name.trimmed().isEmpty() || known->isCalled(fund.name)))
            fund.name = known->name;
    }
}

QStringList OfferedFunds::shownNames(const QList<QuotedFund> &funds) const
{
    const TwinCaptions captions = twinCaptions([&](const FundVisitor &visitor) {
        for (const QuotedFund &fund : funds) {
            const FundNames::Fund *const known = m_names.find(fund.fundID);
            visitor(fund.fundID, fund.name, known ? known->groupName : QString());
        }
    });
    QStringList names;
    names.reserve(funds.size());
    for (const QuotedFund &fund : funds) {
        QString name = fund.name.trimmed();
        if (!captions.isEmpty())
            name = captions.value({fund.fundID, name}, name);
        names.append(isRenamed(fund)
                         ? tr("%1 (in the catalogue: %2)").arg(name, m_names.fund(fund.fundID).name)
                         : name);
    }
    return names;
}

} // namespace QuoteDesk

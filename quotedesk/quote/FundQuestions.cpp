#include "quote/FundQuestions.h"

#include "quote/EditedQuote.h"

#include "funds/fra_FundAllocation.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace QuoteDesk
{
namespace
{

/// A question that is asked when a fund of its group is chosen.
struct Question {
    int groupID;
    TMessageText text;
    bool AskedQuestions::*asked;
    const char *answer; ///< the key of the answer in the quote's details
};

constexpr std::array<Question, 4> questions{{
    {11, TMessageText::resFund_OGSPrevInv_Msg, &AskedQuestions::ogs, "PreviousInvestment.OGS"},
    {12, TMessageText::resFund_WorldOGSPrevInv_Msg, &AskedQuestions::worldOGS, "PreviousInvestment.WorldOGS"},
    {68, TMessageText::resFund_OGS_INTPrevInv_Msg, &AskedQuestions::worldOGSInternational,
     "PreviousInvestment.WorldOGSInternational"},
    {67, TMessageText::resFund_BulwarkWorldPrevInv_Msg, &AskedQuestions::bulwarkWorld,
     "PreviousInvestment.BulwarkWorld"},
}};

constexpr auto yes = "yes";
constexpr auto no = "no";

const Question *questionOf(int groupID)
{
    const auto *const found =
        std::find_if(questions.cbegin(), questions.cend(),
                     [groupID](const Question &question) { return question.groupID == groupID; });
    return found == questions.cend() ? nullptr : found;
}

} // namespace

QString FundQuestions::textOf(int groupID)
{
    const Question *const question = questionOf(groupID);
    return question ? LoadResString(question->text) : QString();
}

QList<int> FundQuestions::due(TfraFundAllocation &frame, const FundNames &names, const AskedQuestions &asked)
{
    const auto groupOf = [&names](int fundID) {
        const FundNames::Fund *const fund = names.find(fundID);
        return fund ? fund->groupID : 0;
    };
    // The messages, which say which funds have a question, are read only when one of their groups is present.
    const TFunds &funds = frame.Funds();
    if (std::none_of(funds.begin(), funds.end(),
                     [&](const TFundRec &record) { return questionOf(groupOf(record.FundID)); }))
        return {};
    QSet<int> withQuestion;
    for (const Question &question : questions) {
        for (const int fundID : frame.BuildFundMessageSetFromDataSet(question.groupID))
            withQuestion.insert(fundID);
    }
    QSet<int> groups;
    for (const TFundRec &record : funds) {
        if (withQuestion.contains(record.FundID))
            groups.insert(groupOf(record.FundID));
    }
    QList<int> result;
    for (const Question &question : questions) {
        if (groups.contains(question.groupID) && !(asked.*question.asked))
            result.append(question.groupID);
    }
    return result;
}

void FundQuestions::keepAnswer(EditedQuote &quote, int groupID, bool answer)
{
    const Question *const question = questionOf(groupID);
    if (!question)
        return;
    AskedQuestions asked = quote.asked();
    asked.*question->asked = true;
    quote.setAsked(asked);
    quote.setDetail(QLatin1String(question->answer), QLatin1String(answer ? yes : no));
}

QList<QPair<QString, QString>> FundQuestions::answersIn(const QMap<QString, QString> &details)
{
    QList<QPair<QString, QString>> result;
    for (const Question &question : questions) {
        const QString answer = details.value(QLatin1String(question.answer));
        if (!answer.isEmpty())
            result.append(
                {LoadResString(question.text), answer == QLatin1String(yes) ? tr("yes") : tr("no")});
    }
    return result;
}

} // namespace QuoteDesk

#pragma once

#include "quote/FundNames.h"
#include "store/Quote.h"

#include <QCoreApplication>
#include <QPair>

class TfraFundAllocation;

namespace QuoteDesk
{

class EditedQuote;

/// The questions about previous investments. Each belongs to a group of funds and is asked once for a quote,
/// when a fund of its group is chosen.
struct FundQuestions {
    Q_DECLARE_TR_FUNCTIONS(FundQuestions)
public:
    /// The question of a group of funds; blank for none.
    static QString textOf(int groupID);
    /// The groups whose question is to be asked now, by the funds that @p frame has.
    static QList<int> due(TfraFundAllocation &frame, const FundNames &names, const AskedQuestions &asked);
    /// Keeps the answer to a group's question with the quote.
    static void keepAnswer(EditedQuote &quote, int groupID, bool answer);
    /// The questions that were answered in the details of a quote, with their answers.
    static QList<QPair<QString, QString>> answersIn(const QMap<QString, QString> &details);
};

} // namespace QuoteDesk

#pragma once

#include "quote/FundNames.h"
#include "store/Quote.h"

#include <QCoreApplication>
#include <QPair>

class TfraFundAllocation;

namespace QuoteDesk
{

class EditedQuote;

/// The questions about previous investments. Each belongs to a fund group and is asked once per quote, when a
/// fund of its group is chosen.
struct FundQuestions {
    Q_DECLARE_TR_FUNCTIONS(FundQuestions)
public:
    /// The question of a fund group; blank for none.
    static QString textOf(int groupID);
    /// The groups whose questions have to be asked for the funds of @p frame.
    static QList<int> due(TfraFundAllocation &frame, const FundNames &names, const AskedQuestions &asked);
    /// Stores the answer to a group's question in the quote.
    static void keepAnswer(EditedQuote &quote, int groupID, bool answer);
    /// The questions with an answer in a quote's details, and their answers.
    static QList<QPair<QString, QString>> answersIn(const QMap<QString, QString> &details);
};

} // namespace QuoteDesk

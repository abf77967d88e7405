#pragma once

#include "quote/Split.h"

#include "funds/fra_FundAllocation.h"

#include <QStringList>

namespace QuoteDesk
{

class OfferedFunds;

/// The allocation frame of the funds page. It tells its page when its own set-up has run, which is when the
/// page may hand it funds, and what comes of an entry. The funds of a split are its rows, in their order, and
/// then those that the product does not offer any more, which the frame does not know.
class QuoteAllocation : public TfraFundAllocation
{
    Q_OBJECT
public:
    explicit QuoteAllocation(QWidget *parent = nullptr);
    ~QuoteAllocation() override;

    /// The funds of @p split in the order of the rows, and then @p kept.
    QList<QuotedFund> inRowOrder(const Split &split, const QList<QuotedFund> &kept) const;
    /// Writes the numbers of the funds into the rows, which have the same funds in the same order: the frame
    /// works each row's second number out from the first, row by row.
    void putNumbers(const QList<QuotedFund> &funds);
    /// The rows as funds. The name of a fund is the one that it has in @p before, under which it was quoted;
    /// a fund that is not there has the catalogue's.
    QList<QuotedFund> readFunds(const QList<QuotedFund> &before, const OfferedFunds &offered) const;
    /// Writes the names of the funds into the rows, which the frame has filled with the catalogue's. A fund
    /// that the catalogue calls otherwise is marked. Answers how many are.
    int showNames(const QList<QuotedFund> &funds, const QStringList &names, const OfferedFunds &offered);

Q_SIGNALS:
    void initialized();
    /// An edit of a row has ended, and what was typed is in the list. Rows count from 1.
    void cellEntered(int row);
    /// An entry is not taken as it was typed: why, and what its cell has now.
    void entryTold(const QString &sentence);

protected:
    void InitializeFrame() override;
    void changeEvent(QEvent *event) override;

private:
    void tellOfCell(const QString &sentence, int column, int row, const QString &reason);
    void clearCaptions();

    bool m_initialized = false;
};

} // namespace QuoteDesk

#pragma once

#include "quote/Split.h"

#include "funds/fra_FundAllocation.h"

#include <QStringList>

namespace QuoteDesk
{

class OfferedFunds;

/// The allocation frame of the funds page. It signals when it has initialised itself, after which the page
/// may set funds, and the result of each entry. The funds of a split are its rows, in their order, followed
/// by those that the product no longer offers, which the frame does not have.
class QuoteAllocation : public TfraFundAllocation
{
    Q_OBJECT
public:
    explicit QuoteAllocation(QWidget *parent = nullptr);
    ~QuoteAllocation() override;

    /// The funds of @p split in the order of the rows, followed by @p kept.
    QList<QuotedFund> inRowOrder(const Split &split, const QList<QuotedFund> &kept) const;
    /// Writes the numbers of the funds into the rows, which have the same funds in the same order. The frame
    /// itself calculates each row's second number from the first, one row at a time.
    void putNumbers(const QList<QuotedFund> &funds);
    /// The rows as funds. A fund keeps its name in @p before, with which it was quoted; other funds get the
    /// catalogue's name.
    QList<QuotedFund> readFunds(const QList<QuotedFund> &before, const OfferedFunds &offered) const;
    /// Writes the names of the funds into the rows, which the frame has filled with the catalogue's. Marks
    /// funds that have another name in the catalogue and returns their number.
    int showNames(const QList<QuotedFund> &funds, const QStringList &names, const OfferedFunds &offered);

Q_SIGNALS:
    void initialized();
    /// An edit of a row has ended, and the list has the entry. Rows count from 1.
    void cellEntered(int row);
    /// An entry was refused or corrected: the reason and the cell's present value.
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

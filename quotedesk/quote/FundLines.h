#pragma once

#include "quote/FundNames.h"

#include "data/Currency.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

namespace QuoteDesk
{

/// The fund lines in a text from a spreadsheet: a fund's name or id and its percentage or amount per line, in
/// cells separated by tabs or else by semicolons. A first line without a number is a heading, which may
/// define the columns ("Fund ID", "Fund", "%" or "Percent", "Amount" or "R").
class FundLines
{
    Q_DECLARE_TR_FUNCTIONS(FundLines)
public:
    /// The meaning of a number without a unit.
    enum class Meaning { Percent, Amount };

    struct Entry {
        int line = 0; ///< from 1
        int fundID = 0;
        Meaning meaning = Meaning::Percent;
        Currency value;
    };
    struct Refused {
        int line = 0; ///< from 1
        QString text;
        QString reason;
    };

    /// Reads @p text. @p meaning also decides which number counts in a line with both percentage and amount.
    FundLines(const QString &text, const FundNames &names, Meaning meaning);

    const QList<Entry> &entries() const noexcept { return m_entries; }
    const QList<Refused> &refused() const noexcept { return m_refused; }
    /// The refused lines as a text for users, one per line: number, reason and text.
    QString report() const;

    /// Whether a text looks like lines of cells and not like a single number.
    static bool looksLikeLines(const QString &text);

private:
    struct Columns {
        int id = -1, name = -1, percent = -1, amount = -1;
    };
    struct Number {
        Currency value;
        Meaning meaning = Meaning::Percent;
    };

    static bool readHeading(const QStringList &cells, Columns &columns);
    /// @p meaning applies to a number without a unit.
    static Number readNumber(const QString &cell, Meaning meaning);
    Entry readLine(const QStringList &cells, const Columns &columns) const;
    int findFund(const QString &cell) const;

    const FundNames &m_names;
    Meaning m_meaning;
    QList<Entry> m_entries;
    QList<Refused> m_refused;
};

} // namespace QuoteDesk

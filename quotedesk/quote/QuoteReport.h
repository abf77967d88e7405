#pragma once

#include "store/ShownSplit.h"

#include <QCoreApplication>
#include <QDate>
#include <QList>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;

namespace QuoteDesk
{

/// A quote as the client reads it: on the summary page, on paper and in a PDF file.
struct QuoteReport {
    Q_DECLARE_TR_FUNCTIONS(QuoteReport)
public:
    explicit QuoteReport(const Quote &quote) : split(quote) {}

    QString product;
    QString client; ///< Blank for none.
    QString description;
    QDate date;
    QList<QPair<QString, QString>> details; ///< Caption and value; only what was entered.
    QSet<int> notOffered;                   ///< Funds that the product has no more.
    QStringList problems;                   ///< What is still to be completed, in sentences.
    ShownSplit split;

    /// Whether anything is left to be done: of the investment, or to be completed.
    bool isDraft() const { return !split.isAllocated() || !problems.isEmpty(); }
    /// Why the quote is a draft, or that it is not one; one line.
    QString stateText() const { return stateText(split, problems.isEmpty()); }
    /// The same of a split; @p isComplete tells whether nothing else is left to be completed.
    static QString stateText(const SplitState &split, bool isComplete);
    /// A fund's name, with a word behind it when it is not offered any more.
    QString fundText(const ShownSplit::Fund &fund) const;
    /// What stands beside the rest, by its sign; blank for a rest of nothing.
    QString restText() const;

    /// Draws the quote on the pages of a device, numbered, each with the table's heading.
    /// Raises Exception when the device cannot be drawn on.
    void print(QPagedPaintDevice &device) const;
    /// Writes an A4 PDF file. Raises Exception, naming the file and the reason, and leaves a former file
    /// alone when it cannot be written.
    void savePdf(const QString &path) const;
};

} // namespace QuoteDesk

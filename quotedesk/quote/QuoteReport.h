#pragma once

#include "quote/Letterhead.h"
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

/// A quote as the client reads it: on the summary page, in the printout and in a PDF file.
struct QuoteReport {
    Q_DECLARE_TR_FUNCTIONS(QuoteReport)
public:
    explicit QuoteReport(const Quote &quote) : split(quote) {}

    QString product;
    QString client; ///< blank without a client
    QString description;
    QDate date;
    QList<QPair<QString, QString>> details; ///< caption and value; only elements with an entry
    QSet<int> notOffered;                   ///< funds that the product no longer offers
    QStringList problems;                   ///< what is still to be completed, as sentences
    ShownSplit split;
    Letterhead letterhead = Letterhead::current(); ///< printed above everything else

    /// Whether the investment is not completely allocated or something is still to be completed.
    bool isDraft() const { return !split.isAllocated() || !problems.isEmpty(); }
    /// Why the quote is a draft, or that it is complete; one line.
    QString stateText() const { return stateText(split, problems.isEmpty()); }
    /// The same for a split; @p isComplete says that nothing else has to be completed.
    static QString stateText(const SplitState &split, bool isComplete);
    /// A name for the quote's files, without an extension: the description, or else the product.
    QString fileName() const;
    /// A fund's name, followed by a note when it is no longer offered.
    QString fundText(const ShownSplit::Fund &fund) const;
    /// The text beside the remainder, depending on its sign; blank when nothing remains.
    QString restText() const;

    /// Draws the quote on the pages of a device, with page numbers and the table's heading on each page.
    /// Throws Exception when the device cannot be drawn on.
    void print(QPagedPaintDevice &device) const;
    /// Writes an A4 PDF file. When it cannot be written, throws Exception with the file and the reason, and a
    /// former file stays unchanged.
    void savePdf(const QString &path) const;
};

} // namespace QuoteDesk

#pragma once

#include "EditorDesk.h"

#include "data/Format.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTableWidget>

namespace QuoteDesk
{

/// What the parts of an open quote display about the unallocated remainder. Each page is shown before it is
/// read, so that it is up to date.
struct SaidOfTheRest {
    bool byAmount = false;
    QString status;           ///< The status panel of the allocation frame.
    QString state;            ///< The line below the chart.
    QString picture;          ///< The chart's accessible description.
    QString summary;          ///< The state on the summary page.
    QList<QStringList> rows;  ///< Name, percent and amount from the summary's table.
    QList<QStringList> cells; ///< The same from the grid and the list of funds that are no longer offered.
    bool listed = false;      ///< Whether the list of quotes shows the quote as allocated.

    explicit SaidOfTheRest(QuoteEditor &editor)
    {
        const FundsHand hand(editor);
        QuoteForm &form = *editor.form();
        const TfraFundAllocation &frame = *hand.page.fraFundAllocation;
        byAmount = frame.Get_AllocByAmount();
        status = frame.pnlRemainAmount->caption();
        state = hand.page.lblState->text();
        picture = hand.page.chart->accessibleDescription();
        for (int row = 1; row <= hand.grid().RowCount(); ++row)
            cells.append({hand.cell(2, row), hand.cell(3, row), hand.cell(4, row)});
        form.showSummary();
        const SummaryPage &page = *form.summaryPage;
        summary = page.lblStateValue->text();
        for (int row = 0; row < page.tblFunds->rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < 3; ++column)
                texts.append(page.tblFunds->item(row, column)->text().remove(u','));
            rows.append(texts);
        }
        listed = editor.quote().isAllocated();
    }

    static Currency number(const QString &text) { return Currency::fromText(text); }
    static QString text(Currency value) { return FormatFloat(FormatMask::TwoDecimals, value); }

    /// The numbers in a sentence, without thousands separators.
    static QStringList numbersIn(const QString &sentence)
    {
        static const QRegularExpression pattern(QStringLiteral("-?[0-9][0-9,]*\\.[0-9]{2}"));
        QStringList numbers;
        for (auto match = pattern.globalMatch(sentence); match.hasNext();)
            numbers.append(match.next().captured().remove(u','));
        return numbers;
    }

    /// Describes how two parts contradict each other; empty when all agree.
    QString contradiction(Currency investment) const
    {
        const auto told = [this](const QString &what) {
            return QStringList{what, status, state, picture, summary, QString::number(listed)}.join(u'\n');
        };
        const QStringList left = numbersIn(status);
        if (left.size() != (byAmount ? 2 : 1))
            return told(QStringLiteral("the status panel says nothing"));
        const Currency rest = number(left.constFirst());
        const bool hasFunds = rows.constFirst().constFirst() != QStringLiteral("Total") &&
                              rows.constFirst().constFirst() != QStringLiteral("Not allocated");
        const bool whole = rest.isZero() && hasFunds && !investment.isZero();
        if (listed != whole)
            return told(QStringLiteral("the list of quotes"));
        if ((state == QStringLiteral("Fully allocated")) != whole)
            return told(QStringLiteral("the state"));
        if (!whole && !state.startsWith(QStringLiteral("Draft: ")))
            return told(QStringLiteral("the state is none"));
        if (whole ? !summary.contains(QStringLiteral("ully allocated")) : summary != state)
            return told(QStringLiteral("the summary's state"));
        if (investment.isZero())
            return {};

        QString restPercent = byAmount ? left.at(1) : left.at(0);
        const auto isRest = [](const QStringList &row) {
            return row.at(0) == QStringLiteral("Not allocated") ||
                   row.at(0) == QStringLiteral("Over-allocated");
        };
        Currency percent;
        Currency amount;
        QStringList restRow;
        QList<QStringList> funds;
        for (const QStringList &row : rows.mid(0, rows.size() - 1)) {
            percent += number(row.at(1));
            amount += number(row.at(2));
            if (isRest(row))
                restRow = row;
            else
                funds.append(row);
        }
        if (percent != Currency(100) || amount != investment)
            return told(
                QStringLiteral("the table does not add up: %1%, %2").arg(text(percent), text(amount)));
        if (restRow.isEmpty() != rest.isZero())
            return told(QStringLiteral("the table's rest"));
        if (!restRow.isEmpty()) {
            const bool over = rest < Currency();
            if (restRow.at(1) != restPercent || (byAmount && restRow.at(2) != left.at(0)) ||
                (restRow.at(0) == QStringLiteral("Over-allocated")) != over)
                return told(QStringLiteral("the table's rest: ") + restRow.join(u'|'));
            if (hasFunds) {
                // The state line contains both numbers, without a minus sign.
                const QStringList shown = numbersIn(state);
                const auto size = [](QString number) { return number.remove(u'-'); };
                if (shown.size() != 2 || shown.at(0) != size(restRow.at(2)) ||
                    shown.at(1) != size(restRow.at(1)) || state.contains(QStringLiteral("more")) != over)
                    return told(QStringLiteral("the state's numbers"));
            }
            if (!picture.contains(over ? QStringLiteral("over-allocated") : QStringLiteral("Not allocated")))
                return told(QStringLiteral("the picture"));
        } else if (picture.contains(QStringLiteral("over-allocated")) ||
                   picture.contains(QStringLiteral("Not allocated"))) {
            return told(QStringLiteral("the picture tells of a rest"));
        }
        // Grid and table have the same rows.
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (cells.at(i) != funds.value(i))
                return told(QStringLiteral("row %1: %2 and %3")
                                .arg(i + 1)
                                .arg(cells.at(i).join(u'|'), funds.value(i).join(u'|')));
        }
        return {};
    }
};

} // namespace QuoteDesk

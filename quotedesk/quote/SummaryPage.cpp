#include "quote/SummaryPage.h"

#include "quote/PlainText.h"
#include "quote/StateColours.h"

#include "data/Format.h"
#include "toolkit/Glyphs.h"

#include <QEvent>
#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

SummaryPage::SummaryPage(QWidget *parent) : QWidget(parent)
{
    setupUi(this);
    // Shows the page's own background.
    pnlQuote->setAutoFillBackground(false);
    areaQuote->viewport()->setAutoFillBackground(false);
    btnPrint->setIcon(GlyphIcon(u"print"_s));
    btnPdf->setIcon(GlyphIcon(u"pdf"_s));
    tblFunds->setColumnCount(3);
    tblFunds->verticalHeader()->hide();
    tblFunds->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    tblFunds->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    tblFunds->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    tblFunds->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    nameColumns();
}

SummaryPage::~SummaryPage() = default;

void SummaryPage::nameColumns()
{
    tblFunds->setHorizontalHeaderLabels({tr("Fund"), tr("Percent"), tr("Amount (R)")});
    for (int column = 0; column < 3; ++column)
        tblFunds->horizontalHeaderItem(column)->setTextAlignment(
            (column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
}

void SummaryPage::show(const QuoteReport &report)
{
    lblProductValue->setText(wrappedText(report.product));
    lblClientValue->setText(wrappedText(report.client.isEmpty() ? tr("none chosen yet") : report.client));
    showDescription(report.description);
    lblStateValue->setText(report.stateText());
    m_overAllocated = report.split.isOver();
    showOverAllocation(*lblStateValue, m_overAllocated);

    // A header view has its own font, which may differ from the page's.
    tblFunds->horizontalHeader()->setFont(tblFunds->font());
    tblFunds->setRowCount(0);
    const ShownSplit &split = report.split;
    const auto percent = [](Currency value) { return FormatFloat(FormatMask::TwoDecimals, value); };
    const auto money = [](Currency value) { return FormatFloat(FormatMask::Thousands, value); };
    for (const ShownSplit::Fund &fund : split.funds)
        addRow(report.fundText(fund), percent(fund.percent), money(fund.amount), false);
    if (!report.restText().isEmpty())
        addRow(report.restText(), percent(split.restPercent), money(split.restAmount), false);
    addRow(tr("Total"), percent(100), money(split.investment), true);

    QStringList lines;
    for (const auto &[caption, value] : report.details)
        lines.append(tr("%1: %2").arg(caption, value));
    lblDetails->setText(wrappedText(lines.join(u'\n')));
    lblDetails->setVisible(!lines.isEmpty());

    const QStringList &problems = report.problems;
    lblProblems->setText(problems.isEmpty() ? QString()
                                            : tr("Still to be completed:\n%1").arg(problems.join(u'\n')));
    pnlProblems->setVisible(!problems.isEmpty());
    lblWarning->setPixmap(GlyphIcon(u"warning"_s).pixmap(16, 16));
}

void SummaryPage::showDescription(const QString &description)
{
    lblDescriptionValue->setText(wrappedText(description.isEmpty() ? tr("none") : description));
    lblSaid->clear();
}

void SummaryPage::say(const QString &text)
{
    lblSaid->setText(wrappedText(text));
}

void SummaryPage::addRow(const QString &name, const QString &percent, const QString &amount, bool bold)
{
    const int row = tblFunds->rowCount();
    tblFunds->insertRow(row);
    const QString texts[] = {name, percent, amount};
    for (int column = 0; column < 3; ++column) {
        auto *const item = new QTableWidgetItem(shortText(texts[column], 300));
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        item->setToolTip(tipText(texts[column]));
        if (column > 0)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (bold) {
            QFont font = tblFunds->font();
            font.setBold(true);
            item->setFont(font);
        }
        tblFunds->setItem(row, column, item);
    }
}

void SummaryPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showOverAllocation(*lblStateValue, m_overAllocated);
    if (event->type() == QEvent::LanguageChange) {
        // The labels of values have no text in the design; the form shows the quote again.
        retranslateUi(this);
        nameColumns();
    }
}

} // namespace QuoteDesk

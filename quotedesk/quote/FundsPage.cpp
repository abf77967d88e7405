#include "quote/FundsPage.h"

#include "quote/QuoteSession.h"

#include "catalogue/CatalogueProviders.h"
#include "desk/Options.h"

#include "data/ClientDataSet.h"
#include "data/Format.h"
#include "toolkit/TApplication.h"

#include <QRegularExpressionValidator>

namespace QuoteDesk
{

FundsPage::FundsPage(QWidget *parent) : QWidget(parent)
{
    setupUi(this);
    edAmount->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9, ]{0,16}([.][0-9]{0,2})?")), edAmount));
    // The frame sets itself up after its first paint; funds handed over before that would be lost to it.
    connect(fraFundAllocation, &QuoteAllocation::initialized, this,
            [this] { GuardedCall([this] { start(); }); });
    connect(rbAmount, &QRadioButton::clicked, this, [this] { GuardedCall([this] { takeMode(); }); });
    connect(rbPercent, &QRadioButton::clicked, this, [this] { GuardedCall([this] { takeMode(); }); });
    connect(edAmount, &QLineEdit::editingFinished, this, [this] { GuardedCall([this] { takeAmount(); }); });
}

FundsPage::~FundsPage() = default;

void FundsPage::setUp(QuoteSession &session, const Product &product)
{
    m_session = &session;
    m_product = product;
    fraFundAllocation->pnlHeaderCaption->setCaption(tr("  Fund allocation"));
    fraFundAllocation->InfoText = tr("Funds for the %1").arg(product.name);
}

void FundsPage::start()
{
    if (m_ready)
        return;
    fraFundAllocation->Set_FundsPerProductDataSet(m_session->providers().fundPacket(m_product.productID));
    m_ready = true;
    showFunds();
    Q_EMIT ready();
}

void FundsPage::show(const Quote &quote)
{
    m_quote = quote;
    m_investment = quote.amount;
    showAmount();
    (quote.byAmount ? rbAmount : rbPercent)->setChecked(true);
    if (m_ready)
        showFunds();
}

void FundsPage::showFunds()
{
    fraFundAllocation->Set_AllocByAmount(m_quote.byAmount);
    fraFundAllocation->Set_InvestmentAmount(m_investment);
    std::vector<TFundRec> records;
    for (const QuotedFund &fund : std::as_const(m_quote.funds)) {
        m_names.insert(fund.fundID, fund.name);
        records.push_back({fund.fundID, nullptr, fund.amount, fund.percent});
    }
    TFunds funds(std::move(records));
    fraFundAllocation->SetupFundAllocation(funds, m_product.productGroupID,
                                           m_session->providers().connection());
    m_undo.clear();
}

void FundsPage::readInto(Quote &quote) const
{
    quote.amount = m_investment;
    if (!m_ready) {
        quote.byAmount = m_quote.byAmount;
        quote.funds = m_quote.funds;
        return;
    }
    quote.byAmount = fraFundAllocation->Get_AllocByAmount();
    quote.funds.clear();
    int row = 0;
    for (const TFundRec &record : fraFundAllocation->Funds())
        quote.funds.append(
            {record.FundID, fraFundAllocation->FundGrid->CellText(2, ++row), record.Amount, record.Percent});
}

void FundsPage::takeMode()
{
    fraFundAllocation->Set_AllocByAmount(rbAmount->isChecked());
    Q_EMIT edited();
}

void FundsPage::takeAmount()
{
    QString text = edAmount->text();
    text.remove(u',').remove(u' ');
    Currency amount;
    if (readInvestment(text, amount) && amount != m_investment) {
        m_investment = amount;
        fraFundAllocation->Set_InvestmentAmount(amount);
        // By percent the frame keeps the amounts that it has until each percentage is taken anew.
        if (!fraFundAllocation->Get_AllocByAmount()) {
            TFunds funds = fraFundAllocation->Funds();
            fraFundAllocation->SetupFundAllocation(funds, m_product.productGroupID,
                                                   m_session->providers().connection());
        }
        Q_EMIT edited();
    }
    showAmount();
}

void FundsPage::showAmount()
{
    edAmount->setText(FormatFloat(FormatMask::Thousands, m_investment));
}

} // namespace QuoteDesk

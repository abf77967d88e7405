#include "desk/MainWindow.h"

#include "catalogue/CatalogueProviders.h"
#include "desk/Appearance.h"

#include "data/Format.h"
#include "toolkit/TApplication.h"

#include <QButtonGroup>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include <algorithm>

namespace QuoteDesk
{

MainWindow::MainWindow(const CatalogueDatabase &catalogue, CatalogueProviders &providers,
                       const Options &options)
    : m_providers(providers), m_products(catalogue.products()), m_investment(options.amount),
      m_lightPalette(QApplication::palette())
{
    setupUi(this);
    for (const Product &product : std::as_const(m_products))
        cbProduct->addItem(product.name, product.productID);
    if (options.productID)
        cbProduct->setCurrentIndex(cbProduct->findData(*options.productID));
    edAmount->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9, ]{0,16}([.][0-9]{0,2})?")), edAmount));
    showAmount();
    (options.byAmount ? rbAmount : rbPercent)->setChecked(true);
    fraFundAllocation->pnlHeaderCaption->setCaption(tr("  Fund allocation"));

    connect(actQuit, &QAction::triggered, this, &QWidget::close);
    connect(actDark, &QAction::toggled, this, &MainWindow::takeColours);
    actDark->setChecked(options.dark);

    // The frame sets itself up after its first paint; a quote handed over before that would be lost to it.
    connect(fraFundAllocation, &QuoteAllocation::initialized, this,
            [this] { GuardedCall([this] { startQuote(); }); });
}

MainWindow::~MainWindow() = default;

const Product &MainWindow::product() const
{
    return m_products.at(cbProduct->currentIndex());
}

void MainWindow::startQuote()
{
    if (m_ready)
        return;
    fraFundAllocation->Set_AllocByAmount(rbAmount->isChecked());
    fraFundAllocation->Set_InvestmentAmount(m_investment);
    showProduct();

    connect(cbProduct, &QComboBox::currentIndexChanged, this,
            [this] { GuardedCall([this] { showProduct(); }); });
    connect(rbAmount, &QRadioButton::toggled, this, [this] { GuardedCall([this] { takeMode(); }); });
    connect(edAmount, &QLineEdit::editingFinished, this, [this] { GuardedCall([this] { takeAmount(); }); });
    m_ready = true;
    Q_EMIT ready();
}

void MainWindow::showProduct()
{
    setWindowTitle(tr("%1 - Quote Desk").arg(product().name));
    fraFundAllocation->InfoText = tr("Funds for the %1").arg(product().name);
    const int before = fraFundAllocation->Get_FundCount();
    fraFundAllocation->Set_FundsPerProductDataSet(m_providers.fundPacket(product().productID));
    redisplayFunds();
    const int dropped = before - fraFundAllocation->Get_FundCount();
    if (dropped > 0)
        statusbar->showMessage(
            tr("%n fund(s) not offered by the %1 were taken out", nullptr, dropped).arg(product().name));
    else
        statusbar->clearMessage();
}

void MainWindow::redisplayFunds()
{
    TFunds funds = fraFundAllocation->Funds();
    fraFundAllocation->SetupFundAllocation(funds, product().productGroupID, m_providers.connection());
}

void MainWindow::takeMode()
{
    fraFundAllocation->Set_AllocByAmount(rbAmount->isChecked());
}

void MainWindow::takeAmount()
{
    QString text = edAmount->text();
    text.remove(u',').remove(u' ');
    Currency amount;
    if (!readInvestment(text, amount)) {
        statusbar->showMessage(tr("The investment is an amount from 0.00 to %1")
                                   .arg(FormatFloat(FormatMask::Thousands, maximumInvestment())));
        amount = m_investment;
    }
    if (amount != m_investment) {
        statusbar->clearMessage();
        m_investment = amount;
        fraFundAllocation->Set_InvestmentAmount(amount);
        // By percent the frame keeps the amounts that it has until each percentage is taken anew.
        if (!fraFundAllocation->Get_AllocByAmount())
            redisplayFunds();
    }
    showAmount();
}

void MainWindow::showAmount()
{
    edAmount->setText(FormatFloat(FormatMask::Thousands, m_investment));
}

void MainWindow::takeColours(bool dark)
{
    QApplication::setPalette(dark ? inverted(m_lightPalette) : m_lightPalette);
}

} // namespace QuoteDesk

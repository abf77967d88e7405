#pragma once

#include "catalogue/CatalogueDatabase.h"
#include "desk/Options.h"
#include "quote/QuoteAllocation.h"

#include "ui_MainWindow.h"

#include <QMainWindow>
#include <QPalette>

namespace QuoteDesk
{

class CatalogueProviders;

/// The quote page: product, investment, mode, and the allocation frame.
class MainWindow : public QMainWindow, public Ui::MainWindow
{
    Q_OBJECT
public:
    /// @p catalogue and @p providers must outlive the window. The page starts with the product, amount and
    /// mode of @p options; the product must exist.
    MainWindow(const CatalogueDatabase &catalogue, CatalogueProviders &providers, const Options &options);
    ~MainWindow() override;

    /// True once the allocation frame is set up and shows the quote.
    bool isReady() const noexcept { return m_ready; }
    const Product &product() const;
    Currency investment() const noexcept { return m_investment; } ///< rand

Q_SIGNALS:
    void ready();

private:
    void startQuote();
    void showProduct();
    void takeMode();
    void takeAmount();
    void showAmount();
    void redisplayFunds();
    void takeColours(bool dark);

    CatalogueProviders &m_providers;
    QList<Product> m_products;
    Currency m_investment;
    QPalette m_lightPalette;
    bool m_ready = false;
};

} // namespace QuoteDesk

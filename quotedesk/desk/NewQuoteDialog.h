#pragma once

#include "catalogue/CatalogueDatabase.h"
#include "store/Quote.h"

#include <QDialog>

class QListWidget;

namespace QuoteDesk
{

class ClientList;
class QuoteSession;

/// Asks for the product of a new quote and, if already known, its client.
class NewQuoteDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p session must outlive the dialog. @p productID is selected initially.
    NewQuoteDialog(QuoteSession &session, int productID, QWidget *parent);
    ~NewQuoteDialog() override;

    int productID() const;
    /// 0 while no client is selected.
    qint64 clientID() const;

    QListWidget *lbProducts;
    ClientList *list;

private:
    QuoteSession &m_session;
};

} // namespace QuoteDesk

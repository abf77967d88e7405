#pragma once

#include "catalogue/CatalogueDatabase.h"
#include "store/Quote.h"

#include <QDialog>

class QListWidget;
class QPushButton;

namespace QuoteDesk
{

class ClientList;
class QuoteSession;

/// Asks for the product of a new quote and, if already known, its client. A name that is not found becomes
/// the button for a new client.
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
    QString unknownName() const;
    void showButtons();
    void addClient();

    QuoteSession &m_session;
    QPushButton *m_newClient;
    QPushButton *m_begin;
};

} // namespace QuoteDesk

#pragma once

#include "store/QuoteStore.h"

#include <QPushButton>
#include <QWidget>

#include <optional>

class QListWidget;
class QScrollArea;

namespace QuoteDesk
{

class ClientList;
class QuoteSession;
class TextLabel;

/// The clients: a search, the list, and beside it the details and the quotes of the chosen client. Clients
/// are added, changed and deleted here. Every change is stored at once and appears in the session's list and
/// so in every open editor.
class ClientsPage : public QWidget
{
    Q_OBJECT
public:
    /// @p session must outlive the page.
    explicit ClientsPage(QuoteSession &session, QWidget *parent = nullptr);
    ~ClientsPage() override;

    ClientList *list() const { return m_list; }
    QListWidget *quotes() const { return m_quotes; }

    /// Shows the clients and, for the chosen one, the quotes among @p quotes.
    void setClients(const QList<Client> &clients);
    void setQuotes(const QList<QuoteSummary> &quotes);

    /// Asks for the details of a new client, starting with @p surname, and stores it. Returns its id, or 0
    /// when the user cancelled.
    static qint64 addClient(QuoteSession &session, QWidget *parent, const QString &surname = {});

    QPushButton *btnNew;
    QPushButton *btnEdit;
    QPushButton *btnDelete;

Q_SIGNALS:
    /// A client was added, changed or deleted, so the lists are out of date.
    void clientsChanged();
    /// A quote of the chosen client shall be opened.
    void quoteWanted(qint64 quoteID);

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makePreview();
    void showTexts();
    void showChosen();
    void adjustToWindow();
    const Client *chosen() const;
    void add();
    void edit();
    void remove();

    QuoteSession &m_session;
    ClientList *m_list;
    QList<Client> m_clients;
    QList<QuoteSummary> m_allQuotes;
    QWidget *m_preview = nullptr;
    TextLabel *m_name = nullptr;
    TextLabel *m_details = nullptr;
    TextLabel *m_quotesCaption = nullptr;
    QListWidget *m_quotes = nullptr;
};

} // namespace QuoteDesk

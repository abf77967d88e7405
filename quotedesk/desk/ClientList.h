#pragma once

#include "desk/SearchField.h"
#include "store/Quote.h"

#include "data/ClientDataSet.h"
#include "toolkit/TListView.h"

#include <QWidget>

class QLabel;

namespace QuoteDesk
{

class ListDelegate;

/// The clients with a search field that filters while the user types: every word must occur in a client's
/// names, identity number, telephone number or e-mail address.
class ClientList : public QWidget
{
    Q_OBJECT
public:
    explicit ClientList(QWidget *parent = nullptr);
    ~ClientList() override;

    /// The selected client stays selected when it is still listed.
    void setClients(const QList<Client> &clients);
    /// The id of the selected client; 0 for none.
    qint64 chosenClient();
    /// Selects a client, or none with 0; clears the search field when it hides the client.
    void chooseClient(qint64 clientID);

    SearchField *edFind;
    TListView *lvClients;

Q_SIGNALS:
    void clientChosen(); ///< the selection has changed
    void openWanted();   ///< double-click or Enter on the selected client

protected:
    void changeEvent(QEvent *event) override;

private:
    void showTexts();
    void showCount();
    void fill();
    qint64 clientOf(const TListItem *item);
    TListItem *itemOf(qint64 clientID);

    QLabel *m_count;
    ListDelegate *m_delegate;
    TClientDataSet m_rows;
    int m_all = 0;
    bool m_filling = false;
};

} // namespace QuoteDesk

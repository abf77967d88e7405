#pragma once

#include "store/Quote.h"

#include "data/ClientDataSet.h"
#include "toolkit/TListView.h"

#include <QLineEdit>
#include <QWidget>

class QLabel;

namespace QuoteDesk
{

/// The clients with a box that finds them as one types: every word of the box occurs in a client's names,
/// identity number, telephone number or e-mail address.
class ClientList : public QWidget
{
    Q_OBJECT
public:
    explicit ClientList(QWidget *parent = nullptr);
    ~ClientList() override;

    /// The chosen client stays chosen when it is still there.
    void setClients(const QList<Client> &clients);
    /// The number of the chosen client; 0 for none.
    qint64 chosenClient();
    /// Chooses a client, or none with 0; one that the box hides is shown by emptying it.
    void chooseClient(qint64 clientID);

    QLineEdit *edFind;
    TListView *lvClients;

Q_SIGNALS:
    void clientChosen(); ///< Another client is chosen, or none.
    void openWanted();   ///< The chosen client was double-clicked, or Enter pressed on it.

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    qint64 clientOf(const TListItem *item);
    TListItem *itemOf(qint64 clientID);

    QLabel *m_count;
    TClientDataSet m_rows;
    int m_all = 0;
    bool m_filling = false;
};

} // namespace QuoteDesk

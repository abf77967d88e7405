#include "desk/ClientsDialog.h"

#include "desk/ClientList.h"
#include "desk/ErrorDialog.h"
#include "quote/PlainText.h"
#include "quote/QuoteSession.h"
#include "quote/ServerWait.h"

#include "host/Clienteditfrm.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// Edits a copy, so that details that cannot be stored appear nowhere. Returns the client's id, or 0 when
/// cancelled.
qint64 editAndStore(const Client &client, QuoteSession &session, QWidget *parent)
{
    ListedClient copy(client);
    // After an error the dialog opens again with the entry.
    while (TfrmEditClient::EditClient(&copy, parent)) {
        Client stored = copy.client();
        if (attempt(parent, [&] {
                session.saveClient(stored, parent);
                session.putClient(stored);
            }))
            return stored.clientID;
        // With the id that the client may have got.
        copy.take(stored);
    }
    return 0;
}

} // namespace

ClientsDialog::ClientsDialog(QuoteSession &session, QWidget *parent)
    : QDialog(parent), m_session(session), m_list(new ClientList(this))
{
    setWindowTitle(tr("Clients"));
    auto *const buttons = new QDialogButtonBox(Qt::Vertical, this);
    QPushButton *const add = buttons->addButton(tr("&New ..."), QDialogButtonBox::ActionRole);
    m_edit = buttons->addButton(tr("&Edit ..."), QDialogButtonBox::ActionRole);
    m_remove = buttons->addButton(tr("&Delete"), QDialogButtonBox::ActionRole);
    buttons->addButton(QDialogButtonBox::Close);
    add->setObjectName(u"btnNew"_s);
    m_edit->setObjectName(u"btnEdit"_s);
    m_remove->setObjectName(u"btnDelete"_s);
    for (QAbstractButton *const button : buttons->buttons())
        static_cast<QPushButton *>(button)->setAutoDefault(false);

    auto *const layout = new QHBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    resize(720, 380);

    connect(add, &QPushButton::clicked, this, [this] { attempt(this, [this] { this->add(); }); });
    connect(m_edit, &QPushButton::clicked, this, [this] { attempt(this, [this] { edit(); }); });
    connect(m_remove, &QPushButton::clicked, this, [this] { attempt(this, [this] { remove(); }); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &ClientList::openWanted, this, [this] { attempt(this, [this] { edit(); }); });
    connect(m_list->edFind, &QLineEdit::returnPressed, this, [this] { attempt(this, [this] { edit(); }); });
    const auto enable = [this] {
        const bool chosen = m_list->chosenClient() != 0;
        m_edit->setEnabled(chosen);
        m_remove->setEnabled(chosen);
    };
    connect(m_list, &ClientList::clientChosen, this, enable);
    read();
    enable();
    m_list->setFocus();
}

ClientsDialog::~ClientsDialog() = default;

qint64 ClientsDialog::addClient(QuoteSession &session, QWidget *parent)
{
    return editAndStore({}, session, parent);
}

void ClientsDialog::read()
{
    m_list->setClients(fetch(m_session.store(), this, [](QuoteStore &store) { return store.clients(); }));
}

void ClientsDialog::add()
{
    if (const qint64 clientID = addClient(m_session, this)) {
        read();
        m_list->chooseClient(clientID);
    }
}

void ClientsDialog::edit()
{
    const qint64 clientID = m_list->chosenClient();
    if (clientID == 0)
        return;
    const Client client =
        fetch(m_session.store(), this, [clientID](QuoteStore &store) { return store.client(clientID); });
    if (editAndStore(client, m_session, this) != 0)
        read();
}

void ClientsDialog::remove()
{
    const qint64 clientID = m_list->chosenClient();
    if (clientID == 0)
        return;
    const Client client =
        fetch(m_session.store(), this, [clientID](QuoteStore &store) { return store.client(clientID); });
    const QString question = tr("Delete the client %1 %2?")
                                 .arg(shortText(client.firstNames), shortText(client.surname))
                                 .simplified();
    PlainBox box(QMessageBox::Question, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No, this);
    if (box.ask() != QMessageBox::Yes)
        return;
    const QList<Client> left = fetch(m_session.store(), this, [clientID](QuoteStore &store) {
        store.removeClient(clientID);
        return store.clients();
    });
    m_session.setClients(left);
    m_list->setClients(left);
}

} // namespace QuoteDesk

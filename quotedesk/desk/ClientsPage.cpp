#include "desk/ClientsPage.h"

#include "desk/ClientList.h"
#include "desk/ErrorDialog.h"
#include "desk/QuoteTable.h"
#include "look/GlyphLabel.h"
#include "look/Kinds.h"
#include "look/TextLabel.h"
#include "quote/PlainText.h"
#include "quote/QuoteSession.h"
#include "quote/ServerWait.h"
#include "quote/ShownNumbers.h"

#include "dataviews/ill_Misc.h"
#include "host/Clienteditfrm.h"
#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int PreviewWidth = 316;
/// Narrower windows have no room for more than the list and its commands.
constexpr int WideWindow = 1100;

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

ClientsPage::ClientsPage(QuoteSession &session, QWidget *parent)
    : QWidget(parent), btnNew(new QPushButton(this)), btnEdit(new QPushButton(this)),
      btnDelete(new QPushButton(this)), m_session(session), m_list(new ClientList(this))
{
    btnNew->setObjectName(u"btnNew"_s);
    btnEdit->setObjectName(u"btnEdit"_s);
    btnDelete->setObjectName(u"btnDelete"_s);
    btnNew->setIcon(GlyphIcon(u"new"_s));
    btnEdit->setIcon(GlyphIcon(u"edit"_s));
    btnDelete->setIcon(GlyphIcon(u"remove"_s));

    auto *const commands = new QHBoxLayout;
    commands->setSpacing(LookSpace::Small);
    for (QPushButton *const button : {btnNew, btnEdit, btnDelete}) {
        button->setAutoDefault(false);
        commands->addWidget(button);
    }
    commands->addStretch();
    auto *const left = new QVBoxLayout;
    left->setContentsMargins(LookSpace::Large, LookSpace::Medium, LookSpace::Large, LookSpace::Small);
    left->setSpacing(LookSpace::Medium);
    left->addLayout(commands);
    left->addWidget(m_list, 1);
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(left, 1);
    layout->addWidget(makePreview());
    setTabOrder(m_list->lvClients, btnNew);
    setTabOrder(btnNew, btnEdit);
    setTabOrder(btnEdit, btnDelete);
    setTabOrder(btnDelete, m_quotes);

    connect(btnNew, &QPushButton::clicked, this, [this] { attempt(this, [this] { add(); }); });
    connect(btnEdit, &QPushButton::clicked, this, [this] { attempt(this, [this] { edit(); }); });
    connect(btnDelete, &QPushButton::clicked, this, [this] { attempt(this, [this] { remove(); }); });
    connect(m_list, &ClientList::openWanted, this, [this] { attempt(this, [this] { edit(); }); });
    connect(m_list->edFind, &QLineEdit::returnPressed, this, [this] { attempt(this, [this] { edit(); }); });
    connectGuarded(m_list, &ClientList::clientChosen, this, &ClientsPage::showChosen);
    connectGuarded(m_quotes, &QListWidget::itemActivated, this, [this](const QListWidgetItem *item) {
        Q_EMIT quoteWanted(item->data(Qt::UserRole).toLongLong());
    });
    setFocusProxy(m_list);
    showTexts();
    showChosen();
}

ClientsPage::~ClientsPage() = default;

QWidget *ClientsPage::makePreview()
{
    m_preview = new QWidget(this);
    m_preview->setAutoFillBackground(true);
    m_preview->setBackgroundRole(QPalette::Base);
    m_name = TextLabel::wrapped(LookFont::Heading, LookColor::Text, m_preview);
    m_details = TextLabel::wrapped(LookFont::Body, LookColor::Text2, m_preview);
    m_quotesCaption = TextLabel::wrapped(LookFont::Caption, LookColor::Text2, m_preview);
    m_quotes = new QListWidget(m_preview);
    m_quotes->setObjectName(u"lvQuotesOfClient"_s);
    m_quotes->setFrameShape(QFrame::NoFrame);
    m_quotes->setWordWrap(true);
    m_quotes->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_quotesCaption->setBuddy(m_quotes);
    auto *const layout = new QVBoxLayout(m_preview);
    layout->setContentsMargins(LookSpace::Large, LookSpace::Large, LookSpace::Large, LookSpace::Large);
    layout->setSpacing(LookSpace::Small);
    layout->addWidget(m_name);
    layout->addWidget(m_details);
    layout->addSpacing(LookSpace::Medium);
    layout->addWidget(m_quotesCaption);
    layout->addWidget(m_quotes, 1);
    return m_preview;
}

void ClientsPage::showTexts()
{
    btnNew->setText(tr("Ne&w ..."));
    btnEdit->setText(tr("E&dit ..."));
    btnDelete->setText(tr("De&lete"));
    m_quotes->setAccessibleName(tr("Quotes of the client"));
    m_quotes->setToolTip(tr("Enter or a double click opens the quote"));
    setAccessibleName(tr("Clients"));
}

void ClientsPage::setClients(const QList<Client> &clients)
{
    if (clients != m_clients) {
        m_clients = clients;
        m_list->setClients(clients);
    }
    showChosen();
}

void ClientsPage::setQuotes(const QList<QuoteSummary> &quotes)
{
    m_allQuotes = quotes;
    showChosen();
}

const Client *ClientsPage::chosen() const
{
    const qint64 clientID = m_list->chosenClient();
    const auto found = std::find_if(m_clients.cbegin(), m_clients.cend(), [clientID](const Client &client) {
        return clientID != 0 && client.clientID == clientID;
    });
    return found == m_clients.cend() ? nullptr : &*found;
}

/// Shows the details and quotes of the chosen client.
void ClientsPage::showChosen()
{
    const Client *const client = chosen();
    btnEdit->setEnabled(client != nullptr);
    btnDelete->setEnabled(client != nullptr);
    m_quotes->clear();
    m_quotesCaption->setVisible(client != nullptr);
    m_quotes->setVisible(client != nullptr);
    if (!client) {
        m_name->clear();
        m_details->setText(tr("The chosen client appears here."));
        return;
    }
    m_name->setText(wrappedText(shortText(misc_CalcFullName(client->surname, client->firstNames))));
    QStringList lines;
    const auto add = [&lines](const QString &line, const QString &value) {
        if (!value.isEmpty())
            lines.append(line.arg(shortText(value)));
    };
    add(tr("ID number %1"), client->idNumber);
    add(tr("Born %1"), QLocale().toString(client->dateOfBirth, u"d MMMM yyyy"_s));
    add(tr("Telephone %1"), client->telephone);
    add(tr("E-mail %1"), client->eMail);
    m_details->setText(lines.isEmpty() ? tr("No details are known yet.") : wrappedText(lines.join(u'\n')));
    for (const QuoteSummary &quote : std::as_const(m_allQuotes)) {
        if (quote.clientID != client->clientID)
            continue;
        const QString title = quote.description.trimmed().isEmpty() ? quote.product : quote.description;
        auto *const item = new QListWidgetItem(
            tr("%1\nR %2, %3", "title, amount, state")
                .arg(shortText(title), shownMoney(quote.amount), stateText(stateOf(quote))),
            m_quotes);
        item->setData(Qt::UserRole, quote.quoteID);
        item->setToolTip(tipText(shortText(quote.product)));
    }
    m_quotesCaption->setText(tr("%n quote(s)", nullptr, m_quotes->count()));
}

qint64 ClientsPage::addClient(QuoteSession &session, QWidget *parent, const QString &surname)
{
    Client start;
    start.surname = surname;
    return editAndStore(start, session, parent);
}

void ClientsPage::add()
{
    if (const qint64 clientID = addClient(m_session, this)) {
        Q_EMIT clientsChanged();
        m_list->chooseClient(clientID);
    }
}

void ClientsPage::edit()
{
    const qint64 clientID = m_list->chosenClient();
    if (clientID == 0)
        return;
    const Client client =
        fetch(m_session.store(), this, [clientID](QuoteStore &store) { return store.client(clientID); });
    if (editAndStore(client, m_session, this) != 0)
        Q_EMIT clientsChanged();
}

void ClientsPage::remove()
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
    fetch(m_session.store(), this, [clientID](QuoteStore &store) { store.removeClient(clientID); });
    Q_EMIT clientsChanged();
}

void ClientsPage::adjustToWindow()
{
    m_preview->setFixedWidth(besideFont(PreviewWidth, fontMetrics()));
    m_preview->setVisible(window()->width() >= WideWindow);
}

void ClientsPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    GuardedCall([this] {
        showTexts();
        showChosen();
    });
}

void ClientsPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    adjustToWindow();
}

void ClientsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    adjustToWindow();
}

} // namespace QuoteDesk

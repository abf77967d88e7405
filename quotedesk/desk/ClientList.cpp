#include "desk/ClientList.h"

#include "desk/ListDelegate.h"
#include "desk/QuoteTable.h"
#include "quote/PlainText.h"

#include "dataviews/ill_Misc.h"
#include "toolkit/TApplication.h"

#include <QEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

TDataPacket clientTable(const QList<Client> &clients)
{
    TTableBuilder builder({{u"ClientID"_s, TFieldType::LargeInt},
                           {u"Name"_s, TFieldType::String},
                           {u"IDNumber"_s, TFieldType::String},
                           {u"Telephone"_s, TFieldType::String},
                           {u"EMail"_s, TFieldType::String},
                           {u"Words"_s, TFieldType::String}});
    builder.Reserve(static_cast<int>(clients.size()));
    for (const Client &client : clients) {
        const QString name = misc_CalcFullName(client.surname, client.firstNames);
        const QStringList words{name, client.firstNames, client.idNumber, client.telephone, client.eMail};
        builder.AddRow({client.clientID, shortText(name), shortText(client.idNumber),
                        shortText(client.telephone), shortText(client.eMail), searchable(words.join(u'\n'))});
    }
    return TDataPacket(builder.Finish());
}

} // namespace

ClientList::ClientList(QWidget *parent)
    : QWidget(parent), edFind(new SearchField(this)), lvClients(new TListView(this)),
      m_count(new QLabel(this))
{
    edFind->setObjectName(u"edFind"_s);
    lvClients->setObjectName(u"lvClients"_s);
    lvClients->SetReadOnly(true);
    lvClients->AddColumn(QString(), 190);
    lvClients->AddColumn(QString(), 110);
    lvClients->AddColumn(QString(), 100);
    lvClients->AddColumn(QString(), 140);

    m_delegate = new ListDelegate(lvClients);
    m_count->setTextFormat(Qt::PlainText);
    showTexts();

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edFind);
    layout->addWidget(lvClients, 1);
    layout->addWidget(m_count);
    setFocusProxy(edFind);

    connectGuarded(edFind, &QLineEdit::textChanged, this, [this] { fill(); });
    connectGuarded(lvClients, &TListView::Resized, this, [this] { misc_SizeListViewColumns(*lvClients); });
    connectGuarded(lvClients, &QAbstractItemView::activated, this, [this] { Q_EMIT openWanted(); });
    connectGuarded(lvClients->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_filling)
            Q_EMIT clientChosen();
    });
    connectGuarded(edFind, &SearchField::left, this, [this] {
        lvClients->setFocus(Qt::TabFocusReason);
        if (!lvClients->SelectedItem())
            misc_ListViewFocus(*lvClients);
    });
}

ClientList::~ClientList() = default;

void ClientList::setClients(const QList<Client> &clients)
{
    const qint64 chosen = chosenClient();
    misc_FreeListBookMarks(*lvClients, &m_rows);
    misc_ClearListView(lvClients);
    m_all = static_cast<int>(clients.size());
    m_rows.SetData(clientTable(clients).ToVariant());
    fill();
    if (TListItem *const item = itemOf(chosen))
        lvClients->SetSelected(item);
}

void ClientList::fill()
{
    if (!m_rows.Active())
        return;
    const qint64 chosen = chosenClient();
    {
        const QScopedValueRollback filling(m_filling, true);
        misc_BuildListView(*lvClients, &m_rows, wordFilter(edFind->text()),
                           u"Name; IDNumber; Telephone; EMail"_s, u"0; 0; 0; 0"_s, {}, false, -1, {});
    }
    TListItem *item = itemOf(chosen);
    // A search selects the first client found; without a search none is selected.
    if (!item && !edFind->text().trimmed().isEmpty() && lvClients->Items().Count() > 0)
        item = lvClients->Items()[0];
    lvClients->SetSelected(item);
    if (item) {
        lvClients->SetFocused(item);
        item->MakeVisible();
    }
    m_delegate->setWords(searchable(edFind->text()).split(u' ', Qt::SkipEmptyParts));
    showCount();
    Q_EMIT clientChosen();
}

void ClientList::showCount()
{
    const int shown = lvClients->Items().Count();
    m_count->setText(shown == m_all ? tr("%n client(s)", nullptr, m_all)
                                    : tr("%1 of %n client(s)", nullptr, m_all).arg(shown));
    edFind->setHits(tr("%1 of %2", "number of hits").arg(shown).arg(m_all));
}

void ClientList::showTexts()
{
    edFind->setPlaceholderText(tr("name, ID number, telephone ..."));
    edFind->setToolTip(tr("Shows the clients in whose details all these words occur"));
    edFind->setAccessibleName(tr("Find clients"));
    lvClients->setAccessibleName(tr("Clients"));
    const std::array captions{tr("Client"), tr("ID number"), tr("Telephone"), tr("E-mail")};
    for (int column = 0; column < lvClients->ColumnCount(); ++column)
        lvClients->SetColumnCaption(column, captions.at(static_cast<std::size_t>(column)));
    showCount();
}

qint64 ClientList::clientOf(const TListItem *item)
{
    if (!item || !m_rows.BookmarkValid(item->Data()))
        return 0;
    m_rows.GotoBookmark(item->Data());
    return m_rows.FieldByName(u"ClientID"_s)->AsVariant().toLongLong();
}

TListItem *ClientList::itemOf(qint64 clientID)
{
    if (clientID == 0)
        return nullptr;
    for (int i = 0; i < lvClients->Items().Count(); ++i) {
        if (clientOf(lvClients->Items()[i]) == clientID)
            return lvClients->Items()[i];
    }
    return nullptr;
}

qint64 ClientList::chosenClient()
{
    return clientOf(lvClients->SelectedItem());
}

void ClientList::chooseClient(qint64 clientID)
{
    if (clientID != 0 && !itemOf(clientID))
        edFind->clear();
    TListItem *const item = itemOf(clientID);
    lvClients->SetSelected(item);
    if (item)
        item->MakeVisible();
}

void ClientList::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        GuardedCall([this] { showTexts(); });
}

} // namespace QuoteDesk

#include "desk/NewQuoteDialog.h"

#include "desk/ClientList.h"
#include "desk/ClientsPage.h"
#include "desk/ErrorDialog.h"
#include "quote/PlainText.h"
#include "quote/ProductEditors.h"
#include "quote/ServerWait.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

NewQuoteDialog::NewQuoteDialog(QuoteSession &session, int productID, QWidget *parent)
    : QDialog(parent), lbProducts(new QListWidget(this)), list(new ClientList(this)), m_session(session)
{
    setWindowTitle(tr("New quote"));
    auto *const lblProduct = new QLabel(tr("&Product"), this);
    lblProduct->setBuddy(lbProducts);
    lbProducts->setObjectName(u"lbProducts"_s);
    lbProducts->setAccessibleName(tr("Product"));
    for (const Product &product : session.catalogue().products()) {
        if (!hasProductEditor(product.productID))
            continue;
        auto *const item = new QListWidgetItem(shortText(product.name), lbProducts);
        item->setData(Qt::UserRole, product.productID);
        if (product.productID == productID || lbProducts->count() == 1)
            lbProducts->setCurrentItem(item);
    }
    lbProducts->setMaximumHeight(lbProducts->sizeHintForRow(0) * 5);

    auto *const lblClient = new QLabel(tr("&Client (can be chosen later)"), this);
    lblClient->setBuddy(list->edFind);
    list->setClients(fetch(session.store(), parent, [](QuoteStore &quotes) { return quotes.clients(); }));

    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton *const addClient = buttons->addButton(tr("&New client ..."), QDialogButtonBox::ActionRole);
    addClient->setObjectName(u"btnNewClient"_s);
    addClient->setAutoDefault(false);
    QPushButton *const begin = buttons->button(QDialogButtonBox::Ok);
    begin->setText(tr("&Begin"));
    begin->setDefault(true);
    begin->setEnabled(lbProducts->currentItem() != nullptr);

    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(lblProduct);
    layout->addWidget(lbProducts);
    layout->addWidget(lblClient);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    resize(560, 460);

    connect(lbProducts, &QListWidget::currentItemChanged, begin,
            [begin](const QListWidgetItem *item) { begin->setEnabled(item != nullptr); });
    connect(lbProducts, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(list, &ClientList::openWanted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(addClient, &QPushButton::clicked, this, [this] {
        attempt(this, [this] {
            if (const qint64 made = ClientsPage::addClient(m_session, this)) {
                list->setClients(
                    fetch(m_session.store(), this, [](QuoteStore &quotes) { return quotes.clients(); }));
                list->chooseClient(made);
            }
        });
    });
    lbProducts->setFocus();
}

NewQuoteDialog::~NewQuoteDialog() = default;

int NewQuoteDialog::productID() const
{
    const QListWidgetItem *const item = lbProducts->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

qint64 NewQuoteDialog::clientID() const
{
    return list->chosenClient();
}

} // namespace QuoteDesk

#include "quote/QuoteSession.h"

#include "quote/PlainText.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/CatalogueProviders.h"

#include "funds/frm_FundSelector.h"
#include "host/Zelutils.h"
#include "toolkit/TApplication.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto masterClients = "MASTERCLIENTS";

// The room for details, in letters.
constexpr int detailsColumns = 100;
constexpr int detailsLines = 20;

bool askInBox(QWidget *parent, const QString &question)
{
    PlainBox box(QMessageBox::Question, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
                 parent);
    return box.ask() == QMessageBox::Yes;
}

void tellInBox(QWidget *parent, const QString &message, const QString &details)
{
    if (details.isEmpty()) {
        PlainBox(QMessageBox::Information, message, QMessageBox::Ok, QMessageBox::Ok, parent).ask();
        return;
    }
    // Many lines, some of them long, each with its reason: a window that can be made larger, and read at
    // once.
    QDialog dialog(parent);
    dialog.setWindowTitle(u"Quote Desk"_s);
    auto *const label = new QLabel(wrappedText(message));
    label->setObjectName(u"lblMessage"_s);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    auto *const lines = new QPlainTextEdit(details);
    lines->setObjectName(u"edDetails"_s);
    lines->setAccessibleName(QuoteSession::tr("Details"));
    lines->setReadOnly(true);
    lines->setTabChangesFocus(true);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton *const copy = buttons->addButton(QuoteSession::tr("C&opy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"btnCopy"_s);
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    auto *const layout = new QVBoxLayout(&dialog);
    layout->addWidget(label);
    layout->addWidget(lines, 1);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(copy, &QPushButton::clicked, lines, [message, details] {
        QGuiApplication::clipboard()->setText(message + u'\n' + details);
    });
    dialog.resize(QSize(detailsColumns * dialog.fontMetrics().averageCharWidth(),
                        detailsLines * dialog.fontMetrics().lineSpacing())
                      .boundedTo(dialog.screen()->availableSize() * 9 / 10));
    buttons->button(QDialogButtonBox::Close)->setFocus();
    dialog.exec();
}

bool choosePrinterInDialog(QPrinter &printer, QWidget *parent)
{
    QPrintDialog dialog(&printer, parent);
    return dialog.exec() == QDialog::Accepted;
}

QString chooseFileInDialog(QWidget *parent, const QString &suggestion)
{
    QFileDialog dialog(parent, QuoteSession::tr("Save as PDF"), {}, QuoteSession::tr("PDF files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // A name that is typed without it would be a file that no program opens.
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.selectFile(suggestion);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

} // namespace

ListedClient::ListedClient(const Client &client)
{
    take(client);
}

void ListedClient::take(const Client &client)
{
    m_client = client;
    Set_Surname(client.surname);
    Set_FirstNames(client.firstNames);
    Set_IDNumber(client.idNumber);
    Set_DateOfBirth(client.dateOfBirth);
    Set_EMail(client.eMail);
    Set_Telephone(client.telephone);
}

Client ListedClient::client() const
{
    Client client = m_client;
    client.surname = Get_Surname();
    client.firstNames = Get_FirstNames();
    client.idNumber = Get_IDNumber();
    client.dateOfBirth = Get_DateOfBirth();
    client.eMail = Get_EMail();
    client.telephone = Get_Telephone();
    return client;
}

QuoteSession::QuoteSession(const CatalogueDatabase &catalogue, CatalogueProviders &providers)
    : openUrl([](const QUrl &url) { return QDesktopServices::openUrl(url); }), askYesNo(askInBox),
      tell(tellInBox), choosePrinter(choosePrinterInDialog), chooseFile(chooseFileInDialog),
      m_catalogue(catalogue), m_providers(providers), m_clients(std::make_unique<TBaseClients>())
{
    ZelSystem().Items().SetItem(QLatin1String(masterClients), m_clients.get());
    connect(TfrmFundSelector::Requests(), &TFundSelectorRequests::FundSheetRequested, this,
            [this](int, const QString &address) {
                GuardedCall([&] { openFactSheet(QApplication::activeWindow(), {}, address); });
            });
}

QuoteSession::~QuoteSession()
{
    ZelSystem().Items().Remove(QLatin1String(masterClients));
}

Product QuoteSession::product(int productID) const
{
    const QList<Product> products = m_catalogue.products();
    const auto found = std::find_if(products.cbegin(), products.cend(), [productID](const Product &product) {
        return product.productID == productID;
    });
    if (found == products.cend())
        throw CatalogueError(tr("The catalogue has no product %1").arg(productID));
    return *found;
}

void QuoteSession::setClients(const QList<Client> &clients)
{
    QHash<qint64, ListedClient *> gone;
    for (int i = 0; i < m_clients->Count(); ++i) {
        auto *const listed = static_cast<ListedClient *>(m_clients->Client(i));
        gone.insert(listed->clientID(), listed);
    }
    m_clients->BeginUpdate();
    for (const Client &client : clients) {
        if (ListedClient *const listed = gone.take(client.clientID))
            listed->take(client);
        else
            m_clients->Add(std::make_unique<ListedClient>(client));
    }
    for (ListedClient *const listed : std::as_const(gone))
        m_clients->Delete(listed);
    m_clients->EndUpdate();
}

ListedClient *QuoteSession::putClient(const Client &client)
{
    if (ListedClient *const listed = findClient(client.clientID)) {
        listed->take(client);
        return listed;
    }
    return static_cast<ListedClient *>(m_clients->Add(std::make_unique<ListedClient>(client)));
}

ListedClient *QuoteSession::findClient(qint64 clientID) const
{
    if (clientID == 0)
        return nullptr;
    for (int i = 0; i < m_clients->Count(); ++i) {
        auto *const listed = static_cast<ListedClient *>(m_clients->Client(i));
        if (listed->clientID() == clientID)
            return listed;
    }
    return nullptr;
}

void QuoteSession::openFactSheet(QWidget *parent, const QString &fund, const QString &address) const
{
    if (address.isEmpty()) {
        tell(parent, tr("There is no fact sheet for the %1").arg(shortText(fund)), {});
        return;
    }
    // A catalogue comes from elsewhere: it may name pages, not programs or files of this computer.
    const QUrl url(address, QUrl::StrictMode);
    const bool isPage =
        url.isValid() && !url.host().isEmpty() && (url.scheme() == u"https"_s || url.scheme() == u"http"_s);
    if (!isPage)
        tell(parent, tr("The fact sheet's address is no address of a web page"), address);
    else if (!openUrl(url))
        tell(parent, tr("No program could be found that opens the fact sheet"), address);
}

} // namespace QuoteDesk

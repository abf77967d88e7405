#include "desk/HelpWindow.h"

#include "desk/ClientsDialog.h"
#include "desk/NewQuoteDialog.h"
#include "quote/QuoteForm.h"

#include "funds/frm_FundSelector.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Key {
    QString keys;
    QString text;
};

struct Page {
    QString title;
    QString purpose;
    QList<Key> keys;
};

constexpr Qt::KeyboardModifiers Ctrl = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers Both = Qt::ControlModifier | Qt::ShiftModifier;

QString key(Qt::Key code, Qt::KeyboardModifiers modifiers = {})
{
    return QKeySequence(QKeyCombination(modifiers, code)).toString(QKeySequence::NativeText);
}

/// The mnemonic letter of a button in the fund selector in the current language.
QString letter(const char *caption)
{
    return QKeySequence::mnemonic(QCoreApplication::translate("TfraFundSelector", caption))
        .toString(QKeySequence::NativeText);
}

QList<Key> keysOfQuote()
{
    return {{key(Qt::Key_S, Ctrl), HelpWindow::tr("Save the quote")},
            {key(Qt::Key_P, Ctrl), HelpWindow::tr("Print the quote")},
            {key(Qt::Key_P, Both), HelpWindow::tr("Save the quote as a PDF file")},
            {key(Qt::Key_PageUp, Ctrl), HelpWindow::tr("Go to the previous page")},
            {key(Qt::Key_PageDown, Ctrl), HelpWindow::tr("Go to the next page")},
            {key(Qt::Key_W, Ctrl), HelpWindow::tr("Close the quote")},
            {key(Qt::Key_Home, Qt::AltModifier), HelpWindow::tr("Back to the start page")}};
}

Page startPage()
{
    return {HelpWindow::tr("Start page"),
            HelpWindow::tr("The list shows all quotes. Type a few words to find one. The products and "
                           "the fund catalogue "
                           "stand at the left; a double click on a product begins a quote for it."),
            {{key(Qt::Key_N, Ctrl), HelpWindow::tr("Begin a quote")},
             {key(Qt::Key_Return), HelpWindow::tr("Open the chosen quote")},
             {key(Qt::Key_D, Ctrl), HelpWindow::tr("Make a copy of the chosen quote")},
             {key(Qt::Key_Delete), HelpWindow::tr("Delete the chosen quote")},
             {key(Qt::Key_Z, Ctrl), HelpWindow::tr("Undo the last deletion")},
             {key(Qt::Key_B, Both), HelpWindow::tr("Bring a deleted quote back")},
             {key(Qt::Key_F, Ctrl), HelpWindow::tr("Find quotes")},
             {key(Qt::Key_F5), HelpWindow::tr("Refresh the list of quotes")},
             {key(Qt::Key_L, Both), HelpWindow::tr("Clients")},
             {key(Qt::Key_I, Both), HelpWindow::tr("Import a catalogue")}}};
}

Page detailsPage()
{
    return {HelpWindow::tr("Details of a quote"),
            HelpWindow::tr(
                "Choose the investor and enter the details of the product. What is missing or wrong is said "
                "below the fields."),
            QList<Key>{{key(Qt::Key_D, Both), HelpWindow::tr("Change the investor's details")},
                       {key(Qt::Key_N, Both), HelpWindow::tr("Enter a new client")}} +
                keysOfQuote()};
}

Page incomePage()
{
    return {HelpWindow::tr("Income of a quote"),
            HelpWindow::tr("Enter the yearly income as a percentage of the capital or as an amount, and "
                           "how it is paid."),
            keysOfQuote()};
}

Page fundsPage()
{
    return {
        HelpWindow::tr("Funds of a quote"),
        HelpWindow::tr("Enter the investment, choose the funds and split the investment over them by percent "
                       "or by amount. The line below the grid says what remains; red means that more is "
                       "allocated than the investment."),
        QList<Key>{{key(Qt::Key_F, Ctrl), HelpWindow::tr("Choose funds")},
                   {key(Qt::Key_Delete), HelpWindow::tr("Remove the fund of the current row")},
                   {key(Qt::Key_Delete, Both), HelpWindow::tr("Remove all funds")},
                   {key(Qt::Key_L, Ctrl), HelpWindow::tr("Allocate the rest over the rows at zero")},
                   {key(Qt::Key_R, Ctrl), HelpWindow::tr("Set all rows to zero")},
                   {key(Qt::Key_C, Both), HelpWindow::tr("Copy the funds for a spreadsheet")},
                   {key(Qt::Key_V, Both), HelpWindow::tr("Paste funds from a spreadsheet")},
                   {key(Qt::Key_H, Ctrl), HelpWindow::tr("Open the fact sheet of the current row's fund")},
                   {key(Qt::Key_Z, Ctrl), HelpWindow::tr("Undo the last step")},
                   {key(Qt::Key_Y, Ctrl), HelpWindow::tr("Redo the step")}} +
            keysOfQuote()};
}

Page summaryPage()
{
    return {HelpWindow::tr("Summary of a quote"),
            HelpWindow::tr("The quote as its client will read it, with what is still to be completed. A "
                           "quote that is not "
                           "complete is printed as a draft."),
            keysOfQuote()};
}

Page newQuotePage()
{
    return {HelpWindow::tr("New quote"),
            HelpWindow::tr("Choose the product, find the client and begin. The client can be chosen later."),
            {{key(Qt::Key_Down), HelpWindow::tr("Move from the search box to the clients found")},
             {key(Qt::Key_Return), HelpWindow::tr("Begin the quote")},
             {key(Qt::Key_Escape), HelpWindow::tr("Close and begin no quote")}}};
}

Page clientsPage()
{
    return {HelpWindow::tr("Clients"),
            HelpWindow::tr(
                "Find a client by any words of the details, change the details, or add or delete a client. A "
                "client with quotes cannot be deleted."),
            {{key(Qt::Key_Down), HelpWindow::tr("Move from the search box to the clients found")},
             {key(Qt::Key_Return), HelpWindow::tr("Change the chosen client's details")},
             {key(Qt::Key_Escape), HelpWindow::tr("Close")}}};
}

Page fundSelectorPage()
{
    return {HelpWindow::tr("Fund Selector"),
            HelpWindow::tr("Choose funds in the tree at the left and add them to the list at the right. "
                           "Select uses the list for the quote."),
            {{key(Qt::Key_Tab), HelpWindow::tr("Move from the tree to the list and on")},
             {key(Qt::Key_Right), HelpWindow::tr("Expand a group")},
             {letter("&Add"), HelpWindow::tr("Add the fund to the list")},
             {letter("&Remove"), HelpWindow::tr("Remove the fund from the list")},
             {letter("&Select"), HelpWindow::tr("Use the list for the quote")},
             {key(Qt::Key_Escape), HelpWindow::tr("Close and change nothing")}}};
}

Page dialogPage()
{
    return {HelpWindow::tr("This window"),
            HelpWindow::tr("Answer the question, or close the window to change nothing."),
            {{key(Qt::Key_Tab), HelpWindow::tr("Move to the next field or button")},
             {key(Qt::Key_Return), HelpWindow::tr("Press the button with the focus")},
             {key(Qt::Key_Escape), HelpWindow::tr("Close")}}};
}

Page pageOf(HelpWindow::Topic topic)
{
    using Topic = HelpWindow::Topic;
    switch (topic) {
    case Topic::Start:
        return startPage();
    case Topic::Details:
        return detailsPage();
    case Topic::Income:
        return incomePage();
    case Topic::Funds:
        return fundsPage();
    case Topic::Summary:
        return summaryPage();
    case Topic::NewQuote:
        return newQuotePage();
    case Topic::Clients:
        return clientsPage();
    case Topic::FundSelector:
        return fundSelectorPage();
    case Topic::Dialog:
        break;
    }
    return dialogPage();
}

} // namespace

HelpWindow::Topic HelpWindow::topicOf(const QWidget *widget)
{
    for (const QWidget *at = widget; at; at = at->parentWidget()) {
        if (qobject_cast<const NewQuoteDialog *>(at))
            return Topic::NewQuote;
        if (qobject_cast<const ClientsDialog *>(at))
            return Topic::Clients;
        if (qobject_cast<const TfrmFundSelector *>(at))
            return Topic::FundSelector;
        if (qobject_cast<const QDialog *>(at))
            return Topic::Dialog;
        if (const auto *const form = qobject_cast<const QuoteForm *>(at)) {
            switch (static_cast<QuoteForm::Page>(form->pcPages->currentIndex())) {
            case QuoteForm::Page::Details:
                return Topic::Details;
            case QuoteForm::Page::Income:
                return Topic::Income;
            case QuoteForm::Page::Funds:
                return Topic::Funds;
            case QuoteForm::Page::Summary:
                return Topic::Summary;
            }
        }
    }
    return Topic::Start;
}

HelpWindow::HelpWindow(Topic topic, QWidget *parent) : QDialog(parent), m_topic(topic)
{
    const Page page = pageOf(topic);
    setWindowTitle(tr("Help: %1").arg(page.title));
    auto *const purpose = new QLabel(page.purpose);
    purpose->setObjectName(u"lblPurpose"_s);
    purpose->setTextFormat(Qt::PlainText);
    purpose->setWordWrap(true);
    auto *const list = new QTreeWidget;
    list->setObjectName(u"lstKeys"_s);
    list->setAccessibleName(tr("Keys"));
    list->setHeaderLabels({tr("Key"), tr("What it does")});
    list->setRootIsDecorated(false);
    list->setAlternatingRowColors(true);
    QList<Key> keys = page.keys;
    keys.append({QKeySequence(Qt::Key_F1).toString(QKeySequence::NativeText), tr("This help")});
    for (const Key &each : std::as_const(keys))
        new QTreeWidgetItem(list, {each.keys, each.text});
    list->setCurrentItem(list->topLevelItem(0));
    list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(purpose);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    const int rows = static_cast<int>(keys.size()) + 2;
    resize(QSize(70 * fontMetrics().averageCharWidth(),
                 rows * std::max(list->sizeHintForRow(0), 1) + 9 * fontMetrics().lineSpacing())
               .boundedTo(screen()->availableSize() * 9 / 10));
    list->setFocus();
}

HelpWindow::~HelpWindow() = default;

HelpKey::HelpKey(QObject *parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

HelpKey::~HelpKey() = default;

bool HelpKey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    const auto *const key = static_cast<QKeyEvent *>(event);
    auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier || !dialog ||
        qobject_cast<HelpWindow *>(dialog))
        return QObject::eventFilter(watched, event);
    auto *const help = new HelpWindow(HelpWindow::topicOf(dialog), dialog);
    help->setAttribute(Qt::WA_DeleteOnClose);
    help->open();
    return true;
}

} // namespace QuoteDesk

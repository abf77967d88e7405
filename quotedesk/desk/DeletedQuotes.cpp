#include "desk/DeletedQuotes.h"

#include "catalogue/CatalogueDatabase.h"
#include "desk/DialogFoot.h"
#include "desk/ErrorDialog.h"
#include "quote/PlainText.h"
#include "quote/QuoteSession.h"
#include "quote/ServerWait.h"
#include "quote/ShownNumbers.h"

#include <QDialogButtonBox>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int AmountColumn = 3;
constexpr int WidestColumn = 240;

QTreeWidgetItem *rowOf(const DeletedQuote &deleted, const QString &product)
{
    const QuoteSummary &quote = deleted.quote;
    const QString when = QLocale().toString(deleted.deleted.toLocalTime(), u"yyyy-MM-dd HH:mm"_s);
    auto *const row =
        new QTreeWidgetItem({shortText(quote.client), shortText(product), shortText(quote.description),
                             shownMoney(quote.amount), when, shortText(deleted.deletedBy)});
    row->setData(0, Qt::UserRole, quote.quoteID);
    row->setTextAlignment(AmountColumn, Qt::AlignRight | Qt::AlignVCenter);
    for (int column = 0; column < row->columnCount(); ++column)
        row->setToolTip(column, tipText(row->text(column)));
    return row;
}

} // namespace

DeletedQuotesDialog::DeletedQuotesDialog(const QuoteSession &session, QWidget *parent)
    : QDialog(parent), list(new QTreeWidget(this)), m_session(session), m_message(new QLabel(this))
{
    setWindowTitle(tr("Deleted quotes"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);

    list->setObjectName(u"lvDeleted"_s);
    list->setAccessibleName(tr("Deleted quotes"));
    list->setHeaderLabels({tr("Client"), tr("Product"), tr("Description"), withCurrency(tr("Amount (R)")),
                           tr("Deleted"), tr("Deleted by")});
    list->headerItem()->setTextAlignment(AmountColumn, Qt::AlignRight | Qt::AlignVCenter);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);

    QDialogButtonBox *const buttons = makeButtons();
    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addWidget(m_message);
    layout->addWidget(list, 1);

    read();
    // Wide enough for the columns, within limits.
    resize(std::clamp(list->header()->length() + 40, 680, 1000), 380);
    rememberSize(*this, u"DeletedQuotes"_s);
    list->setFocus();
}

DeletedQuotesDialog::~DeletedQuotesDialog() = default;

QDialogButtonBox *DeletedQuotesDialog::makeButtons()
{
    auto *const buttons = new QDialogButtonBox(this);
    m_bringBack = buttons->addButton(tr("&Bring Back"), QDialogButtonBox::ActionRole);
    m_deleteForGood = buttons->addButton(tr("&Delete for Good ..."), QDialogButtonBox::ActionRole);
    QPushButton *const close = buttons->addButton(QDialogButtonBox::Close);
    m_bringBack->setObjectName(u"btnBringBack"_s);
    m_deleteForGood->setObjectName(u"btnDeleteForGood"_s);
    m_bringBack->setToolTip(tr("Puts the chosen quotes into the list of quotes again (Enter in the list)"));
    m_deleteForGood->setToolTip(tr("Deletes the chosen quotes without a way back (Del in the list)"));
    // Enter is for the list, so no button is the default.
    for (QPushButton *const button : {m_bringBack, m_deleteForGood, close})
        button->setAutoDefault(false);

    connect(m_bringBack, &QPushButton::clicked, this, &DeletedQuotesDialog::bringBack);
    connect(list, &QTreeWidget::itemActivated, this, &DeletedQuotesDialog::bringBack);
    connect(m_deleteForGood, &QPushButton::clicked, this, &DeletedQuotesDialog::deleteForGood);
    auto *const deleteKey = new QShortcut(QKeySequence::Delete, list);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, &DeletedQuotesDialog::deleteForGood);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list, &QTreeWidget::itemSelectionChanged, this, &DeletedQuotesDialog::enableButtons);

    return buttons;
}

void DeletedQuotesDialog::read()
{
    showQuotes(fetch(m_session.store(), this, [](QuoteStore &store) { return store.deletedQuotes(); }));
}

void DeletedQuotesDialog::showQuotes(const QList<DeletedQuote> &quotes)
{
    QHash<int, QString> products;
    for (const Product &product : m_session.catalogue().products())
        products.insert(product.productID, product.name);
    // The row after the removed ones is selected next.
    const int place = list->indexOfTopLevelItem(list->currentItem());
    list->clear();
    QList<QTreeWidgetItem *> rows;
    rows.reserve(quotes.size());
    for (const DeletedQuote &quote : quotes)
        rows.append(rowOf(quote, products.value(quote.quote.productID, quote.quote.product)));
    list->addTopLevelItems(rows);
    for (int column = 0; column < list->columnCount(); ++column) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, std::min(list->columnWidth(column), WidestColumn));
    }
    if (!rows.isEmpty())
        list->setCurrentItem(rows.at(std::clamp<qsizetype>(place, 0, rows.size() - 1)));
    m_message->setText((rows.isEmpty() ? tr("There are no deleted quotes.") + u' ' : QString()) +
                       tr("A deleted quote can be brought back for %1 days.").arg(QuoteStore::DaysInBin));
    enableButtons();
}

void DeletedQuotesDialog::enableButtons()
{
    const bool isAnyChosen = !list->selectedItems().isEmpty();
    m_bringBack->setEnabled(isAnyChosen);
    m_deleteForGood->setEnabled(isAnyChosen);
}

QList<qint64> DeletedQuotesDialog::chosenQuotes() const
{
    QList<qint64> quotes;
    for (const QTreeWidgetItem *const row : list->selectedItems())
        quotes.append(row->data(0, Qt::UserRole).toLongLong());
    return quotes;
}

void DeletedQuotesDialog::bringBack()
{
    const QList<qint64> quotes = chosenQuotes();
    if (!quotes.isEmpty() && change(quotes, &QuoteStore::restore))
        m_broughtBack = quotes.constLast();
}

void DeletedQuotesDialog::deleteForGood()
{
    const QList<qint64> quotes = chosenQuotes();
    if (quotes.isEmpty())
        return;
    PlainBox box(QMessageBox::Question,
                 tr("Delete %n quote(s) for good? Nobody can bring them back afterwards.", nullptr,
                    static_cast<int>(quotes.size())),
                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No, this);
    if (box.ask() == QMessageBox::Yes)
        change(quotes, &QuoteStore::deleteForGood);
}

/// Calls @p work for each of the quotes and reads the bin again; returns false after an error.
bool DeletedQuotesDialog::change(const QList<qint64> &quotes, void (QuoteStore::*work)(qint64))
{
    const bool done = attempt(this, [&] {
        fetch(m_session.store(), this, [quotes, work](QuoteStore &store) {
            for (const qint64 quoteID : quotes)
                (store.*work)(quoteID);
        });
    });
    // Also after an error: some quotes may have been changed, perhaps by another user.
    attempt(this, [this] { read(); });
    return done;
}

} // namespace QuoteDesk

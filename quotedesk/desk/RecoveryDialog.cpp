#include "desk/RecoveryDialog.h"

#include "desk/DialogFoot.h"
#include "quote/PlainText.h"
#include "quote/QuoteSession.h"
#include "quote/ShownNumbers.h"

#include <QDialogButtonBox>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int AmountColumn = 3;
constexpr int WidestColumn = 300;

} // namespace

RecoveryDialog::RecoveryDialog(const QList<Draft> &drafts, const QuoteSession &session, QWidget *parent)
    : QDialog(parent), list(new QTreeWidget(this))
{
    setWindowTitle(tr("Unsaved quotes"));
    auto *const message = new QLabel(
        tr("Quote Desk ended before %n quote(s) could be saved. The unsaved changes have been kept.", nullptr,
           static_cast<int>(drafts.size())),
        this);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);

    showDrafts(drafts, session);
    QDialogButtonBox *const buttons = makeButtons();
    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addWidget(message);
    layout->addWidget(list, 1);
    // Wide enough for the columns, within limits.
    resize(std::clamp(list->header()->length() + 40, 680, 1000), 280);
    rememberSize(*this, u"Recovery"_s);
    list->setFocus();
}

RecoveryDialog::~RecoveryDialog() = default;

void RecoveryDialog::showDrafts(const QList<Draft> &drafts, const QuoteSession &session)
{
    list->setObjectName(u"lvDrafts"_s);
    list->setAccessibleName(tr("Unsaved quotes"));
    list->setHeaderLabels(
        {tr("Client"), tr("Product"), tr("Description"), withCurrency(tr("Amount (R)")), tr("Kept")});
    list->headerItem()->setTextAlignment(AmountColumn, Qt::AlignRight | Qt::AlignVCenter);
    list->setRootIsDecorated(false);
    list->setAlternatingRowColors(true);
    QHash<int, QString> products;
    for (const Product &product : session.catalogue().products())
        products.insert(product.productID, product.name);
    for (const Draft &draft : drafts) {
        const ListedClient *const client = session.findClient(draft.quote.clientID);
        auto *const item =
            new QTreeWidgetItem(list, {shortText(client ? client->DisplayText() : QString()),
                                       shortText(products.value(draft.quote.productID)),
                                       shortText(draft.quote.description), shownMoney(draft.quote.amount),
                                       QLocale().toString(draft.kept.toLocalTime(), u"yyyy-MM-dd HH:mm"_s)});
        item->setCheckState(0, Qt::Checked);
        item->setData(0, Qt::UserRole, draft.key);
        item->setTextAlignment(AmountColumn, Qt::AlignRight | Qt::AlignVCenter);
        for (int column = 0; column < list->columnCount(); ++column)
            item->setToolTip(column, tipText(item->text(column)));
    }
    for (int column = 0; column < list->columnCount(); ++column) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, std::min(list->columnWidth(column), WidestColumn));
    }
    if (list->topLevelItemCount() > 0)
        list->setCurrentItem(list->topLevelItem(0));
}

QDialogButtonBox *RecoveryDialog::makeButtons()
{
    auto *const buttons = new QDialogButtonBox(this);
    QPushButton *const restore = buttons->addButton(tr("&Restore"), QDialogButtonBox::AcceptRole);
    QPushButton *const discard = buttons->addButton(tr("&Discard"), QDialogButtonBox::DestructiveRole);
    QPushButton *const later = buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    restore->setObjectName(u"btnRestore"_s);
    discard->setObjectName(u"btnDiscard"_s);
    later->setObjectName(u"btnLater"_s);
    restore->setToolTip(tr("Opens the ticked quotes with their unsaved changes"));
    discard->setToolTip(tr("Discards the unsaved changes of the ticked quotes"));
    later->setToolTip(tr("Asks again at the next start"));
    restore->setDefault(true);
    discard->setAutoDefault(false);

    connect(restore, &QPushButton::clicked, this, [this] {
        m_choice = Choice::Restore;
        accept();
    });
    connect(discard, &QPushButton::clicked, this, [this] {
        const auto count = static_cast<int>(chosenKeys().size());
        PlainBox box(
            QMessageBox::Question,
            tr("Discard the unsaved changes of %n quote(s)? They cannot be restored.", nullptr, count),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::No, this);
        if (box.ask() != QMessageBox::Yes)
            return;
        m_choice = Choice::Discard;
        accept();
    });
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    connect(list, &QTreeWidget::itemChanged, this, [this, restore, discard] {
        const bool any = !chosenKeys().isEmpty();
        restore->setEnabled(any);
        discard->setEnabled(any);
    });
    return buttons;
}

QStringList RecoveryDialog::chosenKeys() const
{
    QStringList keys;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *const item = list->topLevelItem(i);
        if (item->checkState(0) == Qt::Checked)
            keys.append(item->data(0, Qt::UserRole).toString());
    }
    return keys;
}

} // namespace QuoteDesk

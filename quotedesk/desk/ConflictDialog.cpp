#include "desk/ConflictDialog.h"

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

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

QString clientName(const QuoteSession &session, qint64 clientID)
{
    const ListedClient *const client = session.findClient(clientID);
    return client ? client->DisplayText() : QString();
}

/// The shares of a quote's funds by fund id.
QHash<int, QString> sharesOf(const Quote &quote)
{
    QHash<int, QString> shares;
    shares.reserve(quote.funds.size());
    for (const QuotedFund &fund : quote.funds)
        shares.insert(fund.fundID, u"%1 (%2%)"_s.arg(shownMoney(fund.amount), shownPercent(fund.percent)));
    return shares;
}

} // namespace

ConflictDialog::ConflictDialog(const Quote &mine, const QuoteChangedElsewhere &conflict,
                               const QuoteSession &session, QWidget *parent)
    : QDialog(parent), differences(new QTreeWidget(this))
{
    setWindowTitle(tr("Quote changed elsewhere"));
    auto *const message = new QLabel(messageOf(conflict), this);
    message->setObjectName(u"lblMessage"_s);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);

    differences->setObjectName(u"differences"_s);
    differences->setAccessibleName(tr("Differences"));
    differences->setHeaderLabels({tr("Differs in"), tr("Mine"), tr("Theirs")});
    differences->setRootIsDecorated(false);
    differences->setAlternatingRowColors(true);
    if (conflict.isRemoved())
        differences->hide();
    else
        compare(mine, conflict.theirs(), session);

    QDialogButtonBox *const buttons = makeButtons(conflict.isRemoved());
    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addWidget(message);
    layout->addWidget(differences, 1);
    resize(620, conflict.isRemoved() ? 120 : 320);
    buttons->findChild<QPushButton *>(u"btnBack"_s)->setFocus();
}

ConflictDialog::~ConflictDialog() = default;

QString ConflictDialog::messageOf(const QuoteChangedElsewhere &conflict)
{
    const Quote &theirs = conflict.theirs();
    // The store knows who saved the quote last, but not who deleted it.
    const QString who = theirs.changedBy.isEmpty() || conflict.isRemoved()
                            ? tr("Somebody else")
                            : wrappedText(shortText(theirs.changedBy));
    const QString when = QLocale().toString(theirs.changed.toLocalTime(), u"yyyy-MM-dd HH:mm"_s);
    if (conflict.isRemoved())
        return tr("%1 has deleted this quote while you were editing it. Your version has not been saved. "
                  "What do you want to do?")
            .arg(who);
    return tr("%1 has saved this quote at %2 while you were editing it. Your version has not been saved. "
              "Which version do you want to keep?")
        .arg(who, when);
}

QDialogButtonBox *ConflictDialog::makeButtons(bool isRemoved)
{
    auto *const buttons = new QDialogButtonBox(this);
    const auto add = [&](const QString &text, const char *name, ConflictChoice choice) {
        QPushButton *const button = buttons->addButton(text, QDialogButtonBox::ActionRole);
        button->setObjectName(QLatin1StringView(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, choice] {
            m_choice = choice;
            accept();
        });
        return button;
    };
    add(tr("Keep &mine"), "btnMine", ConflictChoice::KeepMine)
        ->setToolTip(isRemoved ? tr("Brings the quote back with your version")
                               : tr("Your version replaces theirs"));
    if (!isRemoved)
        add(tr("Take &theirs"), "btnTheirs", ConflictChoice::TakeTheirs)
            ->setToolTip(tr("Their version is shown; your changes are lost"));
    add(tr("Save mine as a &copy"), "btnCopy", ConflictChoice::SaveAsCopy)
        ->setToolTip(tr("Your version becomes a new quote; theirs stays"));
    QPushButton *const back = buttons->addButton(tr("&Go on editing"), QDialogButtonBox::RejectRole);
    back->setObjectName(u"btnBack"_s);
    // Enter goes back to editing, which loses nothing.
    back->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

void ConflictDialog::compare(const Quote &mine, const Quote &theirs, const QuoteSession &session)
{
    const auto row = [this](const QString &what, const QString &a, const QString &b) {
        if (a == b)
            return;
        const QStringList texts{what, a, b};
        auto *const item = new QTreeWidgetItem(differences, {shortText(what), shortText(a), shortText(b)});
        // Two long texts may differ at their end only.
        for (int column = 0; column < 3; ++column)
            item->setToolTip(column, tipText(texts.at(column)));
    };
    row(tr("Client"), clientName(session, mine.clientID), clientName(session, theirs.clientID));
    row(tr("Description"), mine.description, theirs.description);
    row(withCurrency(tr("Amount (R)")), shownMoney(mine.amount), shownMoney(theirs.amount));
    const auto split = [](const Quote &quote) { return quote.byAmount ? tr("by amount") : tr("by percent"); };
    row(tr("Split"), split(mine), split(theirs));
    if (mine.details != theirs.details)
        row(tr("Details"), tr("changed"), tr("as saved"));
    const QHash<int, QString> ours = sharesOf(mine);
    const QHash<int, QString> others = sharesOf(theirs);
    for (const QuotedFund &fund : mine.funds)
        row(fund.name, ours.value(fund.fundID), others.value(fund.fundID));
    for (const QuotedFund &fund : theirs.funds) {
        if (!ours.contains(fund.fundID))
            row(fund.name, QString(), others.value(fund.fundID));
    }
    differences->header()->setSectionResizeMode(QHeaderView::Stretch);
}

} // namespace QuoteDesk

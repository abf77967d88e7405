#include "desk/ShortcutList.h"

#include "desk/ErrorDialog.h"
#include "quote/Adviser.h"
#include "quote/PlainText.h"

#include "toolkit/Look.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPrinter>
#include <QScreen>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

ShortcutList::ShortcutList(const QList<Command> &commands, Adviser &adviser, QWidget *parent)
    : QDialog(parent), edFind(new QLineEdit), lstCommands(new QTreeWidget), m_adviser(adviser)
{
    setObjectName(u"ShortcutList"_s);
    setWindowTitle(tr("Keys"));
    edFind->setObjectName(u"edFind"_s);
    edFind->setMaxLength(longestSearch);
    edFind->setClearButtonEnabled(true);
    edFind->setPlaceholderText(tr("Find a command or a key"));
    edFind->setAccessibleName(tr("Find a command or a key"));
    lstCommands->setObjectName(u"lstCommands"_s);
    lstCommands->setAccessibleName(tr("Commands and their keys"));
    lstCommands->setHeaderLabels({tr("Command"), tr("Keys")});
    lstCommands->setRootIsDecorated(false);
    lstCommands->setItemsExpandable(false);
    lstCommands->setIndentation(LookSpace::Large);
    lstCommands->setUniformRowHeights(true);
    for (const Command &command : commands) {
        if (command.keys.isEmpty())
            continue;
        const QList<QTreeWidgetItem *> groups = lstCommands->findItems(command.group, Qt::MatchExactly);
        auto *const group =
            groups.isEmpty() ? new QTreeWidgetItem(lstCommands, {command.group}) : groups.constFirst();
        group->setFlags(Qt::ItemIsEnabled);
        group->setFirstColumnSpanned(true);
        group->setExpanded(true);
        new QTreeWidgetItem(group, {command.text, command.keyText()});
    }
    lstCommands->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    btnPrint = buttons->addButton(tr("Print ..."), QDialogButtonBox::ActionRole);
    btnPrint->setObjectName(u"btnPrint"_s);
    btnPrint->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(edFind);
    layout->addWidget(lstCommands, 1);
    layout->addWidget(buttons);
    connect(edFind, &QLineEdit::textChanged, this, &ShortcutList::find);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(btnPrint, &QPushButton::clicked, this, [this] { attempt(this, [this] { choosePrinter(); }); });
    resize(QSize(560, 600).boundedTo(screen()->availableSize() * 9 / 10));
    edFind->setFocus();
}

ShortcutList::~ShortcutList() = default;

void ShortcutList::find()
{
    const QStringList words = edFind->text().simplified().split(u' ', Qt::SkipEmptyParts);
    for (int i = 0; i < lstCommands->topLevelItemCount(); ++i) {
        QTreeWidgetItem *const group = lstCommands->topLevelItem(i);
        bool any = false;
        for (int j = 0; j < group->childCount(); ++j) {
            QTreeWidgetItem *const item = group->child(j);
            const QString text = group->text(0) + u'\n' + item->text(0) + u'\n' + item->text(1);
            const bool found = std::all_of(words.cbegin(), words.cend(), [&text](const QString &word) {
                return text.contains(word, Qt::CaseInsensitive);
            });
            item->setHidden(!found);
            any = any || found;
        }
        group->setHidden(!any);
    }
}

void ShortcutList::choosePrinter()
{
    QPrinter printer(QPrinter::HighResolution);
    if (m_adviser.choosePrinter(printer, this))
        print(printer);
}

void ShortcutList::print(QPagedPaintDevice &device) const
{
    QString html = u"<h2>%1</h2><table width=\"100%\" cellpadding=\"3\">"_s.arg(tr("Keys of Quote Desk"));
    for (int i = 0; i < lstCommands->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *const group = lstCommands->topLevelItem(i);
        html += u"<tr><td colspan=\"2\"><b>%1</b></td></tr>"_s.arg(group->text(0).toHtmlEscaped());
        for (int j = 0; j < group->childCount(); ++j)
            html += u"<tr><td>%1</td><td>%2</td></tr>"_s.arg(group->child(j)->text(0).toHtmlEscaped(),
                                                             group->child(j)->text(1).toHtmlEscaped());
    }
    QTextDocument document;
    document.setHtml(html + u"</table>"_s);
    document.print(&device);
}

} // namespace QuoteDesk

#include "desk/Commands.h"

#include "desk/MainWindow.h"
#include "quote/ProductForms.h"
#include "quote/QuoteEditor.h"
#include "quote/Shortcuts.h"

#include <QAction>
#include <QCoreApplication>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Commands)
};

/// A menu's text without its mnemonic, dots and displayed keys.
QString plainText(QString text)
{
    text = text.section(u'\t', 0, 0);
    static const QRegularExpression mnemonicInBrackets(u"\\(&.\\)"_s);
    text.remove(mnemonicInBrackets);
    text.replace(u"&&"_s, u"\n"_s).remove(u'&').replace(u'\n', u'&');
    static const QRegularExpression dots(u"\\s*(\\.\\.\\.|\u2026)$"_s);
    return text.remove(dots).trimmed();
}

void nameGroups(const QMenu &menu, QHash<const QAction *, QString> &groups, const QString &path)
{
    for (const QAction *const action : menu.actions()) {
        if (action->menu())
            nameGroups(*action->menu(), groups, plainText(action->text()));
        else
            groups.insert(action, path);
    }
}

/// Collects commands, each name once.
class Collector
{
public:
    explicit Collector(const MainWindow &window)
    {
        for (const QAction *const action : window.menubar->actions()) {
            if (!action->menu())
                continue;
            nameGroups(*action->menu(), m_groups, plainText(action->text()));
            m_order.append(plainText(action->text()));
        }
    }

    void add(const QObject &owner, const QString &otherwise)
    {
        for (const QAction *const action : commandsOf(owner)) {
            if (action->menu() || action->text().isEmpty())
                continue;
            if (m_places.contains(action->objectName())) {
                addKeys(m_commands[m_places.value(action->objectName())], *action);
                continue;
            }
            m_places.insert(action->objectName(), m_commands.size());
            Command command;
            command.name = action->objectName();
            command.text = plainText(action->text());
            command.group = m_groups.value(action, otherwise);
            command.own = ownShortcuts(*action);
            command.keys = action->shortcuts();
            const QString displayed = action->text().section(u'\t', 1);
            if (command.keys.isEmpty() && !displayed.isEmpty()) {
                command.own = {QKeySequence::fromString(displayed, QKeySequence::NativeText)};
                command.keys = command.own;
                command.isFixed = true;
            }
            m_commands.append(std::move(command));
        }
    }

    QList<Command> result()
    {
        QStringList order;
        for (const Command &command : m_commands) {
            if (!order.contains(command.group))
                order.append(command.group);
        }
        std::stable_sort(order.begin(), order.end(), [this](const QString &left, const QString &right) {
            return placeOf(left) < placeOf(right);
        });
        std::stable_sort(m_commands.begin(), m_commands.end(),
                         [&order](const Command &left, const Command &right) {
                             return order.indexOf(left.group) < order.indexOf(right.group);
                         });
        return std::move(m_commands);
    }

private:
    /// Adds what another action of the same command has.
    static void addKeys(Command &command, const QAction &action)
    {
        const auto add = [](QList<QKeySequence> &keys, const QList<QKeySequence> &more) {
            for (const QKeySequence &each : more) {
                if (!keys.contains(each))
                    keys.append(each);
            }
        };
        add(command.own, ownShortcuts(action));
        add(command.keys, action.shortcuts());
    }

    qsizetype placeOf(const QString &group) const
    {
        const qsizetype place = m_order.indexOf(group);
        return place < 0 ? m_order.size() : place;
    }

    QHash<const QAction *, QString> m_groups;
    QStringList m_order;
    QHash<QString, qsizetype> m_places; ///< of the commands in the list, by name
    QList<Command> m_commands;
};

} // namespace

QString Command::keyText() const
{
    QStringList texts;
    for (const QKeySequence &each : keys)
        texts.append(each.toString(QKeySequence::NativeText));
    return texts.join(u", "_s);
}

QList<Command> allCommands(const MainWindow &window)
{
    Collector collector(window);
    collector.add(window, Text::tr("Program"));
    const QuoteEditor *const editor = window.currentEditor();
    if (editor && editor->form()) {
        collector.add(*editor->form(), Text::tr("Quote"));
    } else {
        // The commands of a form belong to the form; without an open quote a form that is never shown has
        // them.
        InvestmentPlanForm form;
        applyShortcuts(form);
        collector.add(form, Text::tr("Quote"));
    }
    return collector.result();
}

const Command *conflictOf(const QList<Command> &commands, const QString &name, const QKeySequence &keys)
{
    const auto itself = std::find_if(commands.cbegin(), commands.cend(),
                                     [&name](const Command &command) { return command.name == name; });
    for (const Command &other : commands) {
        if (other.name == name || !other.keys.contains(keys))
            continue;
        const bool share =
            itself != commands.cend() && itself->own.contains(keys) && other.own.contains(keys);
        if (!share)
            return &other;
    }
    return nullptr;
}

} // namespace QuoteDesk

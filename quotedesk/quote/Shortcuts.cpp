#include "quote/Shortcuts.h"

#include <QAction>
#include <QVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto OwnKeys = "ownShortcuts";

ShortcutKeys &keysInForce()
{
    static ShortcutKeys keys;
    return keys;
}

/// Puts the keys in force into a tool tip that names the command's own keys.
void showKeysInTip(QAction &command, const QKeySequence &own)
{
    if (own.isEmpty())
        return;
    const QString tip = command.toolTip();
    const QString ownText = own.toString(QKeySequence::NativeText);
    const QString text = command.shortcut().toString(QKeySequence::NativeText);
    for (const QString &ending : {u" (%1)"_s, u" (%1,"_s}) {
        const qsizetype place = tip.indexOf(ending.arg(ownText));
        if (place < 0 || text == ownText)
            continue;
        const QString replacement = text.isEmpty() ? QString() : ending.arg(text);
        command.setToolTip(QString(tip).replace(place, ending.arg(ownText).size(), replacement));
        return;
    }
}

} // namespace

bool isUsableShortcut(const QKeySequence &keys)
{
    if (keys.count() != 1)
        return false;
    const QKeyCombination combination = keys[0];
    const int key = combination.key();
    const bool isFunctionKey = key >= Qt::Key_F1 && key <= Qt::Key_F35;
    const bool moves = key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Escape ||
                       key == Qt::Key_unknown || key == 0;
    const bool hasModifier =
        combination.keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !moves && (isFunctionKey || hasModifier || key == Qt::Key_Delete);
}

const ShortcutKeys &chosenShortcuts()
{
    return keysInForce();
}

void setChosenShortcuts(const ShortcutKeys &keys)
{
    keysInForce() = keys;
}

QList<QAction *> commandsOf(const QObject &owner)
{
    QList<QAction *> commands;
    for (QAction *const action : owner.findChildren<QAction *>()) {
        if (action->objectName().startsWith(u"act"_s) && !action->isSeparator())
            commands.append(action);
    }
    return commands;
}

void applyShortcuts(QObject &owner)
{
    for (QAction *const command : commandsOf(owner)) {
        if (!command->property(OwnKeys).isValid())
            command->setProperty(OwnKeys, QVariant::fromValue(command->shortcuts()));
        const QList<QKeySequence> own = ownShortcuts(*command);
        const auto chosen = keysInForce().constFind(command->objectName());
        const QList<QKeySequence> keys = chosen == keysInForce().cend() ? own
                                         : chosen->isEmpty()            ? QList<QKeySequence>()
                                                                        : QList<QKeySequence>{*chosen};
        if (command->shortcuts() != keys)
            command->setShortcuts(keys);
        showKeysInTip(*command, own.isEmpty() ? QKeySequence() : own.constFirst());
    }
}

QList<QKeySequence> ownShortcuts(const QAction &command)
{
    const QVariant own = command.property(OwnKeys);
    return own.isValid() ? own.value<QList<QKeySequence>>() : command.shortcuts();
}

} // namespace QuoteDesk

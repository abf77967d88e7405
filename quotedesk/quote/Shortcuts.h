#pragma once

#include <QKeySequence>
#include <QList>
#include <QMap>
#include <QString>

class QAction;
class QObject;

namespace QuoteDesk
{

/// Keys by the object names of commands. Commands are actions whose names begin with "act"; a window and the
/// form of a quote may have commands of one name, which then share their keys.
using ShortcutKeys = QMap<QString, QKeySequence>;

/// Whether @p keys can be a shortcut: one combination that types no character and is not needed to move
/// about.
bool isUsableShortcut(const QKeySequence &keys);

/// The keys that the user has chosen in place of the commands' own; an empty sequence takes the keys away.
const ShortcutKeys &chosenShortcuts();
/// Sets the chosen keys. Owners of commands then call applyShortcuts().
void setChosenShortcuts(const ShortcutKeys &keys);

/// The commands that @p owner and its children have, in the order of their creation.
QList<QAction *> commandsOf(const QObject &owner);
/// Gives the commands of @p owner their chosen keys, or their own ones. Call it again when texts have
/// changed: a tool tip that ends with the keys gets the keys in force.
void applyShortcuts(QObject &owner);
/// The keys that @p command has when the user chooses none.
QList<QKeySequence> ownShortcuts(const QAction &command);

} // namespace QuoteDesk

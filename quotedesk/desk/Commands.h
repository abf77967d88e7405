#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

namespace QuoteDesk
{

class MainWindow;

/// A command of the program, as the lists of shortcuts display it.
struct Command {
    QString name;             ///< of its action
    QString text;             ///< without mnemonic and dots
    QString group;            ///< the menu it is in
    QList<QKeySequence> own;  ///< the keys without the user's choice
    QList<QKeySequence> keys; ///< the keys in force
    bool isFixed = false;     ///< the keys belong to a frame and cannot be changed

    /// The keys in force as text; blank without any.
    QString keyText() const;
};

/// All commands of @p window and of a quote's form, by menu. Those of a form are listed without an open
/// quote, too. A command of both is listed once.
QList<Command> allCommands(const MainWindow &window);

/// The command among @p commands that would stop working if @p name had @p keys; nullptr when there is none.
/// Commands whose own keys are equal work in different places and do not disturb each other.
const Command *conflictOf(const QList<Command> &commands, const QString &name, const QKeySequence &keys);

} // namespace QuoteDesk

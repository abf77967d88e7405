#pragma once

#include "desk/Commands.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

class QPagedPaintDevice;

namespace QuoteDesk
{

class Adviser;

/// The commands and their keys, with a search; they can be printed.
class ShortcutList : public QDialog
{
    Q_OBJECT
public:
    /// @p adviser chooses the printer and must outlive the dialog.
    ShortcutList(const QList<Command> &commands, Adviser &adviser, QWidget *parent);
    ~ShortcutList() override;

    QLineEdit *edFind;
    QTreeWidget *lstCommands;
    QPushButton *btnPrint;

    /// Prints the whole list.
    void print(QPagedPaintDevice &device) const;

private:
    void find();
    void choosePrinter();

    Adviser &m_adviser;
};

} // namespace QuoteDesk

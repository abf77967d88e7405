#pragma once

#include <QDialog>

class QPushButton;

namespace QuoteDesk
{

class ClientList;
class QuoteSession;

/// Finds, adds, changes and deletes clients. Every change is stored at once and appears in the session's list
/// and so in every open editor.
class ClientsDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p session must outlive the dialog.
    ClientsDialog(QuoteSession &session, QWidget *parent);
    ~ClientsDialog() override;

    ClientList *list() const { return m_list; }

    /// Asks for the details of a new client and stores it. Returns its id, or 0 when the user cancelled.
    static qint64 addClient(QuoteSession &session, QWidget *parent);

private:
    void add();
    void edit();
    void remove();
    void read();

    QuoteSession &m_session;
    ClientList *m_list;
    QPushButton *m_edit;
    QPushButton *m_remove;
};

} // namespace QuoteDesk

#pragma once

#include "host/Quoteclients.h"
#include "ui_Clienteditfrm.h"

#include <QDialog>

/// The host's dialog for one client's details. The dialog writes to the client only when every entry is
/// valid. Otherwise it shows what is wrong and focuses the invalid field.
class ZEL_HOST_EXPORT TfrmEditClient : public QDialog, public Ui::TfrmEditClient
{
    Q_OBJECT
public:
    /// @p client is not owned and not nil. The dialog cancels itself when the client is deleted.
    explicit TfrmEditClient(TBaseClient *client, QWidget *parent = nullptr);
    ~TfrmEditClient() override;

    /// Lets the user change the details of @p client. True when the user accepted the dialog; false for nil.
    static bool EditClient(TBaseClient *client, QWidget *parent = nullptr);

    /// Writes the details into the client and closes the dialog; with an invalid entry, shows what is wrong
    /// and stays open.
    void accept() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Problem {
        QLineEdit *field = nullptr;
        QString text;
    };
    Problem findProblem() const;

    QPointer<TBaseClient> m_client;
};

#pragma once

#include "host/Quoteclients.h"
#include "ui_Clienteditfrm.h"

#include <QDialog>

/// The host's dialog for one client's details. Nothing is written to the client before everything entered is
/// valid; what is not is said in words, and the field at fault takes the focus.
class ZEL_HOST_EXPORT TfrmEditClient : public QDialog, public Ui::TfrmEditClient
{
    Q_OBJECT
public:
    /// @p client is not owned and not nil. The dialog gives up by itself when the client is deleted.
    explicit TfrmEditClient(TBaseClient *client, QWidget *parent = nullptr);
    ~TfrmEditClient() override;

    /// Lets the user change the details of @p client; true when they were accepted. False for nil.
    static bool EditClient(TBaseClient *client, QWidget *parent = nullptr);

    /// Writes the details into the client and closes, or says what is wrong and stays.
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

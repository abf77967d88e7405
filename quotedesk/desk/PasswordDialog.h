#pragma once

#include "database/StoreError.h"
#include "database/StoreLocation.h"

#include <QDialog>

class QLineEdit;

namespace QuoteDesk
{

/// Asks for the password of a database server. It is kept for this run of the program only.
class PasswordDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p reason says why it is asked for.
    explicit PasswordDialog(const QString &reason, QWidget *parent = nullptr);

    QString password() const;

private:
    QLineEdit *m_password;
};

/// What @p open makes of the location. Asks for the password that a server wants, until it is the right one
/// or the person has given up: the error is raised then.
template <class Open> auto openWithPassword(StoreLocation location, Open open)
{
    for (;;) {
        try {
            return open(location);
        } catch (const StoreNeedsPassword &error) {
            PasswordDialog dialog(error.message());
            if (dialog.exec() != QDialog::Accepted)
                throw;
            location.server.setPassword(dialog.password(), QUrl::DecodedMode);
        }
    }
}

} // namespace QuoteDesk

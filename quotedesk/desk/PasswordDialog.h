#pragma once

#include "database/StoreError.h"
#include "database/StoreLocation.h"

#include <QDialog>

class QLineEdit;

namespace QuoteDesk
{

/// Asks for the password of a database server, which is kept for this run of the program only.
class PasswordDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p reason says why a password is needed.
    explicit PasswordDialog(const QString &reason, QWidget *parent = nullptr);

    QString password() const;

private:
    QLineEdit *m_password;
};

/// Calls @p open with the location and returns its result. Asks for a password until the server accepts it;
/// when the user cancels, the error is thrown.
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

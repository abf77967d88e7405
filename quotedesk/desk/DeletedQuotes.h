#pragma once

#include "store/QuoteStore.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace QuoteDesk
{

class QuoteSession;

/// The bin: shows the deleted quotes, brings them back or deletes them for good.
class DeletedQuotesDialog : public QDialog
{
    Q_OBJECT
public:
    /// Reads what is in the bin; raises StoreError.
    DeletedQuotesDialog(const QuoteSession &session, QWidget *parent);
    ~DeletedQuotesDialog() override;

    /// The quote that was brought back last; 0 for none.
    qint64 broughtBack() const noexcept { return m_broughtBack; }

    QTreeWidget *list; ///< The last deleted quote first.

private:
    QDialogButtonBox *makeButtons();
    void read();
    void showQuotes(const QList<DeletedQuote> &quotes);
    void enableButtons();
    void bringBack();
    void deleteForGood();
    bool change(const QList<qint64> &quotes, void (QuoteStore::*work)(qint64));
    QList<qint64> chosenQuotes() const;

    const QuoteSession &m_session;
    QLabel *m_message;
    QPushButton *m_bringBack;
    QPushButton *m_deleteForGood;
    qint64 m_broughtBack = 0;
};

} // namespace QuoteDesk

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

/// The bin: lists the deleted quotes, restores them or deletes them permanently.
class DeletedQuotesDialog : public QDialog
{
    Q_OBJECT
public:
    /// Reads the bin; throws StoreError.
    DeletedQuotesDialog(const QuoteSession &session, QWidget *parent);
    ~DeletedQuotesDialog() override;

    /// The id of the quote restored last; 0 for none.
    qint64 broughtBack() const noexcept { return m_broughtBack; }

    QTreeWidget *list; ///< Last deleted first.

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

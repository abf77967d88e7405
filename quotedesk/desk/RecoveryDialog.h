#pragma once

#include "store/QuoteStore.h"

#include <QDialog>
#include <QStringList>

class QDialogButtonBox;
class QTreeWidget;

namespace QuoteDesk
{

class QuoteSession;

/// Offers the drafts that earlier runs of the program have left: all, some or none can be restored.
class RecoveryDialog : public QDialog
{
    Q_OBJECT
public:
    RecoveryDialog(const QList<Draft> &drafts, const QuoteSession &session, QWidget *parent);
    ~RecoveryDialog() override;

    enum class Choice {
        Later,   ///< The drafts stay and are offered again.
        Restore, ///< The selected drafts are opened, the others stay.
        Discard  ///< The selected drafts are deleted, the others stay.
    };
    Choice choice() const noexcept { return m_choice; }
    /// The keys of the ticked drafts.
    QStringList chosenKeys() const;

    QTreeWidget *list;

private:
    void showDrafts(const QList<Draft> &drafts, const QuoteSession &session);
    QDialogButtonBox *makeButtons();

    Choice m_choice = Choice::Later;
};

} // namespace QuoteDesk

#pragma once

#include "store/QuoteStore.h"

#include <QDialog>
#include <QStringList>

class QDialogButtonBox;
class QTreeWidget;

namespace QuoteDesk
{

class QuoteSession;

/// Offers what was being typed when an earlier run of the program ended without saving it: all of it, some of
/// it, or none.
class RecoveryDialog : public QDialog
{
    Q_OBJECT
public:
    RecoveryDialog(const QList<Draft> &drafts, const QuoteSession &session, QWidget *parent);
    ~RecoveryDialog() override;

    enum class Choice {
        Later,   ///< The drafts stay and are offered again.
        Restore, ///< The chosen ones are opened, the others stay.
        Discard  ///< The chosen ones are dropped, the others stay.
    };
    Choice choice() const noexcept { return m_choice; }
    /// The keys of the drafts that are ticked.
    QStringList chosenKeys() const;

    QTreeWidget *list;

private:
    void showDrafts(const QList<Draft> &drafts, const QuoteSession &session);
    QDialogButtonBox *makeButtons();

    Choice m_choice = Choice::Later;
};

} // namespace QuoteDesk

#pragma once

#include "store/QuoteErrors.h"

#include <QDialog>

class QDialogButtonBox;
class QTreeWidget;

namespace QuoteDesk
{

class QuoteSession;

/// How to continue with a quote that two users have changed.
enum class ConflictChoice { GoOnEditing, KeepMine, TakeTheirs, SaveAsCopy };

/// Shows the differences between two versions of a quote and asks which one counts. Nothing is overwritten
/// unless the user chooses that explicitly.
class ConflictDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p mine is the displayed version. @p session provides the clients' names.
    ConflictDialog(const Quote &mine, const QuoteChangedElsewhere &conflict, const QuoteSession &session,
                   QWidget *parent);
    ~ConflictDialog() override;

    ConflictChoice choice() const noexcept { return m_choice; }

    QTreeWidget *differences;

private:
    static QString messageOf(const QuoteChangedElsewhere &conflict);
    QDialogButtonBox *makeButtons(bool isRemoved);
    void compare(const Quote &mine, const Quote &theirs, const QuoteSession &session);

    ConflictChoice m_choice = ConflictChoice::GoOnEditing;
};

} // namespace QuoteDesk

#pragma once

#include "store/QuoteErrors.h"

#include <QDialog>

class QDialogButtonBox;
class QTreeWidget;

namespace QuoteDesk
{

class QuoteSession;

/// What is to become of a quote that two people have changed.
enum class ConflictChoice { GoOnEditing, KeepMine, TakeTheirs, SaveAsCopy };

/// Two people have changed the same quote: shows in what the two versions differ and asks which one counts.
/// Nothing is overwritten unless that is asked for by its name.
class ConflictDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p mine is the version on the screen. @p session names clients.
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

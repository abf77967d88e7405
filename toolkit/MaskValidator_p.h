#pragma once

#include "toolkit/TtsMask.h"

#include <QValidator>

namespace Zel
{

/// What the user has done to a cell: the open editor's text, and all that was typed to get there.
struct TypedEntry {
    QString typed; ///< Every key, those that the mask refused among them, with the marks as they were typed.
    QString refused; ///< Keys refused where a key replaces the whole text; they belong before the next one.
    QString shown;   ///< What the editor shows.
    QString taken;   ///< What the cell was given for it.
    qsizetype comma = -1;  ///< Where the point shown was typed as a comma.
    bool touched = false;  ///< The user typed something, taken or not.
    bool doubtful = false; ///< What is shown is no number of the mask, or could be two.
    bool refuses = false;  ///< Such an entry stays open on Enter; never is a part of it taken.

    void begin(const QString &text)
    {
        typed = shown = text;
        taken.clear();
        comma = -1;
        touched = doubtful = false;
    }
};

/// Lets pass what the column's mask describes, however it arrives: keys, paste, drop, input method. Thousands
/// that are parted as they are typed pass too, and whatever is typed is noted.
class MaskValidator : public QValidator
{
public:
    /// Notes in @p entry, which outlives it, what is typed for @p mask.
    MaskValidator(TtsMask mask, TypedEntry &entry, QObject *parent);
    State validate(QString &input, int &position) const override;

private:
    struct Shown {
        bool isRight = false;
        QString text = {};
        qsizetype comma = -1; ///< Where the point shown was typed as a comma.
    };
    QString asTyped(const QString &input) const;
    Shown read(const QString &input) const;
    bool hasThousands(const QString &text) const;
    void note(const QString &input, bool isRight) const;

    TtsMask m_mask;
    TypedEntry &m_entry;
};

} // namespace Zel

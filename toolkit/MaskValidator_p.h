#pragma once

#include "toolkit/TtsMask.h"

#include <QValidator>

namespace Zel
{

/// The state of a cell's edit: the editor's text and all keys that were typed.
struct TypedEntry {
    QString typed;         ///< Every key in its original form, including keys that the mask refused.
    QString refused;       ///< Keys refused while a key would replace the whole text; they precede the next
                           ///< accepted key.
    QString shown;         ///< The text in the editor.
    QString taken;         ///< The value that the cell got for the text.
    qsizetype comma = -1;  ///< The position of a shown point that was typed as a comma; -1 for none.
    bool touched = false;  ///< Whether the user typed anything, accepted or not.
    bool doubtful = false; ///< Whether the text does not fit the mask or can be read in two ways.
    bool refuses = false;  ///< Whether a doubtful entry stays open on Enter and none of it is accepted.

    void begin(const QString &text)
    {
        typed = shown = text;
        taken.clear();
        comma = -1;
        touched = doubtful = false;
    }
};

/// Accepts texts that the column's mask describes, whether typed, pasted, dropped or from an input method.
/// Also accepts thousands separators. Records everything typed.
class MaskValidator : public QValidator
{
public:
    /// Records in @p entry, which must outlive this object, what is typed for @p mask.
    MaskValidator(TtsMask mask, TypedEntry &entry, QObject *parent);
    State validate(QString &input, int &position) const override;

private:
    struct Shown {
        bool isRight = false;
        QString text = {};
        qsizetype comma = -1; ///< The position of a shown point that was typed as a comma; -1 for none.
    };
    QString asTyped(const QString &input) const;
    Shown read(const QString &input) const;
    bool hasThousands(const QString &text) const;
    void note(const QString &input, bool isRight) const;

    TtsMask m_mask;
    TypedEntry &m_entry;
};

} // namespace Zel

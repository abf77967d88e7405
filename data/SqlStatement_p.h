#pragma once

// SQL statements with named parameters. Private to the data module.

#include <QStringList>

namespace Zel
{

/// A statement split at its parameter marks: piece, mark, piece, mark, ... piece.
struct Statement {
    QStringList Pieces{QString()};
    QStringList Marks; ///< The parameter names in the order of their marks, with repetitions.

    Statement() = default;
    /// Splits @p sql at its ":name" marks and removes comments.
    explicit Statement(const QString &sql);
    void AddMark(const QString &name)
    {
        Marks.append(name);
        Pieces.append(QString());
    }
    /// The whole text. @p writeMark returns the text for the mark with the given index.
    template <typename Write> QString Text(Write writeMark) const
    {
        QString text = Pieces.first();
        for (int i = 0; i < Marks.size(); ++i)
            text += writeMark(i) + Pieces[i + 1];
        return text;
    }
    QString Command() const; ///< The first word in lower case, without opening brackets.
};

} // namespace Zel

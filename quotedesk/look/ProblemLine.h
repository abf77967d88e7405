#pragma once

#include "look/Kinds.h"

#include <QPointer>
#include <QWidget>

namespace QuoteDesk
{

class GlyphLabel;
class TextLabel;

/// The sentence below a field that says what is wrong with the entry, and what is right. It marks the field's
/// edge and is the field's accessible description. Without a problem the line takes no room.
class ProblemLine : public QWidget
{
    Q_OBJECT
public:
    /// The line of @p field, which may be destroyed first.
    explicit ProblemLine(QWidget *field, QWidget *parent = nullptr);
    ~ProblemLine() override;

    void showProblem(const QString &sentence); ///< The entry is wrong. A blank sentence clears the line.
    void showAdvice(const QString &sentence);  ///< The entry is unusual, but allowed.
    void clear();                              ///< The entry is right.
    QString text() const;                      ///< The sentence; "" when the entry is right.
    FieldMark mark() const { return m_mark; }  ///< What the line says.

private:
    void show(FieldMark mark, const QString &sentence);

    QPointer<QWidget> m_field;
    QString m_fieldDescription; ///< without a problem
    GlyphLabel *m_picture;
    TextLabel *m_text;
    FieldMark m_mark = FieldMark::None;
};

} // namespace QuoteDesk

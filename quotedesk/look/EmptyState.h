#pragma once

#include "look/Kinds.h"

#include <QPushButton>
#include <QWidget>

class QHBoxLayout;

namespace QuoteDesk
{

class GlyphLabel;
class TextLabel;

/// What stands on a page or in a table that has nothing to show: a picture, a heading, one sentence and the
/// steps that lead on. The whole is centred at two fifths of the height.
class EmptyState : public QWidget
{
    Q_OBJECT
public:
    explicit EmptyState(QWidget *parent = nullptr);
    ~EmptyState() override;

    /// Shows a picture of toolkit/Glyphs and the texts.
    void setContent(const QString &glyph, const QString &heading, const QString &sentence);
    /// Adds a button, at most two. The state owns the button; its picture @p glyph may be "".
    QPushButton *addButton(const QString &caption, const QString &glyph = {},
                           ButtonKind kind = ButtonKind::Quiet);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void place();
    QSize contentSize(int width) const;

    QWidget *m_content;
    GlyphLabel *m_picture;
    TextLabel *m_heading;
    TextLabel *m_sentence;
    QHBoxLayout *m_buttons;
};

} // namespace QuoteDesk

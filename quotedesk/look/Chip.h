#pragma once

#include "toolkit/Look.h"

#include <QLabel>
#include <QPushButton>

namespace QuoteDesk
{

/// What a chip says, in colour.
enum class ChipKind {
    Neutral, ///< nothing is asked: a draft
    Ok,      ///< done
    Info,    ///< news
    Warn,    ///< to be done
    Error,   ///< wrong
    Plain    ///< a number, without a ground
};

/// The content of a chip. The picture and the word say the same as the colour.
struct ChipText {
    ChipKind kind = ChipKind::Neutral;
    QString glyph; ///< a name of toolkit/Glyphs; "" for none
    QString text;
};

/// The states of quotes.
enum class ChipState { Draft, Allocated, TooMuch };
/// The chip of @p state with the translated @p word.
ChipText chipOf(ChipState state, const QString &word);

/// A short word with a picture on a rounded ground. To screen readers it is a text.
class Chip : public QLabel
{
    Q_OBJECT
public:
    explicit Chip(QWidget *parent = nullptr);
    void setChip(const ChipText &chip); ///< Shows @p chip.
    const ChipText &chip() const { return m_chip; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The size of @p chip beside text in @p body, the font of the surroundings.
    static QSize sizeOf(const ChipText &chip, const QFont &body);
    /// Draws @p chip at the start of @p rect and in its middle, for a delegate. A word without room is
    /// elided.
    static void paint(QPainter &painter, const QRect &rect, const ChipText &chip, const QPalette &palette,
                      const QFont &body, Qt::LayoutDirection direction);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ChipText m_chip;
};

/// A filter that is switched on and off, with the number of what it lets pass. Put the chips of which one is
/// always on into a QButtonGroup.
class FilterChip : public QPushButton
{
    Q_OBJECT
public:
    explicit FilterChip(const QString &text = {}, QWidget *parent = nullptr);
    void setCount(int count); ///< Shows @p count behind the text; a number below 0 shows none.
    int count() const { return m_count; }
    /// Shows a picture of toolkit/Glyphs before the text; "" for none.
    void setGlyph(const QString &glyph);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    QString countText() const;
    QFont countFont() const;

    QString m_glyph;
    int m_count = -1;
};

} // namespace QuoteDesk

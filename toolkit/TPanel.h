#pragma once

#include "toolkit/TColors.h"

#include <QFrame>

/// A panel of the designs: a container with an optional bevel, colour and caption. The caption is drawn on
/// the panel itself and is its accessible name. A caption that is too long is left-aligned and ends with
/// "...". Colours are named (see TColors.h), so that they follow the palette; for an empty or unknown name
/// the panel has its parent's colour.
class ZEL_TOOLKIT_EXPORT TPanel : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption NOTIFY captionChanged)
    Q_PROPERTY(Qt::Alignment captionAlignment READ captionAlignment WRITE setCaptionAlignment)
    Q_PROPERTY(QString colorName READ colorName WRITE setColorName)
    Q_PROPERTY(QString textColorName READ textColorName WRITE setTextColorName)
    Q_PROPERTY(QString fontFamily READ fontFamily WRITE setFontFamily)
    Q_PROPERTY(int fontHeight READ fontHeight WRITE setFontHeight)
    Q_PROPERTY(bool bold READ isBold WRITE setBold)
    Q_PROPERTY(bool italic READ isItalic WRITE setItalic)
    Q_PROPERTY(bool bevel READ hasBevel WRITE setBevel)
public:
    explicit TPanel(QWidget *parent = nullptr);
    ~TPanel() override;

    QString caption() const { return m_caption; }
    void setCaption(const QString &caption);
    /// The alignment of the caption; centred by default.
    Qt::Alignment captionAlignment() const { return m_alignment; }
    void setCaptionAlignment(Qt::Alignment alignment);
    QString colorName() const { return NameOfColor(m_color); }
    void setColorName(const QString &name);
    QString textColorName() const { return NameOfColor(m_textColor); }
    void setTextColorName(const QString &name);
    QString fontFamily() const { return font().family(); }
    void setFontFamily(const QString &family);
    int fontHeight() const { return font().pixelSize(); } ///< pixels
    void setFontHeight(int pixels);
    bool isBold() const { return font().bold(); }
    void setBold(bool bold);
    bool isItalic() const { return font().italic(); }
    void setItalic(bool italic);
    /// Whether the panel has a raised bevel; default false.
    bool hasBevel() const { return frameShape() != QFrame::NoFrame; }
    void setBevel(bool bevel);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void captionChanged(const QString &caption);

protected:
    void paintEvent(QPaintEvent *event) override;
    /// Shows a tool tip with the whole caption when the caption is too long.
    bool event(QEvent *event) override;

private:
    template <typename Change> void changeFont(Change change);
    QSize captionSize() const;
    QString shownCaption() const;

    QString m_caption;
    Qt::Alignment m_alignment = Qt::AlignCenter;
    TColor m_color = TColor::None;
    TColor m_textColor = TColor::None;
};

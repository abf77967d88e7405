#pragma once

#include "export/zel_toolkit_export.h"

#include <QToolButton>

/// A flat button with a picture that never takes the focus, so that pressing it leaves the view being worked
/// in as it is. Its key acts as it is pressed. The caption is `text`, the hint is `toolTip`.
class ZEL_TOOLKIT_EXPORT TSpeedButton : public QToolButton
{
    Q_OBJECT
    Q_PROPERTY(QString glyph READ glyph WRITE setGlyph)
    Q_PROPERTY(bool glyphOnTop READ isGlyphOnTop WRITE setGlyphOnTop)
public:
    explicit TSpeedButton(QWidget *parent = nullptr);
    ~TSpeedButton() override;
    /// The name of the picture (see GlyphIcon).
    QString glyph() const { return m_glyph; }
    void setGlyph(const QString &name);
    /// The picture above the caption; beside it when not set.
    bool isGlyphOnTop() const { return toolButtonStyle() == Qt::ToolButtonTextUnderIcon; }
    void setGlyphOnTop(bool top);

protected:
    /// Its key clicks it at once.
    bool event(QEvent *event) override;

private:
    QString m_glyph;
};

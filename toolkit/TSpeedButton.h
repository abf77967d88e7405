#pragma once

#include "export/zel_toolkit_export.h"

#include <QToolButton>

/// A flat button with a picture. It never takes the focus, so that a click does not end an edit in a view.
/// Its shortcut key acts at once. The caption is `text`, the hint is `toolTip`.
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
    /// Whether the picture is above the caption; by default it is beside the caption.
    bool isGlyphOnTop() const { return toolButtonStyle() == Qt::ToolButtonTextUnderIcon; }
    void setGlyphOnTop(bool top);

protected:
    /// Clicks the button at once on its shortcut key.
    bool event(QEvent *event) override;

private:
    QString m_glyph;
};

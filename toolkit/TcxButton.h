#pragma once

#include "export/zel_toolkit_export.h"

#include <QPushButton>

/// A flat push button: it has a frame only while the mouse is over it, while it is pressed and while it has
/// the focus. Its shortcut key acts at once.
class ZEL_TOOLKIT_EXPORT TcxButton : public QPushButton
{
    Q_OBJECT
public:
    explicit TcxButton(QWidget *parent = nullptr);
    ~TcxButton() override;

protected:
    bool event(QEvent *event) override;
};

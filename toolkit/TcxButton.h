#pragma once

#include "export/zel_toolkit_export.h"

#include <QPushButton>

/// A flat push button: no frame until the mouse is over it, it is pressed, or it has the focus. Its key
/// acts as it is pressed.
class ZEL_TOOLKIT_EXPORT TcxButton : public QPushButton
{
    Q_OBJECT
public:
    explicit TcxButton(QWidget *parent = nullptr);
    ~TcxButton() override;

protected:
    bool event(QEvent *event) override;
};

#pragma once

#include "export/zel_toolkit_export.h"

#include <QWidget>

/// The plain frame of the designs: a part of a page with the designed font ("Tahoma", 11 pixels), which its
/// components inherit. Layouts keep the components at their designed positions. In the application look the
/// frame has the font of its surroundings.
class ZEL_TOOLKIT_EXPORT TFrame : public QWidget
{
    Q_OBJECT
public:
    explicit TFrame(QWidget *parent = nullptr);
    ~TFrame() override;

protected:
    void changeEvent(QEvent *event) override;
};

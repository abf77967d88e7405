#pragma once

#include "export/zel_toolkit_export.h"

#include <QRadioButton>

/// A radio button that users can only turn on, also without a group. Another button of its group or the page
/// turns it off.
class ZEL_TOOLKIT_EXPORT TRadioButton : public QRadioButton
{
    Q_OBJECT
public:
    explicit TRadioButton(QWidget *parent = nullptr);
    ~TRadioButton() override;

protected:
    void nextCheckState() override;
};

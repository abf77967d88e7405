#pragma once

#include "frames/fra_BaseFrame.h"
#include "ui_fra_FundToolBar.h"

/// The bar of command buttons above the fund allocation grid. It has no logic: the frame that contains it
/// accesses the buttons by name, handles their clicks, and enables, disables, shows and hides them.
class ZEL_COMMONFRAMES_EXPORT TfraFundToolBar : public TBaseFrame, public Ui::TfraFundToolBar
{
    Q_OBJECT
public:
    explicit TfraFundToolBar(QWidget *parent = nullptr);
    ~TfraFundToolBar() override;

    /// Does nothing. The visibility of a button is set on the button itself.
    void ShowToolButtons(bool, bool, bool, bool, bool);

Q_SIGNALS:
    /// Captions and hints were set in another language; additions to a hint are lost.
    void Retranslated();

protected:
    void changeEvent(QEvent *event) override;
};

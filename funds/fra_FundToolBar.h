#pragma once

#include "frames/fra_BaseFrame.h"
#include "ui_fra_FundToolBar.h"

/// The strip of command buttons above the fund allocation grid. It has no logic of its own: the frame that
/// embeds it reaches the buttons by name, binds their clicks, and enables, disables, shows and hides them.
class ZEL_COMMONFRAMES_EXPORT TfraFundToolBar : public TBaseFrame, public Ui::TfraFundToolBar
{
    Q_OBJECT
public:
    explicit TfraFundToolBar(QWidget *parent = nullptr);
    ~TfraFundToolBar() override;

    /// Does nothing: the visibility of a button is always set on the button itself.
    void ShowToolButtons(bool, bool, bool, bool, bool);

Q_SIGNALS:
    /// Captions and hints are now those of another language; whatever was added to a hint is gone.
    void Retranslated();

protected:
    void changeEvent(QEvent *event) override;
};

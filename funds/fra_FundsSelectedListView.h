#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_FundsSelectedListView.h"

/// The picked funds as a report list of one visible column under a coloured caption bar. An item's caption is
/// the fund's name; its data is the bookmark of the tree node it was added from, which the list shares and
/// does not own.
class ZEL_COMMONFRAMES_EXPORT TfraFundsSelectedListView : public TBaseFrame,
                                                          public Ui::TfraFundsSelectedListView
{
    Q_OBJECT
public:
    /// The list starts empty, whatever sample rows its design holds.
    explicit TfraFundsSelectedListView(QWidget *parent = nullptr);
    ~TfraFundsSelectedListView() override;

public Q_SLOTS:
    /// Refits the columns to the list's new width.
    void lvSelectedFundsResize();

protected:
    void changeEvent(QEvent *event) override;

private:
    void SetColumnCaptions();
};

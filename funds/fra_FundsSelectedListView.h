#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_FundsSelectedListView.h"

/// The chosen funds as a list with one visible column under a coloured caption bar. An item's caption is the
/// fund's name. Its Data is the bookmark of the tree node from which it was added; the tree owns the
/// bookmark.
class ZEL_COMMONFRAMES_EXPORT TfraFundsSelectedListView : public TBaseFrame,
                                                          public Ui::TfraFundsSelectedListView
{
    Q_OBJECT
public:
    /// Creates an empty list, even if its design has sample rows.
    explicit TfraFundsSelectedListView(QWidget *parent = nullptr);
    ~TfraFundsSelectedListView() override;

public Q_SLOTS:
    /// Fits the columns to the list's new width.
    void lvSelectedFundsResize();

protected:
    void changeEvent(QEvent *event) override;

private:
    void SetColumnCaptions();
};

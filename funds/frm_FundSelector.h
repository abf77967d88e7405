#pragma once

#include "export/zel_commonframes_export.h"
#include "funds/misc_Types.h"
#include "ui_frm_FundSelector.h"

#include <QDialog>

class TLocalConnection;

/// What happens to a form when it closes.
enum class TCloseAction {
    caHide, ///< the form is hidden
    caFree  ///< the form is deleted when it is no longer needed
};

/// Passes the requests of the fund selector dialogs to the host. One line of host code opens the fact sheets:
///
///     QObject::connect(TfrmFundSelector::Requests(), &TFundSelectorRequests::FundSheetRequested,
///                      [](int, const QString &url) { QDesktopServices::openUrl(QUrl(url)); });
class ZEL_COMMONFRAMES_EXPORT TFundSelectorRequests : public QObject
{
    Q_OBJECT
public:
    TFundSelectorRequests();
    ~TFundSelectorRequests() override;

Q_SIGNALS:
    /// The FundSheet button of a dialog was pressed (see TfraFundSelector::FundSheetRequested).
    void FundSheetRequested(int FundID, const QString &URL);
};

/// The modal dialog for choosing funds: a fund selector frame and the logic of closing. It keeps no state
/// between calls.
class ZEL_COMMONFRAMES_EXPORT TfrmFundSelector : public QDialog, public Ui::TfrmFundSelector
{
    Q_OBJECT
public:
    explicit TfrmFundSelector(QWidget *parent = nullptr);
    ~TfrmFundSelector() override;

    /// Lets the user choose funds, starting from @p FundIDs, and returns when the dialog is closed. After
    /// Select, returns true and sets @p FundIDs to the chosen funds in list order. After Cancel or any other
    /// way of closing, returns false and leaves @p FundIDs unchanged. Passes the other arguments to
    /// TfraFundSelector::BuildFundSelector. Exceptions of that function reach the caller; @p FundIDs is then
    /// unchanged and the dialog is deleted.
    static bool FundSelector(TDynamicArrayOfInt &FundIDs, int ProductGroupID, TLocalConnection *Connection,
                             const QVariant &FundData, const QString &PerProductFilter,
                             const QString &WarningText, const QString &InfoText);

    /// The object that emits the dialogs' requests to the host; valid until the library is unloaded.
    static TFundSelectorRequests *Requests();

    /// Called for every way of closing, once each time the dialog was shown.
    void done(int result) override;

public Q_SLOTS:
    void fraFundSelectorbtnSelectClick(); ///< Closes the dialog and accepts the choice.
    void fraFundSelectorbtnCancelClick(); ///< Closes the dialog and discards the choice.

public:
    /// Sets @p Action to caFree.
    void FormClose(QObject *Sender, TCloseAction &Action);

protected:
    void changeEvent(QEvent *event) override;

private:
    bool m_inCall = false; // FundSelector() is running and will delete the form
};

#pragma once

#include "export/zel_commonframes_export.h"
#include "funds/misc_Types.h"
#include "ui_frm_FundSelector.h"

#include <QDialog>

class TLocalConnection;

/// What becomes of a form that is being closed.
enum class TCloseAction {
    caHide, ///< it stays, hidden
    caFree  ///< it is released, once no one needs it any more
};

/// Passes on what the fund selector dialogs ask of the host. One line of host code opens the fact sheets:
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
    /// FundSheet was pressed in a dialog (see TfraFundSelector::FundSheetRequested).
    void FundSheetRequested(int FundID, const QString &URL);
};

/// The modal window in which funds are picked: a fund selector frame and the closing logic. It remembers
/// nothing between calls.
class ZEL_COMMONFRAMES_EXPORT TfrmFundSelector : public QDialog, public Ui::TfrmFundSelector
{
    Q_OBJECT
public:
    explicit TfrmFundSelector(QWidget *parent = nullptr);
    ~TfrmFundSelector() override;

    /// Lets the user pick funds, starting from @p FundIDs, and returns when the window is closed. True after
    /// Select: @p FundIDs then holds the chosen funds in list order. False after Cancel and any other way of
    /// closing, @p FundIDs being untouched. The other arguments go to TfraFundSelector::BuildFundSelector
    /// as they are; what that raises reaches the caller, with @p FundIDs untouched and no window left.
    static bool FundSelector(TDynamicArrayOfInt &FundIDs, int ProductGroupID, TLocalConnection *Connection,
                             const QVariant &FundData, const QString &PerProductFilter,
                             const QString &WarningText, const QString &InfoText);

    /// Where the dialogs' requests to the host arrive; lives as long as the library.
    static TFundSelectorRequests *Requests();

    /// Every way of closing comes through here; runs once per showing.
    void done(int result) override;

public Q_SLOTS:
    void fraFundSelectorbtnSelectClick(); ///< Closes the dialog with the choice.
    void fraFundSelectorbtnCancelClick(); ///< Closes the dialog without a choice.

public:
    /// The form is released whenever it closes.
    void FormClose(QObject *Sender, TCloseAction &Action);

protected:
    void changeEvent(QEvent *event) override;

private:
    bool m_inCall = false; // FundSelector() still reads the result and frees the form after that
};

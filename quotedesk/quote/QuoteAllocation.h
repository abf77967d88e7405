#pragma once

#include "funds/fra_FundAllocation.h"

namespace QuoteDesk
{

/// The allocation frame of the funds page. It tells its page when its own set-up has run, which is when the
/// page may hand it funds, and when a cell's new value stands.
class QuoteAllocation : public TfraFundAllocation
{
    Q_OBJECT
public:
    explicit QuoteAllocation(QWidget *parent = nullptr) : TfraFundAllocation(parent)
    {
        // What can be read in two ways is asked about, not corrected.
        FundGrid->SetRefusesDoubtful(true);
        FundGrid->OnEndCellEdit = [this, inherited = FundGrid->OnEndCellEdit](int column, int row,
                                                                              bool &cancel) {
            inherited(column, row, cancel);
            if (!cancel)
                Q_EMIT cellEntered();
        };
    }

Q_SIGNALS:
    void initialized();
    /// An edit in the grid has ended, and what was typed is in the list.
    void cellEntered();

protected:
    void InitializeFrame() override
    {
        TfraFundAllocation::InitializeFrame();
        Q_EMIT initialized();
    }
};

} // namespace QuoteDesk

#pragma once

#include "funds/fra_FundAllocation.h"

#include <QEvent>

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
        clearCaptions();
    }

Q_SIGNALS:
    void initialized();
    /// An edit in the grid has ended, and what was typed is in the list.
    void cellEntered();

protected:
    void InitializeFrame() override
    {
        TfraFundAllocation::InitializeFrame();
        m_initialized = true;
        Q_EMIT initialized();
    }
    void changeEvent(QEvent *event) override
    {
        TfraFundAllocation::changeEvent(event);
        if (event->type() == QEvent::LanguageChange && !m_initialized)
            clearCaptions();
    }

private:
    /// The design's amounts are samples. Until the frame has set itself up nobody is to read them.
    void clearCaptions()
    {
        pnlRemainAmount->setCaption(QString());
        pnlAmount->setCaption(QString());
    }

    bool m_initialized = false;
};

} // namespace QuoteDesk

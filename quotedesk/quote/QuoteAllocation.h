#pragma once

#include "funds/fra_FundAllocation.h"

namespace QuoteDesk
{

/// The allocation frame of the quote page. It tells its page when its own set-up has run, which is when the
/// page may hand it a quote.
class QuoteAllocation : public TfraFundAllocation
{
    Q_OBJECT
public:
    using TfraFundAllocation::TfraFundAllocation;

Q_SIGNALS:
    void initialized();

protected:
    void InitializeFrame() override
    {
        TfraFundAllocation::InitializeFrame();
        Q_EMIT initialized();
    }
};

} // namespace QuoteDesk

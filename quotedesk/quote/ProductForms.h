#pragma once

#include "quote/QuoteForm.h"

namespace QuoteDesk
{

/// A retirement annuity: saving until retirement.
class RetirementAnnuityForm : public QuoteForm
{
    Q_OBJECT
public:
    static constexpr int ProductID = 1;
    RetirementAnnuityForm();
    ~RetirementAnnuityForm() override;
};

/// A living annuity: capital from which an income is drawn.
class LivingAnnuityForm : public QuoteForm
{
    Q_OBJECT
public:
    static constexpr int ProductID = 2;
    LivingAnnuityForm();
    ~LivingAnnuityForm() override;
};

/// An investment plan: an investment for a term.
class InvestmentPlanForm : public QuoteForm
{
    Q_OBJECT
public:
    static constexpr int ProductID = 3;
    InvestmentPlanForm();
    ~InvestmentPlanForm() override;
};

} // namespace QuoteDesk

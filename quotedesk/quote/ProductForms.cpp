#include "quote/ProductForms.h"

namespace QuoteDesk
{

RetirementAnnuityForm::RetirementAnnuityForm() : QuoteForm(ProductID) {}
RetirementAnnuityForm::~RetirementAnnuityForm() = default;

LivingAnnuityForm::LivingAnnuityForm() : QuoteForm(ProductID) {}
LivingAnnuityForm::~LivingAnnuityForm() = default;

InvestmentPlanForm::InvestmentPlanForm() : QuoteForm(ProductID) {}
InvestmentPlanForm::~InvestmentPlanForm() = default;

} // namespace QuoteDesk

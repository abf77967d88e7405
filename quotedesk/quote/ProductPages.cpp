#include "quote/ProductPages.h"

#include "quote/InvestmentField.h"
#include "quote/ProductForms.h"

#include "data/Format.h"
#include "funds/misc_Types.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Elements {
    Q_DECLARE_TR_FUNCTIONS(Elements)
};

using Kind = PageElement::Kind;

// The legal limits of the yearly income from a living annuity: 2.5 and 17.5 percent of the capital.
constexpr auto leastIncome = Currency::fromRaw(25 * Currency::Scale / 10);
constexpr auto largestIncome = Currency::fromRaw(175 * Currency::Scale / 10);

QString receiptDateProblem(const QString &value)
{
    return value.isEmpty() || QDate::fromString(value, Qt::ISODate).isValid()
               ? QString()
               : LoadResString(TMessageText::resInvalidInvestmentDate);
}

QString endDateProblem(const QString &value)
{
    return value.isEmpty() || QDate::fromString(value, Qt::ISODate).isValid()
               ? QString()
               : Elements::tr(
                     "The end date is not a valid date. Type it as year-month-day, for example 2031-06-30.");
}

/// A number from @p low to @p high, or no entry.
auto within(int low, int high, const char *sentence)
{
    return [=](const QString &value) {
        const double number = value.toDouble();
        return value.isEmpty() || (number >= low && number <= high) ? QString() : Elements::tr(sentence);
    };
}

QList<PageElement> retirementAnnuityDetails()
{
    return {
        {"RetirementFundName",
         Kind::Text,
         QT_TRANSLATE_NOOP("Elements", "Retirement fund"),
         {},
         [](const QString &value) {
             return value.isEmpty() ? LoadResString(TMessageText::resNoRetirementFundNameMsg) : QString();
         }},
        {"MemberNumber", Kind::Code, QT_TRANSLATE_NOOP("Elements", "Member number")},
        {"InvestmentDate", Kind::Date, QT_TRANSLATE_NOOP("Elements", "Receipt date"), {}, receiptDateProblem},
        {"RetirementAge",
         Kind::Number,
         QT_TRANSLATE_NOOP("Elements", "Retirement age"),
         {},
         within(55, 75, QT_TRANSLATE_NOOP("Elements", "The retirement age is from 55 to 75 years."))},
        {"MonthlyContribution", Kind::OptionAmount, QT_TRANSLATE_NOOP("Elements", "Monthly amount (R)")},
        {"Escalation",
         Kind::Amount,
         QT_TRANSLATE_NOOP("Elements", "Escalation (%)"),
         {},
         within(0, 20, QT_TRANSLATE_NOOP("Elements", "The escalation is from 0 to 20 percent."))},
    };
}

QList<PageElement> livingAnnuityDetails()
{
    return {
        {"TransferringFund", Kind::Text, QT_TRANSLATE_NOOP("Elements", "Transferring fund")},
        {"AnnuityNumber", Kind::Code, QT_TRANSLATE_NOOP("Elements", "Annuity number")},
        {"InvestmentDate", Kind::Date, QT_TRANSLATE_NOOP("Elements", "Receipt date"), {}, receiptDateProblem},
        {"Beneficiary", Kind::Text, QT_TRANSLATE_NOOP("Elements", "Beneficiary")},
    };
}

QList<PageElement> livingAnnuityIncome()
{
    return {
        {"IncomePercent", Kind::EitherAmount, QT_TRANSLATE_NOOP("Elements", "Percent of capital a year")},
        {"IncomeAmount", Kind::EitherAmount, QT_TRANSLATE_NOOP("Elements", "Amount a year (R)")},
        {"IncomeFrequency",
         Kind::List,
         QT_TRANSLATE_NOOP("Elements", "Paid"),
         {{"monthly", QT_TRANSLATE_NOOP("Elements", "every month")},
          {"quarterly", QT_TRANSLATE_NOOP("Elements", "every three months")},
          {"half-yearly", QT_TRANSLATE_NOOP("Elements", "every six months")},
          {"yearly", QT_TRANSLATE_NOOP("Elements", "every year")}}},
        {"IncomeIncrease",
         Kind::OptionAmount,
         QT_TRANSLATE_NOOP("Elements", "Yearly increase (%)"),
         {},
         within(0, 20, QT_TRANSLATE_NOOP("Elements", "The yearly increase is from 0 to 20 percent."))},
    };
}

QList<PageElement> investmentPlanDetails()
{
    return {
        {"Owner",
         Kind::List,
         QT_TRANSLATE_NOOP("Elements", "Owner"),
         {{"individual", QT_TRANSLATE_NOOP("Elements", "a person")},
          {"company", QT_TRANSLATE_NOOP("Elements", "a company")},
          {"trust", QT_TRANSLATE_NOOP("Elements", "a trust")}}},
        {"ReferenceNumber", Kind::Code, QT_TRANSLATE_NOOP("Elements", "Reference")},
        {"InvestmentDate", Kind::Date, QT_TRANSLATE_NOOP("Elements", "Receipt date"), {}, receiptDateProblem},
        {"TermYears",
         Kind::EitherNumber,
         QT_TRANSLATE_NOOP("Elements", "Term (years)"),
         {},
         within(1, 50, QT_TRANSLATE_NOOP("Elements", "The term is from 1 to 50 years."))},
        {"EndDate", Kind::EitherDate, QT_TRANSLATE_NOOP("Elements", "Ends on"), {}, endDateProblem},
        {"MonthlyContribution", Kind::OptionAmount, QT_TRANSLATE_NOOP("Elements", "Monthly amount (R)")},
    };
}

QList<OpenPoint> incomeProblems(const Quote &quote)
{
    constexpr auto place = OpenPoint::Place::Income;
    const QString percent = quote.details.value(u"IncomePercent"_s);
    const QString amount = quote.details.value(u"IncomeAmount"_s);
    if (percent.isEmpty() && amount.isEmpty())
        return {{place, LivingAnnuityForm::tr("The yearly income is missing."), u"IncomePercent"_s}};
    // Amounts are compared as amounts; converted to a percentage an amount would be rounded to the limit.
    const auto ofCapital = [&quote](Currency share) { return Currency::mulDiv(share, quote.amount, 100); };
    const bool isShare = !percent.isEmpty();
    Currency income;
    if (!TryStrToCurr(isShare ? percent : amount, income))
        return {}; // kept as typed and reported beside the field
    const Currency least = isShare ? leastIncome : ofCapital(leastIncome);
    const Currency largest = isShare ? largestIncome : ofCapital(largestIncome);
    if ((income >= least && income <= largest) || (!isShare && quote.amount.isZero()))
        return {};
    const auto money = [](Currency value) { return FormatFloat(FormatMask::Thousands, value); };
    const QString sentence =
        LivingAnnuityForm::tr(
            "The yearly income is from 2.50 to 17.50 percent of the capital, which is from R %1 to R %2.")
            .arg(money(ofCapital(leastIncome)), money(ofCapital(largestIncome)));
    return {{place, sentence, isShare ? u"IncomePercent"_s : u"IncomeAmount"_s}};
}

} // namespace

ProductPages pagesOf(int productID)
{
    switch (productID) {
    case RetirementAnnuityForm::ProductID:
        return {retirementAnnuityDetails(), {}};
    case LivingAnnuityForm::ProductID:
        return {livingAnnuityDetails(), livingAnnuityIncome(), incomeProblems};
    case InvestmentPlanForm::ProductID:
        return {investmentPlanDetails(), {}};
    default:
        return {};
    }
}

QList<OpenPoint> problemsOf(const Quote &quote, const ProductPages &product, const ElementsPage &details,
                            const ElementsPage &income)
{
    using Place = OpenPoint::Place;
    QList<OpenPoint> points;
    if (quote.clientID == 0)
        points.append({Place::Investor, QuoteForm::tr("No investor is chosen.")});
    const auto add = [&points](Place place, const ElementsPage &page) {
        for (const ElementsPage::Problem &problem : page.problems())
            points.append({place, problem.sentence, problem.element});
    };
    add(Place::Details, details);
    add(Place::Income, income);
    if (product.problems)
        points += product.problems(quote);
    if (const QString refusal = InvestmentField::refusalOf(quote); !refusal.isEmpty())
        points.append({Place::Amount, refusal});
    else if (quote.amount.isZero())
        points.append({Place::Amount, QuoteForm::tr("The investment has no amount yet.")});
    return points;
}

} // namespace QuoteDesk

// A host's lines about amounts. The lines between #ifdef and #endif would lose money: consumer.sh checks that
// the compiler refuses each of them and accepts the rest.
#include "funds/fra_FundAllocation.h"

#include <QDoubleSpinBox>
#include <QSpinBox>

void rightLines(TfraFundAllocation &frame, const QSpinBox &units, const QDoubleSpinBox &rand, double number,
                qint64 wide)
{
    frame.Set_InvestmentAmount(100000);
    frame.Set_InvestmentAmount(Currency(wide));
    frame.Set_InvestmentAmount(Currency(5'000'000'000));
    frame.Set_InvestmentAmount(Currency::fromDouble(number));
    frame.Set_InvestmentAmount(Currency::fromLongDouble(100000.57L));
    QObject::connect(&units, &QSpinBox::valueChanged, &frame, &TfraFundAllocation::Set_InvestmentAmount);
    QObject::connect(&rand, &QDoubleSpinBox::valueChanged, &frame,
                     [&frame](double value) { frame.Set_InvestmentAmount(Currency::fromDouble(value)); });
}

void wrongLines([[maybe_unused]] TfraFundAllocation &frame, [[maybe_unused]] const QDoubleSpinBox &rand,
                [[maybe_unused]] double number, [[maybe_unused]] qint64 wide)
{
#ifdef REFUSE_CENTS_OF_A_LITERAL
    frame.Set_InvestmentAmount(100000.57);
#endif
#ifdef REFUSE_EXPONENT
    frame.Set_InvestmentAmount(5e9);
#endif
#ifdef REFUSE_DOUBLE
    frame.Set_InvestmentAmount(number);
#endif
#ifdef REFUSE_FLOAT
    frame.Set_InvestmentAmount(0.5F);
#endif
#ifdef REFUSE_LONG_DOUBLE
    frame.Set_InvestmentAmount(0.5L);
#endif
#ifdef REFUSE_WIDE_INTEGER_UNASKED
    frame.Set_InvestmentAmount(wide);
#endif
#ifdef REFUSE_TRUTH_VALUE
    frame.Set_InvestmentAmount(true);
#endif
#ifdef REFUSE_CHARACTER
    frame.Set_InvestmentAmount('7');
#endif
#ifdef REFUSE_SPIN_BOX
    QObject::connect(&rand, &QDoubleSpinBox::valueChanged, &frame, &TfraFundAllocation::Set_InvestmentAmount);
#endif
#ifdef REFUSE_DOUBLE_IN_A_RECORD
    TFundRec record{12, nullptr, number, 0};
#endif
#ifdef REFUSE_DOUBLE_BY_NAME
    Currency amount(number);
#endif
#ifdef REFUSE_ASSIGNED_DOUBLE
    frame.Funds()[0].Amount = number;
#endif
#ifdef REFUSE_COUNTING_WITH_DOUBLES
    frame.Set_InvestmentAmount(frame.Get_RemainingAmount() * 1.15);
#endif
#ifdef REFUSE_FRACTION_AS_STORED
    frame.Set_InvestmentAmount(Currency::fromRaw(number));
#endif
}

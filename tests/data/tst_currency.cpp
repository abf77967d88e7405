#include "ZelTest.h"

#include "data/Currency.h"
#include "data/Exceptions.h"
#include "data/Format.h"

#include <QRandomGenerator>
#include <QVariant>

#include <boost/multiprecision/cpp_int.hpp>

#include <cmath>
#include <limits>
#include <tuple>
#include <type_traits>
#include <vector>

using namespace Qt::StringLiterals;

using boost::multiprecision::cpp_int;

namespace
{

// ---- the expected values: exact integer arithmetic and decimal strings, written independently of the code
// under test. 128 bits are fast enough for a million cases; a part of the cases also runs with integers of
// unlimited size and so shows that 128 bits do not overflow.

__extension__ using Wide = __int128;

constexpr std::int64_t Lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t Highest = std::numeric_limits<std::int64_t>::max();

// floor(top / bottom) for a positive bottom
template <typename Int> Int floorOf(const Int &top, const Int &bottom)
{
    Int quotient = top / bottom;
    if (quotient * bottom > top)
        --quotient;
    return quotient;
}

// The integer nearest to top / bottom; the caller says how ties are rounded.
enum class Tie { Even, Away };
template <typename Int> Int nearest(Int top, Int bottom, Tie tie)
{
    if (bottom < 0) {
        top = -top;
        bottom = -bottom;
    }
    const Int low = floorOf<Int>(top, bottom);
    const Int twice = 2 * (top - low * bottom);
    if (twice != bottom)
        return twice < bottom ? low : Int(low + 1);
    if (tie == Tie::Away)
        return top < 0 ? low : Int(low + 1);
    return low % 2 == 0 ? low : Int(low + 1);
}

template <typename Int> Int exact(Currency value)
{
    return Int(value.raw());
}

template <typename Int> bool fits(const Int &value)
{
    return value >= Lowest && value <= Highest;
}

// The value of an operation; nothing when it throws EOverflow.
template <typename F> std::optional<Currency> attempt(F &&operation)
{
    try {
        return operation();
    } catch (const EOverflow &) {
        return std::nullopt;
    }
}

template <typename Int> bool agrees(const std::optional<Currency> &got, const Int &expected)
{
    return got ? exact<Int>(*got) == expected : !fits<Int>(expected);
}

// The expected text of a number of cents.
template <typename Int> QString shownCents(const Int &cents, bool separators)
{
    const auto size = static_cast<quint64>(cents < 0 ? Int(-cents) : cents);
    QString whole = QString::number(size / 100);
    if (separators) {
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3)
            whole.insert(at, u',');
    }
    const QString cent = QString::number(size % 100 + 100).mid(1);
    return QLatin1String(cents < 0 ? "-" : "") + whole + u'.' + cent;
}

// The exact value of a double as a fraction.
template <typename Int> void fractionOf(double value, Int &top, Int &bottom)
{
    int exponent = 0;
    const double mantissa = std::frexp(value, &exponent);
    top = static_cast<std::int64_t>(std::ldexp(mantissa, 53));
    bottom = 1;
    exponent -= 53;
    // Reduces the fraction, so that the multiplications below cannot overflow.
    while (exponent < 0 && top != 0 && top % 2 == 0) {
        top /= 2;
        ++exponent;
    }
    if (exponent > 0)
        top *= Int(1) << static_cast<unsigned>(exponent);
    else
        bottom <<= static_cast<unsigned>(-exponent);
}

// A random raw value: its magnitude is random, too, and sometimes it lies at the end of the range.
std::int64_t spreadRaw(QRandomGenerator &random)
{
    const quint32 kind = random.bounded(64U);
    if (kind == 0)
        return std::numeric_limits<std::int64_t>::min() + static_cast<std::int64_t>(random.bounded(3));
    if (kind == 1)
        return std::numeric_limits<std::int64_t>::max() - static_cast<std::int64_t>(random.bounded(3));
    if (kind == 2)
        return random.bounded(-2, 3);
    const quint64 bits = random.generate64() >> random.bounded(64);
    return static_cast<std::int64_t>(bits);
}

QString describe(std::int64_t a, std::int64_t b, std::int64_t c)
{
    return u"raw values %1, %2, %3"_s.arg(a).arg(b).arg(c);
}

// A million cases in total.
constexpr int ArithmeticCases = 400000;
constexpr int ConversionCases = 300000;
constexpr int FormattingCases = 300000;
constexpr int UnboundedCases = 20000;

// ---- the ways to make a Currency, checked at compile time: a line that would lose money must not compile.

template <typename T> constexpr bool converts = std::is_convertible_v<T, Currency>;
template <typename T>
constexpr bool refused = !std::is_constructible_v<Currency, T> && !std::is_convertible_v<T, Currency> &&
                         !std::is_assignable_v<Currency &, T>;
// Explicitly only: the program states that a value out of range may throw.
template <typename T>
constexpr bool onRequest = std::is_constructible_v<Currency, T> && !std::is_convertible_v<T, Currency> &&
                           !std::is_assignable_v<Currency &, T>;
template <typename T>
concept Calculates = requires(Currency value, T other)
{
    value + other;
}
|| requires(Currency value, T other)
{
    value *other;
}
|| requires(Currency value, T other)
{
    value < other;
}
|| requires(Currency value, T other)
{
    value == other;
};
template <typename T>
concept IsRaw = requires(T stored)
{
    Currency::fromRaw(stored);
};
enum Plain { First };
enum class Scoped { First };

static_assert(converts<int> && converts<const int &> && converts<unsigned>);
static_assert(converts<short> && converts<unsigned short> && converts<signed char> &&
              converts<unsigned char>);
static_assert(onRequest<long> && onRequest<unsigned long>); // long has 64 bits on some systems
static_assert(onRequest<qint64> && onRequest<quint64> && onRequest<qsizetype>);
static_assert(refused<double> && refused<float> && refused<long double> && refused<const double &>);
static_assert(refused<bool> && refused<char> && refused<wchar_t>);
static_assert(refused<char8_t> && refused<char16_t> && refused<char32_t> && refused<QChar>);
static_assert(refused<Plain> && refused<Scoped> && refused<const char *> && refused<std::nullptr_t>);
static_assert(Calculates<int> && !Calculates<double> && !Calculates<float> && !Calculates<bool> &&
              !Calculates<qint64>);
static_assert(IsRaw<int> && IsRaw<unsigned> && IsRaw<qint64> && !IsRaw<double> && !IsRaw<float> &&
              !IsRaw<quint64>);
// Implicit conversions never throw.
static_assert(std::is_nothrow_convertible_v<int, Currency> &&
              std::is_nothrow_convertible_v<quint32, Currency>);
static_assert(Currency(5'000'000'000).raw() == 50'000'000'000'000);

// Compares the constructor with integers of unlimited size.
template <typename T> void checkWholeNumbers(const std::vector<T> &numbers)
{
    for (const T number : numbers) {
        const cpp_int expected = cpp_int(number) * 10000;
        QVERIFY2(agrees<cpp_int>(attempt([number] { return Currency(number); }), expected),
                 expected.str().c_str());
    }
}

// Compares every operation with wide integers, for random operands.
template <typename Int> void checkArithmetic(int cases)
{
    QRandomGenerator random(20040131);
    for (int i = 0; i < cases; ++i) {
        const std::int64_t rawA = spreadRaw(random);
        const std::int64_t rawB = spreadRaw(random);
        const std::int64_t rawC = spreadRaw(random);
        const Currency a = Currency::fromRaw(rawA);
        const Currency b = Currency::fromRaw(rawB);
        const Currency c = Currency::fromRaw(rawC);
        const Int exactA = rawA;
        const Int exactB = rawB;
        bool good = agrees(attempt([&] { return a + b; }), Int(exactA + exactB)) &&
                    agrees(attempt([&] { return a - b; }), Int(exactA - exactB)) &&
                    agrees(attempt([&] { return -a; }), Int(-exactA)) &&
                    agrees(attempt([&] { return a * b; }), nearest<Int>(exactA * exactB, 10000, Tie::Even)) &&
                    (a < b) == (exactA < exactB) && (a == b) == (exactA == exactB);
        if (rawB != 0)
            good = good &&
                   agrees(attempt([&] { return a / b; }), nearest<Int>(exactA * 10000, exactB, Tie::Even));
        if (rawC != 0) {
            good = good && agrees(attempt([&] { return Currency::mulDiv(a, b, c); }),
                                  nearest<Int>(exactA * exactB, rawC, Tie::Even));
        }
        QVERIFY2(good, qPrintable(describe(rawA, rawB, rawC)));
    }
}

// Converts values to text and to double and back, and rounds doubles of every magnitude.
template <typename Int> void checkConversions(int cases)
{
    QRandomGenerator random(19991231);
    for (int i = 0; i < cases; ++i) {
        const std::int64_t raw = spreadRaw(random);
        const Currency value = Currency::fromRaw(raw);
        const QString text = value.toString();
        Currency back;
        bool good = TryStrToCurr(text, back) && back == value;
        const double number = value.toDouble();
        // toDouble() gives the nearest double.
        good = good && number == text.toDouble();
        if (std::abs(number) < 1e11)
            good = good && Currency::fromDouble(number) == value;

        double other = std::ldexp(random.generateDouble() - 0.5, random.bounded(-20, 53));
        if (i % 3 == 0) // multiples of 1/64, among which exact ties are frequent
            other = std::ldexp(std::round(std::ldexp(other, 6)), -6);
        Int top;
        Int bottom;
        fractionOf<Int>(other, top, bottom);
        good = good && agrees(attempt([&] { return Currency::fromDouble(other); }),
                              nearest<Int>(top * 10000, bottom, Tie::Even));
        QVERIFY2(good, qPrintable(describe(raw, back.raw(), 0) + u", %1"_s.arg(other, 0, 'g', 17)));
    }
}

// Formats values with every mask and reads texts with more decimals than Currency keeps.
template <typename Int> void checkFormatting(int cases)
{
    QRandomGenerator random(42);
    for (int i = 0; i < cases; ++i) {
        const std::int64_t raw = spreadRaw(random);
        const Currency value = Currency::fromRaw(raw);
        const Int cents = nearest<Int>(raw, 100, Tie::Away);
        const QString thousands = shownCents<Int>(cents, true);
        const QString plain = shownCents<Int>(cents, false);
        bool good = FormatFloat(FormatMask::Thousands, value) == thousands &&
                    FormatFloat(FormatMask::TwoDecimals, value) == plain &&
                    agrees(attempt([&] { return RoundToShownCents(value); }), Int(cents * 100));
        // A number of three to seven decimals that a double represents precisely enough to show it again.
        const int decimals = random.bounded(3, 8);
        const auto digits = static_cast<std::int64_t>(random.bounded(1000000000U)) - 500000000;
        std::int64_t scale = 1;
        for (int power = 0; power < decimals; ++power)
            scale *= 10;
        const double number = static_cast<double>(digits) / static_cast<double>(scale);
        const Int numberCents = nearest<Int>(Int(digits) * 100, scale, Tie::Away);
        good = good && FormatFloat(FormatMask::Thousands, number) == shownCents<Int>(numberCents, true);
        const QString typed = QString::number(number, 'f', decimals);
        Currency read;
        good = good && TryStrToCurr(typed, read) &&
               exact<Int>(read) == nearest<Int>(Int(digits) * 10000, scale, Tie::Even) &&
               StrToFloat(typed) == number;
        QVERIFY2(good, qPrintable(describe(raw, digits, decimals)));
    }
}

} // namespace

class tst_Currency : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void storesTenThousandths();
    void takesWholeNumbersExactly();
    void addsAndSubtractsExactly();
    void reportsOverflow();
    void roundsProductsAndQuotientsToEven();
    void mulDivRoundsOnce();
    void comparesByValue();
    void readsDoubles_data();
    void readsDoubles();
    void refusesDoublesOutOfRange();
    void givesTheNearestDouble();
    void writesShortestText_data();
    void writesShortestText();
    void travelsInVariants();
    void readsVariants_data();
    void readsVariants();
    void refusesOtherVariants();
    void formats_data();
    void formats();
    void formatsDoubles_data();
    void formatsDoubles();
    void refusesToFormat();
    void roundsAsShown();
    void strToFloat_data();
    void strToFloat();
    void strToInt_data();
    void strToInt();
    void strToCurr_data();
    void strToCurr();
    void randomArithmetic();
    void randomConversions();
    void randomFormatting();
};

void tst_Currency::storesTenThousandths()
{
    QCOMPARE(Currency().raw(), 0);
    QVERIFY(Currency().isZero());
    QCOMPARE(Currency(100).raw(), 1000000);
    QCOMPARE(Currency(-1).raw(), -10000);
    QCOMPARE(Currency(std::numeric_limits<int>::max()).raw(), 21474836470000);
    QCOMPARE(Currency::fromRaw(7).raw(), 7);
    QCOMPARE(Currency::max().raw(), std::numeric_limits<std::int64_t>::max());
    QCOMPARE(Currency::min().raw(), std::numeric_limits<std::int64_t>::min());
}

void tst_Currency::takesWholeNumbersExactly()
{
    const auto both = []<typename T>(T) {
        using Limits = std::numeric_limits<T>;
        std::vector<T> numbers{Limits::min(), static_cast<T>(Limits::min() + 1), T{0},         T{1},
                               T{100},        static_cast<T>(Limits::max() - 1), Limits::max()};
        if constexpr (sizeof(T) == sizeof(std::int64_t)) {
            // The largest whole numbers that fit and the first that do not.
            for (const T step : {T{0}, T{1}, T{2}}) {
                numbers.push_back(static_cast<T>(static_cast<T>(Highest / Currency::Scale) + step));
                if constexpr (std::is_signed_v<T>)
                    numbers.push_back(static_cast<T>(Lowest / Currency::Scale - step));
            }
            numbers.push_back(static_cast<T>(5'000'000'000));
        }
        checkWholeNumbers(numbers);
    };
    std::apply([&both](auto... kinds) { (both(kinds), ...); },
               std::tuple<signed char, unsigned char, short, unsigned short, int, unsigned, long,
                          unsigned long, long long, unsigned long long>());
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency(qint64{922'337'203'685'478}));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency(qint64{-922'337'203'685'478}));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency(std::numeric_limits<quint64>::max()));
}

void tst_Currency::addsAndSubtractsExactly()
{
    // The sum of doubles would differ from 1000.
    Currency sum;
    for (int i = 0; i < 10000; ++i)
        sum += Currency::fromRaw(1000);
    QCOMPARE(sum, Currency(1000));
    sum -= Currency::fromRaw(1);
    QCOMPARE(sum.raw(), 9999999);
    QCOMPARE(Currency(3) + Currency(4), Currency(7));
    QCOMPARE(Currency(3) - Currency(4), Currency(-1));
    QCOMPARE(-Currency(3), Currency(-3));
    QCOMPARE(-Currency::max(), Currency::fromRaw(-std::numeric_limits<std::int64_t>::max()));
    QCOMPARE(Currency::max() + Currency::min(), Currency::fromRaw(-1));
}

void tst_Currency::reportsOverflow()
{
    const Currency step = Currency::fromRaw(1);
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::max() + step);
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::min() - step);
    QVERIFY_THROWS_EXCEPTION(EOverflow, -Currency::min());
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::max() * Currency(2));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::min() * Currency(-1));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::min() / Currency(-1));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency(1000000000) * Currency(1000000000));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::max() / Currency::fromRaw(5000));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency(1) / Currency());
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency() / Currency());
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::mulDiv(Currency(1), Currency(1), Currency()));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::mulDiv(Currency::max(), Currency(2), Currency(1)));
    // An operation that throws leaves its operand unchanged.
    Currency value = Currency::max();
    QVERIFY_THROWS_EXCEPTION(EOverflow, value += step);
    QCOMPARE(value, Currency::max());
    value = Currency::min();
    QVERIFY_THROWS_EXCEPTION(EOverflow, value -= step);
    QCOMPARE(value, Currency::min());
}

void tst_Currency::roundsProductsAndQuotientsToEven()
{
    const auto raw = [](std::int64_t value) { return Currency::fromRaw(value); };
    // 0.0001 x 0.5 = 0.00005, a tie between 0 and 0.0001.
    QCOMPARE((raw(1) * raw(5000)).raw(), 0);
    QCOMPARE((raw(3) * raw(5000)).raw(), 2);
    QCOMPARE((raw(5) * raw(5000)).raw(), 2);
    QCOMPARE((raw(-3) * raw(5000)).raw(), -2);
    QCOMPARE((raw(3) * raw(5001)).raw(), 2);
    QCOMPARE((raw(1) * raw(5001)).raw(), 1);
    QCOMPARE((raw(1) / Currency(2)).raw(), 0);
    QCOMPARE((raw(3) / Currency(2)).raw(), 2);
    QCOMPARE((raw(-3) / Currency(2)).raw(), -2);
    QCOMPARE((Currency(1) / Currency(3)).raw(), 3333);
    QCOMPARE((Currency(2) / Currency(3)).raw(), 6667);
    QCOMPARE((Currency(-2) / Currency(3)).raw(), -6667);
    QCOMPARE(Currency::max() * Currency(1), Currency::max());
    QCOMPARE(Currency::min() * Currency(1), Currency::min());
    QCOMPARE(Currency::min() / Currency(1), Currency::min());
}

void tst_Currency::mulDivRoundsOnce()
{
    // 33.33 % of 1,000.00, and the percentage that 333.30 is of 1,000.00.
    QCOMPARE(Currency::mulDiv(Currency::fromRaw(333300), Currency(1000), Currency(100)).raw(), 3333000);
    QCOMPARE(Currency::mulDiv(Currency::fromRaw(3333000), Currency(100), Currency(1000)).raw(), 333300);
    // Intermediate rounding would lose the last digit.
    QCOMPARE(Currency::mulDiv(Currency(1), Currency(2), Currency(3)).raw(), 6667);
    QCOMPARE(Currency::mulDiv(Currency(100), Currency::fromRaw(1), Currency(300)).raw(), 0);
    QCOMPARE(Currency::mulDiv(Currency::max(), Currency::max(), Currency::max()), Currency::max());
    QCOMPARE(Currency::mulDiv(Currency::min(), Currency::min(), Currency::min()), Currency::min());
    QCOMPARE(Currency::mulDiv(Currency::min(), Currency(100), Currency(100)), Currency::min());
}

void tst_Currency::comparesByValue()
{
    QVERIFY(Currency(1) < Currency(2));
    QVERIFY(Currency(-1) < Currency());
    QVERIFY(Currency::min() < Currency::max());
    QVERIFY(Currency(2) >= Currency(2));
    QVERIFY(Currency(2) == Currency::fromRaw(20000));
    QVERIFY(Currency(2) != Currency::fromRaw(20001));
}

void tst_Currency::readsDoubles_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<qint64>("raw");
    QTest::newRow("zero") << 0.0 << qint64{0};
    QTest::newRow("negative zero") << -0.0 << qint64{0};
    QTest::newRow("tenth") << 0.1 << qint64{1000};
    QTest::newRow("amount") << 1234.5678 << qint64{12345678};
    QTest::newRow("negative amount") << -1234.5678 << qint64{-12345678};
    // Ties are rare, because only binary fractions are exact. 1/32 = 0.03125.
    QTest::newRow("tie down to even") << 0.03125 << qint64{312};
    QTest::newRow("tie up to even") << 0.09375 << qint64{938};
    QTest::newRow("negative tie") << -0.03125 << qint64{-312};
    // The double 0.00005 is slightly above the tie, 0.00015 slightly below.
    QTest::newRow("above a tie") << 0.00005 << qint64{1};
    QTest::newRow("below a tie") << 0.00015 << qint64{1};
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min() << qint64{0};
    QTest::newRow("largest that fits") << 922337203685477.5 << qint64{9223372036854775000};
    QTest::newRow("lowest that fits") << -922337203685477.5 << qint64{-9223372036854775000};
}

void tst_Currency::readsDoubles()
{
    QFETCH(double, value);
    QFETCH(qint64, raw);
    QCOMPARE(Currency::fromDouble(value).raw(), raw);
    QCOMPARE(Currency::fromLongDouble(static_cast<long double>(value)).raw(), raw);
}

void tst_Currency::refusesDoublesOutOfRange()
{
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromDouble(922337203685478.0));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromDouble(-922337203685478.0));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromDouble(1e300));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromDouble(std::numeric_limits<double>::infinity()));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromDouble(-std::numeric_limits<double>::infinity()));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromDouble(std::numeric_limits<double>::quiet_NaN()));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromLongDouble(std::numeric_limits<long double>::max()));
}

void tst_Currency::givesTheNearestDouble()
{
    QCOMPARE(Currency::fromRaw(1000).toDouble(), 0.1);
    QCOMPARE(Currency::fromRaw(-12345678).toDouble(), -1234.5678);
    QCOMPARE(Currency::max().toDouble(), 922337203685477.5807);
    QCOMPARE(Currency::min().toDouble(), -922337203685477.5808);
    QCOMPARE(Currency().toDouble(), 0.0);
}

void tst_Currency::writesShortestText_data()
{
    QTest::addColumn<qint64>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << qint64{0} << u"0"_s;
    QTest::newRow("whole") << qint64{120000} << u"12"_s;
    QTest::newRow("one decimal") << qint64{125000} << u"12.5"_s;
    QTest::newRow("four decimals") << qint64{-1} << u"-0.0001"_s;
    QTest::newRow("inner zeros") << qint64{10010} << u"1.001"_s;
    QTest::newRow("thousands") << qint64{12345670000} << u"1234567"_s;
    QTest::newRow("highest") << std::numeric_limits<qint64>::max() << u"922337203685477.5807"_s;
    QTest::newRow("lowest") << std::numeric_limits<qint64>::min() << u"-922337203685477.5808"_s;
}

void tst_Currency::writesShortestText()
{
    QFETCH(qint64, raw);
    QFETCH(QString, text);
    const Currency value = Currency::fromRaw(raw);
    QCOMPARE(value.toString(), text);
    QCOMPARE(Currency::fromText(text), value);
}

void tst_Currency::travelsInVariants()
{
    const Currency value = Currency::fromRaw(-125000);
    const QVariant variant = value.toVariant();
    QCOMPARE(variant.value<Currency>(), value);
    QCOMPARE(Currency::fromVariant(variant), value);
    QCOMPARE(variant.toString(), u"-12.5"_s);
    QCOMPARE(variant.toDouble(), -12.5);
    QCOMPARE(variant, QVariant::fromValue(Currency::fromRaw(-125000)));
    QVERIFY(variant != QVariant::fromValue(Currency()));
    QCOMPARE(QVariant(u"7.25"_s).value<Currency>().raw(), 72500);
    QVERIFY(!QVariant(u"1,000"_s).convert(QMetaType::fromType<Currency>()));
    QCOMPARE(QVariant(42).value<Currency>(), Currency(42));
    QCOMPARE(QVariant(0.1).value<Currency>().raw(), 1000);
    QVERIFY(!QVariant(1e300).convert(QMetaType::fromType<Currency>()));
    QCOMPARE(QVariant(5'000'000'000LL).value<Currency>().raw(), 50'000'000'000'000);
    QCOMPARE(QVariant(5'000'000'000ULL).value<Currency>().raw(), 50'000'000'000'000);
    QCOMPARE(QVariant(4'000'000'000U).value<Currency>().raw(), 40'000'000'000'000);
    QCOMPARE(QVariant::fromValue<short>(-5).value<Currency>(), Currency(-5));
    QVERIFY(!QVariant(922'337'203'685'478LL).convert(QMetaType::fromType<Currency>()));
    QVERIFY(!QVariant(~quint64{0}).convert(QMetaType::fromType<Currency>()));
}

void tst_Currency::readsVariants_data()
{
    QTest::addColumn<QVariant>("variant");
    QTest::addColumn<qint64>("raw");
    QTest::newRow("invalid") << QVariant() << qint64{0};
    QTest::newRow("null text") << QVariant(QMetaType::fromType<QString>()) << qint64{0};
    QTest::newRow("null integer") << QVariant(QMetaType::fromType<int>()) << qint64{0};
    QTest::newRow("int") << QVariant(-3) << qint64{-30000};
    QTest::newRow("unsigned") << QVariant(3U) << qint64{30000};
    QTest::newRow("short") << QVariant::fromValue<short>(-5) << qint64{-50000};
    QTest::newRow("long long") << QVariant(922337203685477LL) << qint64{9223372036854770000};
    QTest::newRow("double") << QVariant(12.34) << qint64{123400};
    QTest::newRow("float") << QVariant(0.5F) << qint64{5000};
    QTest::newRow("text") << QVariant(u" -12.34 "_s) << qint64{-123400};
    QTest::newRow("currency") << QVariant::fromValue(Currency::fromRaw(17)) << qint64{17};
}

void tst_Currency::readsVariants()
{
    QFETCH(QVariant, variant);
    QFETCH(qint64, raw);
    QCOMPARE(Currency::fromVariant(variant).raw(), raw);
}

void tst_Currency::refusesOtherVariants()
{
    QVERIFY_THROWS_EXCEPTION(EConvertError, Currency::fromVariant(u"1,000.00"_s));
    QVERIFY_THROWS_EXCEPTION(EConvertError, Currency::fromVariant(u""_s));
    QVERIFY_THROWS_EXCEPTION(EConvertError, Currency::fromVariant(true));
    QVERIFY_THROWS_EXCEPTION(EConvertError, Currency::fromVariant(QDate(2004, 1, 31)));
    QVERIFY_THROWS_EXCEPTION(EConvertError, Currency::fromVariant(QVariantList{1, 2}));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromVariant(std::numeric_limits<qlonglong>::min()));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromVariant(std::numeric_limits<qulonglong>::max()));
    QVERIFY_THROWS_EXCEPTION(EOverflow, Currency::fromVariant(1e300));
    try {
        Currency::fromVariant(u"ten rand"_s);
        QFAIL("a text that is no number was taken");
    } catch (const EConvertError &error) {
        QVERIFY(error.message().contains(u"ten rand"_s));
    }
}

void tst_Currency::formats_data()
{
    QTest::addColumn<qint64>("raw");
    QTest::addColumn<QString>("thousands");
    QTest::addColumn<QString>("plain");
    const auto row = [](const char *name, qint64 raw, const char *thousands, const char *plain) {
        QTest::newRow(name) << raw << QString::fromLatin1(thousands) << QString::fromLatin1(plain);
    };
    row("zero", 0, "0.00", "0.00");
    row("cents", 500, "0.05", "0.05");
    row("hundreds", 9999900, "999.99", "999.99");
    row("thousand", 10000000, "1,000.00", "1000.00");
    row("hundred thousand", 1234567800, "123,456.78", "123456.78");
    row("million", 12345678900, "1,234,567.89", "1234567.89");
    row("half up", 10050, "1.01", "1.01");
    row("half of an odd cent", 10150, "1.02", "1.02");
    row("below half", 10049, "1.00", "1.00");
    row("negative half away", -10050, "-1.01", "-1.01");
    row("negative below half", -10049, "-1.00", "-1.00");
    row("carries into thousands", 9999950, "1,000.00", "1000.00");
    row("negative thousands", -1234567800, "-123,456.78", "-123456.78");
    row("rounds to nothing", 49, "0.00", "0.00");
    // A negative value that rounds to zero has no minus sign.
    row("negative rounds to nothing", -40, "0.00", "0.00");
    row("negative half of a cent", -50, "-0.01", "-0.01");
    row("highest", std::numeric_limits<qint64>::max(), "922,337,203,685,477.58", "922337203685477.58");
    row("lowest", std::numeric_limits<qint64>::min(), "-922,337,203,685,477.58", "-922337203685477.58");
}

void tst_Currency::formats()
{
    QFETCH(qint64, raw);
    QFETCH(QString, thousands);
    QFETCH(QString, plain);
    const Currency value = Currency::fromRaw(raw);
    QCOMPARE(FormatFloat(u"#,##0.00"_s, value), thousands);
    QCOMPARE(FormatFloat(u"#,#0.00"_s, value), thousands);
    QCOMPARE(FormatFloat(u"#0.00"_s, value), plain);
    QCOMPARE(FormatFloat(FormatMask::Thousands, value), thousands);
    QCOMPARE(FormatFloat(FormatMask::TwoDecimals, value), plain);
}

void tst_Currency::formatsDoubles_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("thousands");
    QTest::addColumn<QString>("plain");
    const auto row = [](const char *name, double value, const char *thousands, const char *plain) {
        QTest::newRow(name) << value << QString::fromLatin1(thousands) << QString::fromLatin1(plain);
    };
    row("zero", 0.0, "0.00", "0.00");
    row("negative zero", -0.0, "0.00", "0.00");
    row("digit", 7.0, "7.00", "7.00");
    row("amount", 1234567.891, "1,234,567.89", "1234567.89");
    // The double 1.005 is slightly below 1.005; what is rounded is its shortest decimal text.
    row("half of the shown digits", 1.005, "1.01", "1.01");
    row("negative half", -1.005, "-1.01", "-1.01");
    row("more halves", 2.675, "2.68", "2.68");
    row("just below a half", 1.00499999, "1.00", "1.00");
    row("sum of binary fractions", 0.1 + 0.2, "0.30", "0.30");
    row("carry to a new digit", 999.995, "1,000.00", "1000.00");
    row("carry from nothing", 0.995, "1.00", "1.00");
    row("half cent", 0.005, "0.01", "0.01");
    row("below half a cent", 0.004, "0.00", "0.00");
    row("negative below half a cent", -0.004, "0.00", "0.00");
    row("far below", 1e-300, "0.00", "0.00");
    row("smallest", -std::numeric_limits<double>::denorm_min(), "0.00", "0.00");
    row("million", 1e6, "1,000,000.00", "1000000.00");
    row("beyond money", 1e21, "1,000,000,000,000,000,000,000.00", "1000000000000000000000.00");
    row("digits then zeros", 1.5e17, "150,000,000,000,000,000.00", "150000000000000000.00");
}

void tst_Currency::formatsDoubles()
{
    QFETCH(double, value);
    QFETCH(QString, thousands);
    QFETCH(QString, plain);
    QCOMPARE(FormatFloat(u"#,##0.00"_s, value), thousands);
    QCOMPARE(FormatFloat(u"#,#0.00"_s, value), thousands);
    QCOMPARE(FormatFloat(u"#0.00"_s, value), plain);
    QCOMPARE(FormatFloat(FormatMask::TwoDecimals, value), plain);
}

void tst_Currency::refusesToFormat()
{
    for (const char *mask : {"", "0.00", "#,##0.000", "#,##0.00 ", "#,##0"}) {
        const QString text = QString::fromLatin1(mask);
        QVERIFY_THROWS_EXCEPTION(EConvertError, FormatFloat(text, Currency(1)));
        try {
            FormatFloat(text, 1.0);
            QFAIL("an unknown mask was taken");
        } catch (const EConvertError &error) {
            QVERIFY(error.message().contains(QLatin1Char('\'') + text + QLatin1Char('\'')));
        }
    }
    QVERIFY_THROWS_EXCEPTION(EConvertError,
                             FormatFloat(FormatMask::Thousands, std::numeric_limits<double>::infinity()));
    QVERIFY_THROWS_EXCEPTION(EConvertError,
                             FormatFloat(FormatMask::Thousands, std::numeric_limits<double>::quiet_NaN()));
    QCOMPARE(FormatFloat(FormatMask::TwoDecimals, std::numeric_limits<double>::max()).size(), 309 + 3);
}

void tst_Currency::roundsAsShown()
{
    QCOMPARE(RoundToShownCents(Currency::fromRaw(10050)).raw(), 10100);
    QCOMPARE(RoundToShownCents(Currency::fromRaw(10049)).raw(), 10000);
    QCOMPARE(RoundToShownCents(Currency::fromRaw(-10050)).raw(), -10100);
    QCOMPARE(RoundToShownCents(Currency::fromRaw(-49)).raw(), 0);
    QCOMPARE(RoundToShownCents(Currency(12)), Currency(12));
    QCOMPARE(RoundToShownCents(Currency::fromRaw(9223372036854775749)).raw(), 9223372036854775700);
    // From 922337203685477.5850 on, the shown cents exceed the range.
    QCOMPARE(RoundToShownCents(Currency::max()).raw(), 9223372036854775800);
}

void tst_Currency::strToFloat_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::addColumn<double>("value");
    const auto good = [](const char *text, double value) {
        QTest::newRow(text) << QString::fromUtf8(text) << true << value;
    };
    const auto bad = [](const char *text) { QTest::newRow(text) << QString::fromUtf8(text) << false << 0.0; };
    good("0", 0);
    good("12", 12);
    good("-12.5", -12.5);
    good("+12.5", 12.5);
    good("  12.5\t", 12.5);
    good(".5", 0.5);
    good("5.", 5);
    good("-.5", -0.5);
    good("1e3", 1000);
    good("1.5E-3", 0.0015);
    good("2e+2", 200);
    good("007", 7);
    good("0.1", 0.1);
    good("123456789012345678901234567890", 123456789012345678901234567890.0);
    good("1e-999", 0.0);
    good("1.7976931348623157e308", std::numeric_limits<double>::max());
    bad("");
    bad(" ");
    bad(".");
    bad("-");
    bad("+");
    bad("--1");
    bad("+-1");
    bad("- 1");
    bad("1 000");
    bad("1,000");
    bad("1,000.00");
    bad("1.2.3");
    bad("1e");
    bad("1e+");
    bad("e5");
    bad("1e5.5");
    bad("1e999");
    bad("-1e999");
    bad("nan");
    bad("NaN");
    bad("inf");
    bad("-Infinity");
    bad("0x10");
    bad("$10");
    bad("R 12.50");
    bad("12.50%");
    bad("ten");
    bad("12abc");
    bad("1_000");
    bad("\xd9\xa1\xd9\xa2"); // digits of another script
    bad("\xef\xbc\x91");     // a wide digit
    bad("\xe2\x88\x92"
        "5"); // a typographic minus
}

void tst_Currency::strToFloat()
{
    QFETCH(QString, text);
    QFETCH(bool, good);
    QFETCH(double, value);
    if (good) {
        QCOMPARE(StrToFloat(text), value);
        return;
    }
    try {
        StrToFloat(text);
        QFAIL("the text was taken for a number");
    } catch (const EConvertError &error) {
        QVERIFY2(error.message().contains(QLatin1Char('\'') + text + QLatin1Char('\'')), error.what());
    }
}

void tst_Currency::strToInt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::addColumn<int>("value");
    const auto good = [](const char *text, int value) {
        QTest::newRow(text) << QString::fromUtf8(text) << true << value;
    };
    const auto bad = [](const char *text) { QTest::newRow(text) << QString::fromUtf8(text) << false << 0; };
    good("0", 0);
    good("-0", 0);
    good(" 12 ", 12);
    good("+12", 12);
    good("-12", -12);
    good("0012", 12);
    good("2147483647", std::numeric_limits<int>::max());
    good("-2147483648", std::numeric_limits<int>::min());
    bad("");
    bad("  ");
    bad("2147483648");
    bad("-2147483649");
    bad("99999999999999999999");
    bad("1.0");
    bad("1.");
    bad("1e3");
    bad("1,000");
    bad("1 000");
    bad("0x1F");
    bad("$1F");
    bad("+");
    bad("+-1");
    bad("1;2");
    bad("12a");
}

void tst_Currency::strToInt()
{
    QFETCH(QString, text);
    QFETCH(bool, good);
    QFETCH(int, value);
    if (good) {
        QCOMPARE(StrToInt(text), value);
        return;
    }
    try {
        StrToInt(text);
        QFAIL("the text was taken for an integer");
    } catch (const EConvertError &error) {
        QVERIFY2(error.message().contains(QLatin1Char('\'') + text + QLatin1Char('\'')), error.what());
    }
}

void tst_Currency::strToCurr_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::addColumn<qint64>("raw");
    const auto good = [](const char *text, qint64 raw) {
        QTest::newRow(text) << QString::fromUtf8(text) << true << raw;
    };
    const auto bad = [](const char *text) {
        QTest::newRow(text) << QString::fromUtf8(text) << false << qint64{0};
    };
    good("0", 0);
    good("-0.00", 0);
    good("12", 120000);
    good(" -12.5 ", -125000);
    good("+0.0001", 1);
    good(".25", 2500);
    good("25.", 250000);
    good("0.00005", 0); // ties to even
    good("0.00015", 2);
    good("-0.00015", -2);
    good("0.000050", 0);
    good("0.0000500001", 1);
    good("0.00004999999999999999999", 0);
    good("000000000000000000000000000001.5", 15000);
    good("922337203685477.5807", std::numeric_limits<qint64>::max());
    good("-922337203685477.5808", std::numeric_limits<qint64>::min());
    good("922337203685477.58069999", std::numeric_limits<qint64>::max());
    good("-922337203685477.58085", std::numeric_limits<qint64>::min());
    bad("922337203685477.5808");
    bad("922337203685477.58075");
    bad("-922337203685477.5809");
    bad("-922337203685477.580850001");
    bad("1000000000000000");
    bad("99999999999999999999999999");
    bad("");
    bad(" ");
    bad(".");
    bad("1e3");
    bad("1,000.00");
    bad("1 000");
    bad("R12");
    bad("nan");
    bad("inf");
    bad("0x10");
    bad("1.2.3");
    bad("--1");
}

void tst_Currency::strToCurr()
{
    QFETCH(QString, text);
    QFETCH(bool, good);
    QFETCH(qint64, raw);
    Currency value = Currency::fromRaw(4711);
    QCOMPARE(TryStrToCurr(text, value), good);
    QCOMPARE(value.raw(), good ? raw : 4711);
    if (good) {
        QCOMPARE(StrToCurr(text).raw(), raw);
        return;
    }
    try {
        StrToCurr(text);
        QFAIL("the text was taken for an amount");
    } catch (const EConvertError &error) {
        QVERIFY2(error.message().contains(QLatin1Char('\'') + text + QLatin1Char('\'')), error.what());
    }
}

void tst_Currency::randomArithmetic()
{
    checkArithmetic<Wide>(ArithmeticCases);
    checkArithmetic<cpp_int>(UnboundedCases);
}

void tst_Currency::randomConversions()
{
    checkConversions<Wide>(ConversionCases);
    checkConversions<cpp_int>(UnboundedCases);
}

void tst_Currency::randomFormatting()
{
    checkFormatting<Wide>(FormattingCases);
    checkFormatting<cpp_int>(UnboundedCases);
}

ZEL_TEST_MAIN(tst_Currency)
#include "tst_currency.moc"

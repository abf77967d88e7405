#include "NumberCases.h"
#include "ZelTest.h"

#include "data/Format.h"

#include <QLocale>
#include <QRandomGenerator>

#include <cmath>

using namespace Qt::StringLiterals;

using Problem = NumberEntry::Problem;
Q_DECLARE_METATYPE(NumberRules)

namespace
{
NumberRules decimals(int most)
{
    NumberRules rules;
    rules.decimals = most;
    return rules;
}

NumberRules range(NumberUnit unit, Currency low, Currency high, int most = 2)
{
    NumberRules rules;
    rules.unit = unit;
    rules.low = low;
    rules.high = high;
    rules.decimals = most;
    return rules;
}
} // namespace

class TestNumberEntry : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyCase()
    {
        for (const NumberCase &each : numberCases) {
            const NumberEntry entry(each.said());
            const QByteArray what = QByteArray("\"") + each.text + "\": " + entry.reason().toUtf8();
            QVERIFY2(entry.problem() == each.problem, what);
            QVERIFY2(entry.isNumber() == each.isNumber(), what);
            QVERIFY2(entry.value() == each.number(), what);
            QVERIFY2(entry.reason().isEmpty() == each.isNumber(), what);
            QVERIFY2(each.problem == Problem::SeveralLines || entry.unit() == each.unit ||
                         (!each.isNumber() && each.unit == NumberUnit::None),
                     what);
            QVERIFY2(entry.toDouble() == 0 || each.isNumber(), what);
            if (!each.isNumber())
                continue;
            // The plain text of an entry is the same number to every other reader.
            QCOMPARE(Currency::fromText(entry.plain()), each.number());
            QVERIFY2(StrToFloat(entry.plain()) == entry.toDouble(), what);
            QVERIFY2(NumberEntry(entry.plain()).value() == each.number() ||
                         NumberEntry(entry.plain()).problem() == Problem::TwoReadings,
                     what);
            for (int most = 0; most < 6; ++most) {
                const NumberEntry limited(each.said(), decimals(most));
                QVERIFY2(limited.isNumber() == (each.decimals <= most), what);
                QVERIFY2(limited.isNumber() || limited.problem() == Problem::TooManyDecimals, what);
            }
        }
    }

    // Numbers that the program shows in any mask are read back, with and without thousands separators.
    void whatIsShownIsReadBack()
    {
        QRandomGenerator random(1994);
        for (int i = 0; i < 20'000; ++i) {
            const qint64 size = random.bounded(1, 15);
            const auto cents = static_cast<qint64>(std::pow(10.0, size) * random.generateDouble());
            const Currency value = Currency::fromRaw((random.bounded(2) == 0 ? cents : -cents) * 100);
            for (const FormatMask mask : {FormatMask::Thousands, FormatMask::TwoDecimals}) {
                const QString shown = FormatFloat(mask, value);
                QCOMPARE(NumberEntry(shown).value(), value);
                QCOMPARE(NumberEntry(u"R "_s + shown).value(), value);
                // The same with the two separators exchanged.
                QString turned = shown;
                turned.replace(u',', u' ').replace(u'.', u',');
                QCOMPARE(NumberEntry(turned).value(), value);
                turned.replace(u' ', u'.');
                QCOMPARE(NumberEntry(turned).value(), value);
            }
        }
    }

    // Random texts are either refused or read with exactly the digits that they contain.
    void noDigitIsLost()
    {
        QRandomGenerator random(2004);
        static constexpr QStringView signs = u"0123456789,. '()-R%e";
        int numbers = 0;
        for (int i = 0; i < 200'000; ++i) {
            QString text;
            for (int k = random.bounded(1, 10); k > 0; --k)
                text.append(signs[random.bounded(signs.size() - (i % 2 == 0 ? 8 : 0))]);
            const NumberEntry entry(text);
            QCOMPARE(entry.isNumber(), entry.reason().isEmpty());
            if (!entry.isNumber())
                continue;
            ++numbers;
            const auto digitsOf = [](const QString &from) {
                QString digits;
                for (const QChar c : from) {
                    if (c >= u'0' && c <= u'9')
                        digits.append(c);
                }
                return digits;
            };
            QString digits = digitsOf(entry.plain());
            if (digits != digitsOf(text)) // a zero that the plain text adds before the point
                digits.remove(0, 1);
            QCOMPARE(digits, digitsOf(text));
            QVERIFY(!entry.isUnfinished());
        }
        QVERIFY(numbers > 10'000);
    }

    void rules_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<NumberRules>("rules");
        QTest::addColumn<Problem>("problem");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *text, const NumberRules &rules, Problem problem, const char *value,
                            const char *reason) {
            QTest::addRow("%d %s", static_cast<int>(rules.unit), text)
                << QString::fromUtf8(text) << rules << problem << QString::fromLatin1(value)
                << QString::fromUtf8(reason);
        };
        const NumberRules amount = range(NumberUnit::Rand, 0, Currency::fromText(u"9999.99"_s));
        const NumberRules percent = range(NumberUnit::Percent, 0, 100, 4);
        row("9999.99", amount, Problem::None, "9999.99", "");
        row("10 000", amount, Problem::TooLarge, "0", "\"10 000\" is more than 9,999.99");
        row("999999999999999", amount, Problem::TooLarge, "0", "\"999999999999999\" is more than 9,999.99");
        row("99999999999999999999", amount, Problem::TooLarge, "0",
            "\"99999999999999999999\" is more than 9,999.99");
        row("-100", amount, Problem::Negative, "0", "\"-100\" is below zero; an amount cannot be negative");
        row("(1,250)", amount, Problem::Negative, "0",
            "\"(1,250)\" is below zero; an amount cannot be negative");
        row("-0", amount, Problem::None, "0", "");
        row("5%", amount, Problem::OtherUnit, "0", "\"5%\" is a percentage, not an amount");
        row("1234.567", amount, Problem::TooManyDecimals, "0", "\"1234.567\" has more than 2 decimal(s)");
        row("1234.560", amount, Problem::None, "1234.56", "");
        row("1.250", amount, Problem::TwoReadings, "0",
            "\"1.250\" can mean 1,250.00 or 1.250; type the cents, or leave the separator out");
        row("100%", percent, Problem::None, "100", "");
        row("33,333", percent, Problem::None, "33.333", "");
        row("33.33333", percent, Problem::TooManyDecimals, "0", "\"33.33333\" has more than 4 decimal(s)");
        row("100.01", percent, Problem::TooLarge, "0", "\"100.01\" is more than 100.00%");
        row("-5%", percent, Problem::Negative, "0", "\"-5%\" is below zero; a percentage cannot be negative");
        row("R 5", percent, Problem::OtherUnit, "0", "\"R 5\" is an amount, not a percentage");
        row("1,234", decimals(0), Problem::None, "1234", "");
        row("-1,234", decimals(0), Problem::None, "-1234", "");
        row("1.234", decimals(0), Problem::TwoReadings, "0",
            "\"1.234\" can mean 1,234.00 or 1.234; type the cents, or leave the separator out");
        row("12,3", decimals(0), Problem::TooManyDecimals, "0", "\"12,3\" is not a whole number");
        row("12.0", decimals(0), Problem::None, "12", "");
        row("0.55", decimals(1), Problem::TooManyDecimals, "0", "\"0.55\" has more than 1 decimal(s)");
        row("4", range(NumberUnit::None, 5, 6), Problem::TooSmall, "0", "\"4\" is less than 5.00");
        row("-4", range(NumberUnit::None, 0, 6), Problem::Negative, "0", "\"-4\" is below zero");
        row("12 a", {}, Problem::NotANumber, "0", "\"12 a\" is not a number");
        row("12 34", {}, Problem::Groups, "0",
            "\"12 34\" is not a number: thousands go in groups of three digits");
        row("1\n2", {}, Problem::SeveralLines, "0", "\"1 2\" is more than one number");
        row("", {}, Problem::Blank, "0", "Nothing is entered");
        // The message shortens a long text, and %1 in it is not a placeholder.
        row("%1 %2 %3 %4 %5 %6 %7 %8 %9 %1 %2 %3 %4 %5", {}, Problem::NotANumber, "0",
            "\"%1 %2 %3 %4 %5 %6 %7 %8 %9 %1 %2 %3 %4 %\u2026\" is not a number");
    }

    void rules()
    {
        QFETCH(const QString, text);
        QFETCH(const NumberRules, rules);
        const NumberEntry entry(text, rules);
        QTEST(entry.problem(), "problem");
        QTEST(entry.value().toString(), "value");
        QTEST(entry.reason(), "reason");
    }

    void powersOfTen()
    {
        NumberRules rules;
        rules.exponent = true;
        const auto read = [&rules](const char *text) {
            return NumberEntry(QString::fromLatin1(text), rules);
        };
        QCOMPARE(read("1e5").toDouble(), 1e5);
        QCOMPARE(read("1e5").value(), Currency(100'000));
        QCOMPARE(read("-2.5E-1").toDouble(), -0.25);
        QCOMPARE(read("1.234e+3").toDouble(),
                 1234.0); // with an exponent a point is never a thousands separator
        QCOMPARE(read("1.7e308").toDouble(), 1.7e308);
        QCOMPARE(read("1.7e308").value(), Currency::max());
        QCOMPARE(read("1e309").problem(), Problem::TooLarge);
        QCOMPARE(read("-1e309").problem(), Problem::TooSmall);
        QCOMPARE(read("1e99999999999999999999").problem(), Problem::TooLarge);
        QCOMPARE(read("1e-99999999999999999999").toDouble(), 0.0);
        for (const char *none : {"1e", "1e-", "e5", "1e5e5", "1e5.5", "1e 5 5", "-"})
            QCOMPARE(read(none).problem(), Problem::NotANumber);
        rules.decimals = 2;
        QCOMPARE(read("1.2345e2").problem(), Problem::None);
        QCOMPARE(read("1e-2").problem(), Problem::None);
        QCOMPARE(read("100e-4").problem(), Problem::None);
        QCOMPARE(read("1e-3").problem(), Problem::TooManyDecimals);
        QCOMPARE(read("0e-9").problem(), Problem::None);
    }

    void typingOn()
    {
        for (const char *start : {"", "-", "R", "Z", "ZA", "(", "(5", "1,250", "1.250", "1,250,", "1,250,0",
                                  "1.250.00", "1'", ".", ",", "-R"})
            QVERIFY2(NumberEntry(QString::fromLatin1(start)).isUnfinished(), start);
        for (const char *end :
             {"abc", "12a", "1.2.3", "5-", "1e", "1 23 4", "1,2,", "%", "1\n2", "100\n2", "$"})
            QVERIFY2(!NumberEntry(QString::fromLatin1(end)).isUnfinished(), end);
        QVERIFY(NumberEntry(u"1,2", decimals(0)).isUnfinished());
        QVERIFY(!NumberEntry(u"1,2345", decimals(0)).isUnfinished());
        QVERIFY(!NumberEntry(u"1,2", decimals(1)).isUnfinished()); // it is a number already
    }

    void theLocaleMakesNoDifference()
    {
        const QLocale before;
        for (const QLocale::Country country : {QLocale::Germany, QLocale::SouthAfrica, QLocale::India}) {
            QLocale::setDefault(QLocale(QLocale::AnyLanguage, country));
            for (const NumberCase &each : numberCases)
                QCOMPARE(NumberEntry(each.said()).value(), each.number());
        }
        QLocale::setDefault(before);
    }
};

ZEL_TEST_MAIN(TestNumberEntry)
#include "tst_numberentry.moc"

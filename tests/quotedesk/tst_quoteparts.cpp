#include "ZelTest.h"

#include "NumberCases.h"
#include "desk/Options.h"
#include "quote/EditedQuote.h"
#include "quote/FundLines.h"
#include "quote/Investment.h"
#include "store/ShownSplit.h"

#include "data/Format.h"

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

QString two(Currency value)
{
    return FormatFloat(FormatMask::TwoDecimals, value);
}

Quote quoteOf(Currency amount, bool byAmount, const QList<QPair<const char *, const char *>> &funds)
{
    Quote quote;
    quote.amount = amount;
    quote.byAmount = byAmount;
    for (const auto &[percent, rand] : funds) {
        QuotedFund fund;
        fund.fundID = static_cast<int>(quote.funds.size()) + 1;
        fund.percent = Currency::fromText(QLatin1String(percent));
        fund.amount = Currency::fromText(QLatin1String(rand));
        quote.funds.append(fund);
    }
    return quote;
}

QStringList percents(const ShownSplit &split)
{
    QStringList texts;
    for (const ShownSplit::Fund &fund : split.funds)
        texts.append(two(fund.percent));
    return texts;
}

QStringList amounts(const ShownSplit &split)
{
    QStringList texts;
    for (const ShownSplit::Fund &fund : split.funds)
        texts.append(two(fund.amount));
    return texts;
}

/// Whether percentages and amounts add up to the whole.
bool addsUp(const ShownSplit &split)
{
    Currency percent = split.restPercent;
    Currency amount = split.restAmount;
    for (const ShownSplit::Fund &fund : split.funds) {
        percent += RoundToShownCents(fund.percent);
        amount += RoundToShownCents(fund.amount);
    }
    return percent == Currency(100) && amount == split.investment;
}

/// A quote with random funds whose amounts roughly add up to the investment.
Quote randomQuote(QRandomGenerator &random)
{
    Quote quote;
    quote.byAmount = random.bounded(2) == 1;
    quote.amount = Currency::fromRaw(qint64{random.bounded(0, 10'000'000)} * 100);
    for (int id = 1; id <= 6; ++id) {
        QuotedFund fund{id, u"Fund"_s, Currency::fromRaw(random.bounded(1000000)),
                        Currency::fromRaw(random.bounded(300000))};
        if (random.bounded(2) == 1)
            follow(fund, quote.byAmount, quote.amount);
        quote.funds.append(fund);
    }
    return quote;
}

/// The funds sorted by id.
QList<QuotedFund> inOrder(QList<QuotedFund> funds)
{
    std::stable_sort(funds.begin(), funds.end(),
                     [](const QuotedFund &a, const QuotedFund &b) { return a.fundID < b.fundID; });
    return funds;
}

FundNames someNames()
{
    FundNames names;
    names.add(1, {u"Baobab Equity Fund"_s, u"Kremetart Aandelefonds"_s, {}, 1});
    names.add(2, {u"Baobab Income Fund"_s, u"Kremetart Inkomstefonds"_s, {}, 1});
    names.add(7, {u"Twin Fund"_s, u"Twin Fund"_s, {}, 1});
    names.add(8, {u"Twin Fund"_s, u"Tweelingfonds"_s, {}, 1});
    return names;
}

} // namespace

class tst_quoteparts : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeSplitIsShownAsOneHundred_data();
    void aWholeSplitIsShownAsOneHundred();
    void whatIsLeftIsShownBesideTheFunds();
    void tooMuchIsShownAsMuch();
    void anInvestmentOfNothing();
    void theColumnThatIsTypedLeads();
    void theEndsOfTheRange();
    void anySplitAddsUp();
    void partsAreRoundedTogether();
    void anEditedQuoteIsAsIfReadAnew();
    void theOrderAndTheCataloguesNamesAreNoChange();
    void numbersAsPeopleWriteThem_data();
    void numbersAsPeopleWriteThem();
    void linesThatAreRefused_data();
    void linesThatAreRefused();
    void linesReadNumbersAsAllDo();
    void theCommandLineReadsNumbersAsAllDo();
    void headingsSayWhichColumnIsWhich();
    void ownCopyIsReadBack();
    void everyUselessLineIsReported();
    void anyDashServesInAName();
};

void tst_quoteparts::aWholeSplitIsShownAsOneHundred_data()
{
    QTest::addColumn<Quote>("quote");
    QTest::addColumn<QStringList>("percent");
    QTest::addColumn<QStringList>("amount");
    const auto texts = [](std::initializer_list<const char *> list) {
        QStringList result;
        for (const char *text : list)
            result.append(QLatin1String(text));
        return result;
    };
    QTest::newRow("three thirds of 100, allocated")
        << quoteOf(100, false, {{"33.33", "33.33"}, {"33.33", "33.33"}, {"33.34", "33.34"}})
        << texts({"33.33", "33.33", "33.34"}) << texts({"33.33", "33.33", "33.34"});
    QTest::newRow("three thirds of 100000, allocated by percent")
        << quoteOf(100000, false, {{"33.3333", "33333.33"}, {"33.3333", "33333.33"}, {"33.3333", "33333.34"}})
        << texts({"33.33", "33.33", "33.34"}) << texts({"33333.33", "33333.33", "33333.34"});
    QTest::newRow("typed percentages of an odd amount")
        << quoteOf(Currency::fromText(u"1000.01"_s), false,
                   {{"33.33", "333.3033"}, {"33.33", "333.3033"}, {"33.34", "333.4033"}})
        << texts({"33.33", "33.33", "33.34"}) << texts({"333.30", "333.30", "333.41"});
    QTest::newRow("amounts of sevenths")
        << quoteOf(1, true,
                   {{"14", "0.14"},
                    {"14", "0.14"},
                    {"14", "0.14"},
                    {"14", "0.14"},
                    {"14", "0.14"},
                    {"15", "0.15"},
                    {"15", "0.15"}})
        << texts({"14.00", "14.00", "14.00", "14.00", "14.00", "15.00", "15.00"})
        << texts({"0.14", "0.14", "0.14", "0.14", "0.14", "0.15", "0.15"});
}

void tst_quoteparts::aWholeSplitIsShownAsOneHundred()
{
    QFETCH(Quote, quote);
    const ShownSplit split(quote);
    QVERIFY(quote.isAllocated());
    QTEST(percents(split), "percent");
    QTEST(amounts(split), "amount");
    QVERIFY(split.restPercent.isZero());
    QVERIFY(split.restAmount.isZero());
    QVERIFY(addsUp(split));
}

void tst_quoteparts::whatIsLeftIsShownBesideTheFunds()
{
    const ShownSplit split(quoteOf(1000, false, {{"33.33", "333.3"}}));
    QCOMPARE(percents(split), QStringList(u"33.33"_s));
    QCOMPARE(two(split.restPercent), u"66.67"_s);
    QCOMPARE(two(split.restAmount), u"666.70"_s);
    const ShownSplit none(quoteOf(1000, true, {}));
    QCOMPARE(two(none.restPercent), u"100.00"_s);
    QCOMPARE(two(none.restAmount), u"1000.00"_s);
}

void tst_quoteparts::tooMuchIsShownAsMuch()
{
    const ShownSplit split(quoteOf(300, true, {{"100", "300"}, {"33.3333", "100"}}));
    QCOMPARE(percents(split), QStringList({u"100.00"_s, u"33.33"_s}));
    QCOMPARE(two(split.restPercent), u"-33.33"_s);
    QCOMPARE(two(split.restAmount), u"-100.00"_s);
    QVERIFY(addsUp(split));
}

void tst_quoteparts::anInvestmentOfNothing()
{
    const ShownSplit percent(quoteOf(0, false, {{"40", "0"}, {"60", "0"}}));
    QCOMPARE(percents(percent), QStringList({u"40.00"_s, u"60.00"_s}));
    QVERIFY(addsUp(percent));
    const ShownSplit amount(quoteOf(0, true, {{"0", "50"}}));
    QCOMPARE(two(amount.restAmount), u"-50.00"_s);
    QCOMPARE(two(amount.restPercent), u"100.00"_s);
    QVERIFY(!percent.isAllocated() && !amount.isAllocated());
}

void tst_quoteparts::theColumnThatIsTypedLeads()
{
    const auto cents = [](const char *text) { return Currency::fromText(QLatin1String(text)); };
    // Amounts that add up by chance do not complete the percentages.
    const ShownSplit small(
        quoteOf(cents("0.03"), false, {{"33.33", "0.01"}, {"33.33", "0.01"}, {"33.33", "0.01"}}));
    QCOMPARE(two(small.restPercent), u"0.01"_s);
    QCOMPARE(two(small.restAmount), u"0.00"_s);
    QVERIFY(!small.isAllocated());
    // Amounts whose rounded cents add up are complete, although the exact amounts are not.
    const ShownSplit whole(
        quoteOf(cents("900000.01"), true,
                {{"33.333", "299997.0033"}, {"33.333", "299997.0033"}, {"33.334", "300006.01"}}));
    QCOMPARE(amounts(whole), QStringList({u"299997.00"_s, u"299997.00"_s, u"300006.01"_s}));
    QVERIFY(whole.isAllocated());
    // With an investment of 0 the percentages are only rounded.
    const ShownSplit nothing(quoteOf(0, false, {{"33.3333", "0"}, {"66.6667", "0"}}));
    QCOMPARE(percents(nothing), QStringList({u"33.33"_s, u"66.67"_s}));
    // When the columns contradict each other, the one that was not typed is recalculated.
    const ShownSplit strange(quoteOf(1000, false, {{"40", "600"}, {"60", "400"}}));
    QCOMPARE(amounts(strange), QStringList({u"400.00"_s, u"600.00"_s}));
    const ShownSplit byAmount(quoteOf(1000, true, {{"40", "600"}, {"60", "400"}}));
    QCOMPARE(percents(byAmount), QStringList({u"60.00"_s, u"40.00"_s}));
}

void tst_quoteparts::theEndsOfTheRange()
{
    const auto most = Currency::max();
    Quote quote;
    for (const Currency amount : {most, Currency::min(), Currency(0), Currency(-5), Currency(1000)}) {
        for (const Currency each : {most, Currency::min(), Currency(-1), Currency(1)}) {
            for (const bool byAmount : {false, true}) {
                quote.amount = amount;
                quote.byAmount = byAmount;
                quote.funds = {{1, {}, each, each}, {2, {}, most, most}, {3, {}, each, Currency(33)}};
                const ShownSplit split(quote);
                QVERIFY2(
                    !split.isAllocated(),
                    qPrintable(
                        u"%1 of %2, by amount %3"_s.arg(each.toString(), amount.toString()).arg(byAmount)));
                Quote again = quote;
                settle(again);
                const ShownSplit settledSplit(again);
                QCOMPARE(settledSplit.rest(), split.rest());
                QCOMPARE(settledSplit.funds, again.funds);
            }
        }
    }
}

void tst_quoteparts::anySplitAddsUp()
{
    QRandomGenerator random(20261121);
    for (int round = 0; round < 2000; ++round) {
        Quote quote;
        quote.byAmount = random.bounded(2) == 1;
        quote.amount = Currency::fromRaw(qint64{random.bounded(1, 100'000'000)} * 100);
        Currency left = quote.amount;
        const int count = random.bounded(1, 300);
        for (int i = 0; i < count; ++i) {
            QuotedFund fund;
            fund.fundID = i + 1;
            const bool last = i == count - 1 && random.bounded(4) != 0;
            fund.amount =
                last ? left : Currency::fromRaw(left.raw() * random.bounded(1000) / 1000 / count * 2);
            fund.percent = Currency::mulDiv(fund.amount, 100, quote.amount);
            left -= fund.amount;
            quote.funds.append(fund);
        }
        const ShownSplit split(quote);
        QVERIFY2(addsUp(split), qPrintable(u"round %1"_s.arg(round)));
        // Each shown number is within rounding distance: the typed column of its stored value, the other one
        // of the value that follows from it.
        const auto isNear = [](Currency a, Currency b) {
            return a - b > Currency::fromRaw(-200) && a - b < Currency::fromRaw(200);
        };
        for (int i = 0; i < count; ++i) {
            const ShownSplit::Fund &shown = split.funds.at(i);
            const QuotedFund &fund = quote.funds.at(i);
            const Currency ofPercent = Currency::mulDiv(shown.percent, quote.amount, 100);
            const Currency ofAmount = Currency::mulDiv(shown.amount, 100, quote.amount);
            QVERIFY(isNear(shown.amount, ofPercent) || isNear(shown.percent, ofAmount));
            if (quote.byAmount)
                QCOMPARE(shown.amount, RoundToShownCents(fund.amount));
            else
                QVERIFY(isNear(shown.percent, fund.percent));
        }
        if (quote.isAllocated())
            QVERIFY(split.restAmount.isZero() && split.restPercent.isZero());
        // Settling a quote changes nothing when it is repeated, in any order of the funds.
        Quote settledQuote = quote;
        settle(settledQuote);
        QCOMPARE(ShownSplit(settledQuote).funds, settledQuote.funds);
        QCOMPARE(settledQuote.isAllocated(), quote.isAllocated());
        QCOMPARE(settledQuote.funds, split.funds);
        std::reverse(settledQuote.funds.begin(), settledQuote.funds.end());
        QCOMPARE(ShownSplit(settledQuote).funds, settledQuote.funds);
        // A complete allocation is complete in the other mode, too.
        settledQuote.byAmount = !quote.byAmount;
        const ShownSplit other(settledQuote);
        QVERIFY(addsUp(other));
        QVERIFY(other.isAllocated() || !split.isAllocated());
    }
}

void tst_quoteparts::partsAreRoundedTogether()
{
    QCOMPARE(roundByLargestRemainder({1, 1, 1}, 100, 3), QList<qint64>({34, 33, 33}));
    QCOMPARE(roundByLargestRemainder({}, 100, 3), QList<qint64>());
    QCOMPARE(roundByLargestRemainder({0, 0}, 7, 3), QList<qint64>({0, 0}));
    QCOMPARE(roundByLargestRemainder({4, -1}, 10, 3), QList<qint64>({13, -3}));
    // The largest remainder is rounded up, not the first one.
    QCOMPARE(roundByLargestRemainder({11, 19}, 1, 10), QList<qint64>({1, 2}));
    // The intermediate products exceed 64 bits.
    QCOMPARE(roundByLargestRemainder({INT64_MAX / 2, INT64_MAX / 2}, 10000, INT64_MAX / 2 * 2),
             QList<qint64>({5000, 5000}));
}

void tst_quoteparts::anEditedQuoteIsAsIfReadAnew()
{
    QRandomGenerator random(3);
    for (int round = 0; round < 200; ++round) {
        Quote saved = randomQuote(random);
        settle(saved);
        EditedQuote edited(saved);
        Quote entered = saved; // with the numbers entered
        std::optional<Currency> typed;
        for (int step = 0; step < 40; ++step) {
            const Quote before = edited.quote();
            QSignalSpy changed(&edited, &EditedQuote::changed);
            const qsizetype place = random.bounded(entered.funds.size());
            QuotedFund &fund = entered.funds[place];
            switch (random.bounded(8)) {
            case 0:
                std::reverse(entered.funds.begin(), entered.funds.end());
                edited.setSplit({entered.amount, entered.byAmount, entered.funds});
                break;
            case 1:
                entered.byAmount = !entered.byAmount;
                edited.setSplit({entered.amount, entered.byAmount, entered.funds});
                break;
            case 2:
                entered.funds = edited.settledSplit().funds;
                edited.setSplit({entered.amount, entered.byAmount, entered.funds});
                break;
            case 3:
                typed = random.bounded(3) == 0 ? std::nullopt : std::optional(Currency(random.bounded(1000)));
                edited.setTypedInvestment(typed);
                break;
            case 4: {
                // Restores the saved numbers.
                const QuotedFund former = inOrder(saved.funds).at(fund.fundID - 1);
                fund.amount = former.amount;
                fund.percent = former.percent;
                edited.setNumbers(place, fund.amount, fund.percent);
                break;
            }
            default: {
                Currency &number = entered.byAmount ? fund.amount : fund.percent;
                number = Currency::fromRaw(qint64{random.bounded(100'00)} * 100);
                follow(fund, entered.byAmount, entered.amount);
                edited.setNumbers(place, fund.amount, fund.percent);
            }
            }
            Quote whole = entered;
            if (typed.value_or(entered.amount) != entered.amount) {
                whole.amount = *typed;
                for (QuotedFund &each : whole.funds)
                    follow(each, whole.byAmount, *typed);
            }
            const ShownSplit split(whole);
            const SplitState state = edited.splitState();
            QCOMPARE(edited.shownSplit().funds, split.funds);
            QCOMPARE(edited.quote().amount, split.investment);
            QVERIFY(state.restAmount == split.restAmount && state.restPercent == split.restPercent);
            QVERIFY(state.isAllocated() == split.isAllocated() && state.isOver() == split.isOver());
            for (qsizetype i = 0; i < split.funds.size(); ++i)
                QCOMPARE(RoundToShownCents(edited.fundsByPercent().at(i).percent), split.funds.at(i).percent);
            const bool differs = split.investment != saved.amount || whole.byAmount != saved.byAmount ||
                                 inOrder(split.funds) != inOrder(saved.funds);
            QCOMPARE(edited.isModified(), differs);
            const Quote now = edited.quote();
            const bool isSeen = now.amount != before.amount || now.byAmount != before.byAmount ||
                                inOrder(now.funds) != inOrder(before.funds);
            QVERIFY2(!isSeen || changed.size() == 1, qPrintable(u"round %1, step %2"_s.arg(round).arg(step)));
        }
    }
}

void tst_quoteparts::theOrderAndTheCataloguesNamesAreNoChange()
{
    Quote saved = quoteOf(1000, false, {{"40", "400"}, {"60", "600"}});
    saved.funds[0].name = u"Kremetart Aandelefonds"_s;
    saved.funds[1].name = u"Ironwood"_s;
    EditedQuote edited(saved);
    edited.setNames(someNames());
    const QSignalSpy changed(&edited, &EditedQuote::changed);
    const auto put = [&edited](const QString &first, const QString &second) {
        edited.setSplit({1000, false, {{2, second, 600, 60}, {1, first, 400, 40}}});
    };
    put(u"Baobab Equity Fund "_s, u"Ironwood"_s);
    QVERIFY(!edited.isModified());
    QCOMPARE(changed.size(), 0);
    put(u"Baobab Equity Fund"_s, u"Baobab Income Fund"_s);
    QVERIFY(edited.isModified());
    QCOMPARE(changed.size(), 1);
    put(u"Baobab Equity Fund"_s, u"Ironwood"_s);
    QVERIFY(!edited.isModified());
    // Without the catalogue's names a fund cannot have been chosen with another name.
    put(u"Baobab Equity Fund"_s, u"Yellowwood"_s);
    QVERIFY(edited.isModified());
    edited.setNames({});
    QVERIFY(!edited.isModified());
}

void tst_quoteparts::numbersAsPeopleWriteThem_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<bool>("amount");
    QTest::addColumn<QString>("value");
    const auto percent = [](const char *cell, const char *value) {
        QTest::newRow(cell) << QString::fromUtf8(cell) << false << QString::fromLatin1(value);
    };
    const auto rand = [](const char *cell, const char *value) {
        QTest::newRow(cell) << QString::fromUtf8(cell) << true << QString::fromLatin1(value);
    };
    percent("12,5%", "12.5");
    percent("12.5 %", "12.5");
    percent("12", "12");
    percent("33.3333%", "33.3333");
    percent("33,333", "33.333");
    percent("100%", "100");
    percent(".5", "0.5");
    percent("0%", "0");
    rand("R 1 000,00", "1000");
    rand("R1,234.56", "1234.56");
    rand("r 1.234,56", "1234.56");
    rand("ZAR 99", "99");
    rand("R 1\u00a0234\u00a0567,80", "1234567.8");
    rand("R1'234.5", "1234.5");
    rand("R 1,234,567", "1234567");
    rand("R 0.12", "0.12");
    rand("(R 0)", "0");
}

void tst_quoteparts::numbersAsPeopleWriteThem()
{
    QFETCH(QString, cell);
    QFETCH(bool, amount);
    const FundNames names = someNames();
    const FundLines lines(u"1\t"_s + cell, names, FundLines::Meaning::Percent);
    QVERIFY2(lines.refused().isEmpty(), qPrintable(lines.report()));
    QCOMPARE(lines.entries().size(), 1);
    QCOMPARE(lines.entries().first().fundID, 1);
    QCOMPARE(lines.entries().first().meaning == FundLines::Meaning::Amount, amount);
    QTEST(lines.entries().first().value.toString(), "value");
    // The same with a semicolon as separator.
    QCOMPARE(FundLines(u"Baobab Equity Fund;"_s + cell, names, FundLines::Meaning::Percent).entries().size(),
             1);
}

void tst_quoteparts::linesThatAreRefused_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reason");
    const auto refused = [](const char *line, const char *reason) {
        QTest::newRow(line) << QString::fromUtf8(line) << QString::fromUtf8(reason);
    };
    refused("Unknown Fund\t10%", "no fund called \"Unknown Fund\"");
    refused("99\t10%", "no fund with the number 99");
    refused("Twin Fund\t10%", "2 funds have this name");
    refused("1", "the percentage or the amount is missing");
    refused("1\tten", "\"ten\" is not a number");
    refused("1\t-5%", "a percentage cannot be negative");
    refused("1\tR -5", "an amount cannot be negative");
    refused("1\t(5)", "a percentage cannot be negative");
    refused("1\t100.01%", "is more than 100.00%");
    refused("1\t33.33333%", "has more than 4 decimal");
    refused("1\tR 0.125", "has more than 2 decimal");
    refused("1\tR 1,234", "can mean");
    refused("1\tR 12 34", "is not a number");
    refused("1\tR 1000000000.00", "is more than 999,999,999.99");
    refused("1\tR 99999999999999999999", "is more than 999,999,999.99");
    refused("1\t1.2.3,4,5", "is not a number");
    refused("\t10%", "the fund is missing");
    refused("1\t%", "is not a number");
}

void tst_quoteparts::linesThatAreRefused()
{
    QFETCH(QString, line);
    QFETCH(QString, reason);
    const FundNames names = someNames();
    const FundLines lines(u"2\t1%\n"_s + line, names, FundLines::Meaning::Percent);
    QCOMPARE(lines.entries().size(), 1);
    QCOMPARE(lines.refused().size(), 1);
    QCOMPARE(lines.refused().first().line, 2);
    QVERIFY2(lines.refused().first().reason.contains(reason), qPrintable(lines.refused().first().reason));
}

// Each text of the table as an amount in a line: the number that it means, or a reported line.
void tst_quoteparts::linesReadNumbersAsAllDo()
{
    const FundNames names = someNames();
    const Currency most = Currency::fromText(u"999999999.99"_s);
    for (const NumberCase &each : numberCases) {
        if (each.problem == NumberCase::Problem::Blank || each.problem == NumberCase::Problem::SeveralLines)
            continue; // these texts are several cells or none
        if (each.said() != each.said().trimmed())
            continue; // cells are trimmed first
        const FundLines lines(u"1\t"_s + each.said(), names, FundLines::Meaning::Amount);
        if (each.unit == NumberUnit::Percent) {
            const bool isShare = each.isNumber() && each.number() >= Currency();
            QCOMPARE(lines.entries().size(), isShare ? 1 : 0);
            continue;
        }
        QVERIFY2(lines.entries().size() == (each.isAmountUpTo(most) ? 1 : 0), each.text);
        QVERIFY2(lines.refused().size() == (each.isAmountUpTo(most) ? 0 : 1), each.text);
        if (!lines.entries().isEmpty()) {
            QVERIFY2(lines.entries().first().value == each.number(), each.text);
        } else {
            NumberRules rules = investmentRules();
            rules.high = most;
            QCOMPARE(lines.refused().first().reason, NumberEntry(each.said(), rules).reason());
        }
    }
}

// The same for the amount on the command line.
void tst_quoteparts::theCommandLineReadsNumbersAsAllDo()
{
    for (const NumberCase &each : numberCases) {
        const QStringList arguments{u"quotedesk"_s, u"--amount="_s + each.said()};
        if (each.isAmountUpTo(maximumInvestment()) && !each.number().isZero()) {
            QVERIFY2(readOptions(arguments).amount == each.number(), each.text);
        } else {
            QVERIFY_THROWS_EXCEPTION(UsageError, readOptions(arguments));
        }
    }
}

void tst_quoteparts::headingsSayWhichColumnIsWhich()
{
    const FundNames names = someNames();
    const auto read = [&names](const char *text, FundLines::Meaning meaning) {
        const FundLines lines(QString::fromUtf8(text), names, meaning);
        QStringList result;
        for (const FundLines::Entry &entry : lines.entries())
            result.append(u"%1:%2%3"_s.arg(entry.fundID)
                              .arg(entry.value.toString(),
                                   entry.meaning == FundLines::Meaning::Amount ? u"R"_s : u"%"_s));
        return result.join(u' ') + lines.report();
    };
    using Meaning = FundLines::Meaning;
    QCOMPARE(read("Amount;Fund\n100,50;Baobab Equity Fund", Meaning::Percent), u"1:100.5R"_s);
    QCOMPARE(read("Bedrag\tPersent\tFonds\r\n200\t20\tkremetart  INKOMSTEFONDS\r\n", Meaning::Percent),
             u"2:20%"_s);
    QCOMPARE(read("Bedrag\tPersent\tFonds\r\n200\t20\tkremetart  INKOMSTEFONDS\r\n", Meaning::Amount),
             u"2:200R"_s);
    // With an unknown heading the order of the columns decides.
    QCOMPARE(read("What\tHow much\n1\t20", Meaning::Percent), u"1:20%"_s);
    QCOMPARE(read("1\t20", Meaning::Amount), u"1:20R"_s);
    // Fund number, name, percentage, amount.
    QCOMPARE(read("1\tBaobab Equity Fund\t40\t400.00", Meaning::Percent), u"1:40%"_s);
    QCOMPARE(read("1\tBaobab Equity Fund\t40\t400.00", Meaning::Amount), u"1:400R"_s);
    // Quoted cells and blank lines.
    QCOMPARE(read("\n\"Baobab Equity Fund\";\"12,5\"\n\n", Meaning::Percent), u"1:12.5%"_s);
}

void tst_quoteparts::ownCopyIsReadBack()
{
    const FundNames names = someNames();
    const QString text =
        u"Fund ID\tFund\tPercent\tAmount\n1\tBaobab Equity Fund\t33.3333\t333.33\n7\tTwin Fund\t10\t100.00\n"_s;
    QVERIFY(FundLines::looksLikeLines(text));
    const FundLines lines(text, names, FundLines::Meaning::Percent);
    QVERIFY2(lines.refused().isEmpty(), qPrintable(lines.report()));
    QCOMPARE(lines.entries().size(), 2);
    QCOMPARE(lines.entries().at(0).value.toString(), u"33.3333"_s);
    QCOMPARE(lines.entries().at(1).fundID, 7);
    QVERIFY(!FundLines::looksLikeLines(u"1 234,50\n"_s));
    QVERIFY(FundLines::looksLikeLines(u"1;2"_s));
}

void tst_quoteparts::everyUselessLineIsReported()
{
    const FundNames names = someNames();
    const FundLines lines(u"Fund\t%\nBaobab Equity Fund\t10\n1\t20\nTotal\t100\n"_s, names,
                          FundLines::Meaning::Percent);
    QCOMPARE(lines.entries().size(), 1);
    QCOMPARE(lines.report(), u"Line 3: the fund is already on line 2 (1 20)\n"
                             "Line 4: the product offers no fund called \"Total\" (Total 100)"_s);
}

void tst_quoteparts::anyDashServesInAName()
{
    FundNames names;
    names.add(1, {u"Bond-Fund"_s, {}, {}, 1});
    names.add(2, {u"Income \u2013 Growth"_s, {}, {}, 1});
    // Hyphens, dashes and minus signs are equal; soft hyphens are ignored.
    for (const QChar dash : u"-\u2010\u2011\u2012\u2013\u2014\u2015\u2212\ufe58\ufe63\uff0d"_s) {
        const FundLines lines(u"Bond%1Fund\t10\n in\u00adcome  %1 GROWTH\t20"_s.arg(dash), names,
                              FundLines::Meaning::Percent);
        QVERIFY2(lines.refused().isEmpty(), qPrintable(lines.report()));
        QCOMPARE(lines.entries().size(), 2);
        QCOMPARE(lines.entries().at(1).fundID, 2);
    }
    QVERIFY(names.named(u"Bond Fund"_s).isEmpty());
}

ZEL_TEST_MAIN(tst_quoteparts)
#include "tst_quoteparts.moc"

#include "Errors.h"
#include "OfEachType.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "data/Table.h"

#include <cmath>
#include <limits>

/// Tables and their builder: the values that each column type accepts and refuses.
class TestTable : public ZelTest
{
    Q_OBJECT

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    static TTablePtr oneValue(TFieldType type, const QVariant &value)
    {
        TTableBuilder builder({{text("Value"), type}});
        builder.AddRow({value});
        return builder.Finish();
    }

private Q_SLOTS:
    void keepsWhatItIsGiven()
    {
        TTableBuilder builder(ofEachType());
        const QDateTime moment(QDate(2024, 2, 29), QTime(13, 14, 15, 16));
        const QVariantList first{
            -7,   Q_INT64_C(1) << 40, 0.1,    QVariant::fromValue(Currency::fromRaw(123456)),
            true, QDate(2001, 2, 3),  moment, text("Äpfel")};
        const QVariantList nulls(8);
        builder.Reserve(3);
        builder.AddRow(first);
        builder.AddRow(nulls);
        builder.AddRow(first);
        const TTablePtr table = builder.Finish();
        QCOMPARE(table->RowCount(), 3);
        QCOMPARE(table->ColumnCount(), 8);
        for (int column = 0; column < 8; ++column) {
            QCOMPARE(table->Value(0, column), first[column]);
            QVERIFY(!table->IsNull(0, column));
            QVERIFY(table->IsNull(1, column));
            QVERIFY(!table->Value(1, column).isValid());
            QVERIFY(!table->IsNull(2, column));
            QCOMPARE(table->Value(2, column), first[column]);
        }
    }

    void convertsToTheColumnsType_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("given");
        QTest::addColumn<QVariant>("kept");
        const auto row = [](const char *name, TFieldType type, const QVariant &given, const QVariant &kept) {
            QTest::newRow(name) << static_cast<int>(type) << given << kept;
        };
        const QVariant amount = QVariant::fromValue(Currency::fromRaw(125000));
        row("integer of text", TFieldType::Integer, text(" -12 "), -12);
        row("integer of whole double", TFieldType::Integer, 3.0, 3);
        row("integer of Boolean", TFieldType::Integer, true, 1);
        row("integer of amount", TFieldType::Integer, QVariant::fromValue(Currency(4)), 4);
        row("integer of 64 bits", TFieldType::Integer, Q_INT64_C(-2147483648),
            std::numeric_limits<int>::min());
        row("large of unsigned", TFieldType::LargeInt, Q_UINT64_C(9223372036854775807),
            std::numeric_limits<qint64>::max());
        row("large of text", TFieldType::LargeInt, text("9223372036854775807"),
            std::numeric_limits<qint64>::max());
        row("float of integer", TFieldType::Float, 2, 2.0);
        row("float of text", TFieldType::Float, text("-1.5e3"), -1500.0);
        row("float of amount", TFieldType::Float, amount, 12.5);
        row("amount of double", TFieldType::Currency, 12.5, amount);
        row("amount of text", TFieldType::Currency, text("12.5"), amount);
        row("amount of integer", TFieldType::Currency, 12, QVariant::fromValue(Currency(12)));
        row("Boolean of number", TFieldType::Boolean, 2, true);
        row("Boolean of word", TFieldType::Boolean, text(" False "), false);
        for (const char *yes : {"TRUE", "t", "Yes", "y", "1"})
            row(yes, TFieldType::Boolean, text(yes), true);
        for (const char *no : {"FALSE", "f", "No", "n", "0"})
            row(no, TFieldType::Boolean, text(no), false);
        row("date of text", TFieldType::Date, text("2024-02-29"), QDate(2024, 2, 29));
        row("date of moment", TFieldType::Date, QDateTime(QDate(2024, 2, 29), QTime(23, 59)),
            QDate(2024, 2, 29));
        row("date of a moment's text", TFieldType::Date, text("2024-02-29 23:59:00"), QDate(2024, 2, 29));
        row("moment of date", TFieldType::DateTime, QDate(1969, 12, 31),
            QDateTime(QDate(1969, 12, 31), QTime(0, 0)));
        row("moment of text", TFieldType::DateTime, text("1969-12-31 23:59:58.250"),
            QDateTime(QDate(1969, 12, 31), QTime(23, 59, 58, 250)));
        row("text of integer", TFieldType::String, -5, text("-5"));
        row("text of unsigned", TFieldType::String, Q_UINT64_C(18446744073709551615),
            text("18446744073709551615"));
        row("text of double", TFieldType::String, 0.1, text("0.1"));
        row("text of large double", TFieldType::String, 1234567.0, text("1234567"));
        row("text of Boolean", TFieldType::String, true, text("True"));
        row("text of amount", TFieldType::String, amount, text("12.5"));
        row("text of bytes", TFieldType::String, QByteArray("\xC3\x84"), text("Ä"));
        row("text of date", TFieldType::String, QDate(2024, 2, 29), text("2024-02-29"));
        row("empty text", TFieldType::String, text(""), text(""));
        row("no date", TFieldType::Date, QDate(), QVariant());
        row("null of its type", TFieldType::Integer, QVariant(QMetaType::fromType<int>()), QVariant());
    }

    void convertsToTheColumnsType()
    {
        QFETCH(const int, type);
        QFETCH(const QVariant, given);
        QFETCH(const QVariant, kept);
        const TTablePtr table = oneValue(static_cast<TFieldType>(type), given);
        QCOMPARE(table->Value(0, 0), kept);
        QCOMPARE(table->IsNull(0, 0), !kept.isValid());
    }

    void refusesWhatDoesNotFit_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("given");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, TFieldType type, const QVariant &given, const char *shown) {
            QTest::newRow(name) << static_cast<int>(type) << given << text(shown);
        };
        row("integer beyond 32 bits", TFieldType::Integer, Q_INT64_C(2147483648), "2147483648");
        row("integer below 32 bits", TFieldType::Integer, Q_INT64_C(-2147483649), "-2147483649");
        row("text in an integer", TFieldType::Integer, text("12a"), "12a");
        row("empty text in an integer", TFieldType::Integer, text(""), "\"\"");
        row("thousands in an integer", TFieldType::Integer, text("1,000"), "1,000");
        row("fraction in an integer", TFieldType::Integer, 1.5, "1.5");
        row("not a number in an integer", TFieldType::Integer, std::nan(""), "nan");
        row("beyond 64 bits", TFieldType::LargeInt, Q_UINT64_C(9223372036854775808), "9223372036854775808");
        row("double beyond 64 bits", TFieldType::LargeInt, 9.3e18, "9.3e+18");
        row("text in a float", TFieldType::Float, text("one"), "one");
        row("date in a float", TFieldType::Float, QDate(2020, 1, 1), "2020-01-01");
        row("text in an amount", TFieldType::Currency, text("R 5"), "R 5");
        row("amount too large", TFieldType::Currency, 1e18, "e+18");
        row("text in a Boolean", TFieldType::Boolean, text("maybe"), "maybe");
        row("no such day", TFieldType::Date, text("2023-02-29"), "2023-02-29");
        row("number in a date", TFieldType::Date, 5, "5");
        row("text in a moment", TFieldType::DateTime, text("soon"), "soon");
        row("list in a text", TFieldType::String, QVariantList{1, 2}, "QVariantList");
    }

    void refusesWhatDoesNotFit()
    {
        QFETCH(const int, type);
        QFETCH(const QVariant, given);
        QFETCH(const QString, shown);
        const QString message =
            messageOf<EConvertError>([&] { oneValue(static_cast<TFieldType>(type), given); });
        QVERIFY2(message.contains(shown), qPrintable(message));
        QVERIFY2(message.contains(text("\"Value\"")), qPrintable(message));
    }

    void aRefusedRowLeavesTheOthers()
    {
        TTableBuilder builder({{text("A"), TFieldType::Integer}, {text("B"), TFieldType::Integer}});
        builder.AddRow({1, 2});
        QVERIFY(messageOf<EConvertError>([&] {
                    builder.AddRow({QVariant(), text("x")});
                }).contains(text("\"B\"")));
        QVERIFY(messageOf<EDatabaseError>([&] { builder.AddRow({3}); }).contains(text("1 values")));
        QVERIFY(messageOf<EDatabaseError>([&] { builder.AddRow({3, 4, 5}); }).contains(text("more values")));
        builder.AddRow({6, 7});
        const TTablePtr table = builder.Finish();
        QCOMPARE(table->RowCount(), 2);
        QCOMPARE(table->Value(1, 0), QVariant(6));
        QCOMPARE(table->Value(1, 1), QVariant(7));
    }

    void unfinishedRowsAreRefused()
    {
        TTableBuilder builder({{text("A"), TFieldType::Integer}, {text("B"), TFieldType::Integer}});
        builder.Append(1);
        QVERIFY(messageOf<EDatabaseError>([&] { builder.EndRow(); }).contains(text("Row 1")));
        QVERIFY(messageOf<EDatabaseError>([&] { builder.Finish(); }).contains(text("Row 1")));
        builder.Append(2);
        builder.EndRow();
        QCOMPARE(builder.Finish()->RowCount(), 1);
        QCOMPARE(builder.Finish()->RowCount(), 0);
        TTableBuilder none({});
        QVERIFY(messageOf<EDatabaseError>([&] { none.EndRow(); }).contains(text("0 columns")));
        QCOMPARE(none.Finish()->ColumnCount(), 0);
    }

    void anExactNameGoesFirst()
    {
        TTableBuilder builder({{text("name"), TFieldType::Integer},
                               {text("NAME"), TFieldType::Integer},
                               {text("Other"), TFieldType::Integer},
                               {text("Other"), TFieldType::Integer}});
        const TTablePtr table = builder.Finish();
        QCOMPARE(table->IndexOf(text("name")), 0);
        QCOMPARE(table->IndexOf(text("NAME")), 1);
        QCOMPARE(table->IndexOf(text("Name")), 0);
        QCOMPARE(table->IndexOf(text("other")), 2);
        QCOMPARE(table->IndexOf(text("Other")), 2);
        QCOMPARE(table->IndexOf(text("")), -1);
        QCOMPARE(table->IndexOf(text("names")), -1);
    }

    void nullsFarApart()
    {
        TTableBuilder builder({{text("A"), TFieldType::String}});
        for (int row = 0; row < 1000; ++row)
            builder.AddRow({row == 63 || row == 64 || row == 700 ? QVariant() : QVariant(row)});
        const TTablePtr table = builder.Finish();
        for (int row = 0; row < 1000; ++row)
            QCOMPARE(table->IsNull(row, 0), row == 63 || row == 64 || row == 700);
    }
};

ZEL_TEST_MAIN(TestTable)
#include "tst_table.moc"

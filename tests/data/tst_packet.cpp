#include "Errors.h"
#include "OfEachType.h"
#include "ZelTest.h"

#include "data/DataPacket.h"
#include "data/Exceptions.h"

#include <QCborArray>
#include <QCborValue>
#include <QCryptographicHash>
#include <QRandomGenerator>

#include <limits>

using namespace Qt::StringLiterals;

/// Packets as bytes: they are restored unchanged, and damaged ones are refused.
class TestPacket : public ZelTest
{
    Q_OBJECT

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    static TTablePtr sample(int rows)
    {
        QList<TFieldDef> defs = ofEachType();
        defs.last().Name = text("F.MainframeID");
        defs.append({text("Nothing"), TFieldType::Integer});
        TTableBuilder builder(defs);
        for (int row = 0; row < rows; ++row) {
            const bool gap = row % 5 == 3;
            builder.AddRow(
                {row * (row % 2 ? 1 : -1), gap ? QVariant() : QVariant(Q_INT64_C(-9000000000) * row),
                 gap ? QVariant() : QVariant(row / 3.0),
                 gap ? QVariant() : QVariant::fromValue(Currency::fromRaw(row * Q_INT64_C(-77777777))),
                 gap ? QVariant() : QVariant(row % 3 == 0),
                 gap ? QVariant() : QVariant(QDate(1960, 1, 1).addDays(row)),
                 gap ? QVariant()
                     : QVariant(QDateTime(QDate(1960, 1, 1).addDays(row), QTime(1, 2, 3, row % 1000))),
                 gap ? QVariant() : QVariant(text("Fönds \xF0\x9F\x8D\x8F ") + QString::number(row)),
                 QVariant()});
        }
        return builder.Finish();
    }

    static bool same(const TTable &a, const TTable &b)
    {
        if (a.Defs() != b.Defs() || a.RowCount() != b.RowCount())
            return false;
        for (int row = 0; row < a.RowCount(); ++row) {
            for (int column = 0; column < a.ColumnCount(); ++column) {
                if (a.Value(row, column) != b.Value(row, column) ||
                    a.IsNull(row, column) != b.IsNull(row, column))
                    return false;
            }
        }
        return true;
    }

    static QString refusal(const QByteArray &bytes)
    {
        return messageOf<EDatabaseError>([&] { TDataPacket::FromBytes(bytes); });
    }

    /// A packet with a valid checksum around any content.
    static QByteArray sealed(const QCborArray &content, int version = 1,
                             const QString &magic = text("ZelDataPacket"))
    {
        const QByteArray bytes = QCborValue(content).toCbor();
        return QCborValue(QCborArray{magic, version,
                                     QCryptographicHash::hash(bytes, QCryptographicHash::Sha256), bytes})
            .toCbor();
    }
    static QCborArray column(const char *name, TFieldType type, const QCborArray &values)
    {
        return {text(name), static_cast<int>(type), values};
    }

private Q_SLOTS:
    void bytesComeBackAsTheyWent_data()
    {
        QTest::addColumn<int>("rows");
        for (const int rows : {0, 1, 2, 63, 64, 65, 1000, 100000})
            QTest::addRow("%d rows", rows) << rows;
    }

    void bytesComeBackAsTheyWent()
    {
        QFETCH(const int, rows);
        const TTablePtr table = sample(rows);
        const TDataPacket back = TDataPacket::FromBytes(TDataPacket(table).ToBytes());
        QVERIFY(same(*table, *back.Table()));
        QCOMPARE(back.ToBytes(), TDataPacket(table).ToBytes());
    }

    void extremesComeBack()
    {
        TTableBuilder builder({{text("I"), TFieldType::Integer},
                               {text("L"), TFieldType::LargeInt},
                               {text("C"), TFieldType::Currency},
                               {text("F"), TFieldType::Float},
                               {text(""), TFieldType::String}});
        builder.AddRow({std::numeric_limits<int>::min(), std::numeric_limits<qint64>::min(),
                        QVariant::fromValue(Currency::min()), std::numeric_limits<double>::infinity(),
                        text("")});
        builder.AddRow({std::numeric_limits<int>::max(), std::numeric_limits<qint64>::max(),
                        QVariant::fromValue(Currency::max()), std::numeric_limits<double>::denorm_min(),
                        QString(QChar(u'\0')) + text("x")});
        const TTablePtr table = builder.Finish();
        QVERIFY(same(*table, *TDataPacket::FromBytes(TDataPacket(table).ToBytes()).Table()));
    }

    void aVariantSharesTheTable()
    {
        const TTablePtr table = sample(10);
        const QVariant variant = TDataPacket(table).ToVariant();
        const QVariant copy = variant;
        QCOMPARE(TDataPacket::FromVariant(copy).Table().get(), table.get());
        QVERIFY(same(*table, *TDataPacket::FromVariant(QVariant(TDataPacket(table).ToBytes())).Table()));
    }

    void otherVariantsAreRefused()
    {
        for (const QVariant &value : {QVariant(), QVariant(5), QVariant(text("packet")),
                                      QVariant(QByteArray()), QVariant::fromValue(TDataPacket())})
            QVERIFY_THROWS_EXCEPTION(EDatabaseError, TDataPacket::FromVariant(value));
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, TDataPacket().ToBytes());
    }

    void everyCutIsRefused()
    {
        const QByteArray bytes = TDataPacket(sample(7)).ToBytes();
        for (qsizetype size = 0; size < bytes.size(); ++size) {
            if (refusal(bytes.left(size)) == u"no error"_s)
                QFAIL(qPrintable(u"cut at %1 was taken"_s.arg(size)));
        }
        QVERIFY(refusal(bytes + '\0') != u"no error"_s);
        QVERIFY(refusal(bytes + bytes) != u"no error"_s);
    }

    void everyDamagedByteIsRefused()
    {
        const QByteArray bytes = TDataPacket(sample(7)).ToBytes();
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            for (const int bit : {0, 3, 7}) {
                QByteArray damaged = bytes;
                damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
                if (refusal(damaged) == u"no error"_s)
                    QFAIL(qPrintable(u"damage at %1 was taken"_s.arg(at)));
            }
        }
    }

    void damageUnderAGoodChecksumIsRefusedOrRead()
    {
        // Damage with a valid checksum: the reader must still not crash on it.
        const QByteArray bytes = TDataPacket(sample(7)).ToBytes();
        const QCborArray parts = QCborValue::fromCbor(bytes).toArray();
        const QByteArray content = parts[3].toByteArray();
        QRandomGenerator random(20260101);
        int refused = 0;
        for (int round = 0; round < 5000; ++round) {
            QByteArray damaged = content;
            for (int i = random.bounded(1, 4); i > 0; --i)
                damaged[random.bounded(static_cast<int>(damaged.size()))] =
                    static_cast<char>(random.bounded(256));
            const QByteArray whole =
                QCborValue(QCborArray{parts[0], parts[1],
                                      QCryptographicHash::hash(damaged, QCryptographicHash::Sha256), damaged})
                    .toCbor();
            if (refusal(whole) != u"no error"_s)
                ++refused;
        }
        QVERIFY(refused > 1000);
    }

    void wrongFormsAreRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *name, const QByteArray &bytes, const char *reason) {
            QTest::newRow(name) << bytes << text(reason);
        };
        const QCborArray ids = column("ID", TFieldType::Integer, {1, 2});
        row("another version", sealed({2, ids}, 2), "version 2");
        row("another magic word", sealed({2, ids}, 1, text("OtherPacket")), "magic word");
        row("no array", QCborValue(5).toCbor(), "missing");
        row("unequal columns", sealed({2, ids, column("Name", TFieldType::String, {text("a")})}),
            "\"Name\" is not as long");
        row("longer column", sealed({2, column("ID", TFieldType::Integer, {1, 2, 3})}),
            "\"ID\" is not as long");
        row("count too large", sealed({2000000000, ids}), "2000000000");
        row("negative count", sealed({-1, ids}), "-1");
        row("rows without columns", sealed({3}), "impossible");
        row("more rows than its bytes have room for in two columns",
            sealed({40, column("A", TFieldType::String, {text("0123456789012345678901234567890123456789")}),
                    column("B", TFieldType::String, {})}),
            "impossible");
        row("no content", sealed({}), "wrong number");
        row("unknown type", sealed({1, QCborArray{text("ID"), 99, QCborArray{1}}}), "unknown type 99");
        row("text in an integer", sealed({1, column("ID", TFieldType::Integer, {text("1")})}), "\"ID\"");
        row("integer beyond 32 bits", sealed({1, column("ID", TFieldType::Integer, {Q_INT64_C(1) << 31})}),
            "beyond 32 bits");
        row("number in a text", sealed({1, column("S", TFieldType::String, {1})}), "\"S\"");
        row("number in a Boolean", sealed({1, column("B", TFieldType::Boolean, {1})}), "\"B\"");
        row("integer in a float", sealed({1, column("F", TFieldType::Float, {1})}), "\"F\"");
        row("no such day", sealed({1, column("D", TFieldType::Date, {std::numeric_limits<qint64>::max()})}),
            "not a date");
        row("column with two parts", sealed({1, QCborArray{text("ID"), 0}}), "wrong form");
        row("column with a number for a name", sealed({1, QCborArray{1, 0, QCborArray{1}}}), "not a text");
        QCborArray inner;
        inner.append(QCborArray{1});
        row("list in a column", sealed({1, column("ID", TFieldType::Integer, inner)}), "\"ID\"");
    }

    void wrongFormsAreRefused()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, reason);
        const QString message = refusal(bytes);
        QVERIFY2(message.contains(reason), qPrintable(message));
    }

    void wholeNumbersBeyond64BitsAreRefused()
    {
        // -2^64, which CBOR can represent and a column cannot.
        QByteArray content = QCborValue(QCborArray{1, column("L", TFieldType::LargeInt, {-1})}).toCbor();
        QVERIFY(content.endsWith(char(0x20)));
        content.chop(1);
        content += QByteArray::fromHex("3bffffffffffffffff");
        const QByteArray bytes =
            QCborValue(QCborArray{text("ZelDataPacket"), 1,
                                  QCryptographicHash::hash(content, QCryptographicHash::Sha256), content})
                .toCbor();
        QVERIFY(refusal(bytes).contains(text("out of range")));
    }
};

ZEL_TEST_MAIN(TestPacket)
#include "tst_packet.moc"

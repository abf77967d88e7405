#include "data/DataPacket.h"

#include "data/Exceptions.h"
#include "data/Table_p.h"
#include "data/Values_p.h"

#include <QCborStreamReader>
#include <QCborStreamWriter>
#include <QCryptographicHash>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

// The byte form is an array of four items: the magic word, the version, the SHA-256 of the content, and the
// content as a byte string. The content is an array of the row count and one array per column. A column's
// array has its name, its type and its values, in the CBOR form of their type or null.

namespace
{

constexpr int Version = 1;
constexpr int MaxColumns = 32767;

QString magic()
{
    return u"ZelDataPacket"_s;
}

[[noreturn]] void refuse(const QString &reason)
{
    throw EDatabaseError(u"The data packet cannot be read: %1."_s.arg(reason));
}

void writeColumn(QCborStreamWriter &writer, const TFieldDef &def, const Zel::Column &column, int rows)
{
    writer.startArray(3);
    writer.append(def.Name);
    writer.append(static_cast<quint64>(def.Type));
    writer.startArray(static_cast<quint64>(rows));
    for (int row = 0; row < rows; ++row) {
        const auto at = static_cast<std::size_t>(row);
        if (column.IsNull(row)) {
            writer.appendNull();
            continue;
        }
        switch (column.Type) {
        case TFieldType::Integer:
            writer.append(qint64{column.Ints[at]});
            break;
        case TFieldType::Boolean:
            writer.append(column.Ints[at] != 0);
            break;
        case TFieldType::LargeInt:
        case TFieldType::Currency:
        case TFieldType::Date:
        case TFieldType::DateTime:
            writer.append(column.Longs[at]);
            break;
        case TFieldType::Float:
            writer.append(column.Doubles[at]);
            break;
        case TFieldType::String:
            writer.append(QStringView(column.Texts[at]));
            break;
        }
    }
    writer.endArray();
    writer.endArray();
}

/// Reads a packet item by item. Every operation checks the item and throws when it is not the expected one.
class Reader
{
public:
    explicit Reader(const QByteArray &bytes) : m_reader(bytes), m_size(bytes.size()) {}

    quint64 EnterArray(const QString &what)
    {
        if (!m_reader.isArray() || !m_reader.isLengthKnown())
            refuse(u"%1 is missing"_s.arg(what));
        const quint64 length = m_reader.length();
        if (!m_reader.enterContainer())
            refuse(u"%1 is cut"_s.arg(what));
        return length;
    }

    void LeaveArray(const QString &what)
    {
        if (m_reader.hasNext() || !m_reader.leaveContainer())
            refuse(u"%1 has a wrong length"_s.arg(what));
    }

    qint64 Integer(const QString &what)
    {
        qint64 number = 0;
        if (m_reader.isUnsignedInteger()) {
            const quint64 size = m_reader.toUnsignedInteger();
            if (size > static_cast<quint64>(std::numeric_limits<qint64>::max()))
                refuse(u"%1 is out of range"_s.arg(what));
            number = static_cast<qint64>(size);
        } else if (m_reader.isNegativeInteger()) {
            // The absolute value; 0 stands for 2^64.
            const auto size = static_cast<quint64>(m_reader.toNegativeInteger());
            if (size == 0 || size > quint64{1} << 63)
                refuse(u"%1 is out of range"_s.arg(what));
            number = static_cast<qint64>(~size + 1);
        } else {
            refuse(u"%1 is not a whole number"_s.arg(what));
        }
        Next(what);
        return number;
    }

    double Float(const QString &what)
    {
        if (!m_reader.isDouble())
            refuse(u"%1 is not a number"_s.arg(what));
        const double number = m_reader.toDouble();
        Next(what);
        return number;
    }

    bool Boolean(const QString &what)
    {
        if (!m_reader.isBool())
            refuse(u"%1 is neither true nor false"_s.arg(what));
        const bool truth = m_reader.toBool();
        Next(what);
        return truth;
    }

    QString Text(const QString &what)
    {
        if (!m_reader.isString())
            refuse(u"%1 is not a text"_s.arg(what));
        QString text;
        auto part = m_reader.readString();
        for (; part.status == QCborStreamReader::Ok; part = m_reader.readString())
            text += part.data;
        if (part.status != QCborStreamReader::EndOfString)
            refuse(u"%1 is cut"_s.arg(what));
        return text;
    }

    QByteArray Bytes(const QString &what)
    {
        if (!m_reader.isByteArray())
            refuse(u"%1 is missing"_s.arg(what));
        QByteArray bytes;
        auto part = m_reader.readByteArray();
        for (; part.status == QCborStreamReader::Ok; part = m_reader.readByteArray())
            bytes += part.data;
        if (part.status != QCborStreamReader::EndOfString)
            refuse(u"%1 is cut"_s.arg(what));
        return bytes;
    }

    bool SkipNull(const QString &what)
    {
        if (!m_reader.isNull())
            return false;
        Next(what);
        return true;
    }

    void End()
    {
        if (m_reader.lastError() != QCborError::NoError || m_reader.currentOffset() != m_size)
            refuse(u"it is followed by something else"_s);
    }

private:
    void Next(const QString &what)
    {
        if (!m_reader.next(0) || m_reader.lastError() != QCborError::NoError)
            refuse(u"%1 is cut"_s.arg(what));
    }

    QCborStreamReader m_reader;
    qsizetype m_size;
};

void readColumn(Reader &reader, const TFieldDef &def, Zel::Column &column, int rows)
{
    const QString what = u"column \"%1\""_s.arg(def.Name);
    const auto count = static_cast<std::size_t>(rows);
    if (reader.EnterArray(what) != count)
        refuse(u"%1 is not as long as the others"_s.arg(what));
    const auto fill = [&](auto &values, auto read) {
        values.reserve(count);
        for (int row = 0; row < rows; ++row) {
            if (reader.SkipNull(what)) {
                column.Nulls.resize(rows); // has an effect only for the first null
                column.Nulls.setBit(row);
                values.emplace_back();
            } else {
                values.push_back(read());
            }
        }
    };
    switch (def.Type) {
    case TFieldType::Integer:
        fill(column.Ints, [&] {
            const qint64 number = reader.Integer(what);
            if (!std::in_range<qint32>(number))
                refuse(u"%1 holds an integer beyond 32 bits"_s.arg(what));
            return static_cast<qint32>(number);
        });
        break;
    case TFieldType::Boolean:
        fill(column.Ints, [&] { return reader.Boolean(what) ? 1 : 0; });
        break;
    case TFieldType::LargeInt:
    case TFieldType::Currency:
        fill(column.Longs, [&] { return reader.Integer(what); });
        break;
    case TFieldType::Date:
        fill(column.Longs, [&] {
            const qint64 day = reader.Integer(what);
            if (!QDate::fromJulianDay(day).isValid())
                refuse(u"%1 holds a day that is not a date"_s.arg(what));
            return day;
        });
        break;
    case TFieldType::DateTime:
        fill(column.Longs, [&] {
            const qint64 moment = reader.Integer(what);
            if (!Zel::FromMoment(moment).date().isValid())
                refuse(u"%1 holds a moment that is not a date"_s.arg(what));
            return moment;
        });
        break;
    case TFieldType::Float:
        fill(column.Doubles, [&] { return reader.Float(what); });
        break;
    case TFieldType::String:
        fill(column.Texts, [&] { return reader.Text(what); });
        break;
    }
    reader.LeaveArray(what);
}

TTablePtr readTable(const QByteArray &content)
{
    Reader reader(content);
    const QString whole = u"its content"_s;
    const quint64 parts = reader.EnterArray(whole);
    if (parts < 1 || parts > MaxColumns + 1)
        refuse(u"it has a wrong number of columns"_s);
    const qint64 rows = reader.Integer(u"the row count"_s);
    // Every value takes at least one byte. A larger row count is invalid and must not allocate memory.
    const qint64 most = parts > 1 ? content.size() / static_cast<qint64>(parts - 1) : 0;
    if (rows < 0 || rows > most || rows > std::numeric_limits<int>::max() - 1)
        refuse(u"its row count %1 is impossible"_s.arg(rows));
    QList<TFieldDef> defs;
    std::vector<Zel::Column> columns;
    for (quint64 i = 1; i < parts; ++i) {
        const QString what = u"column %1"_s.arg(i);
        if (reader.EnterArray(what) != 3)
            refuse(u"%1 has a wrong form"_s.arg(what));
        TFieldDef def;
        def.Name = reader.Text(what);
        const qint64 type = reader.Integer(what);
        if (type < 0 || type > static_cast<qint64>(TFieldType::String))
            refuse(u"column \"%1\" has the unknown type %2"_s.arg(def.Name).arg(type));
        def.Type = static_cast<TFieldType>(type);
        readColumn(reader, def, columns.emplace_back(), static_cast<int>(rows));
        reader.LeaveArray(what);
        columns.back().Type = def.Type;
        defs.append(std::move(def));
    }
    reader.LeaveArray(whole);
    reader.End();
    auto table = std::make_unique<TTable::Private>(std::move(defs));
    table->Columns = std::move(columns);
    table->Rows = static_cast<int>(rows);
    return std::make_shared<const TTable>(std::move(table));
}

} // namespace

QByteArray TDataPacket::ToBytes() const
{
    if (!m_table)
        throw EDatabaseError(u"An empty data packet has no byte form."_s);
    QByteArray content;
    {
        QCborStreamWriter writer(&content);
        const TTable::Private &table = m_table->data();
        writer.startArray(static_cast<quint64>(table.Defs.size()) + 1);
        writer.append(qint64{table.Rows});
        for (int i = 0; i < table.Defs.size(); ++i)
            writeColumn(writer, table.Defs[i], table.Columns[static_cast<std::size_t>(i)], table.Rows);
        writer.endArray();
    }
    QByteArray bytes;
    QCborStreamWriter writer(&bytes);
    writer.startArray(4);
    writer.append(magic());
    writer.append(Version);
    writer.append(QCryptographicHash::hash(content, QCryptographicHash::Sha256));
    writer.append(content);
    writer.endArray();
    return bytes;
}

TDataPacket TDataPacket::FromBytes(const QByteArray &bytes)
{
    Reader reader(bytes);
    const QString whole = u"it"_s;
    const quint64 parts = reader.EnterArray(whole);
    if (reader.Text(u"its magic word"_s) != magic())
        refuse(u"it does not begin with its magic word"_s);
    const qint64 version = reader.Integer(u"its version"_s);
    if (version != Version)
        refuse(u"its version %1 is not %2"_s.arg(version).arg(Version));
    if (parts != 4)
        refuse(u"it has a wrong form"_s);
    const QByteArray checksum = reader.Bytes(u"its checksum"_s);
    const QByteArray content = reader.Bytes(u"its content"_s);
    reader.LeaveArray(whole);
    reader.End();
    if (QCryptographicHash::hash(content, QCryptographicHash::Sha256) != checksum)
        refuse(u"it is damaged, its checksum does not hold"_s);
    return TDataPacket(readTable(content));
}

TDataPacket TDataPacket::FromVariant(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<TDataPacket>()) {
        TDataPacket packet = value.value<TDataPacket>();
        if (packet.IsNull())
            refuse(u"it is empty"_s);
        return packet;
    }
    if (value.typeId() == QMetaType::QByteArray)
        return FromBytes(value.toByteArray());
    if (!value.isValid())
        refuse(u"it is empty"_s);
    refuse(u"a value of the type %1 is not a packet"_s.arg(QLatin1StringView(value.metaType().name())));
}

#include "data/SqlTypes_p.h"

#include "data/Values_p.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlResult>
#include <QTime>

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

using namespace Qt::StringLiterals;

namespace Zel
{

namespace
{

/// Whether @p value is an amount with at most four decimals.
bool isExactAmount(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        const qsizetype point = text.indexOf(u'.');
        const QStringView rest = point < 0 ? QStringView() : QStringView(text).mid(point + 5);
        if (std::any_of(rest.begin(), rest.end(), [](QChar digit) { return digit != u'0'; }))
            return false;
    }
    const std::optional<Currency> amount = ToCurrency(value);
    return amount && (value.typeId() != QMetaType::Double || amount->toDouble() == value.toDouble());
}

/// Whether a column of this type can hold @p value, which is not null, without a change of the value.
bool fitsType(TFieldType type, const QVariant &value)
{
    constexpr qint64 exactInDouble = qint64{1} << std::numeric_limits<double>::digits;
    const bool isText = value.typeId() == QMetaType::QString;
    const auto isBetween = [&value](qint64 low, qint64 high) {
        const std::optional<qint64> number = ToInteger(value);
        return number && *number >= low && *number <= high;
    };
    switch (type) {
    case TFieldType::Integer:
        return isBetween(std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    case TFieldType::LargeInt:
        return ToInteger(value).has_value();
    case TFieldType::Float:
        return value.typeId() == QMetaType::LongLong ? isBetween(-exactInDouble, exactInDouble)
                                                     : ToFloat(value).has_value();
    case TFieldType::Currency:
        return isExactAmount(value);
    case TFieldType::Boolean:
        return isText ? ToBoolean(value).has_value() : isBetween(0, 1);
    case TFieldType::Date:
        return value.typeId() == QMetaType::QDateTime
                   ? value.toDateTime().time() == QTime(0, 0)
                   : ToDate(value).has_value() && (!isText || value.toString().size() == 10);
    case TFieldType::DateTime:
        return ToMoment(value).has_value();
    case TFieldType::String:
        break;
    }
    return true;
}

/// The next type to try when a value of the column does not fit this type.
TFieldType widerType(TFieldType type)
{
    static const QHash<TFieldType, TFieldType> wider{{TFieldType::Boolean, TFieldType::Integer},
                                                     {TFieldType::Integer, TFieldType::LargeInt},
                                                     {TFieldType::LargeInt, TFieldType::Float},
                                                     {TFieldType::Currency, TFieldType::Float},
                                                     {TFieldType::Date, TFieldType::DateTime}};
    return wider.value(type, TFieldType::String);
}

/// The type of a column with values of this meta type.
TFieldType typeOfKind(int kind)
{
    static const QHash<int, TFieldType> types{
        {QMetaType::Bool, TFieldType::Boolean},      {QMetaType::Int, TFieldType::Integer},
        {QMetaType::UInt, TFieldType::Integer},      {QMetaType::Short, TFieldType::Integer},
        {QMetaType::LongLong, TFieldType::LargeInt}, {QMetaType::ULongLong, TFieldType::LargeInt},
        {QMetaType::Double, TFieldType::Float},      {QMetaType::Float, TFieldType::Float},
        {QMetaType::QDate, TFieldType::Date},        {QMetaType::QDateTime, TFieldType::DateTime}};
    return types.value(kind, TFieldType::String);
}

/// The first type to try for a column without a declared type.
TFieldType typeOfValues(const QVariantList &values)
{
    TFieldType type = TFieldType::String;
    for (const QVariant &value : values) {
        if (IsNullValue(value))
            continue;
        const TFieldType kind = typeOfKind(value.typeId());
        if (kind == TFieldType::Float)
            type = kind;
        else if (kind != TFieldType::Integer && kind != TFieldType::LargeInt)
            return kind;
        else if (type == TFieldType::String)
            type = TFieldType::Integer;
    }
    return type;
}

} // namespace

TFieldType SettledType(std::optional<TFieldType> declared, const QVariantList &values)
{
    TFieldType type = declared ? *declared : typeOfValues(values);
    while (type != TFieldType::String &&
           !std::all_of(values.begin(), values.end(), [type](const QVariant &value) {
               return IsNullValue(value) || fitsType(type, value);
           }))
        type = widerType(type);
    return type;
}

std::optional<TFieldType> TypeDeclaredAs(const QString &declared)
{
    static const std::vector<std::pair<QRegularExpression, TFieldType>> types{
        {QRegularExpression(u"^(bigint|int8|unsigned big int)$"_s), TFieldType::LargeInt},
        {QRegularExpression(u"bool"_s), TFieldType::Boolean},
        {QRegularExpression(u"int"_s), TFieldType::Integer},
        {QRegularExpression(u"^(numeric|decimal|money|currency)$"_s), TFieldType::Currency},
        {QRegularExpression(u"real|floa|doub"_s), TFieldType::Float},
        {QRegularExpression(u"^date$"_s), TFieldType::Date},
        {QRegularExpression(u"^(datetime|timestamp)"_s), TFieldType::DateTime},
        {QRegularExpression(u"."_s), TFieldType::String}};
    const QString name = declared.section(u'(', 0, 0).trimmed().toLower();
    for (const auto &[pattern, type] : types) {
        if (name.contains(pattern))
            return type;
    }
    return std::nullopt;
}

std::optional<TFieldType> TypeOfSqliteColumn(const QSqlQuery &query, int column)
{
    const QVariant handle = query.result()->handle();
    if (std::strcmp(handle.typeName(), "sqlite3_stmt*") != 0)
        return std::nullopt;
    sqlite3_stmt *statement = *static_cast<sqlite3_stmt *const *>(handle.constData());
    return TypeDeclaredAs(QString::fromUtf8(sqlite3_column_decltype(statement, column)));
}

TFieldType TypeOfField(const QSqlField &field, bool odbc)
{
    // The drivers' numbers for types that share a meta type with other types.
    constexpr int PostgresNumeric = 1700;
    constexpr int OdbcNumeric = 2;
    constexpr int OdbcDecimal = 3;
    constexpr int OdbcBit = -7;
    const int sqlType = field.typeID();
    if (odbc ? sqlType == OdbcNumeric || sqlType == OdbcDecimal : sqlType == PostgresNumeric)
        return TFieldType::Currency;
    return odbc && sqlType == OdbcBit ? TFieldType::Boolean : typeOfKind(field.metaType().id());
}

QVariant PlainValue(const QVariant &value)
{
    if (value.isNull())
        return {};
    if (value.typeId() == QMetaType::QByteArray)
        return QString::fromUtf8(value.toByteArray());
    return value.typeId() == QMetaType::QTime ? value.toTime().toString(Qt::ISODateWithMs) : value;
}

} // namespace Zel

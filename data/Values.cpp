#include "data/Values_p.h"

#include "data/Exceptions.h"
#include "data/Format.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace Zel
{
namespace
{
constexpr qint64 MillisecondsOfDay = 24LL * 60 * 60 * 1000;
// 2^63, the smallest positive double beyond the 64-bit integers.
constexpr double IntegerEnd = 9223372036854775808.0;

bool isText(const QVariant &value)
{
    return value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray ||
           value.typeId() == QMetaType::QChar;
}

/// The number of a text that consists of digits only; a fast path for keys given as texts.
std::optional<qint64> keyNumber(QStringView text)
{
    constexpr qsizetype digitsThatFit = 18;
    if (text.isEmpty() || text.size() > digitsThatFit)
        return std::nullopt;
    qint64 number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

/// Whether @p value has a date and a time. Qt treats a local time in the hour skipped by daylight saving as
/// invalid, but databases store it.
bool isMoment(const QDateTime &value)
{
    return value.isValid() ||
           (value.timeSpec() == Qt::LocalTime && value.date().isValid() && value.time().isValid());
}

std::optional<qint64> moment(QDateTime value)
{
    if (!isMoment(value))
        return std::nullopt;
    if (value.timeSpec() != Qt::LocalTime)
        value = value.toLocalTime();
    return value.date().toJulianDay() * MillisecondsOfDay + value.time().msecsSinceStartOfDay();
}

struct DayAndTime {
    QDate Day;
    QTime Time;
};

DayAndTime dayAndTime(qint64 moment)
{
    qint64 day = moment / MillisecondsOfDay;
    qint64 time = moment % MillisecondsOfDay;
    if (time < 0) {
        --day;
        time += MillisecondsOfDay;
    }
    return {QDate::fromJulianDay(day), QTime::fromMSecsSinceStartOfDay(static_cast<int>(time))};
}
} // namespace

bool IsNullValue(const QVariant &value)
{
    if (!value.isValid() || value.isNull())
        return true;
    if (value.typeId() == QMetaType::QDate)
        return !value.toDate().isValid();
    return value.typeId() == QMetaType::QDateTime && !isMoment(value.toDateTime());
}

std::optional<qint64> ToInteger(const QVariant &value)
{
    if (value.typeId() == QMetaType::Int) // the most frequent type of a key
        return *static_cast<const int *>(value.constData());
    if (value.typeId() == QMetaType::QString) {
        if (const std::optional<qint64> number = keyNumber(*static_cast<const QString *>(value.constData())))
            return number;
    }
    if (value.metaType() == QMetaType::fromType<Currency>()) {
        const std::int64_t raw = value.value<Currency>().raw();
        return raw % Currency::Scale == 0 ? std::optional<qint64>(raw / Currency::Scale) : std::nullopt;
    }
    switch (value.typeId()) {
    case QMetaType::ULongLong:
    case QMetaType::ULong: {
        const qulonglong number = value.toULongLong();
        if (number > static_cast<qulonglong>(std::numeric_limits<qint64>::max()))
            return std::nullopt;
        return static_cast<qint64>(number);
    }
    case QMetaType::Double:
    case QMetaType::Float: {
        const double number = value.toDouble();
        if (!(number >= -IntegerEnd && number < IntegerEnd) || number != std::trunc(number))
            return std::nullopt;
        return static_cast<qint64>(number);
    }
    case QMetaType::Bool:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Char:
        return value.toLongLong();
    default:
        break;
    }
    if (!isText(value))
        return std::nullopt;
    bool ok = false;
    const qint64 number = value.toString().trimmed().toLongLong(&ok);
    return ok ? std::optional<qint64>(number) : std::nullopt;
}

std::optional<double> ToFloat(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>().toDouble();
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return value.toDouble();
    if (value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong)
        return static_cast<double>(value.toULongLong());
    if (isText(value)) {
        try {
            return StrToFloat(value.toString());
        } catch (const EConvertError &) {
            return std::nullopt;
        }
    }
    const std::optional<qint64> number = ToInteger(value);
    return number ? std::optional<double>(static_cast<double>(*number)) : std::nullopt;
}

std::optional<Currency> ToCurrency(const QVariant &value)
{
    try {
        return Currency::fromVariant(value);
    } catch (const Exception &) {
        return std::nullopt;
    }
}

std::optional<bool> ToBoolean(const QVariant &value)
{
    if (isText(value)) {
        const QString text = value.toString().trimmed().toLower();
        for (const char *word : {"true", "t", "yes", "y", "1"}) {
            if (text == QLatin1StringView(word))
                return true;
        }
        for (const char *word : {"false", "f", "no", "n", "0"}) {
            if (text == QLatin1StringView(word))
                return false;
        }
        return std::nullopt;
    }
    const std::optional<double> number = ToFloat(value);
    return number ? std::optional<bool>(*number != 0.0) : std::nullopt;
}

std::optional<QDate> ToDate(const QVariant &value)
{
    QDate date;
    if (value.typeId() == QMetaType::QDate) {
        date = value.toDate();
    } else if (value.typeId() == QMetaType::QDateTime) {
        const std::optional<qint64> when = moment(value.toDateTime());
        if (when)
            date = FromMoment(*when).date();
    } else if (isText(value)) {
        const QString text = value.toString().trimmed();
        date = QDate::fromString(text, Qt::ISODate);
        if (!date.isValid()) {
            const std::optional<qint64> when = moment(QDateTime::fromString(text, Qt::ISODateWithMs));
            if (when)
                date = FromMoment(*when).date();
        }
    }
    return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
}

std::optional<qint64> ToMoment(const QVariant &value)
{
    if (value.typeId() == QMetaType::QDateTime)
        return moment(value.toDateTime());
    if (value.typeId() == QMetaType::QDate && value.toDate().isValid())
        return value.toDate().toJulianDay() * MillisecondsOfDay;
    if (!isText(value))
        return std::nullopt;
    const QString text = value.toString().trimmed();
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (date.isValid() && text.size() <= 10)
        return date.toJulianDay() * MillisecondsOfDay;
    return moment(QDateTime::fromString(text, Qt::ISODateWithMs));
}

std::optional<QString> ToText(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>().toString();
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QChar:
        return value.toString();
    case QMetaType::QByteArray:
        return QString::fromUtf8(value.toByteArray());
    case QMetaType::Bool:
        return BooleanText(value.toBool());
    case QMetaType::Double:
    case QMetaType::Float:
        return FloatText(value.toDouble());
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return QString::number(value.toULongLong());
    case QMetaType::QDate:
        return DateText(value.toDate());
    case QMetaType::QDateTime: {
        const std::optional<qint64> when = moment(value.toDateTime());
        return when ? std::optional<QString>(MomentText(*when)) : std::nullopt;
    }
    default:
        break;
    }
    if (const std::optional<qint64> number = ToInteger(value))
        return QString::number(*number);
    // Types that only some database engines have (times, identifiers) become texts by Qt's conversion.
    if (value.canConvert<QString>())
        return value.toString();
    return std::nullopt;
}

QString FloatText(double value)
{
    const double size = std::abs(value);
    const bool plain = size == 0.0 || (size >= 1e-5 && size < 1e15);
    return QString::number(value, plain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

QString BooleanText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

QString DateText(QDate date)
{
    return date.toString(Qt::ISODate);
}

QString MomentText(qint64 moment)
{
    const auto [day, time] = dayAndTime(moment);
    return day.toString(u"yyyy-MM-dd "_s) +
           time.toString(time.msec() == 0 ? u"HH:mm:ss"_s : u"HH:mm:ss.zzz"_s);
}

QDateTime FromMoment(qint64 moment)
{
    const auto [day, time] = dayAndTime(moment);
    return QDateTime(day, time);
}

QString ShownValue(const QVariant &value)
{
    const std::optional<QString> text = ToText(value);
    return text ? *text : u"(%1)"_s.arg(QLatin1StringView(value.metaType().name()));
}

QString ShownName(const QObject &dataset)
{
    return dataset.objectName().isEmpty() ? QString::fromLatin1(dataset.metaObject()->className())
                                          : dataset.objectName();
}

} // namespace Zel

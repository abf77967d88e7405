#pragma once

// Conversions of variants to the column types. Private to the data module.

#include "data/Currency.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QVariant>

#include <optional>

namespace Zel
{

/// Whether @p value is invalid, null or an invalid date.
bool IsNullValue(const QVariant &value);

// Each returns nothing when the value cannot be converted. The machine's locale does not matter.
std::optional<qint64> ToInteger(const QVariant &value); ///< Whole numbers only; texts of decimal digits.
std::optional<double> ToFloat(const QVariant &value);
std::optional<Currency> ToCurrency(const QVariant &value);
std::optional<bool> ToBoolean(const QVariant &value);
std::optional<QDate> ToDate(const QVariant &value);    ///< Texts in ISO form.
std::optional<qint64> ToMoment(const QVariant &value); ///< A moment, see FromMoment.
std::optional<QString> ToText(const QVariant &value);

/// The shortest text that reads back as @p value; plain digits unless the number is very large or small.
QString FloatText(double value);
QString BooleanText(bool value);
QString DateText(QDate date);
QString MomentText(qint64 moment);
/// Converts a moment: local date and time in milliseconds without a time zone, as databases store it.
QDateTime FromMoment(qint64 moment);
/// The text of a value in an error.
QString ShownValue(const QVariant &value);
/// The name of a dataset in an error: its object name, or its class when it has none.
QString ShownName(const QObject &dataset);

} // namespace Zel

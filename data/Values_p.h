#pragma once

// How a loosely typed value becomes one of the column types. Private to the data folder.

#include "data/Currency.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QVariant>

#include <optional>

namespace Zel
{

/// Invalid and null variants, and dates that are no date.
bool IsNullValue(const QVariant &value);

// Each gives nothing when the value has no such reading; none looks at the machine's locale.
std::optional<qint64> ToInteger(const QVariant &value); ///< Whole numbers only; texts in decimal digits.
std::optional<double> ToFloat(const QVariant &value);
std::optional<Currency> ToCurrency(const QVariant &value);
std::optional<bool> ToBoolean(const QVariant &value);
std::optional<QDate> ToDate(const QVariant &value);    ///< Texts in the ISO form.
std::optional<qint64> ToMoment(const QVariant &value); ///< As FromMoment reads it.
std::optional<QString> ToText(const QVariant &value);

/// The shortest text that reads back as @p value, in plain digits as long as these stay readable.
QString FloatText(double value);
QString BooleanText(bool value);
QString DateText(QDate date);
QString MomentText(qint64 moment);
/// A moment is what the clock on the wall showed, in milliseconds, without a time zone: what databases keep.
QDateTime FromMoment(qint64 moment);
/// How an error shows a value.
QString ShownValue(const QVariant &value);
/// How an error names a dataset: its object name, or its class when it has none.
QString ShownName(const QObject &dataset);

} // namespace Zel

#pragma once

#include "data/Currency.h"

#include <QStringView>

/// The number texts of this system. The thousands separator is "," and the decimal point ".", whatever the
/// locale of the machine. Decimal digits are rounded half away from zero. Negative values start with "-".
enum class FormatMask {
    Thousands,  ///< "#,##0.00" and "#,#0.00": thousands separators, two decimals
    TwoDecimals ///< "#0.00": no separators, two decimals
};

/// @p value with two decimals.
ZEL_DATA_EXPORT QString FormatFloat(FormatMask mask, Currency value);
/// The same for a double. The function rounds the shortest decimal digits that identify the double.
ZEL_DATA_EXPORT QString FormatFloat(FormatMask mask, double value);
/// @p value with @p decimals decimals (0: without a point), rounded as in FormatFloat for a double. Throws
/// EConvertError when @p value is not finite.
ZEL_DATA_EXPORT QString FormatDecimals(double value, int decimals, bool thousands);
/// The same with the mask as a text: "#,##0.00", "#,#0.00" or "#0.00". Throws EConvertError for any other
/// mask.
ZEL_DATA_EXPORT QString FormatFloat(const QString &mask, Currency value);
ZEL_DATA_EXPORT QString FormatFloat(const QString &mask, double value);
/// @p value rounded to cents as in FormatFloat, half away from zero. Throws EOverflow at the ends of the
/// range.
ZEL_DATA_EXPORT Currency RoundToShownCents(Currency value);

/// Reads a plain number: a sign, digits, one "." and, in StrToFloat, an exponent; surrounding blanks are
/// ignored. Throws EConvertError, which names the text, for anything else, also for thousands separators and
/// an empty text. StrToInt reads 32-bit integers; StrToCurr rounds to four decimals, ties to even.
ZEL_DATA_EXPORT double StrToFloat(const QString &text);
ZEL_DATA_EXPORT int StrToInt(const QString &text);
ZEL_DATA_EXPORT Currency StrToCurr(const QString &text);
/// The same as StrToCurr without an exception: returns false, and leaves @p value unchanged, for an invalid
/// text.
ZEL_DATA_EXPORT bool TryStrToCurr(QStringView text, Currency &value) noexcept;

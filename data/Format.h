#pragma once

#include "data/Currency.h"

#include <QStringView>

/// The number texts of this system: "," between thousands and "." as the point always, whatever the locale of
/// the machine; halves go away from zero on the decimal digits; negative values start with "-".
enum class FormatMask {
    Thousands,  ///< "#,##0.00" and "#,#0.00": thousands separators, two decimals
    TwoDecimals ///< "#0.00": no separators, two decimals
};

/// @p value in two decimals.
ZEL_DATA_EXPORT QString FormatFloat(FormatMask mask, Currency value);
/// The same for a double: its shortest decimal digits are what is rounded.
ZEL_DATA_EXPORT QString FormatFloat(FormatMask mask, double value);
/// @p value with @p decimals decimals (0: without a point), rounded as FormatFloat does: halves away from
/// zero on the shortest decimal digits. Raises EConvertError for what is no finite number.
ZEL_DATA_EXPORT QString FormatDecimals(double value, int decimals, bool thousands);
/// By the mask's text: "#,##0.00", "#,#0.00" or "#0.00"; any other raises EConvertError naming it.
ZEL_DATA_EXPORT QString FormatFloat(const QString &mask, Currency value);
ZEL_DATA_EXPORT QString FormatFloat(const QString &mask, double value);
/// @p value rounded to the cent as FormatFloat shows it (halves away from zero), without a text between.
/// Raises EOverflow at the ends of the range.
ZEL_DATA_EXPORT Currency RoundToShownCents(Currency value);

/// A plain number as a person types it: blanks around it, a sign, digits, one "." and an exponent for
/// StrToFloat. Anything else, thousands separators and the empty text included, raises EConvertError naming
/// the text. StrToInt takes 32-bit integers only; StrToCurr rounds to four decimals, ties to even.
ZEL_DATA_EXPORT double StrToFloat(const QString &text);
ZEL_DATA_EXPORT int StrToInt(const QString &text);
ZEL_DATA_EXPORT Currency StrToCurr(const QString &text);
/// The same without an error: false and @p value untouched when @p text is no such number.
ZEL_DATA_EXPORT bool TryStrToCurr(QStringView text, Currency &value) noexcept;

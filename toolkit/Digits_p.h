#pragma once

#include <QChar>

namespace Zel
{

/// Whether @p c is a digit from 0 to 9. QChar::isDigit also accepts the digits of other scripts.
constexpr bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// The number of decimals of a Currency.
inline constexpr int DecimalsKept = 4;

} // namespace Zel

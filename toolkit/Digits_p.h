#pragma once

#include <QChar>

namespace Zel
{

/// One of the ten digits that numbers here are written with; Unicode knows more.
constexpr bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// The decimals that a Currency keeps.
inline constexpr int DecimalsKept = 4;

} // namespace Zel

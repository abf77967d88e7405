#pragma once

#include <cstddef>

namespace QuoteDesk
{

/// A compiled translation embedded in the program.
struct Translation {
    const char *name; ///< "<texts>_<language>", like the file in translations/
    const unsigned char *bytes;
    std::size_t size;
};

extern const Translation translationTable[];
extern const std::size_t translationCount;

} // namespace QuoteDesk

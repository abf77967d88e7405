#pragma once

#include <cstddef>

namespace QuoteDesk
{

/// One compiled translation inside the program.
struct Translation {
    const char *name; ///< "<texts>_<language>", as the file in translations/ is called.
    const unsigned char *bytes;
    std::size_t size;
};

extern const Translation translationTable[];
extern const std::size_t translationCount;

} // namespace QuoteDesk

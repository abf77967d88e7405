#pragma once

#include <cstddef>

namespace Zel
{
/// A picture's name and its SVG text; both are valid until the library is unloaded.
struct Glyph {
    const char *name;
    const char *svg;
};
/// The pictures in the folder toolkit/glyphs, sorted by name. The build generates the table.
extern const Glyph glyphTable[];
extern const std::size_t glyphCount;
} // namespace Zel

#pragma once

#include <cstddef>

namespace Zel
{
/// One picture's name and its drawing as SVG text; both live as long as the library.
struct Glyph {
    const char *name;
    const char *svg;
};
/// The pictures in the folder toolkit/glyphs, sorted by name; the build makes the table.
extern const Glyph glyphTable[];
extern const std::size_t glyphCount;
} // namespace Zel

#pragma once

#include <functional>

class QFont;
class QPalette;

namespace QuoteDesk
{

/// Which colours the program has.
enum class ColourScheme {
    System, ///< light or dark as the system is, also when the system changes
    Light,
    Dark
};

/// The size of all text, beside that of the system.
enum class TextSize {
    Small,  ///< one point smaller
    Normal, ///< as the system has it
    Large,  ///< one and a half points larger
    Largest ///< three points larger
};

/// The style, the colours and the font of the program.
namespace Appearance
{

/// Gives the application its style, palette and font. May be called at any time after the application was
/// made, also while windows are up. A system palette of high contrast is kept as it is, and drawn by a plain
/// style.
void apply(ColourScheme scheme, TextSize size);
/// Where the palette of the system comes from; an empty function for the platform. A test gives the palette
/// of another desktop. Takes effect with the next change of the system, or the next call of apply when it
/// comes before the first one.
void setSystemPalette(std::function<QPalette()> source);
/// The values of the last call of apply.
ColourScheme scheme();
TextSize textSize(); ///< The same for the size.
/// Whether the colours are dark now.
bool isDark();

/// Whether @p palette is one of high contrast: black or white throughout.
bool isHighContrast(const QPalette &palette);
/// The font for all text: @p system when its digits have one width, otherwise the first known font whose
/// digits have. A @p system that only stands for "any font" is replaced, too.
QFont interfaceFont(const QFont &system);
/// Whether all digits of @p font have the same width, so that amounts stand below each other.
bool hasEqualDigits(const QFont &font);

} // namespace Appearance

} // namespace QuoteDesk

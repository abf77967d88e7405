#include "toolkit/TFonts.h"

#include <QStringList>

void SubstituteDesignFonts()
{
    static const bool done = [] {
        const QStringList sans{QStringLiteral("Liberation Sans"), QStringLiteral("Arimo"),
                               QStringLiteral("Arial"), QStringLiteral("DejaVu Sans Condensed")};
        QFont::insertSubstitutions(QStringLiteral("Tahoma"), sans);
        QFont::insertSubstitutions(QStringLiteral("Trebuchet MS"), sans);
        return true;
    }();
    Q_UNUSED(done)
}

QFont DesignFont(const QString &family, int pixelHeight)
{
    SubstituteDesignFonts();
    QFont font(family);
    font.setPixelSize(pixelHeight);
    return font;
}

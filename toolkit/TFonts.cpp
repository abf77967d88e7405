#include "toolkit/TFonts.h"

#include <QStringList>

using namespace Qt::StringLiterals;

void SubstituteDesignFonts()
{
    static const bool done = [] {
        const QStringList sans{u"Liberation Sans"_s, u"Arimo"_s, u"Arial"_s, u"DejaVu Sans Condensed"_s};
        QFont::insertSubstitutions(u"Tahoma"_s, sans);
        QFont::insertSubstitutions(u"Trebuchet MS"_s, sans);
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

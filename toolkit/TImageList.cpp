#include "toolkit/TImageList.h"

#include "toolkit/Glyphs.h"

TImageList::TImageList(QObject *parent) : QObject(parent) {}

TImageList::~TImageList() = default;

int TImageList::Add(const QIcon &icon)
{
    m_icons.append(icon);
    return Count() - 1;
}

void TImageList::AddGlyphs(const QStringList &names)
{
    for (const QString &name : names)
        Add(GlyphIcon(name));
}

QIcon TImageList::Icon(int index) const
{
    return m_icons.value(index);
}

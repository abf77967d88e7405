#include "look/ProgramIcon.h"

#include "ProgramPicture.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace QuoteDesk
{

QIcon programIcon()
{
    QSvgRenderer picture(QByteArray::fromRawData(ProgramPicture, sizeof ProgramPicture - 1));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        picture.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace QuoteDesk

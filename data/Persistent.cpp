#include "data/Persistent.h"

#include "data/Exceptions.h"

TPersistent::TPersistent(QObject *parent) : QObject(parent) {}

TPersistent::~TPersistent() = default;

void TPersistent::Assign(const QObject *source)
{
    const QString from =
        source ? QString::fromLatin1(source->metaObject()->className()) : QStringLiteral("nil");
    throw EConvertError(QStringLiteral("Cannot assign a %1 to a %2.")
                            .arg(from, QString::fromLatin1(metaObject()->className())));
}

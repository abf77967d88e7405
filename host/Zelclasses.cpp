#include "host/Zelclasses.h"

#include "data/Exceptions.h"

#include <QCoreApplication>

TZelClass::TZelClass(QObject *parent) : TPersistent(parent) {}

TZelClass::~TZelClass() = default;

void TZelClass::SetUpFrom(TZelClass *, bool) {}

std::unique_ptr<TZelClass> TZelClass::Make(const QMetaObject &type, const QMetaObject &wanted,
                                           TZelClass *source, const QString &name, bool linked)
{
    std::unique_ptr<QObject> object;
    if (type.inherits(&wanted))
        object.reset(type.newInstance());
    if (!qobject_cast<TZelClass *>(object.get())) {
        throw EConvertError(
            QCoreApplication::translate("TZelClass", "The class factory cannot make a %1 as a %2.")
                .arg(QLatin1String(type.className()), QLatin1String(wanted.className())));
    }
    std::unique_ptr<TZelClass> made(static_cast<TZelClass *>(object.release()));
    made->m_name = name;
    made->SetUpFrom(source, linked);
    return made;
}

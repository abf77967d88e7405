#include "data/Persistent.h"

#include "data/Exceptions.h"

#include <QDataStream>
#include <QMetaProperty>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace
{

QString nameOf(const QMetaProperty &property)
{
    return QString::fromLatin1(property.name());
}

/// The published properties of the classes derived from TPersistent.
QList<QMetaProperty> publishedBy(const TPersistent &object)
{
    QList<QMetaProperty> properties;
    const QMetaObject *meta = object.metaObject();
    for (int i = TPersistent::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        if (meta->property(i).isStored() && meta->property(i).isWritable())
            properties.append(meta->property(i));
    }
    return properties;
}

} // namespace

TPersistent::TPersistent(QObject *parent) : QObject(parent) {}

TPersistent::~TPersistent() = default;

void TPersistent::Assign(const QObject *source)
{
    const QString from = source ? QString::fromLatin1(source->metaObject()->className()) : u"nil"_s;
    throw EConvertError(
        u"Cannot assign a %1 to a %2."_s.arg(from, QString::fromLatin1(metaObject()->className())));
}

void TPersistent::SaveTo(QDataStream &stream) const
{
    QVariantMap values;
    const QList<QMetaProperty> properties = publishedBy(*this);
    for (const QMetaProperty &property : properties) {
        if (!property.metaType().hasRegisteredDataStreamOperators())
            throw EConvertError(u"Property \"%1\" of a %2 cannot be written to a stream."_s.arg(
                nameOf(property), QString::fromLatin1(metaObject()->className())));
        values.insert(nameOf(property), property.read(this));
    }
    stream << values;
}

void TPersistent::LoadFrom(QDataStream &stream)
{
    QVariantMap values;
    stream >> values;
    if (stream.status() != QDataStream::Ok)
        throw EConvertError(
            u"The stream holds no whole %1."_s.arg(QString::fromLatin1(metaObject()->className())));
    const QList<QMetaProperty> properties = publishedBy(*this);
    for (const QMetaProperty &property : properties) {
        const auto value = values.find(nameOf(property));
        if (value != values.end() && !value->convert(property.metaType()))
            throw EConvertError(u"Property \"%1\" of a %2 cannot take what the stream has for it."_s.arg(
                nameOf(property), QString::fromLatin1(metaObject()->className())));
    }
    for (const QMetaProperty &property : properties) {
        const auto value = values.constFind(nameOf(property));
        if (value != values.constEnd())
            property.write(this, *value);
    }
}

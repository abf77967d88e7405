#pragma once

#include "export/zel_data_export.h"

#include <QObject>

class QDataStream;

/// An object whose published properties are copied with Assign and can be streamed.
class ZEL_DATA_EXPORT TPersistent : public QObject
{
    Q_OBJECT
public:
    explicit TPersistent(QObject *parent = nullptr);
    ~TPersistent() override;
    /// Copies @p source into this object. When the classes do not fit, throws EConvertError
    /// ("Cannot assign a <source class> to a <this class>.") and changes nothing; nullptr is named "nil".
    virtual void Assign(const QObject *source);

    /// Writes the published properties with their names. Throws EConvertError for a property of a type that
    /// cannot be written.
    void SaveTo(QDataStream &stream) const;
    /// Sets the published properties that are in the stream; ignores names that this class does not have.
    /// Throws EConvertError, and changes nothing, when the stream ends early, has other content, or has a
    /// value that does not fit.
    void LoadFrom(QDataStream &stream);
};

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
    /// Copies @p source into this object. A class that cannot take it raises EConvertError
    /// ("Cannot assign a <source class> to a <this class>.") and changes nothing; nullptr is named "nil".
    virtual void Assign(const QObject *source);

    /// Writes the published properties with their names. EConvertError for one of a type that cannot be
    /// written.
    void SaveTo(QDataStream &stream) const;
    /// Sets the published properties that the stream has; names that this class has not are passed over.
    /// EConvertError when the stream ends early, holds something else, or has a value that does not fit; then
    /// nothing changes.
    void LoadFrom(QDataStream &stream);
};

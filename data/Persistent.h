#pragma once

#include "export/zel_data_export.h"

#include <QObject>

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
};

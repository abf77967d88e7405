#pragma once

#include "data/Persistent.h"
#include "export/zel_host_export.h"

#include <memory>

/// The base of the objects that the host's class factory creates.
class ZEL_HOST_EXPORT TZelClass : public TPersistent
{
    Q_OBJECT
    Q_PROPERTY(QString Name READ Get_Name CONSTANT)
public:
    explicit TZelClass(QObject *parent = nullptr);
    ~TZelClass() override;

    /// The name given at creation; empty for an object that the factory did not create.
    QString Get_Name() const { return m_name; }

    /// The class factory. Creates an object of the class @p type, which needs an invokable constructor
    /// without arguments, names it @p name, calls its SetUpFrom with @p source and stores it in @p variable.
    /// With
    /// @p linked the new object shows the content of the source at all times; otherwise it starts empty. The
    /// caller owns the object. Throws EConvertError when @p type cannot be created or is not derived from @p
    /// T, and passes on what SetUpFrom throws; @p variable is then unchanged.
    template <class T>
    static void CreateClass(const QMetaObject &type, TZelClass *source, const QString &name, bool linked,
                            std::unique_ptr<T> &variable)
    {
        std::unique_ptr<TZelClass> made = Make(type, T::staticMetaObject, source, name, linked);
        variable.reset(static_cast<T *>(made.release()));
    }

protected:
    /// Sets a new object up from @p source. The base class ignores @p source.
    virtual void SetUpFrom(TZelClass *source, bool linked);

private:
    static std::unique_ptr<TZelClass> Make(const QMetaObject &type, const QMetaObject &wanted,
                                           TZelClass *source, const QString &name, bool linked);

    QString m_name;
};

#pragma once

#include "data/Persistent.h"
#include "export/zel_host_export.h"

#include <memory>

/// The base of the objects that the host's class factory makes.
class ZEL_HOST_EXPORT TZelClass : public TPersistent
{
    Q_OBJECT
    Q_PROPERTY(QString Name READ Get_Name CONSTANT)
public:
    explicit TZelClass(QObject *parent = nullptr);
    ~TZelClass() override;

    /// The name given at creation; empty for an object that the factory did not make.
    QString Get_Name() const { return m_name; }

    /// The class factory. Makes an object of the class @p type, which needs an invokable constructor without
    /// arguments, names it @p name, lets it set itself up from @p source and puts it into @p variable. With
    /// @p linked the new object keeps showing what the source holds; without it, it starts empty. The caller
    /// owns the object. Raises EConvertError, and leaves @p variable as it is, when @p type cannot be made or
    /// is no @p T, and whatever the set-up raises.
    template <class T>
    static void CreateClass(const QMetaObject &type, TZelClass *source, const QString &name, bool linked,
                            std::unique_ptr<T> &variable)
    {
        std::unique_ptr<TZelClass> made = Make(type, T::staticMetaObject, source, name, linked);
        variable.reset(static_cast<T *>(made.release()));
    }

protected:
    /// Sets a new object up from @p source. The base takes anything and keeps nothing.
    virtual void SetUpFrom(TZelClass *source, bool linked);

private:
    static std::unique_ptr<TZelClass> Make(const QMetaObject &type, const QMetaObject &wanted,
                                           TZelClass *source, const QString &name, bool linked);

    QString m_name;
};

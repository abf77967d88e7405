#pragma once

#include "export/zel_data_export.h"

#include <QByteArray>
#include <QString>

#include <exception>

/// The base of every exception of this system. The message is for users.
class ZEL_DATA_EXPORT Exception : public std::exception
{
public:
    explicit Exception(QString message); ///< An exception with that message.
    ~Exception() override;
    Exception(const Exception &) = default;
    Exception &operator=(const Exception &) = default;
    const QString &message() const noexcept { return m_message; } ///< The text for the user.
    /// The message in UTF-8; valid as long as the exception exists.
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_message;
    QByteArray m_utf8;
};

// One class per kind of failure. No class adds data.
#define ZEL_DECLARE_EXCEPTION(Name)                                                                          \
    class ZEL_DATA_EXPORT Name : public Exception                                                            \
    {                                                                                                        \
    public:                                                                                                  \
        using Exception::Exception;                                                                          \
        ~Name() override;                                                                                    \
    };

/// A text or value cannot be converted, or an object cannot be assigned. The message names it.
ZEL_DECLARE_EXCEPTION(EConvertError)
/// A failure of the data layer: an unknown field, provider, parameter or bookmark, an invalid filter, an SQL
/// error.
ZEL_DECLARE_EXCEPTION(EDatabaseError)
/// A fixed-point result does not fit in 64 bits, or a division by zero.
ZEL_DECLARE_EXCEPTION(EOverflow)
/// An index outside a list.
ZEL_DECLARE_EXCEPTION(EListError)
/// An operation was called that a derived class must override.
ZEL_DECLARE_EXCEPTION(EAbstractError)

#undef ZEL_DECLARE_EXCEPTION

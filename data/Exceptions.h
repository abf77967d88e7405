#pragma once

#include "export/zel_data_export.h"

#include <QByteArray>
#include <QString>

#include <exception>

/// The root of every error that this system raises. It carries one message for people, in plain words.
class ZEL_DATA_EXPORT Exception : public std::exception
{
public:
    explicit Exception(QString message); ///< With what the user is to read.
    ~Exception() override;
    Exception(const Exception &) = default;
    Exception &operator=(const Exception &) = default;
    const QString &message() const noexcept { return m_message; } ///< What the user is to read.
    /// The message in UTF-8; valid as long as the exception.
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_message;
    QByteArray m_utf8;
};

// One class per kind of failure, so that a caller can tell them apart; none adds data of its own.
#define ZEL_DECLARE_EXCEPTION(Name)                                                                          \
    class ZEL_DATA_EXPORT Name : public Exception                                                            \
    {                                                                                                        \
    public:                                                                                                  \
        using Exception::Exception;                                                                          \
        ~Name() override;                                                                                    \
    };

/// A text or value that cannot be converted, or an object that cannot be assigned; names the culprit.
ZEL_DECLARE_EXCEPTION(EConvertError)
/// A failure of the data layer: unknown field, provider, parameter or bookmark, a refused filter, SQL errors.
ZEL_DECLARE_EXCEPTION(EDatabaseError)
/// A fixed-point result that does not fit in 64 bits, or a division by zero.
ZEL_DECLARE_EXCEPTION(EOverflow)
/// An index outside a list.
ZEL_DECLARE_EXCEPTION(EListError)
/// A call of an operation that a descendant should have supplied.
ZEL_DECLARE_EXCEPTION(EAbstractError)

#undef ZEL_DECLARE_EXCEPTION

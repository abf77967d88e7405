#pragma once

#include "data/Currency.h"
#include "export/zel_data_export.h"

#include <QList>
#include <QString>
#include <QVariant>

/// The direction of a parameter's value.
enum class TParamType {
    Input,       ///< to the server
    Output,      ///< from the server
    InputOutput, ///< both
    Result       ///< the return value of a function
};
/// The designed type of a parameter. The parameter converts its value to that type.
enum class TParamDataType {
    Unknown, ///< the value is not converted
    Integer, ///< integers of up to 64 bits
    Float,
    Currency,
    Boolean,
    Date,
    DateTime,
    String,
    FixedChar ///< a text; a number becomes its decimal digits
};

/// One parameter of a query, procedure or provider. Setting the value does not change the designed type: a
/// fixed char parameter that is set to an integer passes on the integer's decimal text.
class ZEL_DATA_EXPORT TParam
{
public:
    QString Name;                                      ///< Case-insensitive.
    TParamDataType DataType = TParamDataType::Unknown; ///< The designed type; the server gets this type.
    TParamType ParamType = TParamType::Input;          ///< The direction of the value.

    void SetAsInteger(int value);           ///< SetValue for an integer.
    void SetAsString(const QString &value); ///< SetValue for a text.
    void SetAsFloat(double value);          ///< SetValue for a real number.
    void SetAsCurrency(Currency value);     ///< SetValue for an amount.
    /// Sets the value, converted to the designed type; an invalid or null variant gives null. When the value
    /// cannot be converted, throws EConvertError, which names the parameter and the value, and changes
    /// nothing.
    void SetValue(const QVariant &value);
    void Clear();             ///< Sets the value to null.
    bool IsNull() const;      ///< Whether the value is null.
    int AsInteger() const;    ///< 0 when null. Throws EConvertError when the value is not a 32-bit integer.
    QString AsString() const; ///< The value as a text; "" when null.
    QVariant Value() const;   ///< The value; invalid when null.

private:
    QVariant m_value;
};

/// The parameters of a dataset in order; names are case-insensitive.
class ZEL_DATA_EXPORT TParams
{
public:
    int Count() const noexcept { return static_cast<int>(m_items.size()); } ///< The number of parameters.
    TParam &operator[](int index);             ///< Throws EListError outside 0..Count-1.
    const TParam &operator[](int index) const; ///< The same, read-only.
    /// Appends a parameter; the reference is valid until the next Add or Clear.
    TParam &Add(const QString &name, TParamDataType type = TParamDataType::Unknown,
                TParamType kind = TParamType::Input);
    TParam &ParamByName(const QString &name);             ///< Throws EDatabaseError for an unknown name.
    const TParam &ParamByName(const QString &name) const; ///< The same, read-only.
    TParam *FindParam(const QString &name);               ///< nullptr for an unknown name.
    const TParam *FindParam(const QString &name) const;   ///< The same, read-only.
    void Clear() { m_items.clear(); }                     ///< Removes all parameters.

private:
    QList<TParam> m_items;
};

#pragma once

#include "data/Currency.h"
#include "export/zel_data_export.h"

#include <QList>
#include <QString>
#include <QVariant>

/// Which way a parameter's value goes.
enum class TParamType {
    Input,       ///< to the server
    Output,      ///< from the server
    InputOutput, ///< both
    Result       ///< what a function returns
};
/// What a parameter is designed as. Its value is kept as one of that kind.
enum class TParamDataType {
    Unknown, ///< as it was set
    Integer, ///< whole numbers of up to 64 bits
    Float,
    Currency,
    Boolean,
    Date,
    DateTime,
    String,
    FixedChar ///< a text; a number's decimal digits
};

/// One parameter of a query, procedure or provider. Writing sets the value and keeps the designed kind: a
/// fixed char parameter written as an integer hands over the integer's decimal text.
class ZEL_DATA_EXPORT TParam
{
public:
    QString Name;                                      ///< Found without regard to case.
    TParamDataType DataType = TParamDataType::Unknown; ///< The designed kind; what the server is told.
    TParamType ParamType = TParamType::Input;          ///< Which way the value goes.

    void SetAsInteger(int value);           ///< SetValue for a whole number.
    void SetAsString(const QString &value); ///< SetValue for a text.
    void SetAsFloat(double value);          ///< SetValue for a real number.
    void SetAsCurrency(Currency value);     ///< SetValue for an amount.
    /// Sets the value in the designed kind; an invalid or null variant makes it null. EConvertError naming
    /// the parameter and the value, with nothing changed, when the value has no reading of that kind.
    void SetValue(const QVariant &value);
    void Clear();          ///< Makes the value null.
    bool IsNull() const;   ///< No value is set.
    int AsInteger() const; ///< 0 when null; EConvertError naming the parameter when it is no 32-bit integer.
    QString AsString() const; ///< The value as a text; "" when null.
    QVariant Value() const;   ///< The value; invalid when null.

private:
    QVariant m_value;
};

/// The parameters of a dataset in order, found by name without regard to case.
class ZEL_DATA_EXPORT TParams
{
public:
    int Count() const noexcept { return static_cast<int>(m_items.size()); } ///< How many there are.
    TParam &operator[](int index);             ///< EListError outside 0..Count-1.
    const TParam &operator[](int index) const; ///< The same, to look at.
    /// Appends a parameter; the reference holds until the next Add or Clear.
    TParam &Add(const QString &name, TParamDataType type = TParamDataType::Unknown,
                TParamType kind = TParamType::Input);
    TParam &ParamByName(const QString &name);             ///< EDatabaseError naming the parameter.
    const TParam &ParamByName(const QString &name) const; ///< The same, to look at.
    TParam *FindParam(const QString &name);               ///< nullptr when there is none.
    const TParam *FindParam(const QString &name) const;   ///< The same, to look at.
    void Clear() { m_items.clear(); }                     ///< Removes all of them.

private:
    QList<TParam> m_items;
};

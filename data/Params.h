#pragma once

#include "data/Currency.h"
#include "export/zel_data_export.h"

#include <QList>
#include <QString>
#include <QVariant>

enum class TParamType { Input, Output, InputOutput, Result };
enum class TParamDataType { Unknown, Integer, Float, Currency, Boolean, Date, DateTime, String, FixedChar };

/// One parameter of a query, procedure or provider. Writing through AsInteger and the like sets value and
/// keeps the designed kind: a fixed char parameter written as an integer hands over the integer's decimal
/// text.
class ZEL_DATA_EXPORT TParam
{
public:
    QString Name;                                      ///< Found without regard to case.
    TParamDataType DataType = TParamDataType::Unknown; ///< Kept with the value; what the server is told.
    TParamType ParamType = TParamType::Input;          ///< Which way the value goes.

    void SetAsInteger(int value);           ///< Sets value and type, as the next three do.
    void SetAsString(const QString &value); ///< As a text.
    void SetAsFloat(double value);          ///< As a real number.
    void SetAsCurrency(Currency value);     ///< As an amount.
    void SetValue(const QVariant &value);   ///< Sets the value and leaves the type.
    void Clear();                           ///< Makes the value null.
    bool IsNull() const;                    ///< No value is set.
    int AsInteger() const;    ///< EConvertError naming the parameter when it is no 32-bit integer.
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

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
    QString Name;
    TParamDataType DataType = TParamDataType::Unknown;
    TParamType ParamType = TParamType::Input;

    void SetAsInteger(int value);
    void SetAsString(const QString &value);
    void SetAsFloat(double value);
    void SetAsCurrency(Currency value);
    void SetValue(const QVariant &value);
    void Clear();
    bool IsNull() const;
    int AsInteger() const; ///< EConvertError naming the parameter when it is no 32-bit integer.
    QString AsString() const;
    QVariant Value() const;

private:
    QVariant m_value;
};

/// The parameters of a dataset in order, found by name without regard to case.
class ZEL_DATA_EXPORT TParams
{
public:
    int Count() const noexcept { return static_cast<int>(m_items.size()); }
    TParam &operator[](int index);
    const TParam &operator[](int index) const;
    TParam &Add(const QString &name, TParamDataType type = TParamDataType::Unknown,
                TParamType kind = TParamType::Input);
    TParam &ParamByName(const QString &name); ///< EDatabaseError naming the parameter.
    const TParam &ParamByName(const QString &name) const;
    TParam *FindParam(const QString &name);
    const TParam *FindParam(const QString &name) const;
    void Clear() { m_items.clear(); }

private:
    QList<TParam> m_items;
};

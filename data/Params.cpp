#include "data/Params.h"

#include "data/Exceptions.h"
#include "data/Values_p.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// @p value converted to @p kind; an invalid variant when it cannot be converted.
QVariant inKind(TParamDataType kind, const QVariant &value)
{
    const auto variant = [](const auto &reading) {
        return reading ? QVariant::fromValue(*reading) : QVariant();
    };
    switch (kind) {
    case TParamDataType::Unknown:
        return value;
    case TParamDataType::Integer: {
        // A value that fits becomes an int; row numbers of database engines may need 64 bits.
        const std::optional<qint64> number = Zel::ToInteger(value);
        if (number && std::in_range<int>(*number))
            return static_cast<int>(*number);
        return variant(number);
    }
    case TParamDataType::Float:
        return variant(Zel::ToFloat(value));
    case TParamDataType::Currency:
        return variant(Zel::ToCurrency(value));
    case TParamDataType::Boolean:
        return variant(Zel::ToBoolean(value));
    case TParamDataType::Date:
        return variant(Zel::ToDate(value));
    case TParamDataType::DateTime: {
        const std::optional<qint64> moment = Zel::ToMoment(value);
        return moment ? QVariant(Zel::FromMoment(*moment)) : QVariant();
    }
    case TParamDataType::String:
    case TParamDataType::FixedChar:
        return variant(Zel::ToText(value));
    }
    return {};
}

int findByName(const QList<TParam> &items, const QString &name)
{
    for (int i = 0; i < items.size(); ++i) {
        if (items[i].Name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

[[noreturn]] void raiseNoParam(const QString &name)
{
    throw EDatabaseError(u"Parameter \"%1\" not found."_s.arg(name));
}

void checkIndex(int index, int count)
{
    if (index < 0 || index >= count)
        throw EListError(u"Parameter index %1 is outside the list of %2."_s.arg(index).arg(count));
}

} // namespace

void TParam::SetAsInteger(int value)
{
    SetValue(value);
}

void TParam::SetAsString(const QString &value)
{
    SetValue(value);
}

void TParam::SetAsFloat(double value)
{
    SetValue(value);
}

void TParam::SetAsCurrency(Currency value)
{
    SetValue(QVariant::fromValue(value));
}

void TParam::SetValue(const QVariant &value)
{
    if (Zel::IsNullValue(value)) {
        Clear();
        return;
    }
    QVariant taken = inKind(DataType, value);
    if (!taken.isValid())
        throw EConvertError(
            u"Parameter \"%1\" cannot take the value \"%2\"."_s.arg(Name, Zel::ShownValue(value)));
    m_value = std::move(taken);
}

void TParam::Clear()
{
    m_value = {};
}

bool TParam::IsNull() const
{
    return !m_value.isValid();
}

int TParam::AsInteger() const
{
    if (IsNull())
        return 0;
    const std::optional<qint64> number = Zel::ToInteger(m_value);
    if (!number || !std::in_range<int>(*number))
        throw EConvertError(
            u"Parameter \"%1\": \"%2\" is not a valid integer value."_s.arg(Name, Zel::ShownValue(m_value)));
    return static_cast<int>(*number);
}

QString TParam::AsString() const
{
    return IsNull() ? QString() : Zel::ToText(m_value).value_or(QString());
}

QVariant TParam::Value() const
{
    return m_value;
}

TParam &TParams::operator[](int index)
{
    checkIndex(index, Count());
    return m_items[index];
}

const TParam &TParams::operator[](int index) const
{
    checkIndex(index, Count());
    return m_items[index];
}

TParam &TParams::Add(const QString &name, TParamDataType type, TParamType kind)
{
    TParam param;
    param.Name = name;
    param.DataType = type;
    param.ParamType = kind;
    m_items.append(param);
    return m_items.last();
}

TParam &TParams::ParamByName(const QString &name)
{
    if (TParam *param = FindParam(name))
        return *param;
    raiseNoParam(name);
}

const TParam &TParams::ParamByName(const QString &name) const
{
    if (const TParam *param = FindParam(name))
        return *param;
    raiseNoParam(name);
}

TParam *TParams::FindParam(const QString &name)
{
    const int index = findByName(m_items, name);
    return index < 0 ? nullptr : &m_items[index];
}

const TParam *TParams::FindParam(const QString &name) const
{
    const int index = findByName(m_items, name);
    return index < 0 ? nullptr : &m_items[index];
}

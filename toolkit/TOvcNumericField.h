#pragma once

#include "toolkit/TOvcBaseField.h"

/// An entry field for a number within a range. The picture mask says how many decimals are shown and whether
/// thousands are separated ("###,###,###.##"). While the field has the focus the number stands without
/// separators; separators may be typed where they belong. A decimal comma is an error, never a guess.
class ZEL_TOOLKIT_EXPORT TOvcNumericField : public TOvcBaseField
{
    Q_OBJECT
    Q_PROPERTY(DataType dataType READ Get_DataType WRITE Set_DataType)
    Q_PROPERTY(double rangeLo READ Get_RangeLo WRITE Set_RangeLo)
    Q_PROPERTY(double rangeHi READ Get_RangeHi WRITE Set_RangeHi)
    Q_PROPERTY(double value READ Get_Value WRITE Set_Value NOTIFY valueChanged USER true)
public:
    enum DataType { nftInteger, nftDouble };
    Q_ENUM(DataType)

    explicit TOvcNumericField(QWidget *parent = nullptr);
    ~TOvcNumericField() override;

    DataType Get_DataType() const { return m_type; }
    void Set_DataType(DataType type);
    double Get_RangeLo() const { return m_low; }
    void Set_RangeLo(double value);
    double Get_RangeHi() const { return m_high; }
    void Set_RangeHi(double value);

    /// The last number that was right; an empty entry is 0.
    double Get_Value() const { return m_value; }
    /// Shows @p value. Raises EConvertError, and changes nothing, when it is not a number within the range
    /// or not a whole one in an integer field.
    void Set_Value(double value);

Q_SIGNALS:
    void valueChanged(double value);

protected:
    Verdict Judge(const QString &text) const override;
    void MaskChanged() override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    QString shown(double value, bool separated) const;
    QString outOfRange() const;
    void display();
    void takeOver();

    DataType m_type = nftInteger;
    double m_low = -32768;
    double m_high = 32767;
    double m_value = 0;
    int m_decimals = 0;
    bool m_separated = false;
};

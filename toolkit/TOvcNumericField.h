#pragma once

#include "toolkit/TOvcBaseField.h"

class NumberEntry;

/// An entry field for a number within a range. The picture mask says how many decimals are shown and whether
/// thousands are separated ("###,###,###.##"). While the field has the focus the number stands without
/// separators. Numbers may be typed in every way that NumberEntry reads; what it does not take stays as it
/// was typed, shown as wrong with the reason, and the number is the one before.
class ZEL_TOOLKIT_EXPORT TOvcNumericField : public TOvcBaseField
{
    Q_OBJECT
    Q_PROPERTY(DataType dataType READ dataType WRITE setDataType)
    Q_PROPERTY(double rangeLo READ rangeLo WRITE setRangeLo)
    Q_PROPERTY(double rangeHi READ rangeHi WRITE setRangeHi)
    Q_PROPERTY(double value READ Get_Value WRITE Set_Value NOTIFY valueChanged USER true)
public:
    /// Whole numbers, or numbers with decimals.
    enum DataType { nftInteger, nftDouble };
    Q_ENUM(DataType)

    explicit TOvcNumericField(QWidget *parent = nullptr);
    ~TOvcNumericField() override;

    /// Whole numbers at the start. The value stays; what is shown of it may change.
    DataType dataType() const { return m_type; }
    void setDataType(DataType type);
    /// The least and the greatest number that are right, -32768 and 32767 at the start. An entry outside is
    /// shown as wrong from then on.
    double rangeLo() const { return m_low; }
    void setRangeLo(double value);
    double rangeHi() const { return m_high; }
    void setRangeHi(double value);

    /// The number entered, and while the entry is wrong the one before it was begun; an empty entry is 0.
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
    static QString sentence(const NumberEntry &entry);
    NumberEntry read(const QString &entered) const;
    bool isShownValue(const QString &entered) const;
    QString shown(double value, bool separated) const;
    QString outOfRange() const;
    void display();
    void takeOver();

    DataType m_type = nftInteger;
    double m_low = -32768;
    double m_high = 32767;
    double m_value = 0;
    double m_settled = 0; // told, or entered and finished
    int m_decimals = 0;
    bool m_separated = false;
};

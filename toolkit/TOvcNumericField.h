#pragma once

#include "toolkit/TOvcBaseField.h"

class NumberEntry;

/// An entry field for a number within a range. The picture mask defines the number of decimals and whether
/// thousands are separated ("###,###,###.##"). While the field has the focus, the number has no separators.
/// The field accepts every number text that NumberEntry accepts. A refused text stays in the field, shown as
/// invalid with the reason, and the value does not change.
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

    /// Initially nftInteger. Changing the type may change the shown text, but not the value.
    DataType dataType() const { return m_type; }
    void setDataType(DataType type);
    /// The least and the greatest number that are right, -32768 and 32767 at the start. An entry outside is
    /// shown as wrong from then on.
    double rangeLo() const { return m_low; }
    void setRangeLo(double value);
    double rangeHi() const { return m_high; }
    void setRangeHi(double value);

    /// The entered number; 0 for an empty entry. While the entry is invalid, the number before that edit.
    double Get_Value() const { return m_value; }
    /// Shows @p value. Throws EConvertError, and changes nothing, when @p value is not a number, is outside
    /// the range, or is not a whole number in an integer field.
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
    double m_settled = 0; // the value set by Set_Value or by the last finished edit
    int m_decimals = 0;
    bool m_separated = false;
};

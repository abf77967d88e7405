#pragma once

#include "toolkit/TOvcBaseField.h"

/// An entry field for a text of at most the length of its picture mask. The mask defines each character: X
/// any character, 9 a digit, A a letter; any other character of the mask stands for itself.
class ZEL_TOOLKIT_EXPORT TOvcPictureField : public TOvcBaseField
{
    Q_OBJECT
public:
    explicit TOvcPictureField(QWidget *parent = nullptr);
    ~TOvcPictureField() override;

protected:
    Verdict Judge(const QString &text) const override;
    void MaskChanged() override;
};

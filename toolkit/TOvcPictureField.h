#pragma once

#include "toolkit/TOvcBaseField.h"

/// An entry field for a text as long as its picture mask at most, each character of the kind that the mask
/// names at its place: X any character, 9 a digit, A a letter; any other sign of the mask stands for itself.
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

#include "frames/fra_ElmtRadioButtonPictureField.h"

TfraElmtRadioButtonPictureField::TfraElmtRadioButtonPictureField(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(rbCaption, pfValue);
}

TfraElmtRadioButtonPictureField::~TfraElmtRadioButtonPictureField() = default;

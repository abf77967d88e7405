#include "frames/fra_ElmtRadioButtonPictureField.h"

#include "toolkit/DesignTexts.h"

TfraElmtRadioButtonPictureField::TfraElmtRadioButtonPictureField(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(rbCaption, pfValue);
}

TfraElmtRadioButtonPictureField::~TfraElmtRadioButtonPictureField() = default;

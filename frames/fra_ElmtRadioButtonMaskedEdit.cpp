#include "frames/fra_ElmtRadioButtonMaskedEdit.h"

TfraElmtRadioButtonMaskedEdit::TfraElmtRadioButtonMaskedEdit(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(rbCaption, medValue);
}

TfraElmtRadioButtonMaskedEdit::~TfraElmtRadioButtonMaskedEdit() = default;

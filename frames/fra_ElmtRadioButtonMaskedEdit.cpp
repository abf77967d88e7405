#include "frames/fra_ElmtRadioButtonMaskedEdit.h"

#include "toolkit/DesignTexts.h"

TfraElmtRadioButtonMaskedEdit::TfraElmtRadioButtonMaskedEdit(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(rbCaption, medValue);
}

TfraElmtRadioButtonMaskedEdit::~TfraElmtRadioButtonMaskedEdit() = default;

#include "frames/fra_ElmtLabelMaskedEdit.h"

#include "toolkit/DesignTexts.h"

TfraElmtLabelMaskedEdit::TfraElmtLabelMaskedEdit(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(lblCaption, medValue);
}

TfraElmtLabelMaskedEdit::~TfraElmtLabelMaskedEdit() = default;

#include "frames/fra_ElmtLabelMaskedEdit.h"

TfraElmtLabelMaskedEdit::TfraElmtLabelMaskedEdit(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(lblCaption, medValue);
}

TfraElmtLabelMaskedEdit::~TfraElmtLabelMaskedEdit() = default;

#include "frames/fra_ElmtLabelEdit.h"

TfraElmtLabelEdit::TfraElmtLabelEdit(QWidget *owner) : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(lblCaption, edValue);
}

TfraElmtLabelEdit::~TfraElmtLabelEdit() = default;

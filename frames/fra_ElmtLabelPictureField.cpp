#include "frames/fra_ElmtLabelPictureField.h"

TfraElmtLabelPictureField::TfraElmtLabelPictureField(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(lblCaption, pfValue);
}

TfraElmtLabelPictureField::~TfraElmtLabelPictureField() = default;

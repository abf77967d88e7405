#include "frames/fra_ElmtLabelPictureField.h"

#include "toolkit/DesignTexts.h"

TfraElmtLabelPictureField::TfraElmtLabelPictureField(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(lblCaption, pfValue);
}

TfraElmtLabelPictureField::~TfraElmtLabelPictureField() = default;

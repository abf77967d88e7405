#include "frames/fra_ElmtLabelComboBox.h"

TfraElmtLabelComboBox::TfraElmtLabelComboBox(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(lblCaption, cbData);
}

TfraElmtLabelComboBox::~TfraElmtLabelComboBox() = default;

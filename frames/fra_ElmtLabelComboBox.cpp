#include "frames/fra_ElmtLabelComboBox.h"

#include "toolkit/DesignTexts.h"

TfraElmtLabelComboBox::TfraElmtLabelComboBox(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(lblCaption, cbData);
}

TfraElmtLabelComboBox::~TfraElmtLabelComboBox() = default;

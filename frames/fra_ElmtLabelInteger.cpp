#include "frames/fra_ElmtLabelInteger.h"

#include "toolkit/DesignTexts.h"

TfraElmtLabelInteger::TfraElmtLabelInteger(QWidget *owner) : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(lblCaption, nfValue);
}

TfraElmtLabelInteger::~TfraElmtLabelInteger() = default;

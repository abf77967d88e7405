#include "frames/fra_ElmtLabelInteger.h"

TfraElmtLabelInteger::TfraElmtLabelInteger(QWidget *owner) : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(lblCaption, nfValue);
}

TfraElmtLabelInteger::~TfraElmtLabelInteger() = default;

#include "frames/fra_ElmtLabelDouble.h"

TfraElmtLabelDouble::TfraElmtLabelDouble(QWidget *owner) : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(lblCaption, nfValue);
}

TfraElmtLabelDouble::~TfraElmtLabelDouble() = default;

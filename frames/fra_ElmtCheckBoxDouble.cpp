#include "frames/fra_ElmtCheckBoxDouble.h"

TfraElmtCheckBoxDouble::TfraElmtCheckBoxDouble(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(cbCaption, nfValue);
}

TfraElmtCheckBoxDouble::~TfraElmtCheckBoxDouble() = default;

#include "frames/fra_ElmtRadioButtonInteger.h"

TfraElmtRadioButtonInteger::TfraElmtRadioButtonInteger(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(rbCaption, nfValue);
}

TfraElmtRadioButtonInteger::~TfraElmtRadioButtonInteger() = default;

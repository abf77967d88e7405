#include "frames/fra_ElmtRadioButtonDouble.h"

TfraEmltRadioButtonDouble::TfraEmltRadioButtonDouble(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Value->Attach(rbCaption, nfValue);
}

TfraEmltRadioButtonDouble::~TfraEmltRadioButtonDouble() = default;

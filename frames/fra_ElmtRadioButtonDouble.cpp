#include "frames/fra_ElmtRadioButtonDouble.h"

#include "toolkit/DesignTexts.h"

TfraEmltRadioButtonDouble::TfraEmltRadioButtonDouble(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(rbCaption, nfValue);
}

TfraEmltRadioButtonDouble::~TfraEmltRadioButtonDouble() = default;

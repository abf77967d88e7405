#include "frames/fra_ElmtRadioButtonInteger.h"

#include "toolkit/DesignTexts.h"

TfraElmtRadioButtonInteger::TfraElmtRadioButtonInteger(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(rbCaption, nfValue);
}

TfraElmtRadioButtonInteger::~TfraElmtRadioButtonInteger() = default;

#include "frames/fra_ElmtCheckBoxDouble.h"

#include "toolkit/DesignTexts.h"

TfraElmtCheckBoxDouble::TfraElmtCheckBoxDouble(QWidget *owner)
    : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(cbCaption, nfValue);
}

TfraElmtCheckBoxDouble::~TfraElmtCheckBoxDouble() = default;

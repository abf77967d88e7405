#include "frames/fra_ElmtLabelDouble.h"

#include "toolkit/DesignTexts.h"

TfraElmtLabelDouble::TfraElmtLabelDouble(QWidget *owner) : TFrame(owner), Value(new Zel::ElementValue(this))
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    Value->Attach(lblCaption, nfValue);
}

TfraElmtLabelDouble::~TfraElmtLabelDouble() = default;

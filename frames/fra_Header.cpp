#include "frames/fra_Header.h"

#include "toolkit/DesignTexts.h"

TfraHeader::TfraHeader(QWidget *owner) : TBaseFrame(owner)
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
}

TfraHeader::~TfraHeader() = default;

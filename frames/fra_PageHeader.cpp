#include "frames/fra_PageHeader.h"

#include "toolkit/DesignTexts.h"

TfraPageHeader::TfraPageHeader(QWidget *owner) : TBaseFrame(owner)
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
}

TfraPageHeader::~TfraPageHeader() = default;

#include "frames/fra_PageHeader.h"

TfraPageHeader::TfraPageHeader(QWidget *owner) : TBaseFrame(owner)
{
    setupUi(this);
}

TfraPageHeader::~TfraPageHeader() = default;

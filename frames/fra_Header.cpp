#include "frames/fra_Header.h"

TfraHeader::TfraHeader(QWidget *owner) : TBaseFrame(owner)
{
    setupUi(this);
}

TfraHeader::~TfraHeader() = default;

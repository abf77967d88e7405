#include "toolkit/TFrame.h"

#include "toolkit/TFonts.h"

TFrame::TFrame(QWidget *parent) : QWidget(parent)
{
    setFont(DesignFont());
}

TFrame::~TFrame() = default;

#include "toolkit/TRadioButton.h"

TRadioButton::TRadioButton(QWidget *parent) : QRadioButton(parent) {}

TRadioButton::~TRadioButton() = default;

void TRadioButton::nextCheckState()
{
    // Its base turns off what is the only one of its parent.
    setChecked(true);
}

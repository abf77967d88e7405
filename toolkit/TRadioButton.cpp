#include "toolkit/TRadioButton.h"

#include <QButtonGroup>

TRadioButton::TRadioButton(QWidget *parent) : QRadioButton(parent) {}

TRadioButton::~TRadioButton() = default;

void TRadioButton::nextCheckState()
{
    // A group turns its former choice off through here. Without one the base would turn off what users click
    // again.
    if (group() && group()->exclusive())
        QRadioButton::nextCheckState();
    else
        setChecked(true);
}

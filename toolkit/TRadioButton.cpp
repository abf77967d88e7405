#include "toolkit/TRadioButton.h"

#include <QButtonGroup>

TRadioButton::TRadioButton(QWidget *parent) : QRadioButton(parent) {}

TRadioButton::~TRadioButton() = default;

void TRadioButton::nextCheckState()
{
    // An exclusive group turns its former choice off through this function. Without a group, QRadioButton
    // would turn a clicked button off.
    if (group() && group()->exclusive())
        QRadioButton::nextCheckState();
    else
        setChecked(true);
}

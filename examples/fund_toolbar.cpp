// The fund toolbar in a window: press the buttons, or disable them to see their other pictures.

#include "funds/fra_FundToolBar.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"

#include <QCheckBox>
#include <QLabel>
#include <QScopeGuard>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // after the last frame
    QWidget window;
    window.setWindowTitle(u"Fund toolbar"_s);
    auto *layout = new QVBoxLayout(&window);
    auto *bar = new TfraFundToolBar;
    auto *enabled = new QCheckBox(u"Enabled"_s);
    auto *pressed = new QLabel(u"Press a button."_s);
    enabled->setChecked(true);
    layout->addWidget(bar);
    layout->addWidget(enabled);
    layout->addWidget(pressed);
    const QList<TSpeedButton *> buttons = bar->findChildren<TSpeedButton *>();
    for (TSpeedButton *button : buttons) {
        QObject::connect(enabled, &QCheckBox::toggled, button, &QWidget::setEnabled);
        QObject::connect(button, &QAbstractButton::clicked, pressed,
                         [pressed, button] { pressed->setText(button->toolTip()); });
    }
    window.resize(640, 120);
    window.show();
    return TApplication::exec();
}

// One window for each of the tool bars, headers, input elements and the investor block. With a folder as the
// argument, the program saves screenshots there instead.
#include "editor/fra_BaseNavBar.h"
#include "frames/fra_ElmtCheckBoxDouble.h"
#include "frames/fra_ElmtLabelComboBox.h"
#include "frames/fra_ElmtLabelDouble.h"
#include "frames/fra_ElmtLabelEdit.h"
#include "frames/fra_ElmtLabelInteger.h"
#include "frames/fra_ElmtLabelMaskedEdit.h"
#include "frames/fra_ElmtLabelPictureField.h"
#include "frames/fra_ElmtRadioButtonDouble.h"
#include "frames/fra_ElmtRadioButtonInteger.h"
#include "frames/fra_ElmtRadioButtonMaskedEdit.h"
#include "frames/fra_ElmtRadioButtonPictureField.h"
#include "frames/fra_Header.h"
#include "frames/fra_InvestorName.h"
#include "frames/fra_PageHeader.h"
#include "frames/fra_ToolBar.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"

#include <QDir>
#include <QScopeGuard>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
using TWindows = std::vector<std::unique_ptr<QWidget>>;

template <class Frame> Frame &open(TWindows &windows)
{
    auto frame = std::make_unique<Frame>();
    Frame &opened = *frame;
    opened.setWindowTitle(QLatin1String(Frame::staticMetaObject.className()));
    windows.push_back(std::move(frame));
    return opened;
}
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // after the last frame
    TWindows windows;
    open<TfraToolBar>(windows);
    open<TfraHeader>(windows);
    open<TfraPageHeader>(windows);
    open<TfraElmtLabelEdit>(windows);
    TfraElmtLabelComboBox &list = open<TfraElmtLabelComboBox>(windows);
    list.cbData->Items().Add(u"Monthly"_s);
    list.cbData->Items().Add(u"Yearly"_s);
    open<TfraElmtLabelMaskedEdit>(windows).medValue->setInputMask(u"0000-00-00"_s);
    open<TfraElmtLabelInteger>(windows).Value->Set_Value(12345);
    open<TfraElmtLabelDouble>(windows).nfValue->setText(u"12,3"_s);
    open<TfraElmtLabelPictureField>(windows);
    open<TfraElmtRadioButtonInteger>(windows);
    open<TfraEmltRadioButtonDouble>(windows).Value->Set_Value(1234567.5);
    open<TfraElmtRadioButtonMaskedEdit>(windows);
    open<TfraElmtRadioButtonPictureField>(windows);
    open<TfraElmtCheckBoxDouble>(windows);
    open<TfraInvestorDetails>(windows).fraInvestorName->cbData->Items().Add(u"Botha, Anna"_s);
    open<TfraBaseNavBar>(windows);

    const QStringList arguments = TApplication::arguments();
    for (const std::unique_ptr<QWidget> &window : windows) {
        window->show();
        if (arguments.size() > 1)
            window->grab().save(QDir(arguments.at(1)).filePath(window->windowTitle() + u".png"_s));
    }
    return arguments.size() > 1 ? 0 : TApplication::exec();
}

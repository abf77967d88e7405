#include "package/Classes.h"

#include "data/Exceptions.h"
#include "dataviews/fra_TreeView.h"
#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "frames/Started_p.h"
#include "frames/fra_BaseFrame.h"
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
#include "funds/fra_FundAllocation.h"
#include "funds/fra_FundSelector.h"
#include "funds/fra_FundToolBar.h"
#include "funds/fra_FundsSelectedListView.h"
#include "funds/fra_FundsTreeView.h"
#include "funds/frm_FundSelector.h"
#include "package/ZelCommonFrames.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace
{
template <class T> QWidget *make(QWidget *parent)
{
    const Zel::Started::ForTools unasked;
    return new T(parent);
}

template <class T> constexpr TFrameClass entry(const char *className, const char *unitName)
{
    return {className, unitName, &T::staticMetaObject, &make<T>,
            std::is_base_of_v<QDialog, T> || std::is_base_of_v<TfrmModule, T>};
}

#define ZEL_CLASS(Class, Unit) entry<Class>(#Class, #Unit)
constinit const std::array classes{
    ZEL_CLASS(TBaseFrame, fra_BaseFrame),
    ZEL_CLASS(TfraBaseNavBar, fra_BaseNavBar),
    ZEL_CLASS(TfraElmtCheckBoxDouble, fra_ElmtCheckBoxDouble),
    ZEL_CLASS(TfraElmtLabelComboBox, fra_ElmtLabelComboBox),
    ZEL_CLASS(TfraElmtLabelDouble, fra_ElmtLabelDouble),
    ZEL_CLASS(TfraElmtLabelEdit, fra_ElmtLabelEdit),
    ZEL_CLASS(TfraElmtLabelInteger, fra_ElmtLabelInteger),
    ZEL_CLASS(TfraElmtLabelMaskedEdit, fra_ElmtLabelMaskedEdit),
    ZEL_CLASS(TfraElmtLabelPictureField, fra_ElmtLabelPictureField),
    ZEL_CLASS(TfraElmtRadioButtonInteger, fra_ElmtRadioButtonInteger),
    ZEL_CLASS(TfraElmtRadioButtonMaskedEdit, fra_ElmtRadioButtonMaskedEdit),
    ZEL_CLASS(TfraElmtRadioButtonPictureField, fra_ElmtRadioButtonPictureField),
    ZEL_CLASS(TfraEmltRadioButtonDouble, fra_ElmtRadioButtonDouble),
    ZEL_CLASS(TfraFundAllocation, fra_FundAllocation),
    ZEL_CLASS(TfraFundSelector, fra_FundSelector),
    ZEL_CLASS(TfraFundToolBar, fra_FundToolBar),
    ZEL_CLASS(TfraFundsSelectedListView, fra_FundsSelectedListView),
    ZEL_CLASS(TfraFundsTreeView, fra_FundsTreeView),
    ZEL_CLASS(TfraHeader, fra_Header),
    ZEL_CLASS(TfraInvestorDetails, fra_InvestorName),
    ZEL_CLASS(TfraPageHeader, fra_PageHeader),
    ZEL_CLASS(TfraToolBar, fra_ToolBar),
    ZEL_CLASS(TfraTreeView, fra_TreeView),
    ZEL_CLASS(TfrmBaseProductEditor, frm_BaseProductEditor),
    ZEL_CLASS(TfrmFundSelector, frm_FundSelector),
};
#undef ZEL_CLASS

constexpr auto nameOf = [](const TFrameClass &entry) { return std::string_view(entry.ClassName); };
} // namespace

std::span<const TFrameClass> FrameClasses()
{
    return classes;
}

const TFrameClass *FindFrameClass(const QString &className)
{
    const QByteArray name = className.toUtf8();
    const auto found = std::ranges::lower_bound(
        classes, std::string_view(name.constData(), static_cast<std::size_t>(name.size())), {}, nameOf);
    return found != classes.end() && name == found->ClassName ? &*found : nullptr;
}

QWidget *CreateByClassName(const QString &className, QWidget *parent)
{
    if (GetUnitCounter(0) >= 0)
        throw Exception(u"%1 was asked for while the package is not initialised"_s.arg(className));
    const TFrameClass *found = FindFrameClass(className);
    if (!found)
        throw Exception(u"The package has no class %1"_s.arg(className));
    return found->Create(parent);
}

// The fund selector dialog over a small catalogue: choose funds, press Select or Cancel, see the list that
// the host receives.

#include "data/DataPacket.h"
#include "data/LocalConnection.h"
#include "data/Table.h"
#include "funds/frm_FundSelector.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"

#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
TFieldDef number(const char *name)
{
    return {QString::fromLatin1(name), TFieldType::Integer};
}
TFieldDef text(const char *name)
{
    return {QString::fromLatin1(name), TFieldType::String};
}
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // after the last frame
    TTableBuilder types({number("GroupTypeID"), text("GroupTypeDesc")});
    TTableBuilder groups({number("FundGroupID"), number("GroupTypeID"), text("FundGroupName")});
    TTableBuilder offers({number("FundGroupID")});
    TTableBuilder funds({number("FundID"), number("FundGroupID"), text("FundName"), text("FundSheetURL"),
                         number("ProductID")});
    for (int type = 1; type <= 3; ++type) {
        types.AddRow({type, u"Group type %1"_s.arg(type)});
        for (int group = type * 10; group < type * 10 + 4; ++group) {
            groups.AddRow({group, type, u"Fund group %1"_s.arg(group)});
            offers.AddRow({group});
            // The last group of each type is offered but has no funds.
            for (int fund = group * 10; group % 10 < 3 && fund < group * 10 + 8; ++fund) {
                funds.AddRow(
                    {fund, group, u"Fund %1"_s.arg(fund), u"https://funds.example/%1"_s.arg(fund), 1});
            }
        }
    }
    TLocalConnection connection;
    const auto provide = [&connection](const char *name, TTableBuilder &rows) {
        connection.RegisterProvider(QString::fromLatin1(name), [packet = TDataPacket(rows.Finish())](
                                                                   const TParams &) { return packet; });
    };
    provide("dspFundGroupType", types);
    provide("dspFundGroup", groups);
    provide("dspFundPerProduct", offers);
    const QVariant fundData = TDataPacket(funds.Finish()).ToVariant();

    QWidget window;
    window.setWindowTitle(u"Fund selector"_s);
    auto *layout = new QVBoxLayout(&window);
    auto *open = new QPushButton(u"Funds..."_s);
    auto *result = new QLabel(u"Nothing chosen yet."_s);
    layout->addWidget(open);
    layout->addWidget(result);
    TDynamicArrayOfInt chosen{100, 213};
    connectGuarded(open, &QPushButton::clicked, &window, [&] {
        const bool confirmed =
            TfrmFundSelector::FundSelector(chosen, 1, &connection, fundData, QString(),
                                           u"Ask before you pick a bond."_s, u"Pick up to 20 funds."_s);
        QStringList ids;
        for (const int id : std::as_const(chosen))
            ids.append(QString::number(id));
        result->setText((confirmed ? u"Selected: "_s : u"Unchanged: "_s) + ids.join(u", "_s));
    });
    QObject::connect(TfrmFundSelector::Requests(), &TFundSelectorRequests::FundSheetRequested, result,
                     [result](int, const QString &url) { result->setText(u"Fact sheet: "_s + url); });
    window.resize(480, 120);
    window.show();
    return TApplication::exec();
}

// The fund allocation frame with the settings of a host: the mode, the amount, the captions and the parts
// that can be shown or hidden. With a folder as the argument, the program saves screenshots of both modes
// there.
#include "data/DataPacket.h"
#include "data/Format.h"
#include "data/LocalConnection.h"
#include "funds/fra_FundAllocation.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{
QVariant funds()
{
    const auto field = [](const char *name, TFieldType type) {
        return TFieldDef{QString::fromLatin1(name), type};
    };
    TTableBuilder rows({field("FundID", TFieldType::Integer), field("FundName", TFieldType::String),
                        field("GroupTypeID", TFieldType::Integer), field("FundGroupID", TFieldType::Integer),
                        field("FundTerm", TFieldType::Integer),
                        field("AllowAsGuarantee", TFieldType::Boolean)});
    const QStringList names{u"Opal Balanced"_s, u"Opal Equity Growth"_s, u"Opal Money Market"_s,
                            u"World Opal Income"_s, u"Fixed Bond, 5 years"_s};
    for (int i = 0; i < names.size(); ++i)
        rows.AddRow({i + 1, names.at(i), 2, i == 3 ? 11 : 1, i == 4 ? 60 : 0, i == 4});
    return TDataPacket(rows.Finish()).ToVariant();
}
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // after the last frame
    TLocalConnection connection;
    connection.RegisterProvider(u"dspFundMessage"_s, [](const TParams &params) {
        TTableBuilder rows({{u"FundID"_s, TFieldType::Integer}});
        if (params.ParamByName(u"pFundGroupID"_s).AsInteger() == 11)
            rows.AddRow({4});
        return TDataPacket(rows.Finish());
    });

    QWidget window;
    window.setWindowTitle(u"Fund allocation"_s);
    auto *page = new QHBoxLayout(&window);
    auto *frame = new TfraFundAllocation(&window);
    frame->pnlHeaderCaption->setCaption(u"  Initial investment"_s);
    page->addWidget(frame, 1);
    auto *settings = new QFormLayout;
    page->addLayout(settings);

    auto *mode = new QComboBox(&window);
    mode->addItems({u"By amount"_s, u"By percent"_s});
    settings->addRow(u"&Mode"_s, mode);
    connectGuarded(mode, &QComboBox::currentIndexChanged, frame,
                   [frame](int index) { frame->Set_AllocByAmount(index == 0); });
    QObject::connect(frame, &TfraFundAllocation::AllocByAmountChanged, mode,
                     [mode](bool byAmount) { mode->setCurrentIndex(byAmount ? 0 : 1); });
    auto *amount = new QLineEdit(u"100000"_s, &window);
    settings->addRow(u"&Investment (R)"_s, amount);
    connectGuarded(amount, &QLineEdit::editingFinished, frame,
                   [frame, amount] { frame->Set_InvestmentAmount(StrToCurr(amount->text())); });
    const auto caption = [&](const QString &label, void (TfraFundAllocation::*set)(const QString &),
                             const QString &text) {
        auto *edit = new QLineEdit(text, &window);
        settings->addRow(label, edit);
        QObject::connect(edit, &QLineEdit::textEdited, frame, set);
    };
    caption(u"Fund caption"_s, &TfraFundAllocation::Set_ColumnCaption_Fund, frame->Get_ColumnCaption_Fund());
    caption(u"Percent caption"_s, &TfraFundAllocation::Set_ColumnCaption_Percent,
            frame->Get_ColumnCaption_Percent());
    caption(u"Amount caption"_s, &TfraFundAllocation::Set_ColumnCaption_Amount,
            frame->Get_ColumnCaption_Amount());
    const auto show = [&](const QString &label, void (TfraFundAllocation::*set)(bool)) {
        auto *box = new QCheckBox(label, &window);
        box->setChecked(true);
        settings->addRow(box);
        connectGuarded(box, &QCheckBox::toggled, frame, set);
    };
    show(u"Percent column"_s, &TfraFundAllocation::Set_ShowColumn_Percent);
    show(u"Amount column"_s, &TfraFundAllocation::Set_ShowColumn_Amount);
    show(u"Tool bar"_s, &TfraFundAllocation::Set_ShowToolBar);
    show(u"Status panel"_s, &TfraFundAllocation::Set_ShowStatusPanel);
    show(u"Guarantee button"_s, &TfraFundAllocation::Set_ShowButtonGuarantee);
    show(u"Invested button"_s, &TfraFundAllocation::Set_ShowButtonInvested);

    TFunds list;
    for (int id = 1; id <= 5; ++id) {
        TFundRec record;
        record.FundID = id;
        list.Append(record);
    }
    frame->Set_InvestmentAmount(100'000);
    frame->Set_FundsPerProductDataSet(funds());
    frame->SetupFundAllocation(list, 1, &connection);
    window.resize(900, 330);
    window.show();
    if (argc < 2)
        return QApplication::exec();

    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (int i = 0; i < 50; ++i) // the first paint, and the initialisation that follows it
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    frame->fraFundToolBar->sbtAllocateAmount->click();
    bool saved = window.grab().save(folder.filePath(u"fund_allocation_amount.png"_s));
    frame->Set_AllocByAmount(false);
    saved = window.grab().save(folder.filePath(u"fund_allocation_percent.png"_s)) && saved;
    return saved ? 0 : 1;
}

// The fund allocation frame with what a host can set on it: the mode, the amount, the captions and all that
// can be shown or hidden. With a folder as the argument, its picture in both modes is saved there instead.
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
    const QStringList names{QStringLiteral("Opal Balanced"), QStringLiteral("Opal Equity Growth"),
                            QStringLiteral("Opal Money Market"), QStringLiteral("World Opal Income"),
                            QStringLiteral("Fixed Bond, 5 years")};
    for (int i = 0; i < names.size(); ++i)
        rows.AddRow({i + 1, names.at(i), 2, i == 3 ? 11 : 1, i == 4 ? 60 : 0, i == 4});
    return TDataPacket(rows.Finish()).ToVariant();
}
} // namespace

int main(int argc, char **argv)
{
    TApplication app(argc, argv);
    Initialize();                                      // before the first frame
    const auto stop = qScopeGuard([] { Finalize(); }); // when every frame is gone
    TLocalConnection connection;
    connection.RegisterProvider(QStringLiteral("dspFundMessage"), [](const TParams &params) {
        TTableBuilder rows({{QStringLiteral("FundID"), TFieldType::Integer}});
        if (params.ParamByName(QStringLiteral("pFundGroupID")).AsInteger() == 11)
            rows.AddRow({4});
        return TDataPacket(rows.Finish());
    });

    QWidget window;
    window.setWindowTitle(QStringLiteral("Fund allocation"));
    auto *page = new QHBoxLayout(&window);
    auto *frame = new TfraFundAllocation(&window);
    frame->pnlHeaderCaption->setCaption(QStringLiteral("  Initial investment"));
    page->addWidget(frame, 1);
    auto *settings = new QFormLayout;
    page->addLayout(settings);

    auto *mode = new QComboBox(&window);
    mode->addItems({QStringLiteral("By amount"), QStringLiteral("By percent")});
    settings->addRow(QStringLiteral("&Mode"), mode);
    QObject::connect(mode, &QComboBox::currentIndexChanged, frame,
                     [frame](int index) { GuardedCall([&] { frame->Set_AllocByAmount(index == 0); }); });
    QObject::connect(frame, &TfraFundAllocation::AllocByAmountChanged, mode,
                     [mode](bool byAmount) { mode->setCurrentIndex(byAmount ? 0 : 1); });
    auto *amount = new QLineEdit(QStringLiteral("100000"), &window);
    settings->addRow(QStringLiteral("&Investment (R)"), amount);
    QObject::connect(amount, &QLineEdit::editingFinished, frame, [frame, amount] {
        GuardedCall([&] { frame->Set_InvestmentAmount(StrToCurr(amount->text())); });
    });
    const auto caption = [&](const QString &label, void (TfraFundAllocation::*set)(const QString &),
                             const QString &text) {
        auto *edit = new QLineEdit(text, &window);
        settings->addRow(label, edit);
        QObject::connect(edit, &QLineEdit::textEdited, frame, set);
    };
    caption(QStringLiteral("Fund caption"), &TfraFundAllocation::Set_ColumnCaption_Fund,
            frame->Get_ColumnCaption_Fund());
    caption(QStringLiteral("Percent caption"), &TfraFundAllocation::Set_ColumnCaption_Percent,
            frame->Get_ColumnCaption_Percent());
    caption(QStringLiteral("Amount caption"), &TfraFundAllocation::Set_ColumnCaption_Amount,
            frame->Get_ColumnCaption_Amount());
    const auto show = [&](const QString &label, void (TfraFundAllocation::*set)(bool)) {
        auto *box = new QCheckBox(label, &window);
        box->setChecked(true);
        settings->addRow(box);
        QObject::connect(box, &QCheckBox::toggled, frame,
                         [frame, set](bool on) { GuardedCall([&] { (frame->*set)(on); }); });
    };
    show(QStringLiteral("Percent column"), &TfraFundAllocation::Set_ShowColumn_Percent);
    show(QStringLiteral("Amount column"), &TfraFundAllocation::Set_ShowColumn_Amount);
    show(QStringLiteral("Tool bar"), &TfraFundAllocation::Set_ShowToolBar);
    show(QStringLiteral("Status panel"), &TfraFundAllocation::Set_ShowStatusPanel);
    show(QStringLiteral("Guarantee button"), &TfraFundAllocation::Set_ShowButtonGuarantee);
    show(QStringLiteral("Invested button"), &TfraFundAllocation::Set_ShowButtonInvested);

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
    for (int i = 0; i < 50; ++i) // the first paint, and what it sets going
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    frame->fraFundToolBar->sbtAllocateAmount->click();
    bool saved = window.grab().save(folder.filePath(QStringLiteral("fund_allocation_amount.png")));
    frame->Set_AllocByAmount(false);
    saved = window.grab().save(folder.filePath(QStringLiteral("fund_allocation_percent.png"))) && saved;
    return saved ? 0 : 1;
}

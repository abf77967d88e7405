#include "funds/frm_FundSelector.h"

#include "toolkit/Glyphs.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TFonts.h"

#include <QApplication>
#include <QPointer>
#include <QScopeGuard>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

constexpr int treeShare = 50; ///< of the width in the application look, in percent

/// The size of the dialog in the application look, where there is room.
QSize wantedSize()
{
    return {960, 640};
}

} // namespace

TFundSelectorRequests::TFundSelectorRequests() = default;

TFundSelectorRequests::~TFundSelectorRequests() = default;

TfrmFundSelector::TfrmFundSelector(QWidget *parent) : QDialog(parent)
{
    setFont(DesignFont());
    Zel::FollowLook(this);
    setupUi(this);
    setWindowIcon(GlyphIcon(u"selector-form"_s));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    // The dialog handles the buttons and calls the frame's own handlers, so that the order is certain.
    fraFundSelector->btnSelect->disconnect(fraFundSelector);
    fraFundSelector->btnCancel->disconnect(fraFundSelector);
    connect(fraFundSelector->btnSelect, &QPushButton::clicked, this,
            &TfrmFundSelector::fraFundSelectorbtnSelectClick);
    connect(fraFundSelector->btnCancel, &QPushButton::clicked, this,
            &TfrmFundSelector::fraFundSelectorbtnCancelClick);
    connect(fraFundSelector, &TfraFundSelector::FundSheetRequested, Requests(),
            &TFundSelectorRequests::FundSheetRequested);
    if (CurrentLook() == Look::Application)
        resize(wantedSize());
    // Limits the dialog with its title bar to the screen, because its buttons are at the bottom.
    const QWidget *active = QApplication::activeWindow();
    const QRect room = (active ? active : this)
                           ->screen()
                           ->availableGeometry()
                           .adjusted(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this), 0, 0);
    const QSize most = CurrentLook() == Look::Application ? room.size() * 0.95 : room.size();
    setGeometry(QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, size().boundedTo(most), room));
    if (CurrentLook() == Look::Application) {
        const int tree = width() * treeShare / 100;
        fraFundSelector->splMain->setSizes({tree, width() - tree});
    }
    fraFundSelector->setFocus();
}

TfrmFundSelector::~TfrmFundSelector() = default;

bool TfrmFundSelector::FundSelector(TDynamicArrayOfInt &FundIDs, int ProductGroupID,
                                    TLocalConnection *Connection, const QVariant &FundData,
                                    const QString &PerProductFilter, const QString &WarningText,
                                    const QString &InfoText)
{
    const QPointer<TfrmFundSelector> form = new TfrmFundSelector;
    form->m_inCall = true;
    // The form is deleted here, after the result was read, and not by deleteLater: an application that quits
    // may have no message loop, and a form that was never shown never closes. The QPointer prevents a second
    // deletion.
    const auto release = qScopeGuard([&form] { delete form.data(); });
    form->fraFundSelector->BuildFundSelector(ProductGroupID, FundIDs, Connection, FundData, PerProductFilter,
                                             WarningText, InfoText);
    form->exec();
    return form && form->fraFundSelector->IsNewFundSelection(FundIDs);
}

TFundSelectorRequests *TfrmFundSelector::Requests()
{
    static TFundSelectorRequests requests;
    return &requests;
}

void TfrmFundSelector::FormClose(QObject *, TCloseAction &Action)
{
    Action = TCloseAction::caFree;
}

void TfrmFundSelector::done(int result)
{
    TCloseAction action = TCloseAction::caHide;
    FormClose(this, action);
    QDialog::done(result);
    if (action == TCloseAction::caFree && !m_inCall)
        deleteLater();
}

void TfrmFundSelector::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::StyleChange)
        Zel::FollowLook(this);
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslateUi(this);
}

void TfrmFundSelector::fraFundSelectorbtnSelectClick()
{
    fraFundSelector->btnSelectClick();
    fraFundSelectorbtnCancelClick();
}

void TfrmFundSelector::fraFundSelectorbtnCancelClick()
{
    fraFundSelector->btnCancelClick();
    close();
}

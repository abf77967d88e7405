#include "editor/frm_BaseProductEditor.h"

#include "frames/Started_p.h"
#include "host/Clienteditfrm.h"
#include "toolkit/DesignTexts.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TApplication.h"
#include "toolkit/TFonts.h"
#include "toolkit/TabStops_p.h"

#include <QLabel>
#include <QScopeGuard>
#include <QStyle>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
/// Moves the focus, so that the field being edited commits its entry. Suppresses every exception and its
/// report, because the command that follows must be carried out in any case.
void focusQuietly(QWidget *widget) noexcept
{
    TExceptionReport former = SetExceptionReport([](const QString &) {});
    const auto restore = qScopeGuard([&former] { SetExceptionReport(std::move(former)); });
    try {
        widget->setFocus(Qt::OtherFocusReason);
    } catch (...) {
        return;
    }
}

/// The width that a band with investor and description in one line needs, in heights of the font.
constexpr int linesOfOneBand = 40;

/// Lays the band with investor and description out for the application look: in one line where there is room,
/// otherwise in two. Other buttons of a page's form keep their place behind the investor's.
void fitBand(TfrmBaseProductEditor &form)
{
    if (CurrentLook() == Look::Designed)
        return;
    using Zel::SetInLook;
    const QFontMetrics metrics = form.fontMetrics();
    const int height = HeightOf(LookHeight::Field, metrics);
    const bool low = Zel::RoomOf(form) != Zel::Room::Enough;
    const int width = form.pnlClient->width();
    const bool oneLine = width >= linesOfOneBand * metrics.height();
    const int gap = LookSpace::Small;
    const int band = oneLine ? HeightOf(low ? LookHeight::LowBand : LookHeight::Band, metrics)
                             : 2 * height + (low ? 2 : 3) * LookSpace::Grid + LookSpace::Grid;
    SetInLook(form.Shape1, "minimumHeight", 1);
    SetInLook(form.Shape1, "maximumHeight", 1);
    SetInLook(form.layClient, "contentsMargins", QVariant::fromValue(QMargins()));
    SetInLook(form.pnlClient, "minimumHeight", band);
    SetInLook(form.pnlClient, "maximumHeight", band);

    int others = 0;
    for (const QAbstractButton *button : form.pnlClient->findChildren<QAbstractButton *>()) {
        if (button != form.sbtClient && !button->isHidden())
            others += height + LookSpace::Grid;
    }
    const auto captionWidth = [](const QLabel *label) { return label->sizeHint().width(); };
    const int captions = qMax(captionWidth(form.lblCaption), captionWidth(form.Label2));
    const int y = oneLine ? (band - 1 - height) / 2 : LookSpace::Grid;
    const int x = LookSpace::Large;
    const auto place = [&form](QWidget *widget, const QRect &rect) {
        SetInLook(widget, "geometry",
                  QStyle::visualRect(form.layoutDirection(), form.pnlClient->rect(), rect));
    };
    const int first = oneLine ? captionWidth(form.lblCaption) : captions;
    const int field = x + first + gap;
    const int list = oneLine ? qMin(16 * metrics.height(), width / 3)
                             : qMax(0, width - field - LookSpace::Large - height - gap - others);
    place(form.lblCaption, {x, y, first, height});
    place(form.cbData, {field, y, list, height});
    place(form.sbtClient, {field + list + LookSpace::Grid, y, height, height});
    const int below = oneLine ? y : y + height + LookSpace::Grid;
    int left = x;
    if (oneLine)
        left = field + list + LookSpace::Grid + height + others + LookSpace::Large + LookSpace::Small;
    const int second = oneLine ? captionWidth(form.Label2) : captions;
    place(form.Label2, {left, below, second, height});
    left += second + gap;
    place(form.edtDescription, {left, below, qMax(0, width - left - LookSpace::Large), height});
}
} // namespace

TfrmBaseProductEditor::TfrmBaseProductEditor(QWidget *parent)
    : TfrmModule(parent), ilMain(new TImageList(this))
{
    Zel::Started::Want();
    const Zel::DesignsTabOrder tabOrder(this);
    setFont(DesignFont());
    Zel::FollowLook(this);
    setupUi(this);
    Zel::KeepTranslated(this, [this] {
        retranslateUi(this);
        makeRoomForCaptions();
    });
    new Zel::LookFit(this, [this] { Zel::FollowLook(this); });
    new Zel::LookFit(pnlClient, [this] { fitBand(*this); });
    ilMain->setObjectName(u"ilMain"_s);
    ilMain->AddGlyphs({u"client"_s, u"preview"_s, u"save"_s, u"details"_s, u"worksheet"_s, u"close"_s,
                       u"complete"_s, u"previous"_s, u"next"_s, u"print"_s, u"edit"_s});
    using Self = TfrmBaseProductEditor;
    connectGuarded(sbtClient, &QAbstractButton::clicked, this, &Self::sbtClientClick);
    connectGuarded(cbData, &QComboBox::currentIndexChanged, this, &Self::cbDataPropertiesChange);
    connectGuarded(edtDescription, &QLineEdit::textChanged, this, &Self::edtDescriptionPropertiesChange);
    connectGuarded(this, &TfrmModule::VisualPluginShow, this, &Self::HYVisualPluginShow);
}

TfrmBaseProductEditor::~TfrmBaseProductEditor()
{
    if (FEditor) {
        FEditor->FForm = nullptr;
        FEditor->FModule.reset();
    }
}

bool TfrmBaseProductEditor::Open(TCustomQuoteEditor *editor, bool flag, TfrmBaseProductEditor *(*create)())
{
    if (!editor)
        throw Exception(tr("A product editor form needs a quote editor."));
    if (editor->FForm)
        return true;
    const QPointer<TfrmBaseProductEditor> form = create();
    const IZelModulePtr module = form->Module();
    editor->FForm = form;
    form->FEditor = editor;
    editor->FModule = module;
    try {
        if (const TQuoteInfo *info = form->quoteInfo(); info && flag)
            form->FCopiedQuoteField = info->Get_QuoteKey();
        if (const TBaseClients *clients = editor->Get_Clients())
            connectGuarded(clients, &TBaseClients::Changed, form.data(), &TfrmBaseProductEditor::LoadClients);
        form->LoadClients();
        form->SetUpProduct(flag);
        SafecallCheck([&] { return ModuleManager().OpenModule(module); });
    } catch (...) {
        // The module manager has not taken the form over.
        delete form.data();
        throw;
    }
    return true;
}

TQuoteInfo *TfrmBaseProductEditor::quoteInfo() const
{
    return FEditor ? FEditor->Get_QuoteInfo() : nullptr;
}

void TfrmBaseProductEditor::LoadClients()
{
    const bool wasChosen = cbData->currentIndex() >= 0;
    const QObject *chosen = cbData->SelectedObject();
    // The lines are collected first, so that an exception from DisplayText leaves the list unchanged.
    std::vector<std::pair<QString, TBaseClient *>> lines;
    if (const TBaseClients *clients = FEditor ? FEditor->Get_Clients() : nullptr) {
        const int count = clients->Count();
        lines.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            TBaseClient *client = clients->Client(i);
            lines.emplace_back(client->DisplayText(), client);
        }
    }
    FLoadingClients = true;
    cbData->clear();
    for (const auto &[text, client] : lines)
        cbData->AddItemObject(text, client);
    const int index = cbData->IndexOfObject(chosen);
    // The signals about a lost choice are ignored while the list is refilled. Below, the loss is handled
    // once.
    if (index < 0)
        cbData->setCurrentIndex(-1);
    FLoadingClients = false;
    if (index >= 0)
        cbData->setCurrentIndex(index);
    else if (wasChosen)
        cbDataPropertiesChange();
}

void TfrmBaseProductEditor::RefreshClient(bool force)
{
    auto *client = qobject_cast<TBaseClient *>(cbData->SelectedObject());
    if (client && client == FSelectedClient && !force)
        return;
    FSelectedClient = client;
    if (TQuoteInfo *info = quoteInfo())
        info->Set_Client(client);
    SelectedClientChanged();
}

void TfrmBaseProductEditor::EditorDestroyed()
{
    FEditor = nullptr;
    GuardedCall([this] { LoadClients(); });
}

HResult TfrmBaseProductEditor::PreferHideOverClose(WordBool &prefer) noexcept
{
    return SafecallGuard([&] { prefer = ToWordBool(FEditor && FEditor->Get_PrepPop()); });
}

HResult TfrmBaseProductEditor::Dispose() noexcept
{
    return SafecallGuard([this] {
        // The host may destroy the editor during the calls below.
        const QPointer<TCustomQuoteEditor> editor = std::exchange(FEditor, nullptr);
        if (editor) {
            editor->FForm = nullptr;
            editor->FModule.reset();
        }
        SafecallCheck(TfrmModule::Dispose());
        if (editor)
            editor->DisposeQuote();
    });
}

HResult TfrmBaseProductEditor::get_ImageIndex(qint32 &index) noexcept
{
    index = 0;
    return S_OK;
}

HResult TfrmBaseProductEditor::ItemClicked(const QString &name, qint32 index) noexcept
{
    return SafecallGuard([&] {
        focusQuietly(pnlProdEditor);
        SafecallCheck(TfrmModule::ItemClicked(name, index));
    });
}

void TfrmBaseProductEditor::SelectedClientChanged() {}

void TfrmBaseProductEditor::SetUpProduct(bool)
{
    throw EAbstractError(tr("SetUpProduct is left to each product's own editor form."));
}

void TfrmBaseProductEditor::sbtClientClick()
{
    // The host may close the form while the dialog is open.
    const QPointer<TfrmBaseProductEditor> self(this);
    auto *client = qobject_cast<TBaseClient *>(cbData->SelectedObject());
    if (TfrmEditClient::EditClient(client, this) && self)
        LoadClients();
}

void TfrmBaseProductEditor::cbDataPropertiesChange()
{
    if (FLoadingClients)
        return;
    sbtClient->setEnabled(cbData->currentIndex() >= 0);
    RefreshClient(true);
}

void TfrmBaseProductEditor::edtDescriptionPropertiesChange()
{
    if (TQuoteInfo *info = quoteInfo())
        info->Set_Description(edtDescription->text());
}

void TfrmBaseProductEditor::HYVisualPluginShow()
{
    makeRoomForCaptions();
    const TQuoteInfo *info = quoteInfo();
    edtDescription->setText(info ? info->Get_Description() : QString());
}

void TfrmBaseProductEditor::fraToolBarsbtCloseClick()
{
    focusQuietly(pnlClient);
    close();
}

void TfrmBaseProductEditor::makeRoomForCaptions()
{
    if (CurrentLook() == Look::Application) {
        fitBand(*this);
        return;
    }
    int missing = 0;
    for (QLabel *label : {lblCaption, Label2}) {
        const int wanted = label->sizeHint().width();
        if (wanted > label->width()) {
            missing = qMax(missing, label->x() + wanted + 4 - cbData->x());
            label->resize(wanted, label->height());
        }
    }
    if (missing <= 0)
        return;
    const QList<QWidget *> fields{cbData, sbtClient, edtDescription};
    for (QWidget *field : fields)
        field->move(field->x() + missing, field->y());
    pnlClient->setMinimumWidth(pnlClient->minimumWidth() + missing);
}

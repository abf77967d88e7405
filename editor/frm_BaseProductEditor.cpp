#include "editor/frm_BaseProductEditor.h"

#include "frames/Started_p.h"
#include "host/Clienteditfrm.h"
#include "toolkit/DesignTexts.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TApplication.h"
#include "toolkit/TFonts.h"
#include "toolkit/TabStops_p.h"

#include <QScopeGuard>

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

/// Gives the form the font of its surroundings in the application look.
class EditorLook : public QObject
{
public:
    explicit EditorLook(TfrmBaseProductEditor &form) : QObject(&form), m_form(form)
    {
        form.installEventFilter(this);
        Zel::FollowLook(&m_form);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange)
            Zel::FollowLook(&m_form);
        return QObject::eventFilter(watched, event);
    }

private:
    TfrmBaseProductEditor &m_form;
};
} // namespace

TfrmBaseProductEditor::TfrmBaseProductEditor(QWidget *parent)
    : TfrmModule(parent), ilMain(new TImageList(this))
{
    Zel::Started::Want();
    const Zel::DesignsTabOrder tabOrder(this);
    setFont(DesignFont());
    new EditorLook(*this); // owned by the form
    setupUi(this);
    Zel::KeepTranslated(this, [this] {
        retranslateUi(this);
        makeRoomForCaptions();
    });
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

#include "editor/unt_BaseProductEditorImpl.h"

#include "editor/frm_BaseProductEditor.h"
#include "toolkit/TApplication.h"

using namespace Qt::StringLiterals;

TCustomQuoteEditor::TCustomQuoteEditor()
{
    auto *master = qobject_cast<TZelClass *>(ZelSystem().Items().GetItemByID(u"MASTERCLIENTS"_s).Object());
    TZelClass::CreateClass(TBaseClients::staticMetaObject, master, u"Clients"_s, true, FClients);
}

TCustomQuoteEditor::~TCustomQuoteEditor()
{
    GuardedCall([this] { letGo(); });
    // A form that failed to close stays open without an editor.
    if (FForm)
        FForm->EditorDestroyed();
}

void TCustomQuoteEditor::Destroy()
{
    std::exception_ptr failure;
    try {
        letGo();
    } catch (...) {
        failure = std::current_exception();
    }
    delete this;
    if (failure)
        std::rethrow_exception(failure);
}

void TCustomQuoteEditor::letGo()
{
    if (IsDestroying())
        return;
    BeginDestruction();
    FClients.reset();
    // A copy of the handle, because closing the module makes the form clear FModule.
    if (const IZelModulePtr module = FModule)
        SafecallCheck([&] { return module->CloseModule(); });
    if (FForm)
        FModule.reset();
}

TBaseClients *TCustomQuoteEditor::Get_Clients() const
{
    return FClients.get();
}

qint32 TCustomQuoteEditor::Get_Plan() const
{
    return FPlan;
}

void TCustomQuoteEditor::Set_Plan(qint32 plan)
{
    FPlan = plan;
}

TQuoteInfo *TCustomQuoteEditor::Get_QuoteInfo() const
{
    return FQuoteInfo;
}

void TCustomQuoteEditor::Set_QuoteInfo(TQuoteInfo *info)
{
    FQuoteInfo = info;
}

QString TCustomQuoteEditor::Get_StyleSheet() const
{
    return FStyleSheet;
}

IXMLDOMDocument2Ptr TCustomQuoteEditor::Get_XML() const
{
    return FXML;
}

void TCustomQuoteEditor::Set_XML(const IXMLDOMDocument2Ptr &xml)
{
    FXML = xml;
}

IQuotePrePopPtr TCustomQuoteEditor::Get_PrepPop() const
{
    return FPrepPop;
}

void TCustomQuoteEditor::Set_PrepPop(const IQuotePrePopPtr &prepPop)
{
    FPrepPop = prepPop;
}

IZelModulePtr TCustomQuoteEditor::Get_Module() const
{
    return FModule;
}

QObject *TCustomQuoteEditor::Preparer() const
{
    return ZelSystem().Items().GetItemByID(u"Preparer"_s).Object();
}

bool TCustomQuoteEditor::SaveToFinalisor(const IDispatchPtr &)
{
    return true;
}

#pragma once

#include "export/zel_commonframes_export.h"
#include "host/Quoteappimpl.h"

class TfrmBaseProductEditor;

/// The object through which the host edits one quote of one product: a base for each product's own editor.
/// It holds what the quote consists of, a clients list of its own, and the link to the open editor form.
///
/// The host owns it. Destroying it takes an open form down.
class ZEL_COMMONFRAMES_EXPORT TCustomQuoteEditor : public TLegacyEditor
{
    Q_OBJECT
public:
    /// Makes the clients list "Clients" from the system item "MASTERCLIENTS". Raises what the registry or the
    /// class factory raises when there is no such item or it holds no client list; no editor is made then.
    TCustomQuoteEditor();
    /// As Destroy, but a failure of the module goes to the application's exception report: a destructor
    /// cannot raise it.
    ~TCustomQuoteEditor() override;

    /// Lets go of the clients, closes the form's module if there is one, and deletes the editor. A failure of
    /// the module is raised afterwards, as ESafecallError: the editor is gone in any case.
    void Destroy();

    TBaseClients *Get_Clients() const override;
    qint32 Get_Plan() const override;
    void Set_Plan(qint32 plan) override;
    TQuoteInfo *Get_QuoteInfo() const override;
    void Set_QuoteInfo(TQuoteInfo *info) override;
    QString Get_StyleSheet() const override;
    QString GetStyleSheet() const { return FStyleSheet; } ///< The second name of Get_StyleSheet.
    /// The only writer of the style sheet.
    void SetStyleSheet(const QString &styleSheet) { FStyleSheet = styleSheet; }
    IXMLDOMDocument2Ptr Get_XML() const override;
    void Set_XML(const IXMLDOMDocument2Ptr &xml) override;
    IQuotePrePopPtr Get_PrepPop() const override;
    void Set_PrepPop(const IQuotePrePopPtr &prepPop) override;
    IZelModulePtr Get_Module() const override;
    /// The object of the system item "Preparer" at the time of the call. Raises EListError without that item.
    QObject *Preparer() const;
    /// True, whatever it is given.
    bool SaveToFinalisor(const IDispatchPtr &finalisor) override;

private:
    friend class TfrmBaseProductEditor;
    void letGo();

    std::unique_ptr<TBaseClients> FClients;
    IXMLDOMDocument2Ptr FXML;
    QPointer<TQuoteInfo> FQuoteInfo;
    qint32 FPlan = 0;
    QString FStyleSheet;
    IQuotePrePopPtr FPrepPop;
    TfrmBaseProductEditor *FForm = nullptr;
    IZelModulePtr FModule;
};

#pragma once

#include "export/zel_commonframes_export.h"
#include "host/Quoteappimpl.h"

class TfrmBaseProductEditor;

/// The object through which the host edits one quote of one product; each product's editor derives from it.
/// It holds the parts of the quote, its own clients list, and the link to the open editor form.
///
/// The host owns the editor. Destroying the editor closes an open form.
class ZEL_COMMONFRAMES_EXPORT TCustomQuoteEditor : public TLegacyEditor
{
    Q_OBJECT
public:
    /// Creates the clients list "Clients" from the system item "MASTERCLIENTS". Throws EListError when there
    /// is no such item, and EConvertError when the item holds no client list.
    TCustomQuoteEditor();
    /// Does the same as Destroy, but a failure of the module goes to the application's exception report,
    /// because a destructor cannot throw.
    ~TCustomQuoteEditor() override;

    /// Releases the clients, closes the form's module if there is one, and deletes the editor. The editor is
    /// deleted even when the module fails to close; that failure is thrown afterwards as ESafecallError.
    void Destroy();

    TBaseClients *Get_Clients() const override;
    qint32 Get_Plan() const override;
    void Set_Plan(qint32 plan) override;
    TQuoteInfo *Get_QuoteInfo() const override;
    void Set_QuoteInfo(TQuoteInfo *info) override;
    QString Get_StyleSheet() const override;
    QString GetStyleSheet() const { return FStyleSheet; } ///< The second name of Get_StyleSheet.
    /// Sets the style sheet.
    void SetStyleSheet(const QString &styleSheet) { FStyleSheet = styleSheet; }
    IXMLDOMDocument2Ptr Get_XML() const override;
    void Set_XML(const IXMLDOMDocument2Ptr &xml) override;
    IQuotePrePopPtr Get_PrepPop() const override;
    void Set_PrepPop(const IQuotePrePopPtr &prepPop) override;
    IZelModulePtr Get_Module() const override;
    /// The object of the system item "Preparer" at the time of the call. Throws EListError without that item.
    QObject *Preparer() const;
    /// Always true; a product's editor overrides it.
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

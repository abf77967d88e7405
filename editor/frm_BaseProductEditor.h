#pragma once

#include "editor/unt_BaseProductEditorImpl.h"
#include "export/zel_commonframes_export.h"
#include "host/Modulefrm.h"
#include "toolkit/TImageList.h"
#include "ui_frm_BaseProductEditor.h"

#include <type_traits>

/// The ancestor of every product editor window: the band with the quote's investor and description. A
/// descendant adds its pages below the band, to the layout of pnlProdEditor, and overrides SetUpProduct.
///
/// The form shows the clients of its quote editor and updates when their list changes. When the chosen client
/// is deleted, no client is chosen, the details button is disabled and the quote has no client. The editor
/// can be destroyed before the form; later entries are then ignored.
class ZEL_COMMONFRAMES_EXPORT TfrmBaseProductEditor : public TfrmModule, public Ui::TfrmBaseProductEditor
{
    Q_OBJECT
public:
    explicit TfrmBaseProductEditor(QWidget *parent = nullptr);
    /// Clears the editor's link to this form, for a form that is destroyed without Dispose.
    ~TfrmBaseProductEditor() override;

    /// Opens a form of the class @p TForm for @p editor and hands it to the host's module manager, which then
    /// owns it. Does nothing when the editor already has a form. Always returns true. When a step throws, the
    /// form is deleted and the editor is unchanged. Throws Exception for a nil editor.
    template <class TForm> static bool Execute(TCustomQuoteEditor *editor, bool flag)
    {
        static_assert(std::is_base_of_v<TfrmBaseProductEditor, TForm>);
        return Open(editor, flag, []() -> TfrmBaseProductEditor * { return new TForm; });
    }

    /// Refills cbData from the editor's clients and keeps the chosen client, which is identified by its
    /// address.
    void LoadClients();
    /// Passes the chosen client on to the quote. Without @p force, a client that was passed on last is not
    /// passed on again; "no client" is always passed on.
    void RefreshClient(bool force);

    /// Called when the editor is destroyed before this form. The form then shows no clients.
    void EditorDestroyed();

    /// True while the editor has a prepopulation source.
    HResult PreferHideOverClose(WordBool &prefer) noexcept override;
    /// Unlinks form and editor, releases the form and calls the editor's DisposeQuote.
    HResult Dispose() noexcept override;
    HResult get_ImageIndex(qint32 &index) noexcept override;
    /// Moves the focus out of the field being edited, then handles the click as every module does.
    HResult ItemClicked(const QString &name, qint32 index) noexcept override;

    /// Called when the chosen client has changed; empty here.
    virtual void SelectedClientChanged();
    /// The product's own set-up. Execute calls it with its flag after listing the clients and before showing
    /// the form. Abstract: throws EAbstractError unless a product's form overrides it.
    virtual void SetUpProduct(bool flag);

    /// Pictures of 16 pixels for descendants.
    TImageList *ilMain;

public Q_SLOTS:
    void sbtClientClick();         ///< Lets the user change the chosen client's details.
    void cbDataPropertiesChange(); ///< Handles a new choice; does nothing while the list is being refilled.
    void edtDescriptionPropertiesChange(); ///< Writes the description into the quote.
    void HYVisualPluginShow();             ///< Shows the quote's description when the window is shown.
    /// For the close button of a tool bar on a descendant: moves the focus out of the field being edited,
    /// then closes the form.
    void fraToolBarsbtCloseClick();

protected:
    /// The editor this form works for; nil after Dispose.
    TCustomQuoteEditor *Editor() const { return FEditor; }
    /// The quote's key when Execute was called with the flag true; otherwise 0.
    qint64 CopiedQuoteField() const { return FCopiedQuoteField; }
    /// The client last passed on to the quote; nil for "no client" or when the client has been deleted.
    TBaseClient *SelectedClient() const { return FSelectedClient; }

private:
    static bool Open(TCustomQuoteEditor *editor, bool flag, TfrmBaseProductEditor *(*create)());
    TQuoteInfo *quoteInfo() const;
    void makeRoomForCaptions();

    TCustomQuoteEditor *FEditor = nullptr;
    qint64 FCopiedQuoteField = 0;
    QPointer<TBaseClient> FSelectedClient;
    bool FLoadingClients = false;
};

#pragma once

#include "editor/unt_BaseProductEditorImpl.h"
#include "export/zel_commonframes_export.h"
#include "host/Modulefrm.h"
#include "toolkit/TImageList.h"
#include "ui_frm_BaseProductEditor.h"

#include <type_traits>

/// The ancestor of every product editor window: the band with the quote's investor and description. A
/// descendant adds its pages below the band, to the layout of pnlProdEditor, and supplies SetUpProduct.
///
/// The form shows the clients of its quote editor and follows their list: when the chosen client is deleted,
/// no client is chosen, and the button and the quote follow. It can lose its editor at any time; what is
/// entered then goes nowhere.
class ZEL_COMMONFRAMES_EXPORT TfrmBaseProductEditor : public TfrmModule, public Ui::TfrmBaseProductEditor
{
    Q_OBJECT
public:
    explicit TfrmBaseProductEditor(QWidget *parent = nullptr);
    /// A form destroyed by force leaves no link to it in its editor.
    ~TfrmBaseProductEditor() override;

    /// Opens a form of the class @p TForm for @p editor and hands it to the host's module manager, which owns
    /// it from then on; nothing happens when the editor already has a form. Always true. When a step raises,
    /// the form is taken back and the editor is as before. Raises Exception for a nil editor.
    template <class TForm> static bool Execute(TCustomQuoteEditor *editor, bool flag)
    {
        static_assert(std::is_base_of_v<TfrmBaseProductEditor, TForm>);
        return Open(editor, flag, []() -> TfrmBaseProductEditor * { return new TForm; });
    }

    /// Refills cbData from the editor's clients and keeps the chosen one, matched by the object.
    void LoadClients();
    /// Passes the chosen client on to the quote. Without @p force nothing happens when it was passed on last;
    /// no client is always passed on.
    void RefreshClient(bool force);

    /// The editor is being destroyed while this form stays: the form shows no clients any more.
    void EditorDestroyed();

    /// True while the editor has a prepopulation source.
    HResult PreferHideOverClose(WordBool &prefer) noexcept override;
    /// Parts form and editor, releases the form and lets the editor tell the host that the quote is done
    /// with.
    HResult Dispose() noexcept override;
    HResult get_ImageIndex(qint32 &index) noexcept override;
    /// Takes the focus out of the field being edited, then handles the click as every module does.
    HResult ItemClicked(const QString &name, qint32 index) noexcept override;

    /// The chosen client has changed; empty here.
    virtual void SelectedClientChanged();
    /// The product's own set-up, run by Execute with its flag once the clients are listed and before the form
    /// is shown. Abstract: raises EAbstractError until a product's form supplies it.
    virtual void SetUpProduct(bool flag);

    /// Sixteen pixel pictures for descendants.
    TImageList *ilMain;

public Q_SLOTS:
    void sbtClientClick();         ///< Lets the user change the chosen client's details.
    void cbDataPropertiesChange(); ///< The choice has changed; unheard while the list is being refilled.
    void edtDescriptionPropertiesChange(); ///< Writes the description into the quote.
    void HYVisualPluginShow();             ///< The window comes up: shows the quote's description.
    /// For the close button of a tool bar that a descendant places on the form: the field being edited loses
    /// the focus, then the form closes.
    void fraToolBarsbtCloseClick();

protected:
    /// The editor this form works for; nil after Dispose.
    TCustomQuoteEditor *Editor() const { return FEditor; }
    /// The quote's key, when Execute was called with its flag true; else 0.
    qint64 CopiedQuoteField() const { return FCopiedQuoteField; }
    /// The client last passed on to the quote; nil when it was none or has been deleted.
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

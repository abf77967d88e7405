#pragma once

#include "desk/Language.h"
#include "desk/Options.h"
#include "quote/QuoteSession.h"

#include "ui_MainWindow.h"

#include <QActionGroup>
#include <QMainWindow>
#include <QPalette>
#include <QTimer>
#include <QUndoStack>

namespace QuoteDesk
{

class CatalogueDatabase;
class CatalogueProviders;
class QuoteEditor;
class StartPage;

/// The main window: the ribbon, the start page and a page for each quote that is open.
class MainWindow : public QMainWindow, public Ui::MainWindow
{
    Q_OBJECT
public:
    /// @p store, @p catalogue and @p providers must outlive the window. Raises StoreError when the quotes
    /// cannot be read.
    MainWindow(QuoteStore &store, CatalogueDatabase &catalogue, CatalogueProviders &providers,
               const Options &options);
    /// Takes the open quotes down without asking.
    ~MainWindow() override;

    StartPage *startPage() const { return m_startPage; }
    QuoteSession &session() noexcept { return m_session; }
    /// The editor on the current page; nullptr on the start page.
    QuoteEditor *currentEditor() const;
    /// Every open quote, hidden ones included.
    const QList<QuoteEditor *> &editors() const noexcept { return m_editors; }

    /// Puts the window where it was when saveGeometry() gave @p geometry, which may be blank; never larger
    /// than the screen. Before it is shown.
    void takePlace(const QByteArray &geometry);

    /// Offers what an earlier run of the program left unsaved. Once, when the window is up.
    void offerDrafts();

    /// Opens a new quote on a page of its own. Raises CatalogueError for a product without an editor.
    QuoteEditor *beginQuote(const Quote &quote);
    /// Opens a stored quote, or brings its page up. Raises StoreError when it is gone.
    QuoteEditor *openQuote(qint64 quoteID);
    /// Saves an open quote, asks when somebody else has changed it meanwhile; true when that is settled.
    /// Raises StoreError.
    bool save(QuoteEditor &editor);

    /// Makes the removal of a quote a step that can be undone.
    void keepRemoval(qint64 quoteID);

    /// Reads the quotes and clients again.
    void refresh();
    void setLanguage(Language language);
    void setDark(bool dark);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void connectActions();
    void setUpMenus();
    void setUpRibbon();
    void setUpSession();
    void showTexts();
    void arrangeRibbon();
    void arrangeMenus();
    void updateActions();
    void updatePageTitle(QuoteEditor &editor);
    void updateTitles();

    void newQuote();
    void openChosen();
    void duplicateChosen();
    void deleteChosen();
    void showClients();
    void importCatalogue();
    void about();

    QuoteEditor *openEditor(const Quote &quote, const QString &draftKey);
    static void beginTyping(const QuoteEditor &editor);
    QuoteEditor *editorOf(const QWidget *window) const;
    QuoteEditor *editorOf(qint64 quoteID) const;
    bool mayClose(QuoteEditor &editor);
    void keepDraft(QuoteEditor &editor);
    void forget(QuoteEditor *editor);
    void restoreDraft(const QString &key);
    void clickModule(const QString &name, qint32 index);
    void lookAround();

    QuoteStore &m_store;
    CatalogueDatabase &m_catalogue;
    CatalogueProviders &m_providers;
    QuoteSession m_session;
    QList<QuoteEditor *> m_editors;
    StartPage *m_startPage;
    QActionGroup m_sortActions;
    QActionGroup m_languageActions;
    QUndoStack m_listSteps; ///< Of the start page; each quote has steps of its own.
    QPalette m_lightPalette;
    QTimer m_lookAround;
    RibbonGroup *m_quotesGroup = nullptr;
    RibbonGroup *m_dataGroup = nullptr;
    RibbonGroup *m_quoteGroup = nullptr;
    RibbonGroup *m_pagesGroup = nullptr;
    RibbonGroup *m_stepsGroup = nullptr;
    RibbonGroup *m_moduleGroup = nullptr;
    bool m_offeredDrafts = false;
};

} // namespace QuoteDesk

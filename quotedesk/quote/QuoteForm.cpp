#include "quote/QuoteForm.h"

#include "look/Chip.h"
#include "look/GlyphLabel.h"
#include "look/Kinds.h"
#include "quote/EditedQuote.h"
#include "quote/FundsPage.h"
#include "quote/PlainText.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteReport.h"
#include "quote/Shortcuts.h"
#include "quote/SummaryPage.h"

#include "host/Clienteditfrm.h"
#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TApplication.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLocale>
#include <QMap>
#include <QPainter>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int tabPicture = 16;

/// A command of the allocation's toolbar.
struct FundCommand {
    const char *name;
    const char *text;
    TSpeedButton *TfraFundToolBar::*button;
    QKeySequence keys; ///< handled by the frame; here for display only
};

const std::array<FundCommand, 5> &fundCommands()
{
    static const std::array<FundCommand, 5> commands{{
        {"actChooseFunds", QT_TRANSLATE_NOOP("QuoteDesk::QuoteForm", "Choose &funds..."),
         &TfraFundToolBar::sbtFunds, Qt::CTRL | Qt::Key_F},
        {"actRemoveFund", QT_TRANSLATE_NOOP("QuoteDesk::QuoteForm", "&Remove fund"),
         &TfraFundToolBar::sbtRemove, Qt::Key_Delete},
        {"actClearFunds", QT_TRANSLATE_NOOP("QuoteDesk::QuoteForm", "C&lear all funds"),
         &TfraFundToolBar::sbtClear, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete},
        {"actAllocate", QT_TRANSLATE_NOOP("QuoteDesk::QuoteForm", "&Allocate the rest"),
         &TfraFundToolBar::sbtAllocateAmount, Qt::CTRL | Qt::Key_L},
        {"actResetFunds", QT_TRANSLATE_NOOP("QuoteDesk::QuoteForm", "Reset all to &zero"),
         &TfraFundToolBar::sbtResetToZero, Qt::CTRL | Qt::Key_R},
    }};
    return commands;
}

/// The end of the strip of the tabs, as high as the tabs and with the same line below.
class TabCorner : public QWidget
{
public:
    TabCorner(QWidget &content, const QTabWidget &tabs) : m_tabs(tabs)
    {
        auto *const layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&content, 0, Qt::AlignVCenter);
    }
    QSize sizeHint() const override
    {
        return {layout()->sizeHint().width(), m_tabs.tabBar()->sizeHint().height()};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(QPen(ColorOf(LookColor::Line, palette()), 0));
        painter.drawLine(rect().bottomLeft(), rect().bottomRight());
    }

private:
    const QTabWidget &m_tabs;
};

/// The widgets inside a page that the Tab key reaches, in their order.
QList<QWidget *> focusOrderOf(const QWidget *page, const QWidget *outside)
{
    QList<QWidget *> order;
    for (QWidget *widget = outside->nextInFocusChain(); widget != outside;
         widget = widget->nextInFocusChain()) {
        if (page->isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy())
            order.append(widget);
    }
    return order;
}

} // namespace

QuoteForm::QuoteForm(int productID)
    : pcPages(new TcxPageControl), fraNavBar(new TfraBaseNavBar), detailsPage(new ElementsPage),
      incomePage(new ElementsPage), fundsPage(new FundsPage), summaryPage(new SummaryPage),
      sbtNewClient(new TcxButton(pnlClient)), m_product(pagesOf(productID)),
      m_hasIncome(!m_product.income.isEmpty())
{
    namePages();
    layOut();
    addActions();
    retext();
    bindSteps();
    bindPages();
    bindBand();
}

void QuoteForm::namePages()
{
    pcPages->setObjectName(u"pcPages"_s);
    fraNavBar->setObjectName(u"fraNavBar"_s);
    detailsPage->setObjectName(u"detailsPage"_s);
    incomePage->setObjectName(u"incomePage"_s);
    fundsPage->setObjectName(u"fundsPage"_s);
    summaryPage->setObjectName(u"summaryPage"_s);
    sbtNewClient->setObjectName(u"sbtNewClient"_s);
}

/// The band is a surface. The base class lays it out, and leaves room for the button behind the client's.
void QuoteForm::layOutBand()
{
    for (TcxButton *const button : {sbtClient, sbtNewClient})
        setButtonKind(*button, ButtonKind::Quiet);
    pnlClient->setBackgroundRole(QPalette::Base);
    pnlClient->setAutoFillBackground(true);
    placeNewClient();
    // The base class moves the button.
    sbtClient->installEventFilter(this);
}

void QuoteForm::placeNewClient()
{
    const int step = sbtClient->width() + LookSpace::Grid;
    sbtNewClient->setGeometry(sbtClient->geometry().translated(isRightToLeft() ? -step : step, 0));
}

void QuoteForm::layOut()
{
    sbtNewClient->setIcon(GlyphIcon(u"client"_s));
    layOutBand();
    sbtNewClient->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_N);

    // Created from left to right and from top to bottom, which determines the tab order.
    detailsPage->setElements(m_product.details);
    incomePage->setElements(m_product.income);
    pcPages->addTab(detailsPage, {});
    pcPages->addTab(incomePage, {});
    pcPages->addTab(fundsPage, {});
    pcPages->addTab(summaryPage, {});
    // Previous and Next stand at the end of the tabs.
    fraNavBar->layNavBar->setContentsMargins(0, 0, LookSpace::Medium, 0);
    fraNavBar->btnPrev->setIcon(GlyphIcon(u"previous"_s));
    fraNavBar->btnNext->setIcon(GlyphIcon(u"next"_s));
    // The picture of Next stands behind its caption.
    fraNavBar->btnNext->setLayoutDirection(isRightToLeft() ? Qt::LeftToRight : Qt::RightToLeft);
    for (QAbstractButton *const button : QList<QAbstractButton *>{fraNavBar->btnPrev, fraNavBar->btnNext}) {
        setButtonKind(*button, ButtonKind::Flat);
        setSmall(*button);
        // Focus by Tab only, so that a click leaves the focus in the edited field.
        button->setFocusPolicy(Qt::TabFocus);
    }
    pcPages->setCornerWidget(new TabCorner(*fraNavBar, *pcPages));
    // The strip of the tabs is a surface like the band above it; the pages are the ground.
    pcPages->setDocumentMode(true);
    pcPages->setBackgroundRole(QPalette::Base);
    pcPages->setAutoFillBackground(true);
    for (int page = 0; page < pcPages->Get_PageCount(); ++page) {
        pcPages->widget(page)->setBackgroundRole(QPalette::Window);
        pcPages->widget(page)->setAutoFillBackground(true);
        // The summary, the last page, has the number of open points in place of a picture.
        if (page == static_cast<int>(Page::Summary))
            continue;
        auto *const state = new GlyphLabel(tabPicture);
        m_states.append(state);
        pcPages->tabBar()->setTabButton(page, QTabBar::LeftSide, state);
    }
    edtDescription->setMaxLength(longestDescription);
    layProdEditor->addWidget(pcPages, 1);
    if (!m_hasIncome)
        m_skip.set(static_cast<size_t>(Page::Income));
    resize(940, 620);
}

void QuoteForm::addActions()
{
    actSave = newAction("actSave", QKeySequence::Save, &QuoteForm::requestSave);
    actUndo = newAction("actUndo", QKeySequence::Undo, &QuoteForm::undo);
    actRedo = newAction("actRedo", QKeySequence::Redo, &QuoteForm::redo);
    actRedo->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    actCopyFunds = newAction("actCopyFunds", Qt::CTRL | Qt::SHIFT | Qt::Key_C, &QuoteForm::copyFunds);
    actPasteFunds = newAction("actPasteFunds", Qt::CTRL | Qt::SHIFT | Qt::Key_V, &QuoteForm::pasteFunds);
    actFactSheet = newAction("actFactSheet", Qt::CTRL | Qt::Key_H, &QuoteForm::openFactSheet);
    actPrint = newAction("actPrint", QKeySequence::Print, &QuoteForm::print);
    actPdf = newAction("actPdf", Qt::CTRL | Qt::SHIFT | Qt::Key_P, &QuoteForm::savePdf);
    actNextPoint = newAction("actNextPoint", Qt::Key_F8, [this] { stepPoint(1); });
    actPreviousPoint = newAction("actPreviousPoint", Qt::SHIFT | Qt::Key_F8, [this] { stepPoint(-1); });
    addFundActions();
    const auto takeSteps = [this] {
        actUndo->setEnabled(fundsPage->undoStack()->canUndo());
        actRedo->setEnabled(fundsPage->undoStack()->canRedo());
    };
    takeSteps();
    connect(fundsPage->undoStack(), &QUndoStack::indexChanged, this, takeSteps);
}

/// Connects the commands that step from page to page.
void QuoteForm::bindSteps()
{
    connectGuarded(fraNavBar->btnNext, &QAbstractButton::clicked, this, [this] {
        fraNavBar->NextSkip(*pcPages, m_skip);
        enterPage();
    });
    connectGuarded(fraNavBar->btnPrev, &QAbstractButton::clicked, this, [this] {
        fraNavBar->PrevSkip(*pcPages, m_skip);
        enterPage();
    });
    connectGuarded(pcPages, &QTabWidget::currentChanged, this, [this] {
        fraNavBar->RefreshNavButton(*pcPages);
        refreshSummary();
    });
    // The host's Next and Previous are shared by all windows and belong to the one in front.
    connectGuarded(this, &TfrmModule::VisualPluginShow, this,
                   [this] { fraNavBar->RefreshNavButton(*pcPages); });
}

void QuoteForm::bindPages()
{
    connectGuarded(detailsPage, &ElementsPage::edited, this, &QuoteForm::takeDetails);
    connectGuarded(incomePage, &ElementsPage::edited, this, &QuoteForm::takeDetails);
    connectGuarded(fundsPage, &FundsPage::edited, this, &QuoteForm::refreshSummary);
    connectGuarded(summaryPage, &SummaryPage::goWanted, this, &QuoteForm::goToPoint);
}

/// Connects the header with client and description. The base class, which stores these entries, was connected
/// first.
void QuoteForm::bindBand()
{
    connectGuarded(edtDescription, &QLineEdit::textChanged, this, &QuoteForm::takeDescription);
    // Connected after the base class, which opens the dialog on the same click.
    connectGuarded(sbtClient, &QAbstractButton::clicked, this, &QuoteForm::storeClient);
    connectGuarded(sbtNewClient, &QAbstractButton::clicked, this, &QuoteForm::newClient);
    // The pages come after the list of clients in the tab order; the header's other controls belong in
    // between.
    setTabOrder(cbData, sbtClient);
    setTabOrder(sbtClient, sbtNewClient);
    setTabOrder(sbtNewClient, edtDescription);
}

QuoteForm::~QuoteForm()
{
    sbtClient->removeEventFilter(this);
    for (const FundCommand &command : fundCommands())
        (fundsPage->fraFundAllocation->fraFundToolBar->*command.button)->removeEventFilter(this);
}

/// A click on Next or Previous takes the focus from the edited field; the focus then moves to the new page.
void QuoteForm::enterPage()
{
    if (!pnlProdEditor->hasFocus())
        return;
    const QList<QWidget *> order = focusOrderOf(pcPages->currentWidget(), cbData);
    const auto first = std::find_if(order.cbegin(), order.cend(), [](const QWidget *widget) {
        return widget->isVisible() && widget->isEnabled();
    });
    if (first != order.cend())
        (*first)->setFocus(Qt::TabFocusReason);
}

QAction *QuoteForm::newAction(const char *name, const QKeySequence &keys, void (QuoteForm::*command)())
{
    return newAction(name, keys, [this, command] { (this->*command)(); });
}

QAction *QuoteForm::newAction(const char *name, const QKeySequence &keys,
                              const std::function<void()> &command)
{
    auto *const action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connectGuarded(action, &QAction::triggered, this, command);
    addAction(action);
    return action;
}

void QuoteForm::retext()
{
    pcPages->setTabText(static_cast<int>(Page::Details), tr("Details"));
    pcPages->setTabText(static_cast<int>(Page::Income), tr("Income"));
    pcPages->setTabText(static_cast<int>(Page::Funds), tr("Funds"));
    pcPages->setTabText(static_cast<int>(Page::Summary), tr("Summary"));
    pcPages->setAccessibleName(tr("Pages of the quote"));
    edtDescription->setAccessibleName(tr("Description"));
    cbData->setAccessibleName(tr("Investor"));
    sbtNewClient->setToolTip(tr("New client"));
    sbtNewClient->setAccessibleName(tr("New client"));
    retextActions();
    if (quoteEditor()) {
        const QString product = quoteEditor()->product().name;
        setWindowTitle(tr("%1 - Quote").arg(shortText(product)));
    }
}

void QuoteForm::retextActions()
{
    const struct {
        QAction *action;
        QString text;
        const char *glyph;
    } texts[] = {{actSave, tr("&Save"), "save"},
                 {actUndo, tr("&Undo"), "undo"},
                 {actRedo, tr("&Redo"), "redo"},
                 {actCopyFunds, tr("&Copy funds"), "duplicate"},
                 {actPasteFunds, tr("&Paste funds"), "selector-add"},
                 {actFactSheet, tr("Fact shee&t"), "selector-fundsheet"},
                 {actPrint, tr("P&rint..."), "print"},
                 {actPdf, tr("Save as P&DF..."), "pdf"},
                 {actNextPoint, tr("Next open poin&t"), "next"},
                 {actPreviousPoint, tr("Pre&vious open point"), "previous"}};
    for (const auto &each : texts) {
        each.action->setText(each.text);
        each.action->setIcon(GlyphIcon(QLatin1String(each.glyph)));
    }
    for (qsizetype i = 0; i < fundActions.size(); ++i) {
        const FundCommand &command = fundCommands().at(static_cast<std::size_t>(i));
        // A menu displays the text after a tab as keys. The action has no keys, because the frame handles
        // them.
        fundActions.at(i)->setText(tr(command.text) + u'\t' +
                                   command.keys.toString(QKeySequence::NativeText));
    }
    applyShortcuts(*this);
}

void QuoteForm::addFundActions()
{
    const TfraFundToolBar &bar = *fundsPage->fraFundAllocation->fraFundToolBar;
    for (const FundCommand &command : fundCommands()) {
        auto *const action = new QAction(this);
        action->setObjectName(QLatin1String(command.name));
        TSpeedButton *const button = bar.*command.button;
        action->setIcon(button->icon());
        action->setEnabled(button->isEnabled());
        button->installEventFilter(this);
        connectGuarded(action, &QAction::triggered, this, [this, action] { runFundCommand(action); });
        fundActions.append(action);
    }
    TtsGrid *const grid = fundsPage->fraFundAllocation->FundGrid;
    grid->addActions(fundActions);
    grid->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void QuoteForm::runFundCommand(const QAction *action)
{
    goTo(Page::Funds);
    const qsizetype place = fundActions.indexOf(action);
    if (place < 0)
        return;
    TSpeedButton *const button =
        fundsPage->fraFundAllocation->fraFundToolBar->*fundCommands()
                                                           .at(static_cast<std::size_t>(place))
                                                           .button;
    const auto run = [this, button] {
        commit();
        if (button->isEnabled())
            button->click();
    };
    // The frame accepts commands once it has initialised itself, which is after its first paint.
    if (fundsPage->isReady())
        run();
    else
        connectGuarded(fundsPage, &FundsPage::ready, this, run, Qt::SingleShotConnection);
}

QuoteEditor *QuoteForm::quoteEditor() const
{
    return static_cast<QuoteEditor *>(Editor());
}

void QuoteForm::SetUpProduct(bool)
{
    QuoteEditor &editor = *quoteEditor();
    QuoteSession &session = editor.session();
    fundsPage->setUp(session, editor.product(), editor.edited());
    // Connected after the editor, which reads the product again; its name depends on the language.
    connect(&session, &QuoteSession::catalogueChanged, this, &QuoteForm::retext, Qt::UniqueConnection);
    fraNavBar->ModuleForm = this;
    fraNavBar->SetNextBtn(session.nextItem);
    fraNavBar->SetPrevBtn(session.previousItem);
    fraNavBar->RefreshNavBar(*pcPages, true);
    pcPages->Set_TabVisible(static_cast<int>(Page::Income), m_hasIncome);
    fraNavBar->show();
    editor.attach(this);
    retext();
    // The first focus of the window.
    cbData->setFocus();
}

void QuoteForm::goTo(Page page)
{
    pcPages->Set_ActivePageIndex(static_cast<int>(page));
}

void QuoteForm::showQuote()
{
    const QScopedValueRollback showing(m_showing, true);
    EditedQuote &quote = *quoteEditor()->edited();
    // A longer description from another program is not cut.
    edtDescription->setMaxLength(std::max(longestDescription, static_cast<int>(quote.description().size())));
    edtDescription->setText(quote.description());
    ListedClient *const client = quoteEditor()->session().findClient(quote.clientID());
    cbData->setCurrentIndex(cbData->IndexOfObject(client));
    if (!client) {
        // The client is not listed, so the form shows none and the quote has none.
        const QSignalBlocker silence(quote);
        quote.setClient(0);
    }
    detailsPage->show(quote.details());
    incomePage->show(quote.details());
    fundsPage->showQuote();
    refreshSummary();
}

void QuoteForm::commit()
{
    fundsPage->commit();
}

void QuoteForm::takeClient()
{
    if (m_showing || !quoteEditor())
        return;
    const auto *const client = qobject_cast<ListedClient *>(cbData->SelectedObject());
    quoteEditor()->edited()->setClient(client ? client->clientID() : 0);
    refreshSummary();
}

void QuoteForm::takeDescription()
{
    if (m_showing || !quoteEditor())
        return;
    const QString description = quoteEditor()->Get_QuoteInfo()->Get_Description();
    quoteEditor()->edited()->setDescription(description);
    summaryPage->showDescription(description);
}

void QuoteForm::takeDetails()
{
    if (m_showing || !quoteEditor())
        return;
    QMap<QString, QString> details = quoteEditor()->edited()->details();
    detailsPage->readInto(details);
    if (m_hasIncome)
        incomePage->readInto(details);
    quoteEditor()->edited()->setDetails(details);
    refreshSummary();
}

QStringList QuoteForm::problems() const
{
    const Quote quote = quoteEditor() ? quoteEditor()->quote() : Quote();
    return OpenPoint::sentences(problemsOf(quote, m_product, *detailsPage, *incomePage));
}

QList<OpenPoint> QuoteForm::openPoints() const
{
    const Quote quote = quoteEditor() ? quoteEditor()->quote() : Quote();
    QList<OpenPoint> points = problemsOf(quote, m_product, *detailsPage, *incomePage);
    if (const auto point = OpenPoint::ofSplit(ShownSplit(quote)))
        points.append(*point);
    return points;
}

void QuoteForm::goToPoint(const OpenPoint &point)
{
    using Place = OpenPoint::Place;
    switch (point.place) {
    case Place::Investor:
        cbData->setFocus();
        break;
    case Place::Details:
        goTo(Page::Details);
        detailsPage->enter(point.field);
        break;
    case Place::Income:
        goTo(Page::Income);
        incomePage->enter(point.field);
        break;
    case Place::Amount:
        goTo(Page::Funds);
        fundsPage->edAmount->setFocus();
        fundsPage->edAmount->selectAll();
        break;
    case Place::Split:
        goTo(Page::Funds);
        fundsPage->fraFundAllocation->FundGrid->setFocus();
        break;
    }
}

/// Whether the field of a point has the focus.
bool QuoteForm::isAt(const OpenPoint &point) const
{
    using Place = OpenPoint::Place;
    const QWidget *const focus = window()->focusWidget();
    const auto isIn = [focus](const QWidget *field) {
        return focus && (field == focus || field->isAncestorOf(focus));
    };
    switch (point.place) {
    case Place::Investor:
        return isIn(cbData);
    case Place::Details:
        return pcPages->currentWidget() == detailsPage && detailsPage->entered() == point.field;
    case Place::Income:
        return pcPages->currentWidget() == incomePage && incomePage->entered() == point.field;
    case Place::Amount:
        return isIn(fundsPage->edAmount);
    case Place::Split:
        return isIn(fundsPage->fraFundAllocation);
    }
    return false;
}

/// Goes to the next or previous open point, from the one that has the focus; otherwise to the first or last.
void QuoteForm::stepPoint(int step)
{
    commit();
    const QList<OpenPoint> points = openPoints();
    if (points.isEmpty())
        return;
    const auto found =
        std::find_if(points.cbegin(), points.cend(), [this](const OpenPoint &point) { return isAt(point); });
    const qsizetype count = points.size();
    const qsizetype last = step > 0 ? -1 : count;
    const qsizetype from = found == points.cend() ? last : found - points.cbegin();
    goToPoint(points.at((from + step + count) % count));
}

QuoteReport QuoteForm::report() const
{
    const Quote quote = quoteEditor() ? quoteEditor()->quote() : Quote();
    QuoteReport report(fundsPage->withShownNames(quote));
    if (quoteEditor())
        report.product = quoteEditor()->product().name;
    report.client = cbData->currentText();
    report.description = quote.description;
    report.date = QDate::currentDate();
    report.problems = problems();
    report.details = detailsPage->shown() + incomePage->shown() + fundsPage->answers();
    for (const QuotedFund &fund : quote.funds) {
        if (!fundsPage->names().contains(fund.fundID))
            report.notOffered.insert(fund.fundID);
    }
    return report;
}

/// Updates the summary while it is visible; showing its page updates it, too.
void QuoteForm::refreshSummary()
{
    refreshTabs();
    if (pcPages->currentWidget() == summaryPage)
        showSummary();
}

/// Shows on the tabs where something is still to be completed.
void QuoteForm::refreshTabs()
{
    if (!quoteEditor())
        return;
    // Without the funds, because a key press must not visit them all.
    const EditedQuote &edited = *quoteEditor()->edited();
    Quote quote;
    quote.productID = quoteEditor()->product().productID;
    quote.clientID = edited.clientID();
    quote.details = edited.details();
    quote.amount = edited.investment();
    QList<OpenPoint> points = problemsOf(quote, m_product, *detailsPage, *incomePage);
    if (const std::optional<OpenPoint> split = OpenPoint::ofSplit(edited.splitState()))
        points.append(*split);
    using Place = OpenPoint::Place;
    const QMap<Page, QList<Place>> places{{Page::Details, {Place::Details}},
                                          {Page::Income, {Place::Income}},
                                          {Page::Funds, {Place::Amount, Place::Split}}};
    for (auto page = places.cbegin(); page != places.cend(); ++page) {
        QList<OpenPoint> open;
        for (const OpenPoint &point : points) {
            if (page.value().contains(point.place))
                open.append(point);
        }
        showState(page.key(), OpenPoint::sentences(open));
    }
    showOpenPoints(static_cast<int>(points.size()));
}

/// Shows on a page's tab whether it is complete; the tool tip says what is missing.
void QuoteForm::showState(Page page, const QStringList &open)
{
    const auto tab = static_cast<int>(page);
    m_states.at(tab)->setGlyph(open.isEmpty() ? u"complete"_s : u"warning"_s,
                               open.isEmpty() ? LookColor::OkText : LookColor::WarnText);
    pcPages->setTabToolTip(tab, tipText(open.join(u'\n')));
    const QString name = pcPages->tabText(tab);
    pcPages->tabBar()->setAccessibleTabName(
        tab, open.isEmpty() ? tr("%1, complete").arg(name)
                            : tr("%1, %n open point(s)", nullptr, static_cast<int>(open.size())).arg(name));
}

/// Shows the number of open points on the summary's tab.
void QuoteForm::showOpenPoints(int count)
{
    const auto tab = static_cast<int>(Page::Summary);
    QTabBar &bar = *pcPages->tabBar();
    auto *chip = qobject_cast<Chip *>(bar.tabButton(tab, QTabBar::RightSide));
    if (count > 0) {
        if (!chip) {
            chip = new Chip;
            bar.setTabButton(tab, QTabBar::RightSide, chip);
        }
        const QString number = QLocale().toString(count);
        if (chip->chip().text != number) {
            chip->setChip({ChipKind::Warn, {}, number});
            chip->adjustSize();
            // The bar measures its tabs again.
            bar.setTabText(tab, bar.tabText(tab));
        }
    } else if (chip) {
        bar.setTabButton(tab, QTabBar::RightSide, nullptr);
        chip->deleteLater();
    }
    const QString name = pcPages->tabText(tab);
    bar.setAccessibleTabName(tab, count == 0 ? name : tr("%1, %n open point(s)", nullptr, count).arg(name));
}

void QuoteForm::showSummary()
{
    summaryPage->show(report(), openPoints());
}

void QuoteForm::SelectedClientChanged()
{
    takeClient();
}

HResult QuoteForm::Dispose() noexcept
{
    GuardedCall([this] {
        if (!quoteEditor())
            return;
        commit();
        quoteEditor()->detach();
        fundsPage->letGo();
    });
    return TfrmBaseProductEditor::Dispose();
}

void QuoteForm::hideEvent(QHideEvent *event)
{
    TfrmBaseProductEditor::hideEvent(event);
    if (event->spontaneous() || !quoteEditor())
        return;
    GuardedCall([this] {
        commit();
        quoteEditor()->keepDraft();
    });
}

void QuoteForm::changeEvent(QEvent *event)
{
    TfrmBaseProductEditor::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retext();
        refreshSummary();
    }
}

bool QuoteForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == sbtClient && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        placeNewClient();
    if (event->type() == QEvent::EnabledChange) {
        const TfraFundToolBar &bar = *fundsPage->fraFundAllocation->fraFundToolBar;
        for (qsizetype i = 0; i < fundActions.size(); ++i) {
            const TSpeedButton *const button = bar.*fundCommands().at(static_cast<std::size_t>(i)).button;
            if (watched == button)
                fundActions.at(i)->setEnabled(button->isEnabled());
        }
    }
    return TfrmBaseProductEditor::eventFilter(watched, event);
}

// --- clients

void QuoteForm::storeClient()
{
    auto *const client = qobject_cast<ListedClient *>(cbData->SelectedObject());
    if (!client || !quoteEditor() || client->client() == client->stored())
        return;
    Client edited = client->client();
    if (!GuardedCall([&] { quoteEditor()->session().saveClient(edited, window()); })) {
        // The list shows the stored details again.
        client->take(client->stored());
        LoadClients();
        enterClient(edited);
        return;
    }
    client->take(edited);
    takeClient();
}

/// Asks for a client's details, starting with the given ones, and selects the client when it was stored. When
/// storing fails, the dialog opens again with the entry, until it succeeds or the user cancels.
void QuoteForm::enterClient(const Client &start)
{
    ListedClient entered(start);
    const QPointer<QuoteForm> self(this); // the host can close the form during the dialog
    while (TfrmEditClient::EditClient(&entered, this) && self && quoteEditor()) {
        Client client = entered.client();
        const bool stored = GuardedCall([&] { quoteEditor()->session().saveClient(client, window()); });
        if (!self || !quoteEditor())
            return;
        if (!stored) {
            // With the id that the client may have got.
            entered.take(client);
            continue;
        }
        ListedClient *const listed = quoteEditor()->session().putClient(client);
        LoadClients();
        cbData->setCurrentIndex(cbData->IndexOfObject(listed));
        takeClient();
        return;
    }
}

void QuoteForm::newClient()
{
    if (quoteEditor())
        enterClient({});
}

// --- commands

void QuoteForm::requestSave()
{
    commit();
    if (quoteEditor())
        Q_EMIT quoteEditor()->saveRequested();
}

void QuoteForm::undo()
{
    goTo(Page::Funds);
    fundsPage->undo();
}

void QuoteForm::redo()
{
    goTo(Page::Funds);
    fundsPage->redo();
}

void QuoteForm::copyFunds()
{
    fundsPage->copyFunds();
}

void QuoteForm::pasteFunds()
{
    goTo(Page::Funds);
    fundsPage->pasteFunds();
}

void QuoteForm::openFactSheet()
{
    fundsPage->openFactSheet();
}

void QuoteForm::print()
{
    commit();
    if (quoteEditor())
        quoteEditor()->print();
}

void QuoteForm::savePdf()
{
    commit();
    if (!quoteEditor())
        return;
    const QString suggestion = report().fileName();
    const QPointer<QuoteForm> self(this);
    QString path = quoteEditor()->session().adviser().chooseFile(this, suggestion + u".pdf"_s);
    if (path.isEmpty() || !self || !quoteEditor())
        return;
    quoteEditor()->exportPdf(path);
    const QString said = tr("Saved as %1").arg(QDir::toNativeSeparators(path));
    summaryPage->say(said);
    Q_EMIT quoteEditor()->told(said);
}

} // namespace QuoteDesk

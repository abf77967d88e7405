#include "desk/SettingsDialog.h"

#include "desk/ErrorDialog.h"
#include "desk/MainWindow.h"
#include "look/Kinds.h"
#include "quote/PlainText.h"
#include "quote/QuoteSession.h"
#include "quote/ServerWait.h"
#include "store/Backup.h"

#include "toolkit/Glyphs.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int sectionsWidth = 196;
constexpr QSize usualSize(920, 600);

/// Reads the catalogue's state where the quotes are.
CataloguePage::State catalogueState(QuoteSession &session, QWidget *parent)
{
    return fetch(session.store(), parent, [](QuoteStore &store) {
        const CatalogueDatabase catalogue(store.database());
        return CataloguePage::State{catalogue.imported(), catalogue.fundCount(),
                                    static_cast<int>(catalogue.products().size())};
    });
}

} // namespace

SettingsDialog::SettingsDialog(const Settings &settings, QuoteSession &session, MainWindow &window)
    : QDialog(&window), edFind(new QLineEdit), lstSections(new QListWidget),
      buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)),
      lblProblem(new TextLabel(LookFont::Caption, LookColor::ErrorText)), m_start(settings),
      m_side(new QWidget), m_stack(new QStackedWidget),
      m_nothing(new TextLabel(LookFont::Body, LookColor::Text2)),
      m_defaults(buttons->addButton(QDialogButtonBox::RestoreDefaults))
{
    setObjectName(u"SettingsDialog"_s);
    edFind->setObjectName(u"edFind"_s);
    edFind->setMaxLength(longestSearch);
    edFind->setClearButtonEnabled(true);
    lstSections->setObjectName(u"lstSections"_s);
    lblProblem->setObjectName(u"lblProblem"_s);
    lblProblem->setForegroundRole(QPalette::WindowText);
    m_nothing->setObjectName(u"lblNothing"_s);
    addPages(session, window);
    layOut();
    for (SettingsPage *const page : std::as_const(m_pages)) {
        page->show(settings);
        connect(page, &SettingsPage::edited, this, [this] {
            lblProblem->hide();
            Q_EMIT previewWanted(this->settings());
        });
    }
    retext();
    connect(edFind, &QLineEdit::textChanged, this, &SettingsDialog::find);
    connect(lstSections, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            m_stack->setCurrentIndex(row);
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_defaults, &QPushButton::clicked, this, &SettingsDialog::restoreDefaults);
    lstSections->setCurrentRow(0);
    resize(usualSize.boundedTo(screen()->availableSize() * 9 / 10));
}

SettingsDialog::~SettingsDialog() = default;

void SettingsDialog::addPages(QuoteSession &session, MainWindow &window)
{
    const auto import = [&window] { window.actImport->trigger(); };
    const auto backUp = [&session, this](const QString &path) {
        fetch(session.store(), this, [path](QuoteStore &store) { QuoteDesk::backUp(store, path); });
    };
    const StoreLocation &place = session.store().location();
    m_pages = {new AppearancePage,
               new NumbersPage,
               new LetterheadPage,
               new CataloguePage([&session, this] { return catalogueState(session, this); }, import),
               new StoragePage(place.text(), place.isServer() ? QString() : place.file, backUp),
               new ShortcutsPage(allCommands(window))};
}

void SettingsDialog::layOut()
{
    m_side->setBackgroundRole(QPalette::AlternateBase);
    m_side->setAutoFillBackground(true);
    auto *const sideLayout = new QVBoxLayout(m_side);
    sideLayout->setSpacing(LookSpace::Small);
    sideLayout->setContentsMargins(LookSpace::Small, LookSpace::Medium, LookSpace::Small, LookSpace::Medium);
    sideLayout->addWidget(edFind);
    sideLayout->addWidget(lstSections, 1);
    lstSections->setFrameShape(QFrame::NoFrame);
    lstSections->viewport()->setAutoFillBackground(false);
    for (SettingsPage *const page : std::as_const(m_pages)) {
        new QListWidgetItem(lstSections);
        auto *const scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidget(page);
        m_stack->addWidget(scroll);
    }
    m_stack->addWidget(m_nothing);
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setWordWrap(true);
    auto *const top = new QHBoxLayout;
    top->setSpacing(0);
    top->addWidget(m_side);
    top->addWidget(new PanelEdge(Qt::Vertical));
    top->addWidget(m_stack, 1);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(top, 1);
    layout->addWidget(new PanelEdge(Qt::Horizontal));
    auto *const foot = new QWidget;
    foot->setBackgroundRole(QPalette::AlternateBase);
    foot->setAutoFillBackground(true);
    auto *const footLayout = new QVBoxLayout(foot);
    footLayout->setContentsMargins(LookSpace::Large, LookSpace::Medium, LookSpace::Large, LookSpace::Medium);
    lblProblem->setWordWrap(true);
    lblProblem->hide();
    footLayout->addWidget(lblProblem);
    footLayout->addWidget(buttons);
    layout->addWidget(foot);
    m_defaults->setAutoDefault(false);
    setButtonKind(*m_defaults, ButtonKind::Flat);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
}

void SettingsDialog::retext()
{
    setWindowTitle(tr("Settings"));
    edFind->setPlaceholderText(tr("Find a setting"));
    edFind->setAccessibleName(tr("Find a setting"));
    lstSections->setAccessibleName(tr("Sections"));
    m_nothing->setText(tr("No setting has these words."));
    m_defaults->setText(tr("Restore defaults"));
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    for (qsizetype i = 0; i < m_pages.size(); ++i) {
        m_pages.at(i)->retext();
        lstSections->item(static_cast<int>(i))->setText(m_pages.at(i)->title());
        lstSections->item(static_cast<int>(i))->setIcon(GlyphIcon(m_pages.at(i)->glyph()));
        m_stack->widget(static_cast<int>(i))->setAccessibleName(m_pages.at(i)->title());
    }
    fitSections();
    find();
}

/// Gives the list of sections the room that its texts need.
void SettingsDialog::fitSections()
{
    const QFontMetrics metrics(lstSections->font());
    int widest = 0;
    for (int i = 0; i < lstSections->count(); ++i) {
        lstSections->item(i)->setSizeHint(QSize(0, HeightOf(LookHeight::Row, metrics)));
        widest = std::max(widest, metrics.horizontalAdvance(lstSections->item(i)->text()));
    }
    m_side->setFixedWidth(std::max(sectionsWidth, widest + lstSections->iconSize().width() + 64));
}

void SettingsDialog::find()
{
    const QStringList words = edFind->text().simplified().split(u' ', Qt::SkipEmptyParts);
    int first = -1;
    for (int i = 0; i < lstSections->count(); ++i) {
        const bool found = m_pages.at(i)->showFound(words);
        lstSections->item(i)->setHidden(!found);
        if (found && first < 0)
            first = i;
    }
    const int current = lstSections->currentRow();
    if (first < 0) {
        m_stack->setCurrentWidget(m_nothing);
    } else {
        if (current < 0 || lstSections->item(current)->isHidden())
            lstSections->setCurrentRow(first);
        m_stack->setCurrentIndex(lstSections->currentRow());
    }
}

Settings SettingsDialog::settings() const
{
    Settings settings = m_start;
    for (const SettingsPage *const page : m_pages)
        page->writeInto(settings);
    return settings;
}

void SettingsDialog::goTo(Section section)
{
    edFind->clear();
    lstSections->setCurrentRow(static_cast<int>(section));
}

void SettingsDialog::accept()
{
    for (qsizetype i = 0; i < m_pages.size(); ++i) {
        const QString problem = m_pages.at(i)->problem();
        if (problem.isEmpty())
            continue;
        goTo(static_cast<Section>(i));
        lblProblem->setText(problem);
        lblProblem->show();
        return;
    }
    QDialog::accept();
}

void SettingsDialog::restoreDefaults()
{
    // The letterhead is no choice but something that was typed; nobody wants to lose it with one click.
    Settings defaults;
    defaults.language = settings().language;
    defaults.letterhead = settings().letterhead;
    for (SettingsPage *const page : std::as_const(m_pages))
        page->show(defaults);
    Q_EMIT previewWanted(settings());
}

void SettingsDialog::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        attempt(this, [this] { retext(); });
    else if (event->type() == QEvent::FontChange && lstSections->count() > 0)
        fitSections();
}

} // namespace QuoteDesk

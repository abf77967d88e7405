#include "desk/HelpWindow.h"

#include "desk/ClientsPage.h"
#include "desk/ImportDialogs.h"
#include "desk/Manual.h"
#include "desk/NewQuoteDialog.h"
#include "desk/SettingsDialog.h"
#include "desk/ShortcutList.h"
#include "quote/PlainText.h"
#include "quote/QuoteForm.h"

#include "funds/frm_FundSelector.h"
#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QScreen>
#include <QSplitter>
#include <QTextBlock>
#include <QTextTable>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int contentsWidth = 196;
/// The widest line, in characters; longer ones are hard to read.
constexpr int widestLine = 80;
/// The distance of lines, as a percentage of the font's own.
constexpr double lineHeight = 120;

/// A browser whose pictures are never wider than its lines.
class PageBrowser : public QTextBrowser
{
public:
    QVariant loadResource(int type, const QUrl &name) override
    {
        return type == QTextDocument::ImageResource ? QVariant(picture(name))
                                                    : QTextBrowser::loadResource(type, name);
    }

    /// Gives the pictures of the page the width of the lines.
    void fitPictures()
    {
        QTextDocument &page = *document();
        for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
                if (!format.isValid())
                    continue;
                const QUrl name(format.name());
                page.addResource(QTextDocument::ImageResource, name, picture(name));
                page.addResource(QTextDocument::ImageResource, page.baseUrl().resolved(name), picture(name));
            }
        }
        page.markContentsDirty(0, page.characterCount());
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        fitLines();
        QTextBrowser::resizeEvent(event);
    }
    void changeEvent(QEvent *event) override
    {
        QTextBrowser::changeEvent(event);
        if (event->type() == QEvent::FontChange)
            fitLines();
    }

private:
    QImage picture(const QUrl &name) const
    {
        // Pages name pictures relative to themselves: "../images/...".
        const QImage whole(u":/manual/images/"_s + name.path().section(u"images/"_s, 1));
        const int room = lineWrapColumnOrWidth() - 2 * static_cast<int>(document()->documentMargin());
        return room > 0 && whole.width() > room ? whole.scaledToWidth(room, Qt::SmoothTransformation) : whole;
    }

    void fitLines()
    {
        const int room = std::min(viewport()->width(), widestLine * fontMetrics().averageCharWidth());
        if (lineWrapMode() == QTextEdit::FixedPixelWidth && lineWrapColumnOrWidth() == room)
            return;
        setLineWrapMode(QTextEdit::FixedPixelWidth);
        setLineWrapColumnOrWidth(room);
        fitPictures();
    }
};

/// Sets size and weight of all text in @p block.
void setTextFont(const QTextBlock &block, const QFont &font)
{
    struct Piece {
        int position;
        int length;
        QTextCharFormat format;
    };
    QList<Piece> pieces;
    for (auto part = block.begin(); !part.atEnd(); ++part)
        pieces.append({part.fragment().position(), part.fragment().length(), part.fragment().charFormat()});
    for (Piece &piece : pieces) {
        QTextCursor cursor(block);
        cursor.setPosition(piece.position);
        cursor.setPosition(piece.position + piece.length, QTextCursor::KeepAnchor);
        // The adjustment that a heading brings would count in addition.
        piece.format.clearProperty(QTextFormat::FontSizeAdjustment);
        piece.format.setFontPointSize(font.pointSizeF());
        piece.format.setFontWeight(font.weight());
        cursor.setCharFormat(piece.format);
    }
}

void styleTable(QTextTable &table, const QPalette &palette)
{
    QTextTableFormat format = table.format();
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setBorderBrush(ColorOf(LookColor::Line, palette));
    format.setCellPadding(LookSpace::Grid + 1);
    format.setCellSpacing(0);
    table.setFormat(format);
}

QStringList wordsOf(const QLineEdit &field)
{
    return field.text().simplified().split(u' ', Qt::SkipEmptyParts);
}

} // namespace

HelpWindow::Topic HelpWindow::topicOf(const QWidget *widget)
{
    for (const QWidget *at = widget; at; at = at->parentWidget()) {
        if (qobject_cast<const NewQuoteDialog *>(at))
            return Topic::NewQuote;
        if (qobject_cast<const ClientsPage *>(at))
            return Topic::Clients;
        if (qobject_cast<const TfrmFundSelector *>(at))
            return Topic::FundSelector;
        if (qobject_cast<const SettingsDialog *>(at))
            return Topic::Settings;
        if (qobject_cast<const ShortcutList *>(at))
            return Topic::Shortcuts;
        if (qobject_cast<const ImportReportDialog *>(at))
            return Topic::Catalogue;
        if (qobject_cast<const QDialog *>(at))
            return Topic::Dialog;
        if (const auto *const form = qobject_cast<const QuoteForm *>(at)) {
            switch (static_cast<QuoteForm::Page>(form->pcPages->currentIndex())) {
            case QuoteForm::Page::Details:
                return Topic::Details;
            case QuoteForm::Page::Income:
                return Topic::Income;
            case QuoteForm::Page::Funds:
                return Topic::Funds;
            case QuoteForm::Page::Summary:
                return Topic::Summary;
            }
        }
    }
    return Topic::Start;
}

QString HelpWindow::pageOf(Topic topic)
{
    switch (topic) {
    case Topic::Start:
    case Topic::NewQuote:
        return u"quotes"_s;
    case Topic::Details:
    case Topic::Income:
        return u"details"_s;
    case Topic::Funds:
        return u"allocation"_s;
    case Topic::Summary:
        return u"summary"_s;
    case Topic::Clients:
        return u"clients"_s;
    case Topic::FundSelector:
        return u"funds"_s;
    case Topic::Catalogue:
        return u"catalogue"_s;
    case Topic::Settings:
        return u"settings"_s;
    case Topic::Shortcuts:
        return u"keys"_s;
    case Topic::Dialog:
        break;
    }
    return u"first-steps"_s;
}

HelpWindow *HelpWindow::open(QWidget *place)
{
    QWidget *const owner = place->window();
    auto *help = owner->findChild<HelpWindow *>(QString(), Qt::FindDirectChildrenOnly);
    if (!help)
        help = new HelpWindow(owner);
    help->goTo(pageOf(topicOf(place)));
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}

HelpWindow::HelpWindow(QWidget *parent)
    : QDialog(parent), edFind(new QLineEdit), lstPages(new QListWidget), browser(new PageBrowser),
      btnBack(new QToolButton), btnForward(new QToolButton)
{
    setObjectName(u"HelpWindow"_s);
    setWindowModality(Qt::NonModal);
    edFind->setObjectName(u"edFind"_s);
    edFind->setMaxLength(longestSearch);
    edFind->setClearButtonEnabled(true);
    lstPages->setObjectName(u"lstPages"_s);
    browser->setObjectName(u"browser"_s);
    btnBack->setObjectName(u"btnBack"_s);
    btnForward->setObjectName(u"btnForward"_s);
    for (const QString &page : Manual::pages())
        (new QListWidgetItem(lstPages))->setData(Qt::UserRole, page);
    layOut();
    connect(edFind, &QLineEdit::textChanged, this, &HelpWindow::find);
    connect(lstPages, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem *item) {
        if (item && item->data(Qt::UserRole).toString() != m_page)
            goTo(item->data(Qt::UserRole).toString());
    });
    connect(btnBack, &QToolButton::clicked, browser, &QTextBrowser::backward);
    connect(btnForward, &QToolButton::clicked, browser, &QTextBrowser::forward);
    connect(browser, &QTextBrowser::backwardAvailable, btnBack, &QWidget::setEnabled);
    connect(browser, &QTextBrowser::forwardAvailable, btnForward, &QWidget::setEnabled);
    connect(browser, &QTextBrowser::sourceChanged, this, [this](const QUrl &address) {
        m_page = Manual::pageAt(address);
        takePage();
    });
    retext();
    resize(QSize(920, 640).boundedTo(screen()->availableSize() * 9 / 10));
    browser->setFocus();
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::layOut()
{
    auto *const side = new QWidget;
    auto *const sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(LookSpace::Small, LookSpace::Medium, LookSpace::Small, LookSpace::Medium);
    sideLayout->addWidget(edFind);
    sideLayout->addWidget(lstPages, 1);
    side->setBackgroundRole(QPalette::AlternateBase);
    side->setAutoFillBackground(true);
    sideLayout->setSpacing(LookSpace::Small);
    lstPages->setFrameShape(QFrame::NoFrame);
    lstPages->viewport()->setAutoFillBackground(false);
    lstPages->setMinimumWidth(contentsWidth);
    auto *const steps = new QHBoxLayout;
    steps->addWidget(btnBack);
    steps->addWidget(btnForward);
    steps->addStretch(1);
    btnBack->setShortcut(Qt::ALT | Qt::Key_Left);
    btnForward->setShortcut(Qt::ALT | Qt::Key_Right);
    for (QToolButton *const button : {btnBack, btnForward}) {
        button->setAutoRaise(true);
        button->setEnabled(false);
        button->setFocusPolicy(Qt::TabFocus);
    }
    browser->setFrameShape(QFrame::NoFrame);
    // The lines fit into the window, and a bar that comes and goes would change their width.
    browser->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    browser->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    browser->document()->setDocumentMargin(LookSpace::Large);
    auto *const right = new QWidget;
    auto *const rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, LookSpace::Medium, 0, 0);
    rightLayout->setSpacing(LookSpace::Grid);
    rightLayout->addLayout(steps);
    rightLayout->addWidget(browser, 1);
    auto *const splitter = new QSplitter;
    splitter->addWidget(side);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    setTabOrder(edFind, lstPages);
    setTabOrder(lstPages, btnBack);
    setTabOrder(btnBack, btnForward);
    setTabOrder(btnForward, browser);
}

void HelpWindow::retext()
{
    edFind->setPlaceholderText(tr("Find in the manual"));
    edFind->setAccessibleName(tr("Find in the manual"));
    lstPages->setAccessibleName(tr("Contents"));
    browser->setAccessibleName(tr("Page of the manual"));
    const auto name = [](QToolButton &button, const QString &text, const QString &glyph) {
        button.setAccessibleName(text);
        button.setToolTip(u"%1 (%2)"_s.arg(text, button.shortcut().toString(QKeySequence::NativeText)));
        button.setIcon(GlyphIcon(glyph));
    };
    name(*btnBack, tr("Back"), u"previous"_s);
    name(*btnForward, tr("Forward"), u"next"_s);
    for (int i = 0; i < lstPages->count(); ++i) {
        QListWidgetItem &item = *lstPages->item(i);
        item.setText(Manual::title(item.data(Qt::UserRole).toString(), currentLanguage()));
    }
    if (m_page.isEmpty())
        setWindowTitle(tr("Help"));
    else
        goTo(m_page);
    find();
}

void HelpWindow::goTo(const QString &page)
{
    const QUrl address = Manual::address(page, currentLanguage());
    if (m_page != page || m_language != currentLanguage()) {
        m_language = currentLanguage();
        browser->setSource(address, QTextDocument::MarkdownResource);
    }
}

void HelpWindow::takePage()
{
    const QString title = Manual::title(m_page, currentLanguage());
    setWindowTitle(tr("Help: %1").arg(title));
    for (int i = 0; i < lstPages->count(); ++i) {
        if (lstPages->item(i)->data(Qt::UserRole).toString() == m_page)
            lstPages->setCurrentRow(i);
    }
    styleDocument();
    showFound();
}

/// Gives headings, lines and tables the sizes of the look.
void HelpWindow::styleDocument()
{
    QTextDocument &document = *browser->document();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        QTextCursor cursor(block);
        QTextBlockFormat format = block.blockFormat();
        format.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
        if (level > 0) {
            setTextFont(block, FontOf(level == 1 ? LookFont::Title : LookFont::Heading, browser->font()));
            format.setTopMargin(level == 1 ? 0 : LookSpace::Large);
            format.setBottomMargin(LookSpace::Grid);
        } else if (!cursor.currentTable()) {
            format.setBottomMargin(LookSpace::Small);
        }
        cursor.setBlockFormat(format);
        if (QTextTable *const table = cursor.currentTable())
            styleTable(*table, browser->palette());
    }
}

void HelpWindow::find()
{
    const QStringList words = wordsOf(*edFind);
    QListWidgetItem *first = nullptr;
    for (int i = 0; i < lstPages->count(); ++i) {
        QListWidgetItem &item = *lstPages->item(i);
        const QString text = Manual::text(item.data(Qt::UserRole).toString(), currentLanguage());
        const bool found = std::all_of(words.cbegin(), words.cend(), [&text](const QString &word) {
            return text.contains(word, Qt::CaseInsensitive);
        });
        item.setHidden(!found);
        if (found && !first)
            first = &item;
    }
    if (first && !words.isEmpty() && lstPages->currentItem() && lstPages->currentItem()->isHidden())
        lstPages->setCurrentItem(first);
    showFound();
}

/// Marks the words of the search in the page and goes to the first one.
void HelpWindow::showFound()
{
    QList<QTextEdit::ExtraSelection> marks;
    int first = -1;
    for (const QString &word : wordsOf(*edFind)) {
        QTextCursor at(browser->document());
        while (!(at = browser->document()->find(word, at)).isNull()) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = at;
            mark.format.setBackground(ColorOf(LookColor::Mark, browser->palette()));
            mark.format.setForeground(ColorOf(LookColor::Text, browser->palette()));
            marks.append(mark);
            if (first < 0 || at.selectionStart() < first)
                first = at.selectionStart();
        }
    }
    browser->setExtraSelections(marks);
    if (first >= 0) {
        QTextCursor cursor(browser->document());
        cursor.setPosition(first);
        browser->setTextCursor(cursor);
        browser->ensureCursorVisible();
    }
}

void HelpWindow::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retext();
    else if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        styleDocument();
}

HelpKey::HelpKey(QObject *parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

HelpKey::~HelpKey() = default;

bool HelpKey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    const auto *const key = static_cast<QKeyEvent *>(event);
    auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier || !dialog ||
        qobject_cast<HelpWindow *>(static_cast<QWidget *>(watched)->window()))
        return QObject::eventFilter(watched, event);
    HelpWindow::open(dialog);
    return true;
}

} // namespace QuoteDesk

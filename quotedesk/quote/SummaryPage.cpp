#include "quote/SummaryPage.h"

#include "quote/PageParts.h"
#include "quote/PlainText.h"
#include "quote/ShownNumbers.h"
#include "quote/SplitChart.h"

#include "look/Banner.h"
#include "look/GlyphLabel.h"
#include "look/Kinds.h"

#include "toolkit/Glyphs.h"
#include "toolkit/TColors.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int pictureSize = 18;
constexpr int swatchSize = 10;
constexpr int chartRoom = 176;
constexpr int roomForTable = 110;
constexpr int widePage = 1060; // from here on there is room for the ring
constexpr int oneColumn = 720; // below it the two columns stand one below the other
constexpr auto saidTopic = "said"_L1;

QString percent(Currency value)
{
    return shownPercent(value);
}

QString money(Currency value)
{
    return shownMoney(value);
}

} // namespace

/// The head of a part of a panel: a heading on a ground of its own.
class SummaryPage::Head : public QWidget
{
public:
    /// @p isTop rounds the upper corners as those of the panel.
    Head(LookFont font, bool isTop, QWidget *parent)
        : QWidget(parent), m_picture(new GlyphLabel(pictureSize, this)),
          m_title(new TextLabel(font, LookColor::Text, this)),
          m_note(new TextLabel(LookFont::Caption, LookColor::Text2, this)), m_isTop(isTop)
    {
        auto *const row = new QHBoxLayout(this);
        row->setContentsMargins(LookSpace::Medium, LookSpace::Small, LookSpace::Medium, LookSpace::Small);
        row->setSpacing(LookSpace::Small);
        row->addWidget(m_picture);
        row->addWidget(m_title, 1);
        row->addWidget(m_note);
        m_title->setWordWrap(true);
        m_picture->hide();
    }
    void set(LookColor ground, const QString &title, const QString &note = {})
    {
        m_ground = ground;
        m_title->setText(title);
        m_note->setText(note);
        m_note->setVisible(!note.isEmpty());
        update();
    }
    void setPicture(const QString &glyph, LookColor color)
    {
        m_picture->setGlyph(glyph, color);
        m_picture->show();
    }
    QString title() const { return m_title->text(); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr qreal radius = LookSpace::PanelRadius;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath shape;
        shape.addRoundedRect(QRectF(rect()), radius, radius);
        QPainterPath lower;
        lower.addRect(QRectF(rect()).adjusted(0, m_isTop ? radius : 0, 0, 0));
        painter.fillPath(shape.united(lower), ColorOf(m_ground, palette()));
    }

private:
    GlyphLabel *m_picture;
    TextLabel *m_title;
    TextLabel *m_note;
    LookColor m_ground = LookColor::Raised;
    bool m_isTop;
};

SummaryPage::SummaryPage(QWidget *parent) : QWidget(parent), banners(new BannerStack(this))
{
    auto *const area = new QScrollArea(this);
    area->setObjectName(u"areaQuote"_s);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    auto *const inside = new QWidget;
    // Shows the page's own background.
    area->setWidget(inside);
    inside->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);

    m_columns = new QBoxLayout(QBoxLayout::LeftToRight, inside);
    m_columns->setContentsMargins(0, 0, 0, 0);
    m_columns->setSpacing(LookSpace::Large);
    auto *const left = new QVBoxLayout;
    left->addWidget(makePoints());
    left->addStretch(1);
    auto *const right = new QVBoxLayout;
    right->setSpacing(LookSpace::Medium);
    right->addWidget(makeFigures());
    right->addWidget(makeTable(), 1);
    right->addWidget(m_note);
    m_columns->addLayout(left, 2);
    m_columns->addLayout(right, 3);

    auto *const page = new QVBoxLayout(this);
    page->setContentsMargins(LookSpace::Large, LookSpace::Large, LookSpace::Large, LookSpace::Large);
    page->setSpacing(LookSpace::Medium);
    page->addWidget(banners);
    page->addWidget(area, 1);
    nameColumns();
    adoptFont();
}

SummaryPage::~SummaryPage() = default;

/// The panel with the open points, and below them what is done.
Panel *SummaryPage::makePoints()
{
    auto *const panel = new Panel;
    auto *const column = new QVBoxLayout(panel);
    column->setContentsMargins(1, 1, 1, LookSpace::Grid);
    column->setSpacing(0);
    m_head = new Head(LookFont::Heading, true, panel);
    column->addWidget(m_head);
    pnlProblems = new QWidget(panel);
    pnlProblems->setObjectName(u"pnlProblems"_s);
    m_points = new QVBoxLayout(pnlProblems);
    m_points->setContentsMargins(0, 0, 0, 0);
    m_points->setSpacing(0);
    column->addWidget(pnlProblems);
    m_doneHead = new Head(LookFont::Strong, false, panel);
    column->addWidget(m_doneHead);
    m_client = addDone(*column);
    m_description = addDone(*column);
    m_details = addDone(*column);
    m_investment = addDone(*column);
    m_funds = addDone(*column);
    lblClientValue = m_client.value;
    lblDescriptionValue = m_description.value;
    lblDetails = m_details.value;
    return panel;
}

SummaryPage::DoneRow SummaryPage::addDone(QVBoxLayout &column)
{
    auto *const row = new QWidget;
    auto *const cells = new QHBoxLayout(row);
    cells->setContentsMargins(LookSpace::Medium, 6, LookSpace::Medium, 6);
    cells->setSpacing(LookSpace::Medium);
    auto *const picture = new GlyphLabel(pictureSize, row);
    picture->setGlyph(u"complete"_s, LookColor::OkText);
    cells->addWidget(picture, 0, Qt::AlignVCenter);
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(0);
    auto *const title = new TextLabel(LookFont::Body, LookColor::Text, row);
    auto *const value = new TextLabel(LookFont::Caption, LookColor::Text2, row);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    texts->addWidget(title);
    texts->addWidget(value);
    cells->addLayout(texts, 1);
    column.addWidget(row);
    return {row, title, value};
}

/// Shows a row of what is done; a blank value hides the row.
void SummaryPage::setDone(const DoneRow &done, const QString &title, const QString &value)
{
    done.title->setText(title);
    done.value->setText(wrappedText(value));
    done.row->setVisible(!value.isEmpty());
}

QWidget *SummaryPage::makeFigures()
{
    auto *const panel = new Panel;
    auto *const cells = new QHBoxLayout(panel);
    cells->setContentsMargins(LookSpace::Large, LookSpace::Medium, LookSpace::Large, LookSpace::Medium);
    cells->setSpacing(LookSpace::Large);
    const auto add = [&](TextLabel *&caption, TextLabel *&figure, TextLabel *below, int stretch) {
        auto *const column = new QVBoxLayout;
        column->setSpacing(0);
        caption = new TextLabel(LookFont::Caption, LookColor::Text2, panel);
        figure = new TextLabel(LookFont::Result, LookColor::Text, panel);
        column->addWidget(caption);
        column->addWidget(figure);
        if (below) {
            below->setParent(panel);
            below->setWordWrap(true);
            column->addWidget(below);
        }
        column->addStretch(1);
        cells->addLayout(column, stretch);
    };
    lblProductValue = new TextLabel(LookFont::Caption, LookColor::Text2);
    lblStateValue = new TextLabel(LookFont::Caption, LookColor::Text2);
    lblStateValue->setObjectName(u"lblStateValue"_s);
    add(m_investmentCaption, m_investmentFigure, lblProductValue, 4);
    add(m_placedCaption, m_placedFigure, lblStateValue, 4);
    add(m_countCaption, m_countFigure, nullptr, 1);

    m_note = new QWidget;
    auto *const note = new QHBoxLayout(m_note);
    note->setContentsMargins(0, 0, 0, 0);
    note->setSpacing(LookSpace::Small);
    auto *const picture = new GlyphLabel(pictureSize, m_note);
    picture->setGlyph(u"info"_s, LookColor::InfoText);
    m_noteText = new TextLabel(LookFont::Body, LookColor::Text, m_note);
    m_noteText->setWordWrap(true);
    note->addWidget(picture, 0, Qt::AlignTop);
    note->addWidget(m_noteText, 1);
    return panel;
}

Panel *SummaryPage::makeTable()
{
    auto *const panel = new Panel;
    auto *const cells = new QHBoxLayout(panel);
    cells->setContentsMargins(1, 1, LookSpace::Medium, 1);
    cells->setSpacing(LookSpace::Medium);
    tblFunds = new QTableWidget(0, 3, panel);
    tblFunds->setObjectName(u"tblFunds"_s);
    tblFunds->setFrameShape(QFrame::NoFrame);
    tblFunds->setMinimumHeight(roomForTable);
    tblFunds->setSelectionBehavior(QAbstractItemView::SelectRows);
    tblFunds->setTabKeyNavigation(false);
    tblFunds->setShowGrid(false);
    tblFunds->setIconSize({swatchSize, swatchSize});
    tblFunds->verticalHeader()->hide();
    tblFunds->horizontalHeader()->setHighlightSections(false);
    tblFunds->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    tblFunds->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    tblFunds->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    cells->addWidget(tblFunds, 1);
    chart = new SplitChart(panel);
    chart->setLegend(false);
    chart->setFixedWidth(chartRoom);
    cells->addWidget(chart);
    return panel;
}

void SummaryPage::nameColumns()
{
    tblFunds->setAccessibleName(tr("Split of the investment"));
    tblFunds->setHorizontalHeaderLabels({tr("Fund"), tr("Percent"), withCurrency(tr("Amount (R)"))});
    for (int column = 0; column < 3; ++column)
        tblFunds->horizontalHeaderItem(column)->setTextAlignment(
            (column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
}

void SummaryPage::show(const QuoteReport &report, const QList<OpenPoint> &points)
{
    m_report = report;
    m_open = points;
    showPoints(points);
    showDone(points);
    showFigures();
    showTable();
}

QString SummaryPage::placeText(OpenPoint::Place place)
{
    using Place = OpenPoint::Place;
    switch (place) {
    case Place::Investor:
        return tr("Above the pages");
    case Place::Details:
        return tr("Details");
    case Place::Income:
        return tr("Income");
    case Place::Amount:
    case Place::Split:
        return tr("Funds");
    }
    Q_UNREACHABLE();
}

QWidget *SummaryPage::pointRow(const OpenPoint &point)
{
    auto *const row = new QWidget(pnlProblems);
    auto *const cells = new QHBoxLayout(row);
    cells->setContentsMargins(LookSpace::Medium, LookSpace::Small, LookSpace::Medium, LookSpace::Small);
    cells->setSpacing(LookSpace::Medium);
    auto *const picture = new GlyphLabel(pictureSize, row);
    picture->setGlyph(u"warning"_s, LookColor::WarnText);
    cells->addWidget(picture, 0, Qt::AlignVCenter);
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(0);
    auto *const sentence = new TextLabel(LookFont::Strong, LookColor::Text, row);
    sentence->setObjectName(u"lblPoint"_s);
    sentence->setWordWrap(true);
    sentence->setText(wrappedText(point.sentence));
    auto *const place = new TextLabel(LookFont::Caption, LookColor::Text2, row);
    place->setText(placeText(point.place));
    texts->addWidget(sentence);
    texts->addWidget(place);
    cells->addLayout(texts, 1);
    auto *const go =
        new QPushButton(point.place == OpenPoint::Place::Split ? tr("Place it") : tr("Go to the field"), row);
    go->setObjectName(u"btnGo"_s);
    go->setAutoDefault(false);
    go->setAccessibleName(tr("%1: %2").arg(go->text(), shortText(point.sentence)));
    setSmall(*go);
    cells->addWidget(go);
    connect(go, &QPushButton::clicked, this, [this, point] { Q_EMIT goWanted(point); });
    return row;
}

void SummaryPage::showPoints(const QList<OpenPoint> &points)
{
    while (QLayoutItem *const item = m_points->takeAt(0)) {
        // At once, so that no text of the former language is left. No row is replaced while its button works:
        // the button leads away from this page.
        delete item->widget();
        delete item;
    }
    QWidget *former = nullptr;
    for (const OpenPoint &point : points) {
        if (former)
            m_points->addWidget(new Separator(pnlProblems));
        QWidget *const row = pointRow(point);
        m_points->addWidget(row);
        row->show(); // at once, so that the focus can go there
        former = row;
    }
    QList<QWidget *> buttons;
    for (auto *const go : pnlProblems->findChildren<QPushButton *>(u"btnGo"_s)) {
        if (!go->parentWidget()->isHidden())
            buttons.append(go);
    }
    putBefore(*tblFunds, buttons);
    pnlProblems->setVisible(!points.isEmpty());
    if (points.isEmpty()) {
        m_head->set(LookColor::OkGround, tr("Ready for the client"));
        m_head->setPicture(u"complete"_s, LookColor::OkText);
    } else {
        m_head->set(LookColor::WarnGround,
                    tr("Still to be completed (%n)", nullptr, static_cast<int>(points.size())),
                    tr("F8 goes to the next"));
        m_head->setPicture(u"warning"_s, LookColor::WarnText);
    }
    m_noteText->setText(tr("Until all points are done, the PDF carries the mark \"Draft\"."));
    m_note->setVisible(!points.isEmpty());
}

void SummaryPage::showDone(const QList<OpenPoint> &points)
{
    using Place = OpenPoint::Place;
    const auto isOpen = [&points](Place place) {
        return std::any_of(points.cbegin(), points.cend(),
                           [place](const OpenPoint &point) { return point.place == place; });
    };
    const ShownSplit &split = m_report->split;
    setDone(m_client, tr("Investor"), m_report->client);
    setDone(m_description, tr("Description"), m_report->description);
    QStringList lines;
    if (!isOpen(Place::Details) && !isOpen(Place::Income)) {
        for (const auto &[caption, value] : m_report->details)
            lines.append(tr("%1: %2").arg(caption, value));
    }
    setDone(m_details, tr("Details"), lines.join(u'\n'));
    setDone(m_investment, tr("Investment"),
            isOpen(Place::Amount) ? QString() : shownAmount(split.investment));
    setDone(m_funds, tr("Funds"),
            split.isAllocated()
                ? tr("%n fund(s), fully allocated", nullptr, static_cast<int>(split.fundCount))
                : QString());
    const DoneRow rows[] = {m_client, m_description, m_details, m_investment, m_funds};
    const bool hasDone = std::any_of(std::begin(rows), std::end(rows),
                                     [](const DoneRow &done) { return !done.row->isHidden(); });
    m_doneHead->set(LookColor::Raised, tr("Done"));
    m_doneHead->setVisible(hasDone);
}

void SummaryPage::showFigures()
{
    const ShownSplit &split = m_report->split;
    m_investmentCaption->setText(tr("Investment"));
    m_investmentFigure->setText(shownAmount(split.investment));
    lblProductValue->setText(wrappedText(m_report->product));
    m_placedCaption->setText(split.isOver() ? tr("Too much") : tr("Allocated"));
    // An excess can be near the end of the range, so 100 is not added to it.
    const auto placed = [&split] {
        if (split.isEmpty())
            return percent(Currency());
        return split.isOver() ? u'+' + percent(-split.restPercent)
                              : percent(Currency(100) - split.restPercent);
    };
    m_placedFigure->setText(tr("%1%").arg(placed()));
    lblStateValue->setText(m_report->stateText());
    lblStateValue->setLookColor(split.isOver()        ? LookColor::ErrorText
                                : m_report->isDraft() ? LookColor::WarnText
                                                      : LookColor::OkText);
    m_countCaption->setText(tr("Funds"));
    m_countFigure->setText(QString::number(split.fundCount));
}

void SummaryPage::showTable()
{
    const ShownSplit &split = m_report->split;
    const bool isDark = IsDark(palette());
    tblFunds->setRowCount(0);
    QStringList names;
    for (const ShownSplit::Fund &fund : split.funds) {
        names.append(fund.name);
        addRow(m_report->fundText(fund), percent(fund.percent), money(fund.amount));
        const auto place = std::min<qsizetype>(names.size() - 1, FundColorCount);
        tblFunds->item(tblFunds->rowCount() - 1, 0)
            ->setData(Qt::DecorationRole, FundColor(static_cast<int>(place), isDark));
    }
    const auto paint = [this](LookColor color) {
        for (int column = 0; column < 3; ++column)
            tblFunds->item(tblFunds->rowCount() - 1, column)->setForeground(ColorOf(color, palette()));
    };
    if (!m_report->restText().isEmpty()) {
        addRow(m_report->restText(), percent(split.restPercent), money(split.restAmount));
        paint(split.isOver() ? LookColor::ErrorText : LookColor::WarnText);
    }
    addRow(tr("Total"), percent(100), money(split.investment));
    const QFont strong = FontOf(LookFont::Strong, tblFunds->font());
    for (int column = 0; column < 3; ++column)
        tblFunds->item(tblFunds->rowCount() - 1, column)->setFont(strong);
    chart->show(split, split.funds, names);
}

void SummaryPage::showDescription(const QString &description)
{
    if (!m_report)
        return;
    m_report->description = description;
    setDone(m_description, tr("Description"), description);
}

void SummaryPage::say(const QString &text)
{
    banners->showBanner({BannerKind::Ok, wrappedText(text), {}, {}, saidTopic});
}

void SummaryPage::addRow(const QString &name, const QString &percentText, const QString &amount)
{
    const int row = tblFunds->rowCount();
    tblFunds->insertRow(row);
    const QString texts[] = {name, percentText, amount};
    for (int column = 0; column < 3; ++column) {
        auto *const item = new QTableWidgetItem(shortText(texts[column], 300));
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        item->setToolTip(tipText(texts[column]));
        if (column > 0)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (column == 2)
            item->setFont(FontOf(LookFont::Strong, tblFunds->font()));
        tblFunds->setItem(row, column, item);
    }
}

void SummaryPage::adoptFont()
{
    const QFontMetrics metrics = fontMetrics();
    tblFunds->verticalHeader()->setDefaultSectionSize(HeightOf(LookHeight::Row, metrics));
    tblFunds->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    // A header view has its own font, which may differ from the page's.
    tblFunds->horizontalHeader()->setFont(tblFunds->font());
    arrange();
}

void SummaryPage::arrange()
{
    chart->setVisible(width() >= widePage);
    m_columns->setDirection(width() < oneColumn ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void SummaryPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void SummaryPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        adoptFont();
    if (event->type() == QEvent::LanguageChange)
        nameColumns(); // the form shows the quote again
    if (event->type() == QEvent::PaletteChange && m_report)
        showTable();
}

} // namespace QuoteDesk

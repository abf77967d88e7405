#include "desk/SideBar.h"

#include "look/GlyphLabel.h"
#include "quote/PlainText.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

// Lengths for besideFont.
constexpr int barWidth = 192;
constexpr int railWidth = 52;
constexpr int pictureEdge = 18;
constexpr int discEdge = 30;
constexpr int crossEdge = 14;
constexpr int dotEdge = 7;
constexpr int stripWidth = 3;

QColor sideColor(LookColor color)
{
    return ColorOf(color, QApplication::palette());
}

QRect centred(const QRect &rect, int edge)
{
    return {rect.center().x() - (edge - 1) / 2, rect.center().y() - (edge - 1) / 2, edge, edge};
}

/// The ring round what the keyboard is on. The ring of the other windows' parts has too little contrast here.
void paintRing(QPainter &painter, const QRect &rect)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(sideColor(LookColor::SideStrip), LookSpace::Ring));
    painter.drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), LookSpace::ControlRadius,
                            LookSpace::ControlRadius);
}

/// Two letters for a disc: of the surname's first and last word, or of surname and first name.
QString initialsOf(const QString &client)
{
    const QStringList names = client.split(u',');
    QStringList words = names.constFirst().split(u' ', Qt::SkipEmptyParts);
    if (words.size() < 2 && names.size() > 1)
        words += names.at(1).split(u' ', Qt::SkipEmptyParts).mid(0, 1);
    if (words.isEmpty())
        return {};
    QString initials = words.constFirst().left(1);
    return words.size() > 1 ? initials + words.constLast().left(1) : initials;
}

void openPainter(QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
}

void paintText(QPainter &painter, const QRect &rect, const QString &text, const QFont &font,
               const QColor &color, Qt::Alignment alignment = Qt::AlignLeading)
{
    painter.setFont(font);
    painter.setPen(color);
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, rect.width());
    painter.drawText(rect, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
    painter.setPen(Qt::NoPen);
}

} // namespace

// --- the rows

SideModel::SideModel(QObject *parent) : QAbstractListModel(parent) {}

SideModel::~SideModel() = default;

int SideModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    const qsizetype captions = m_quotes.isEmpty() ? 0 : 1;
    return static_cast<int>(m_places.size() + captions + m_quotes.size());
}

SideModel::Kind SideModel::kindOf(int row) const
{
    if (row < m_places.size())
        return Kind::Place;
    return row == m_places.size() ? Kind::Caption : Kind::Quote;
}

int SideModel::pageOf(int row) const
{
    if (row < 0 || row >= rowCount())
        return -1;
    const Kind kind = kindOf(row);
    return kind == Kind::Caption ? -1 : kind == Kind::Place ? row : row - 1;
}

int SideModel::rowOf(int page) const
{
    return page < m_places.size() ? page : page + 1;
}

void SideModel::setPlaces(const QList<SidePlace> &places)
{
    if (places == m_places)
        return;
    const bool same = places.size() == m_places.size();
    if (!same)
        beginResetModel();
    m_places = places;
    if (!same)
        endResetModel();
    else
        Q_EMIT dataChanged(index(0), index(static_cast<int>(m_places.size()) - 1));
}

void SideModel::setQuotes(const QList<SideQuote> &quotes)
{
    if (quotes == m_quotes)
        return;
    const bool same = quotes.size() == m_quotes.size();
    if (!same)
        beginResetModel();
    m_quotes = quotes;
    if (!same)
        endResetModel();
    else
        Q_EMIT dataChanged(index(static_cast<int>(m_places.size())), index(rowCount() - 1));
}

QVariant SideModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    if (role == KindRole)
        return static_cast<int>(kindOf(index.row()));
    switch (kindOf(index.row())) {
    case Kind::Place:
        if (role == Qt::ToolTipRole)
            return tipText(
                u"%1 (%2)"_s.arg(m_places.at(index.row()).title,
                                 QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + index.row()))
                                     .toString(QKeySequence::NativeText)));
        return dataOfPlace(m_places.at(index.row()), role);
    case Kind::Caption:
        return role == Qt::DisplayRole ? tr("Open quotes") : QVariant();
    case Kind::Quote:
        return dataOfQuote(m_quotes.at(index.row() - m_places.size() - 1), role);
    }
    return {};
}

QVariant SideModel::dataOfPlace(const SidePlace &place, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return place.title;
    case Qt::AccessibleTextRole:
        return place.count < 0 ? place.title : u"%1, %2"_s.arg(place.title, QLocale().toString(place.count));
    case CountRole:
        return place.count;
    case PictureRole:
        return place.picture;
    default:
        return {};
    }
}

QVariant SideModel::dataOfQuote(const SideQuote &quote, int role) const
{
    const auto words = [&quote](const QString &between) {
        QStringList parts{quote.client, quote.title};
        if (quote.isModified)
            parts.append(tr("not saved"));
        parts.removeAll(QString());
        return parts.join(between);
    };
    switch (role) {
    case Qt::DisplayRole:
        return quote.client;
    case Qt::AccessibleTextRole:
        return words(u", "_s);
    case Qt::ToolTipRole:
        return tipText(words(u"\n"_s));
    case SecondLineRole:
        return quote.title;
    case ModifiedRole:
        return quote.isModified;
    default:
        return {};
    }
}

Qt::ItemFlags SideModel::flags(const QModelIndex &index) const
{
    return kindOf(index.row()) == Kind::Caption ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

// --- a row

class SideBar::Delegate : public QStyledItemDelegate
{
public:
    explicit Delegate(const SideBar &bar, QObject *parent) : QStyledItemDelegate(parent), m_bar(bar) {}

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

    QPersistentModelIndex hovered; ///< the row under the pointer
    bool onCross = false;          ///< whether the pointer is on that row's cross

private:
    void paintCaption(QPainter &painter, const QRect &rect, const QString &text) const;
    void paintPlace(QPainter &painter, const QRect &rect, const QModelIndex &index, bool chosen) const;
    void paintQuote(QPainter &painter, const QRect &rect, const QModelIndex &index, bool chosen) const;
    void paintDisc(QPainter &painter, const QRect &rect, const QModelIndex &index, bool chosen) const;
    void paintCross(QPainter &painter, const QModelIndex &index) const;

    const SideBar &m_bar;
};

QSize SideBar::Delegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const QFont body = m_bar.font();
    const int line = QFontMetrics(body).height();
    const int caption = QFontMetrics(FontOf(LookFont::Caption, body)).height();
    switch (m_bar.model().kindOf(index.row())) {
    case SideModel::Kind::Place:
        return {0, m_bar.isRail() ? line + 20 : HeightOf(LookHeight::Row, m_bar.fontMetrics())};
    case SideModel::Kind::Caption:
        return {0, m_bar.isRail() ? 2 * LookSpace::Small + 1 : caption + LookSpace::Large + LookSpace::Grid};
    case SideModel::Kind::Quote:
        return {0, m_bar.isRail() ? besideFont(discEdge, m_bar.fontMetrics()) + LookSpace::Small
                                  : line + caption + LookSpace::Small};
    }
    return {};
}

void SideBar::Delegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    const SideModel::Kind kind = m_bar.model().kindOf(index.row());
    const bool chosen = option.state.testFlag(QStyle::State_Selected);
    const bool disc = kind == SideModel::Kind::Quote && m_bar.isRail();
    painter->save();
    openPainter(*painter);
    if (kind != SideModel::Kind::Caption && (chosen || index == hovered) && !(disc && chosen)) {
        painter->setBrush(sideColor(LookColor::SideChosen));
        painter->setOpacity(chosen ? 1 : 0.55);
        painter->drawRoundedRect(option.rect, LookSpace::ControlRadius, LookSpace::ControlRadius);
        painter->setOpacity(1);
    }
    if (chosen && !disc) {
        painter->setBrush(sideColor(LookColor::SideStrip));
        const QRect strip =
            QStyle::visualRect(option.direction, option.rect,
                               QRect(option.rect.left(), option.rect.top() + LookSpace::Small, stripWidth,
                                     option.rect.height() - 2 * LookSpace::Small));
        painter->drawRoundedRect(strip, 1.5, 1.5);
    }
    if (kind == SideModel::Kind::Caption)
        paintCaption(*painter, option.rect, index.data().toString());
    else if (kind == SideModel::Kind::Place)
        paintPlace(*painter, option.rect, index, chosen);
    else if (disc)
        paintDisc(*painter, option.rect, index, chosen);
    else
        paintQuote(*painter, option.rect, index, chosen);
    if (option.state.testFlag(QStyle::State_HasFocus) && m_bar.lvPages->hasFocus())
        paintRing(*painter, option.rect);
    painter->restore();
}

void SideBar::Delegate::paintCaption(QPainter &painter, const QRect &rect, const QString &text) const
{
    if (m_bar.isRail()) {
        painter.fillRect(
            rect.adjusted(LookSpace::Small, LookSpace::Small, -LookSpace::Small, -LookSpace::Small),
            sideColor(LookColor::SideChosen));
        return;
    }
    QFont font = FontOf(LookFont::Caption, m_bar.font());
    font.setWeight(QFont::DemiBold);
    paintText(painter, rect.adjusted(LookSpace::Medium, LookSpace::Medium, -LookSpace::Medium, 0), text, font,
              sideColor(LookColor::SideText2));
}

void SideBar::Delegate::paintPlace(QPainter &painter, const QRect &rect, const QModelIndex &index,
                                   bool chosen) const
{
    const int edge = besideFont(pictureEdge, m_bar.fontMetrics());
    const QColor color = sideColor(LookColor::SideText);
    const QString picture = index.data(SideModel::PictureRole).toString();
    if (m_bar.isRail()) {
        PaintGlyph(painter, centred(rect, edge), picture, color);
        return;
    }
    const Qt::LayoutDirection direction = m_bar.layoutDirection();
    const QRect inner = rect.adjusted(LookSpace::Medium, 0, -LookSpace::Medium, 0);
    PaintGlyph(painter,
               QStyle::alignedRect(direction, Qt::AlignLeading | Qt::AlignVCenter, {edge, edge}, inner),
               picture, color);
    const int count = index.data(SideModel::CountRole).toInt();
    const QFont small = FontOf(LookFont::Caption, m_bar.font());
    const QString number = count < 0 ? QString() : QLocale().toString(count);
    const int numberWidth = number.isEmpty() ? 0 : QFontMetrics(small).horizontalAdvance(number) + 1;
    const QRect text = inner.adjusted(edge + 10, 0, -(numberWidth + LookSpace::Small), 0);
    paintText(painter, QStyle::visualRect(direction, inner, text), index.data().toString(),
              FontOf(chosen ? LookFont::Strong : LookFont::Body, m_bar.font()), color);
    if (numberWidth > 0)
        paintText(painter, inner, number, small, sideColor(LookColor::SideText2), Qt::AlignTrailing);
}

void SideBar::Delegate::paintQuote(QPainter &painter, const QRect &rect, const QModelIndex &index, bool) const
{
    const Qt::LayoutDirection direction = m_bar.layoutDirection();
    const int dot = index.data(SideModel::ModifiedRole).toBool() ? dotEdge : 0;
    const int end = besideFont(crossEdge, m_bar.fontMetrics()) + 2 * LookSpace::Small;
    const QRect inner = rect.adjusted(LookSpace::Medium, LookSpace::Grid, 0, -LookSpace::Grid);
    QRect text = inner.adjusted(0, 0, -(end + (dot > 0 ? dot + LookSpace::Small : 0)), 0);
    const QFont strong = FontOf(LookFont::Strong, m_bar.font());
    const QFont caption = FontOf(LookFont::Caption, m_bar.font());
    text = QStyle::visualRect(direction, inner, text);
    const int first = QFontMetrics(strong).height();
    paintText(painter, QRect(text.left(), text.top(), text.width(), first), index.data().toString(), strong,
              sideColor(LookColor::SideText));
    paintText(painter, QRect(text.left(), text.top() + first, text.width(), text.height() - first),
              index.data(SideModel::SecondLineRole).toString(), caption, sideColor(LookColor::SideText2));
    if (dot > 0) {
        painter.setBrush(sideColor(LookColor::Unsaved));
        const QRect place(inner.right() - end - dot + 1, inner.center().y() - dot / 2, dot, dot);
        painter.drawEllipse(QStyle::visualRect(direction, inner, place));
    }
    paintCross(painter, index);
}

void SideBar::Delegate::paintCross(QPainter &painter, const QModelIndex &index) const
{
    const QRect place = m_bar.closeRect(index);
    if (onCross && index == hovered) {
        painter.setBrush(sideColor(LookColor::Side));
        painter.drawRoundedRect(place, LookSpace::ControlRadius, LookSpace::ControlRadius);
    }
    PaintGlyph(painter, centred(place, besideFont(crossEdge, m_bar.fontMetrics())), u"close"_s,
               sideColor(LookColor::SideText));
}

void SideBar::Delegate::paintDisc(QPainter &painter, const QRect &rect, const QModelIndex &index,
                                  bool chosen) const
{
    const QRect disc = centred(rect, besideFont(discEdge, m_bar.fontMetrics()));
    painter.setBrush(sideColor(chosen ? LookColor::SideButton : LookColor::SideChosen));
    painter.drawEllipse(disc);
    QFont font = FontOf(LookFont::Caption, m_bar.font());
    font.setWeight(QFont::DemiBold);
    paintText(painter, disc, initialsOf(index.data().toString()), font,
              sideColor(chosen ? LookColor::OnSideButton : LookColor::SideText), Qt::AlignHCenter);
    if (!index.data(SideModel::ModifiedRole).toBool())
        return;
    painter.setPen(QPen(sideColor(LookColor::Side), 1.5));
    painter.setBrush(sideColor(LookColor::Unsaved));
    QRect dot(0, 0, dotEdge + 3, dotEdge + 3);
    dot.moveTopRight(disc.topRight() + QPoint(1, -1));
    painter.drawEllipse(QStyle::visualRect(m_bar.layoutDirection(), disc, dot));
}

// --- a command

class SideBar::Button : public QToolButton
{
public:
    Button(QAction *action, bool filled, SideBar &bar) : QToolButton(&bar), m_bar(bar), m_filled(filled)
    {
        setDefaultAction(action);
        // Focus by Tab only, so that a click leaves the focus in the edited field.
        setFocusPolicy(Qt::TabFocus);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        setAttribute(Qt::WA_Hover);
    }

    QSize sizeHint() const override
    {
        const QFontMetrics metrics(FontOf(m_filled ? LookFont::Strong : LookFont::Body, font()));
        const int height = metrics.height() + (m_filled ? 18 : 16) + (m_bar.isRail() ? LookSpace::Grid : 0);
        const int keys = keysWidth();
        return {2 * LookSpace::Medium + besideFont(pictureEdge, fontMetrics()) + 10 +
                    metrics.horizontalAdvance(caption()) + (keys > 0 ? keys + LookSpace::Small : 0),
                height};
    }
    QSize minimumSizeHint() const override
    {
        return {besideFont(pictureEdge, fontMetrics()), sizeHint().height()};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        openPainter(painter);
        paintGround(painter);
        const QColor color = sideColor(!isEnabled() ? LookColor::SideText2
                                       : m_filled   ? LookColor::OnSideButton
                                                    : LookColor::SideText);
        const QString picture = defaultAction()->icon().name();
        const int edge = besideFont(pictureEdge, fontMetrics());
        if (m_bar.isRail()) {
            PaintGlyph(painter, centred(rect(), edge), picture, color);
        } else {
            const QRect inner = rect().adjusted(LookSpace::Medium, 0, -LookSpace::Medium, 0);
            PaintGlyph(painter,
                       QStyle::alignedRect(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter,
                                           {edge, edge}, inner),
                       picture, color);
            const int keys = keysWidth();
            const QRect text =
                inner.adjusted(edge + (m_filled ? 8 : 10), 0, keys > 0 ? -(keys + LookSpace::Small) : 0, 0);
            paintText(painter, QStyle::visualRect(layoutDirection(), inner, text), caption(),
                      FontOf(m_filled ? LookFont::Strong : LookFont::Body, font()), color);
            if (keys > 0)
                paintText(painter, inner, keysText(), FontOf(LookFont::Caption, font()), color,
                          Qt::AlignTrailing);
        }
        if (hasFocus()) {
            QRect ring = rect();
            // The ring has the colour of the filled button, so it stands inside, in the colour of the text.
            if (m_filled) {
                painter.setPen(QPen(color, LookSpace::Ring));
                painter.setBrush(Qt::NoBrush);
                painter.drawRoundedRect(QRectF(ring).adjusted(2, 2, -2, -2), LookSpace::ControlRadius,
                                        LookSpace::ControlRadius);
            } else {
                paintRing(painter, ring);
            }
        }
    }

private:
    QString caption() const { return defaultAction() ? defaultAction()->iconText() : QString(); }
    QString keysText() const
    {
        return m_filled ? defaultAction()->shortcut().toString(QKeySequence::NativeText) : QString();
    }
    int keysWidth() const
    {
        const QString text = keysText();
        return text.isEmpty() ? 0
                              : QFontMetrics(FontOf(LookFont::Caption, font())).horizontalAdvance(text) + 1;
    }
    void paintGround(QPainter &painter) const
    {
        if (m_filled) {
            QColor ground = sideColor(LookColor::SideButton);
            if (isDown())
                ground = ground.darker(115);
            else if (underMouse())
                ground = ground.darker(107);
            painter.setBrush(ground);
            painter.drawRoundedRect(rect(), LookSpace::ControlRadius, LookSpace::ControlRadius);
        } else if (underMouse() && isEnabled()) {
            painter.setBrush(sideColor(LookColor::SideChosen));
            painter.drawRoundedRect(rect(), LookSpace::ControlRadius, LookSpace::ControlRadius);
        }
        painter.setPen(Qt::NoPen);
    }

    const SideBar &m_bar;
    bool m_filled;
};

// --- the bar

SideBar::SideBar(QAction *begin, QWidget *parent)
    : QWidget(parent), lvPages(new QListView), m_model(new SideModel(this)),
      m_delegate(new Delegate(*this, this)), m_begin(new Button(begin, true, *this)), m_foot(new QVBoxLayout)
{
    auto *const layout = new QVBoxLayout(this);
    layout->setSpacing(LookSpace::Medium);
    layout->addWidget(m_begin);
    layout->addWidget(lvPages, 1);
    layout->addLayout(m_foot);
    m_foot->setSpacing(0);
    m_begin->setObjectName(u"btnNew"_s);
    lvPages->setObjectName(u"lvPages"_s);
    lvPages->setModel(m_model);
    lvPages->setItemDelegate(m_delegate);
    lvPages->setFrameShape(QFrame::NoFrame);
    lvPages->viewport()->setAutoFillBackground(false);
    lvPages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lvPages->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    lvPages->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lvPages->setMinimumHeight(0);
    // A click leaves the focus in the edited field.
    lvPages->setFocusPolicy(Qt::TabFocus);
    lvPages->setMouseTracking(true);
    lvPages->installEventFilter(this);
    lvPages->viewport()->installEventFilter(this);
    connect(lvPages->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &now) {
                if (const int page = m_model->pageOf(now.row()); page >= 0 && !m_isSetting)
                    Q_EMIT pageWanted(page);
            });
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    retext();
    arrange();
}

SideBar::~SideBar() = default;

void SideBar::addCommand(QAction *action)
{
    auto *const button = new Button(action, false, *this);
    button->setObjectName(u"btn"_s + action->objectName().mid(3));
    m_foot->addWidget(button);
    m_buttons.append(button);
    updateGeometry();
}

void SideBar::setPlaces(const QList<SidePlace> &places)
{
    const int page = currentPage();
    m_model->setPlaces(places);
    setCurrentPage(page);
}

void SideBar::setQuotes(const QList<SideQuote> &quotes)
{
    const int page = currentPage();
    m_model->setQuotes(quotes);
    setCurrentPage(page);
}

int SideBar::currentPage() const
{
    return m_model->pageOf(lvPages->currentIndex().row());
}

void SideBar::setCurrentPage(int page)
{
    if (page == currentPage())
        return;
    const bool before = std::exchange(m_isSetting, true);
    lvPages->setCurrentIndex(page < 0 ? QModelIndex() : m_model->index(m_model->rowOf(page)));
    m_isSetting = before;
}

void SideBar::setRail(bool rail)
{
    if (rail == m_isRail)
        return;
    m_isRail = rail;
    arrange();
}

void SideBar::arrange()
{
    const int side = m_isRail ? 6 : LookSpace::Small;
    const int above = m_isRail ? LookSpace::Small : LookSpace::Medium;
    layout()->setContentsMargins(side, above, side, LookSpace::Small);
    layout()->setSpacing(m_isRail ? LookSpace::Small : LookSpace::Medium);
    lvPages->doItemsLayout();
    m_begin->updateGeometry();
    for (Button *const button : std::as_const(m_buttons))
        button->updateGeometry();
    updateGeometry();
    update();
}

QSize SideBar::sizeHint() const
{
    int width = besideFont(m_isRail ? railWidth : barWidth, fontMetrics());
    if (!m_isRail) {
        // No caption is cut, in no language.
        width = std::max(width, m_begin->sizeHint().width() + 2 * LookSpace::Small);
        for (const Button *const button : m_buttons)
            width = std::max(width, button->sizeHint().width() + 2 * LookSpace::Small);
    }
    return {width, 300};
}

QSize SideBar::minimumSizeHint() const
{
    return {sizeHint().width(), layout()->minimumSize().height()};
}

QRect SideBar::closeRect(const QModelIndex &index) const
{
    if (m_isRail || !index.isValid() || m_model->kindOf(index.row()) != SideModel::Kind::Quote)
        return {};
    const QRect row = lvPages->visualRect(index);
    const int edge = besideFont(crossEdge, fontMetrics()) + LookSpace::Small;
    const QRect place(row.right() + 1 - edge - LookSpace::Grid, row.center().y() - edge / 2, edge, edge);
    return QStyle::visualRect(layoutDirection(), row, place);
}

int SideBar::quoteAt(const QModelIndex &index) const
{
    if (!index.isValid() || m_model->kindOf(index.row()) != SideModel::Kind::Quote)
        return -1;
    return m_model->pageOf(index.row()) - static_cast<int>(m_model->places().size());
}

void SideBar::retext()
{
    lvPages->setAccessibleName(tr("Places and open quotes"));
    setAccessibleName(tr("Side bar"));
}

void SideBar::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), sideColor(LookColor::Side));
}

void SideBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retext();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::LanguageChange)
        arrange();
}

bool SideBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lvPages->viewport())
        return pointerEvent(event) || QWidget::eventFilter(watched, event);
    if (watched == lvPages && event->type() == QEvent::KeyPress)
        return keyEvent(*static_cast<QKeyEvent *>(event)) || QWidget::eventFilter(watched, event);
    return QWidget::eventFilter(watched, event);
}

bool SideBar::pointerEvent(QEvent *event)
{
    const auto rowAt = [this](const QPoint &place) { return lvPages->indexAt(place); };
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::Leave: {
        const QPoint place = event->type() == QEvent::Leave
                                 ? QPoint(-1, -1)
                                 : static_cast<QMouseEvent *>(event)->position().toPoint();
        const QModelIndex index = rowAt(place);
        const bool onCross = closeRect(index).contains(place);
        if (index != m_delegate->hovered || onCross != m_delegate->onCross) {
            m_delegate->hovered = index;
            m_delegate->onCross = onCross;
            lvPages->viewport()->update();
        }
        return false;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto *const mouse = static_cast<QMouseEvent *>(event);
        const QPoint place = mouse->position().toPoint();
        // Only the left button chooses a row, and not on a cross.
        return mouse->button() != Qt::LeftButton || closeRect(rowAt(place)).contains(place);
    }
    case QEvent::MouseButtonRelease: {
        const auto *const mouse = static_cast<QMouseEvent *>(event);
        const QPoint place = mouse->position().toPoint();
        const QModelIndex index = rowAt(place);
        const int quote = quoteAt(index);
        const bool closes = mouse->button() == Qt::MiddleButton ||
                            (mouse->button() == Qt::LeftButton && closeRect(index).contains(place));
        if (quote < 0 || !closes)
            return false;
        Q_EMIT closeWanted(quote);
        return true;
    }
    case QEvent::ContextMenu: {
        const auto *const menu = static_cast<QContextMenuEvent *>(event);
        const QModelIndex index =
            menu->reason() == QContextMenuEvent::Mouse ? rowAt(menu->pos()) : lvPages->currentIndex();
        showMenu(menu->globalPos(), index);
        return true;
    }
    default:
        return false;
    }
}

bool SideBar::keyEvent(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        Q_EMIT leftForPage();
        return true;
    case Qt::Key_Delete:
        if (const int quote = quoteAt(lvPages->currentIndex()); quote >= 0)
            Q_EMIT closeWanted(quote);
        return true;
    default:
        return false;
    }
}

void SideBar::showMenu(const QPoint &place, const QModelIndex &index)
{
    const int quote = quoteAt(index);
    if (quote < 0)
        return;
    auto *const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *const close = menu->addAction(tr("&Close Quote"));
    connect(close, &QAction::triggered, this, [this, quote] { Q_EMIT closeWanted(quote); });
    QAction *const others = menu->addAction(tr("Close &Other Quotes"));
    others->setEnabled(m_model->quotes().size() > 1);
    connect(others, &QAction::triggered, this, [this, quote] { Q_EMIT closeOthersWanted(quote); });
    menu->popup(place);
}

} // namespace QuoteDesk

#include "funds/AllocationLook_p.h"

#include "data/Format.h"
#include "funds/AllocationMath.h"
#include "funds/AllocationRemainder.h"
#include "funds/FundColumn_p.h"
#include "funds/SplitBar_p.h"
#include "funds/fra_FundAllocation.h"
#include "toolkit/Glyphs.h"
#include "toolkit/LookChanges.h"
#include "toolkit/LookFonts_p.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

using namespace Zel::Allocation;
using Frame = TfraFundAllocation;

constexpr int iconSize = 16;
constexpr int oneLineFrom = 640; ///< the width from which caption and commands share a line

} // namespace

namespace Zel
{

AllocationLook::AllocationLook(TfraFundAllocation &frame) : QObject(&frame), m_frame(frame)
{
    for (QWidget *const widget :
         {static_cast<QWidget *>(&frame), static_cast<QWidget *>(frame.pnlAllocationStatus),
          static_cast<QWidget *>(frame.pnlRemainAmount), static_cast<QWidget *>(frame.pnlAmount)})
        widget->installEventFilter(this);
    connect(&frame, &TfraFundAllocation::AllocationChanged, this, [this] { refresh(); });
    connect(&frame, &TfraFundAllocation::RemainingChanged, this, [this] { refresh(); });
    for (const TPanel *panel : {frame.pnlRemainAmount, frame.pnlAmount, frame.pnlHeaderCaption})
        connect(panel, &TPanel::captionChanged, this, [this] {
            if (m_applied && CurrentLook() == Look::Application)
                fitStatus();
        });
    follow();
}

AllocationLook::~AllocationLook() = default;

void AllocationLook::ShowRemainder(Currency amount, Currency percent)
{
    m_ofHost = Remainder{amount, percent};
    refresh();
}

void AllocationLook::follow()
{
    const bool wanted = CurrentLook() == Look::Application;
    if (wanted && !m_applied)
        enter();
    else if (!wanted && m_applied)
        leave();
    if (m_applied)
        fit();
}

void AllocationLook::enter()
{
    m_top = new QBoxLayout(QBoxLayout::LeftToRight);
    m_top->setSpacing(0);
    for (QWidget *const part : {m_frame.Panel3, m_frame.pnlToolBar}) {
        m_frame.layFrame->removeWidget(part);
        m_top->addWidget(part);
    }
    m_frame.layFrame->insertLayout(0, m_top);
    LookChanges::Of(m_frame.layFrame).Set("contentsMargins", QVariant::fromValue(QMargins(1, 1, 1, 1)));
    LookChanges::Of(m_frame.FundGrid).Set("frameShape", QFrame::NoFrame);
    LookChanges::Of(m_frame.fraFundToolBar).Set("maximumWidth", QWIDGETSIZE_MAX);
    for (QWidget *const panel : {m_frame.pnlRemainAmount, m_frame.pnlAmount, m_frame.pnlHeaderCaption})
        panel->setProperty(DrawnByOwner, true);

    auto *const names = new FundColumn(m_frame.FundGrid, this);
    names->setObjectName("FundColumn"_L1);
    m_frame.FundGrid->setItemDelegateForColumn(Frame::PictureColumn - 1, names);
    m_frame.FundGrid->setItemDelegateForColumn(Frame::FundColumn - 1, names);

    m_bar = new SplitBar(m_frame.pnlAllocationStatus);
    m_bar->setObjectName("splitBar"_L1);
    m_sentence = new QLabel(m_frame.pnlAllocationStatus);
    m_sentence->setObjectName("lblRest"_L1);
    m_sentence->setTextFormat(Qt::PlainText);
    // The first to go where there is little room.
    m_sentence->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_frame.layStatus->insertWidget(1, m_sentence, 1);
    m_applied = true;
    m_bar->show(); // which lays the frame out
    refresh();
}

void AllocationLook::leave()
{
    m_applied = false;
    m_captions = true;
    for (QWidget *const panel : {m_frame.pnlRemainAmount, m_frame.pnlAmount, m_frame.pnlHeaderCaption})
        panel->setProperty(DrawnByOwner, QVariant());
    delete m_sentence;
    delete m_bar;
    TtsGrid &grid = *m_frame.FundGrid;
    for (const int column : {Frame::PictureColumn, Frame::FundColumn}) {
        QAbstractItemDelegate *const own = grid.itemDelegateForColumn(column - 1);
        grid.setItemDelegateForColumn(column - 1, nullptr);
        if (column == Frame::FundColumn)
            delete own;
    }
    int place = 0;
    for (QWidget *const part : {m_frame.Panel3, m_frame.pnlToolBar}) {
        m_top->removeWidget(part);
        m_frame.layFrame->insertWidget(place++, part);
    }
    m_frame.layFrame->removeItem(m_top);
    delete m_top;
    for (QObject *const changed : QObjectList{m_frame.layFrame, m_frame.layStatus, m_frame.pnlRemainAmount,
                                              m_frame.pnlAmount, m_frame.FundGrid, m_frame.fraFundToolBar}) {
        if (LookChanges *const changes = LookChanges::Find(changed))
            changes->Restore();
    }
    m_frame.FrameResize();
}

/// Sets what follows from the font and from the room.
void AllocationLook::fit()
{
    const QFontMetrics metrics = m_frame.fontMetrics();
    m_room = RoomOf(m_frame);
    const bool low = m_room != Room::Enough;
    const bool tiny = m_room == Room::Tiny;
    const int bar = (tiny ? SplitBar::Thickness / 2 : SplitBar::Thickness) + 2 * SplitBar::Post;
    const int above = tiny ? 0 : (low ? LookSpace::Grid : LookSpace::Small);
    const int side = LookSpace::Medium;
    LookChanges &status = LookChanges::Of(m_frame.layStatus);
    status.Set("contentsMargins",
               QVariant::fromValue(QMargins(side, above + bar, side, tiny ? 0 : LookSpace::Grid)));
    status.Set("spacing", LookSpace::Small);
    const int line = metrics.height() + (low ? LookSpace::Grid : LookSpace::Medium);
    for (QWidget *const panel : {m_frame.pnlRemainAmount, m_frame.pnlAmount})
        LookChanges::Of(panel).Set("minimumHeight", line);
    LookChanges::Of(m_frame.pnlHeaderCaption)
        .Set("minimumHeight", HeightOf(low ? LookHeight::SmallField : LookHeight::TabStrip, metrics));
    m_bar->setGeometry(side, above, m_bar->width(), bar);
    LookChanges::Of(m_frame.FundGrid)
        .Set("minimumHeight",
             HeightOf(LookHeight::SmallField, metrics) + HeightOf(LookHeight::CompactFieldRow, metrics));
    // The rows have other heights where there is little room.
    QEvent changed(QEvent::StyleChange);
    QCoreApplication::sendEvent(m_frame.FundGrid, &changed);
    QPalette colors;
    colors.setColor(QPalette::WindowText, ColorOf(LookColor::Text2, m_frame.palette()));
    m_sentence->setPalette(colors);
    fitStatus();
    m_frame.SizeGridColumns();
}

/// Gives the captions of the status line the room that they need.
void AllocationLook::fitStatus()
{
    const QFontMetrics strong(FontOf(LookFont::Strong, m_frame.font()));
    const auto room = [&strong](const TPanel &panel) {
        return strong.horizontalAdvance(panel.caption().trimmed()) + 2;
    };
    LookChanges &remaining = LookChanges::Of(m_frame.pnlRemainAmount);
    remaining.Set("sizePolicy", QVariant::fromValue(QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred)));
    const int remainder = iconSize + LookSpace::Small + room(*m_frame.pnlRemainAmount);
    remaining.Set("minimumWidth", remainder);
    remaining.Set("maximumWidth", remainder);
    LookChanges &investment = LookChanges::Of(m_frame.pnlAmount);
    const int amount = room(*m_frame.pnlAmount) + LookSpace::Medium;
    investment.Set("minimumWidth", amount);
    investment.Set("maximumWidth", amount);
    arrange();
}

/// The width of caption and commands in one line.
int AllocationLook::widthWithCaptions() const
{
    int width = m_frame.pnlHeaderCaption->sizeHint().width();
    if (m_frame.pnlToolBar->isHidden())
        return width;
    width += 2 * LookSpace::Small;
    for (const TSpeedButton *button : m_frame.fraFundToolBar->findChildren<TSpeedButton *>()) {
        if (button->isHidden())
            continue;
        width += button->sizeHint().width() + LookSpace::Grid;
        if (!m_captions)
            width += button->fontMetrics().horizontalAdvance(button->text()) + LookSpace::Small;
    }
    return width;
}

/// With false, the commands show their pictures only; their hints name them.
void AllocationLook::showCaptions(bool show)
{
    if (std::exchange(m_captions, show) == show)
        return;
    for (TSpeedButton *button : m_frame.fraFundToolBar->findChildren<TSpeedButton *>())
        LookChanges::Of(button).Set("toolButtonStyle",
                                    show ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
}

/// Chooses whether caption and commands share a line, and places the bar.
void AllocationLook::arrange()
{
    const int wanted = widthWithCaptions();
    const bool fits = m_frame.width() >= wanted;
    showCaptions(fits || m_room != Room::Tiny);
    const bool line = m_room == Room::Tiny || m_frame.width() >= qMax(oneLineFrom, wanted);
    // Each of these asks for a new layout.
    const QBoxLayout::Direction direction = line ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    if (m_top->direction() != direction || m_top->stretch(1) != int(line)) {
        m_top->setDirection(direction);
        m_top->setStretch(1, int(line));
    }
    m_bar->resize(m_frame.pnlAllocationStatus->width() - 2 * LookSpace::Medium, m_bar->height());
    m_frame.update();
}

AllocationLook::Remainder AllocationLook::remainder() const
{
    Remainder result =
        m_ofHost.value_or(Remainder{m_frame.Get_RemainingAmount(), m_frame.Get_RemainingPercent()});
    const bool byAmount = m_frame.Get_AllocByAmount();
    if (!m_ofHost && !byAmount)
        result.amount = AmountOf(result.percent, m_frame.Get_InvestmentAmount());
    const Currency rest = byAmount ? result.amount : result.percent;
    const bool empty = byAmount && m_frame.Get_InvestmentAmount().isZero() && rest.isZero();
    if (rest < Currency())
        result.state = State::TooMuch;
    else if (rest.isZero() && !empty)
        result.state = State::Done;
    return result;
}

QString AllocationLook::sentence(const Remainder &remainder) const
{
    const auto rand = [](Currency amount) { return FormatFloat(FormatMask::Thousands, amount); };
    if (remainder.state == State::Done)
        return TfraFundAllocation::tr("Everything is placed");
    if (remainder.amount.isZero())
        return {};
    return remainder.state == State::Left
               ? TfraFundAllocation::tr("R %1 not placed").arg(rand(remainder.amount))
               : TfraFundAllocation::tr("R %1 too much").arg(rand(-remainder.amount));
}

void AllocationLook::refresh()
{
    if (!m_applied)
        return;
    constexpr int measuredRows = 256; // beyond, a key press would take longer with each fund
    const Remainder rest = remainder();
    const TtsGrid &grid = *m_frame.FundGrid;
    const bool dark = IsDark(m_frame.palette());
    const bool byAmount = m_frame.Get_AllocByAmount();
    const double whole = byAmount ? m_frame.Get_InvestmentAmount().toDouble() : 100.0;
    const double left = (byAmount ? rest.amount : rest.percent).toDouble();
    const int column = byAmount ? Frame::AmountColumn : Frame::PercentColumn;
    QList<SplitBar::Part> parts;
    double largest = 0;
    if (whole > 0) {
        double others = 1 - left / whole;
        for (int row = 1; row <= qMin(grid.RowCount(), FundColorCount); ++row) {
            const double share = ValueOf(grid.Cell(column, row)).toDouble() / whole;
            parts.append({share, FundColor(row - 1, dark)});
            others -= share;
        }
        if (others > 0.00005)
            parts.append({others, FundColor(FundColorCount, dark)});
    }
    for (int row = 1; grid.RowCount() <= measuredRows && row <= grid.RowCount(); ++row)
        largest = qMax(largest, ValueOf(grid.Cell(Frame::PercentColumn, row)).toDouble());
    if (auto *const names = dynamic_cast<FundColumn *>(grid.itemDelegateForColumn(Frame::FundColumn - 1)))
        names->SetLargest(largest > 0 ? largest : 100);
    m_frame.FundGrid->viewport()->update();
    m_bar->Show(parts);
    const QString said = sentence(rest);
    m_sentence->setText(said);
    const QString caption = m_frame.pnlRemainAmount->caption().trimmed();
    m_bar->setAccessibleName(said.isEmpty() ? caption : TfraFundAllocation::tr("%1, %2").arg(caption, said));
    m_frame.pnlRemainAmount->update();
    if (std::exchange(m_state, rest.state) != rest.state) {
        QAccessibleEvent changed(m_frame.pnlRemainAmount, QAccessible::Alert);
        QAccessible::updateAccessibility(&changed);
    }
}

void AllocationLook::paintFrame()
{
    QPainter painter(&m_frame);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette &palette = m_frame.palette();
    const QColor line = ColorOf(LookColor::Line, palette);
    // A frame that fills a panel of the page has no edge of its own.
    const auto *const outer = qobject_cast<const QFrame *>(m_frame.parentWidget());
    const bool fillsPanel = outer && outer->width() - m_frame.width() <= LookSpace::Small;
    QPainterPath panel;
    if (fillsPanel)
        panel.addRect(m_frame.rect());
    else
        panel.addRoundedRect(QRectF(m_frame.rect()).adjusted(0.5, 0.5, -0.5, -0.5), LookSpace::PanelRadius,
                             LookSpace::PanelRadius);
    painter.fillPath(panel, ColorOf(LookColor::Surface, palette));
    painter.setClipPath(panel);
    painter.fillRect(QRect(0, m_top->geometry().bottom(), m_frame.width(), 1), line);
    if (const QWidget &status = *m_frame.pnlAllocationStatus; status.isVisibleTo(&m_frame)) {
        const QRect below(0, status.y(), m_frame.width(), m_frame.height() - status.y());
        painter.fillRect(below, ColorOf(LookColor::Raised, palette));
        painter.fillRect(QRect(below.topLeft(), QSize(below.width(), 1)), line);
    }
    painter.setClipping(false);
    if (!fillsPanel)
        painter.strokePath(panel, QPen(line, 1));
}

/// Draws a caption of the status line: the remainder with the picture and colour of its state, or the
/// investment at the end of the line.
void AllocationLook::paintRemainder(TPanel &panel, bool last) const
{
    struct Shown {
        LookColor color;
        const char16_t *picture;
    };
    static constexpr Shown shown[] = {
        {LookColor::WarnText, u"info"}, {LookColor::OkText, u"complete"}, {LookColor::ErrorText, u"error"}};
    QPainter painter(&panel);
    painter.setFont(FontOf(LookFont::Strong, m_frame.font()));
    QRect place = panel.rect();
    QColor color = ColorOf(LookColor::Text, m_frame.palette());
    if (!last) {
        const auto &[text, picture] = shown[static_cast<int>(m_state)];
        color = ColorOf(text, m_frame.palette());
        const QRect icon = QStyle::visualRect(panel.layoutDirection(), place,
                                              {0, place.center().y() - iconSize / 2 + 1, iconSize, iconSize});
        if (!panel.caption().isEmpty())
            PaintGlyph(painter, icon, QString::fromUtf16(picture), color);
        place.setLeft(iconSize + LookSpace::Small);
        place = QStyle::visualRect(panel.layoutDirection(), panel.rect(), place);
    }
    painter.setPen(color);
    painter.drawText(
        place, int(last ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextSingleLine,
        painter.fontMetrics().elidedText(panel.caption().trimmed(), Qt::ElideRight, place.width()));
}

bool AllocationLook::eventFilter(QObject *watched, QEvent *event)
{
    const bool ofFrame = watched == &m_frame;
    // On the way back to the designed look, its values may already be there.
    if (CurrentLook() == Look::Designed && event->type() != QEvent::StyleChange)
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::StyleChange:
        if (ofFrame)
            follow();
        break;
    case QEvent::FontChange:
    case QEvent::PaletteChange:
        if (ofFrame && m_applied) {
            fit();
            refresh();
        }
        break;
    case QEvent::LanguageChange:
    case QEvent::LayoutRequest:
    case QEvent::Show:
    case QEvent::Resize:
        if (!m_applied || (!ofFrame && watched != m_frame.pnlAllocationStatus))
            break;
        if (RoomOf(m_frame) != m_room)
            fit();
        else
            arrange();
        break;
    case QEvent::Paint:
        if (!m_applied)
            break;
        if (ofFrame) {
            paintFrame();
        } else if (watched != m_frame.pnlAllocationStatus) {
            paintRemainder(static_cast<TPanel &>(*watched), watched == m_frame.pnlAmount);
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void ShowRemainder(TfraFundAllocation &frame, Currency amount, Currency percent)
{
    for (QObject *child : frame.children()) {
        if (auto *const look = dynamic_cast<AllocationLook *>(child))
            look->ShowRemainder(amount, percent);
    }
}

} // namespace Zel

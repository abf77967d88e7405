#include "desk/SettingsParts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// Draws a rounded rectangle of which only some corners are round.
void drawPart(QPainter &painter, const QRectF &rect, bool roundLeft, bool roundRight)
{
    constexpr qreal radius = LookSpace::ControlRadius;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(rect, radius, radius);
    if (!roundLeft)
        path.addRect(QRectF(rect.topLeft(), QSizeF(radius, rect.height())));
    if (!roundRight)
        path.addRect(QRectF(rect.topRight() - QPointF(radius, 0), QSizeF(radius, rect.height())));
    painter.drawPath(path.simplified());
}

/// Whether the focus ring of @p button is drawn: after keys, not after clicks.
bool showsRing(const QRadioButton &button)
{
    return button.hasFocus() && button.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

/// One part of a bar of choices.
class Part : public QRadioButton
{
public:
    Part(bool isFirst, bool isLast, QWidget *parent) : QRadioButton(parent), m_first(isFirst), m_last(isLast)
    {
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override
    {
        const QFontMetrics strong(FontOf(LookFont::Strong, font()));
        return {strong.horizontalAdvance(plainText()) + tickWidth() + 2 * LookSpace::Large,
                HeightOf(LookHeight::Field, fontMetrics())};
    }
    QSize minimumSizeHint() const override { return sizeHint() - QSize(LookSpace::Large, 0); }

protected:
    bool hitButton(const QPoint &place) const override { return rect().contains(place); }
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const bool leftEnd = isRightToLeft() ? m_last : m_first;
        const bool rightEnd = isRightToLeft() ? m_first : m_last;
        QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        if (!leftEnd)
            frame.setLeft(frame.left() - 1); // shares the line with its neighbour
        QPen edge(ColorOf(isChecked() ? LookColor::Accent : LookColor::Field, palette()), 0);
        painter.setPen(edge);
        const LookColor fill = isChecked()    ? LookColor::Accent
                               : underMouse() ? LookColor::AccentSoft
                                              : LookColor::Surface;
        painter.setBrush(ColorOf(fill, palette()));
        drawPart(painter, frame, leftEnd, rightEnd);
        const QColor ink = ColorOf(!isEnabled()  ? LookColor::Disabled
                                   : isChecked() ? LookColor::OnAccent
                                                 : LookColor::Text,
                                   palette());
        const QFont face = isChecked() ? FontOf(LookFont::Strong, font()) : font();
        const int width = QFontMetrics(face).horizontalAdvance(plainText()) + (isChecked() ? tickWidth() : 0);
        QRect place((this->width() - width) / 2, 0, width, height());
        if (isChecked()) {
            drawTick(
                painter, ink,
                QRect(isRightToLeft() ? place.right() - tickWidth() + LookSpace::Small + 1 : place.left(), 0,
                      tickWidth() - LookSpace::Small, height()));
            if (!isRightToLeft())
                place.setLeft(place.left() + tickWidth());
        }
        painter.setFont(face);
        painter.setPen(ink);
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic, text());
        if (showsRing(*this)) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(isChecked() ? ink : ColorOf(LookColor::Focus, palette()), LookSpace::Ring));
            painter.drawRoundedRect(QRectF(rect()).adjusted(3, 3, -3, -3), 2, 2);
        }
    }

private:
    QString plainText() const { return text().remove(u'&'); }
    int tickWidth() const { return fontMetrics().height() * 2 / 3 + LookSpace::Small; }

    static void drawTick(QPainter &painter, const QColor &ink, const QRect &room)
    {
        const qreal side = room.width();
        const QPointF corner(room.left(), room.center().y() - side / 2);
        QPen pen(ink, std::max(1.5, side / 7), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(pen);
        painter.drawPolyline(QPolygonF{corner + QPointF(side * 0.1, side * 0.55),
                                       corner + QPointF(side * 0.38, side * 0.82),
                                       corner + QPointF(side * 0.9, side * 0.22)});
    }

    bool m_first;
    bool m_last;
};

/// A choice of colours with its picture.
class Tile : public QRadioButton
{
public:
    Tile(ColourScheme colours, QWidget *parent) : QRadioButton(parent), m_colours(colours)
    {
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override
    {
        const QFontMetrics strong(FontOf(LookFont::Strong, font()));
        return {std::max(minimumPicture + 2 * LookSpace::Small,
                         strong.horizontalAdvance(text()) + indicator() + 4 * LookSpace::Small),
                pictureHeight + HeightOf(LookHeight::Field, fontMetrics()) + 2 * LookSpace::Small};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint &place) const override { return rect().contains(place); }
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const bool strongEdge = isChecked() || showsRing(*this);
        painter.setPen(strongEdge
                           ? QPen(ColorOf(showsRing(*this) ? LookColor::Focus : LookColor::Accent, palette()),
                                  LookSpace::Ring)
                           : QPen(ColorOf(LookColor::LineStrong, palette()), 0));
        painter.setBrush(ColorOf(LookColor::Surface, palette()));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), LookSpace::PanelRadius,
                                LookSpace::PanelRadius);
        const QRect picture(LookSpace::Small, LookSpace::Small, width() - 2 * LookSpace::Small,
                            pictureHeight);
        const QPalette light = LookPalette(false);
        const QPalette dark = LookPalette(true);
        switch (m_colours) {
        case ColourScheme::Light:
            drawWindow(painter, picture, light, true);
            break;
        case ColourScheme::Dark:
            drawWindow(painter, picture, dark, true);
            break;
        case ColourScheme::System:
            drawWindow(painter, picture.adjusted(0, 0, -picture.width() / 2, 0), light, true);
            drawWindow(painter, picture.adjusted(picture.width() / 2, 0, 0, 0), dark, false);
            break;
        }
        drawCaption(painter, picture.bottom() + 1);
    }

private:
    static constexpr int pictureHeight = 76;
    static constexpr int minimumPicture = 132;

    int indicator() const { return fontMetrics().height(); }

    /// A window in miniature, of which only the colours matter.
    static void drawWindow(QPainter &painter, const QRect &room, const QPalette &palette, bool hasSide)
    {
        painter.save();
        painter.setClipRect(room);
        painter.fillRect(room, ColorOf(LookColor::Ground, palette));
        int left = room.left();
        if (hasSide) {
            painter.fillRect(QRect(room.topLeft(), QSize(24, room.height())),
                             ColorOf(LookColor::Side, palette));
            left += 24;
        }
        const QRect rest(left + LookSpace::Small, room.top() + LookSpace::Small,
                         room.right() - left - 2 * LookSpace::Small + 1,
                         room.height() - 2 * LookSpace::Small);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ColorOf(LookColor::LineStrong, palette));
        painter.drawRoundedRect(QRect(rest.left(), rest.top(), rest.width() * 6 / 10, 9), 2, 2);
        painter.setPen(QPen(ColorOf(LookColor::LineStrong, palette), 0));
        painter.setBrush(ColorOf(LookColor::Surface, palette));
        painter.drawRoundedRect(QRectF(rest.left() + 0.5, rest.top() + 16.5, rest.width() - 1, 34), 3, 3);
        painter.restore();
    }

    void drawCaption(QPainter &painter, int top) const
    {
        const int side = indicator();
        QRect circle(LookSpace::Small + 2, top + (height() - top - side) / 2, side, side);
        circle = QStyle::visualRect(layoutDirection(), rect(), circle);
        painter.setPen(QPen(ColorOf(isChecked() ? LookColor::Accent : LookColor::Field, palette()), 1.5));
        painter.setBrush(ColorOf(LookColor::Surface, palette()));
        painter.drawEllipse(QRectF(circle).adjusted(2, 2, -2, -2));
        if (isChecked()) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(ColorOf(LookColor::Accent, palette()));
            painter.drawEllipse(QRectF(circle).adjusted(5, 5, -5, -5));
        }
        QRect words(LookSpace::Small + 2 + side + LookSpace::Small, top, width(), height() - top);
        words.setRight(width() - LookSpace::Small);
        painter.setFont(isChecked() ? FontOf(LookFont::Strong, font()) : font());
        painter.setPen(ColorOf(LookColor::Text, palette()));
        painter.drawText(QStyle::visualRect(layoutDirection(), rect(), words),
                         static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                             Qt::AlignVCenter,
                         text());
    }

    ColourScheme m_colours;
};

} // namespace

ChoiceBar::ChoiceBar(int count, QWidget *parent) : QWidget(parent)
{
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (int i = 0; i < count; ++i) {
        auto *const part = new Part(i == 0, i == count - 1, this);
        m_group.addButton(part, i);
        layout->addWidget(part);
    }
    layout->addStretch(1);
    setFocusProxy(m_group.button(0));
    connect(&m_group, &QButtonGroup::idClicked, this, &ChoiceBar::picked);
}

void ChoiceBar::setTexts(const QStringList &texts)
{
    for (qsizetype i = 0; i < texts.size(); ++i) {
        m_group.button(static_cast<int>(i))->setText(texts.at(i));
        m_group.button(static_cast<int>(i))->updateGeometry();
    }
}

QStringList ChoiceBar::texts() const
{
    QStringList texts;
    for (const QAbstractButton *const button : m_group.buttons())
        texts.append(button->text());
    return texts;
}

void ChoiceBar::choose(int part)
{
    if (QAbstractButton *const button = m_group.button(part)) {
        button->setChecked(true);
        setFocusProxy(button);
    }
}

ThemeChoice::ThemeChoice(QWidget *parent)
    : QWidget(parent), m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(LookSpace::Medium);
    for (const ColourScheme colours : {ColourScheme::System, ColourScheme::Light, ColourScheme::Dark}) {
        auto *const tile = new Tile(colours, this);
        m_group.addButton(tile, static_cast<int>(colours));
        m_layout->addWidget(tile, 0, Qt::AlignLeft);
    }
    m_layout->addStretch(1);
    setFocusProxy(m_group.button(0));
    connect(&m_group, &QButtonGroup::idClicked, this, &ThemeChoice::picked);
}

QSize ThemeChoice::minimumSizeHint() const
{
    QSize least;
    for (const QAbstractButton *const tile : m_group.buttons())
        least = least.expandedTo(tile->sizeHint());
    return least;
}

void ThemeChoice::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    int beside = 0;
    for (const QAbstractButton *const tile : m_group.buttons())
        beside += tile->sizeHint().width() + m_layout->spacing();
    m_layout->setDirection(beside - m_layout->spacing() <= width() ? QBoxLayout::LeftToRight
                                                                   : QBoxLayout::TopToBottom);
}

void ThemeChoice::setTexts(const QStringList &texts)
{
    for (qsizetype i = 0; i < texts.size(); ++i)
        m_group.button(static_cast<int>(i))->setText(texts.at(i));
}

void ThemeChoice::choose(ColourScheme colours)
{
    m_group.button(static_cast<int>(colours))->setChecked(true);
}

KeyField::KeyField(QWidget *parent) : QLineEdit(parent)
{
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
}

void KeyField::show(const QKeySequence &keys)
{
    setText(keys.toString(QKeySequence::NativeText));
}

bool KeyField::event(QEvent *event)
{
    // Accepted, so that the command with these keys is not executed.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void KeyField::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const bool onlyModifier = key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt ||
                              key == Qt::Key_Meta || key == Qt::Key_AltGr || key == 0 ||
                              key == Qt::Key_unknown;
    const bool leaves = (key == Qt::Key_Escape || key == Qt::Key_Tab || key == Qt::Key_Backtab) &&
                        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (onlyModifier || leaves) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    // A sign such as "?" has its own key code; Shift only made it.
    const QChar sign(key < 0x80 ? key : 0);
    if (sign.isPrint() && !sign.isLetterOrNumber() && !sign.isSpace())
        modifiers &= ~Qt::ShiftModifier;
    Q_EMIT typed(QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(key))));
}

PanelEdge::PanelEdge(Qt::Orientation orientation, QWidget *parent) : QWidget(parent)
{
    if (orientation == Qt::Vertical)
        setFixedWidth(1);
    else
        setFixedHeight(1);
}

void PanelEdge::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), ColorOf(LookColor::Line, palette()));
}

} // namespace QuoteDesk

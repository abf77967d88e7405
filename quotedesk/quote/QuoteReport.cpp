#include "quote/QuoteReport.h"

#include "quote/PlainText.h"
#include "quote/ShownNumbers.h"

#include "data/Exceptions.h"

#include <QDir>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr qreal titlePoints = 16;
constexpr qreal textPoints = 10;
constexpr qreal smallPoints = 8;
constexpr qreal marginMm = 15;
constexpr qreal logoHeightMm = 20;
constexpr qreal logoWidthMm = 70;
/// The limit for a value in the printout; a longer text is no name and would fill the page.
constexpr qsizetype longestValue = 500;

/// Lays out the report on pages before anything is drawn, because each page shows the number of pages.
class Layout
{
public:
    struct Item {
        QRectF place;
        QString text; ///< blank for a line at the top of the rectangle
        QFont font;
        int flags = 0;
        QImage picture; ///< fills the rectangle instead of a text or a line
    };
    using Page = QList<Item>;

    Layout(const QuoteReport &report, QPagedPaintDevice &device)
        : m_report(report), m_device(device), m_area(QPointF(), QSizeF(device.width(), device.height()))
    {
        m_footHeight = lineHeight(fontOf(smallPoints)) * 2;
        beginPage();
        letterhead();
        heading();
        tableHeading();
        rows();
        details();
        problems();
        footers();
    }

    const QList<Page> &pages() const { return m_pages; }
    QRectF area() const { return m_area; }

    static QFont fontOf(qreal points, bool bold = false)
    {
        QFont font;
        font.setPointSizeF(points);
        font.setBold(bold);
        // Without ligatures, so that the PDF's text can be searched and copied.
        font.setStyleStrategy(QFont::PreferNoShaping);
        return font;
    }

private:
    QFontMetricsF metrics(const QFont &font) const { return QFontMetricsF(font, &m_device); }
    qreal lineHeight(const QFont &font) const { return metrics(font).height() * 1.15; }
    qreal bottom() const { return m_area.bottom() - m_footHeight; }

    void beginPage()
    {
        m_pages.append(Page());
        m_y = m_area.top();
    }

    qreal heightOf(const QString &text, const QFont &font, qreal width) const
    {
        const QRectF wide(0, 0, width, 1e6);
        return std::max(lineHeight(font),
                        metrics(font).boundingRect(wide, Qt::TextWordWrap | Qt::AlignLeft, text).height());
    }

    void put(const QString &text, const QFont &font, qreal left, qreal width, qreal height, int flags)
    {
        m_pages.last().append({QRectF(m_area.left() + left, m_y, width, height), text, font, flags, {}});
    }

    /// A line across the page with space above and below it.
    void rule()
    {
        const qreal room = lineHeight(fontOf(textPoints)) * 0.15;
        m_y += room;
        m_pages.last().append({QRectF(m_area.left(), m_y, m_area.width(), 0), {}, {}, 0, {}});
        m_y += room;
    }

    /// A caption and a value, which may wrap.
    void pair(const QString &caption, const QString &text)
    {
        const QString value = wrappedText(text, longestValue);
        const QFont plain = fontOf(textPoints);
        const qreal left = m_area.width() * 0.3;
        const qreal height =
            std::max(heightOf(caption, plain, left * 0.95), heightOf(value, plain, m_area.width() - left));
        if (m_y + height > bottom())
            beginPage();
        put(caption, fontOf(textPoints, true), 0, left * 0.95, height, Qt::TextWordWrap);
        put(value, plain, left, m_area.width() - left, height, Qt::TextWordWrap);
        m_y += height;
    }

    /// The logo at the left, firm and adviser at the right, and a line below both.
    void letterhead()
    {
        const Letterhead &head = m_report.letterhead;
        if (head.isEmpty())
            return;
        const qreal dots = m_device.logicalDpiX() / 25.4;
        const qreal top = m_y;
        QSizeF logo;
        if (!head.logo.isNull()) {
            logo =
                QSizeF(head.logo.size()).scaled(logoWidthMm * dots, logoHeightMm * dots, Qt::KeepAspectRatio);
            m_pages.last().append({QRectF(QPointF(m_area.left(), top), logo), {}, {}, 0, head.logo});
        }
        const qreal left = logo.isEmpty() ? 0 : logo.width() + 5 * dots;
        const auto line = [&](const QString &text, const QFont &font) {
            if (text.isEmpty())
                return;
            const QString shown = wrappedText(text, longestValue);
            const qreal width = m_area.width() - left;
            const qreal height = heightOf(shown, font, width);
            put(shown, font, left, width, height,
                Qt::TextWordWrap | static_cast<int>(logo.isEmpty() ? Qt::AlignLeft : Qt::AlignRight));
            m_y += height;
        };
        line(head.firm, fontOf(textPoints, true));
        line(head.adviser, fontOf(textPoints));
        line(head.licence, fontOf(smallPoints));
        line(head.address, fontOf(smallPoints));
        line(QStringList{head.telephone, head.email}.filter(QRegularExpression(u"."_s)).join(u"  "_s),
             fontOf(smallPoints));
        m_y = std::max(m_y, top + logo.height()) + 2 * dots;
        rule();
        m_y += 3 * dots;
    }

    void heading()
    {
        const QFont title = fontOf(titlePoints, true);
        const QString product = wrappedText(m_report.product, longestValue);
        const qreal height = heightOf(product, title, m_area.width());
        put(product, title, 0, m_area.width(), height, Qt::TextWordWrap);
        m_y += height + lineHeight(fontOf(smallPoints)) / 2;
        const auto orNone = [](const QString &text) { return text.isEmpty() ? u"-"_s : text; };
        pair(QuoteReport::tr("Client"), orNone(m_report.client));
        pair(QuoteReport::tr("Description"), orNone(m_report.description));
        pair(QuoteReport::tr("Date"), m_report.date.toString(Qt::ISODate));
        pair(withCurrency(QuoteReport::tr("Investment (R)")), shownMoney(m_report.split.investment));
        pair(QuoteReport::tr("Status"), m_report.stateText());
        m_y += lineHeight(fontOf(textPoints));
    }

    void row(const QString &text, const QString &percent, const QString &amount, bool bold, bool onNewPages)
    {
        const QString name = wrappedText(text, longestValue);
        const QFont font = fontOf(textPoints, bold);
        const qreal nameWidth = m_area.width() * 0.6;
        const qreal numberWidth = m_area.width() * 0.2;
        const qreal height = heightOf(name, font, nameWidth);
        if (onNewPages && m_y + height > bottom()) {
            beginPage();
            tableHeading();
        }
        put(name, font, 0, nameWidth, height, Qt::TextWordWrap);
        put(percent, font, nameWidth, numberWidth, height, Qt::AlignRight);
        put(amount, font, nameWidth + numberWidth, numberWidth, height, Qt::AlignRight);
        m_y += height;
    }

    void tableHeading()
    {
        row(QuoteReport::tr("Fund"), QuoteReport::tr("Percent"), withCurrency(QuoteReport::tr("Amount (R)")),
            true, false);
        rule();
    }

    void rows()
    {
        const ShownSplit &split = m_report.split;
        for (const ShownSplit::Fund &fund : split.funds)
            row(m_report.fundText(fund), shownPercent(fund.percent), shownMoney(fund.amount), false, true);
        if (!m_report.restText().isEmpty())
            row(m_report.restText(), shownPercent(split.restPercent), shownMoney(split.restAmount), false,
                true);
        if (m_y + lineHeight(fontOf(textPoints, true)) * 1.3 > bottom()) {
            beginPage();
            tableHeading();
        }
        rule();
        row(QuoteReport::tr("Total"), shownPercent(100), shownMoney(split.investment), true, false);
    }

    void details()
    {
        if (m_report.details.isEmpty())
            return;
        m_y += lineHeight(fontOf(textPoints));
        for (const auto &[caption, value] : m_report.details)
            pair(caption, value);
    }

    void problems()
    {
        if (m_report.problems.isEmpty())
            return;
        m_y += lineHeight(fontOf(textPoints));
        QString caption = QuoteReport::tr("Still to be completed");
        for (const QString &problem : m_report.problems)
            pair(std::exchange(caption, QString()), problem);
    }

    void footers()
    {
        const QFont small = fontOf(smallPoints);
        m_y = bottom() + m_footHeight / 2;
        for (int i = 0; i < m_pages.size(); ++i) {
            const QString page = QuoteReport::tr("Page %1 of %2").arg(i + 1).arg(m_pages.size());
            QString left = m_report.description.isEmpty() ? m_report.product : m_report.description;
            if (m_report.isDraft())
                left = QuoteReport::tr("Draft - %1").arg(left);
            const qreal half = m_area.width() / 2;
            const QString shown = metrics(small).elidedText(shortText(left), Qt::ElideRight, half);
            m_pages[i].append(
                {QRectF(m_area.left(), m_y, half, m_footHeight / 2), shown, small, Qt::AlignLeft, {}});
            m_pages[i].append(
                {QRectF(m_area.left() + half, m_y, half, m_footHeight / 2), page, small, Qt::AlignRight, {}});
        }
    }

    const QuoteReport &m_report;
    QPagedPaintDevice &m_device;
    QRectF m_area;
    qreal m_y = 0;
    qreal m_footHeight = 0;
    QList<Page> m_pages;
};

/// The word DRAFT across the page, pale enough to read the page.
void drawDraftMark(QPainter &painter, const QRectF &area)
{
    painter.save();
    painter.setPen(QColor(233, 233, 233));
    painter.setFont(Layout::fontOf(110, true));
    painter.translate(area.center());
    painter.rotate(-50);
    const QRectF around(-area.height(), -area.height() / 2, 2 * area.height(), area.height());
    painter.drawText(around, Qt::AlignCenter, QuoteReport::tr("DRAFT"));
    painter.restore();
}

} // namespace

QString QuoteReport::stateText(const SplitState &split, bool isComplete)
{
    if (split.isAllocated() && isComplete)
        return tr("Fully allocated");
    if (split.isEmpty())
        return tr("Draft: no funds chosen");
    if (split.isAllocated())
        return tr("Draft: fully allocated, but not complete yet");
    if (split.investment.isZero() && split.restAmount < Currency())
        return tr("Draft: %1 is allocated, but the investment is missing").arg(shownMoney(-split.restAmount));
    if (split.rest().isZero())
        return tr("Draft: the investment is missing");
    if (split.isOver())
        return tr("Draft: %1 (%2%) more is allocated than the investment")
            .arg(shownMoney(-split.restAmount), shownPercent(-split.restPercent));
    return tr("Draft: %1 (%2%) is not allocated")
        .arg(shownMoney(split.restAmount), shownPercent(split.restPercent));
}

QString QuoteReport::fileName() const
{
    static const QRegularExpression noFileName(u"[^\\w .-]+"_s,
                                               QRegularExpression::UseUnicodePropertiesOption);
    QString title = description.trimmed().isEmpty() ? product : description.trimmed();
    return title.replace(noFileName, u"_"_s).left(80);
}

QString QuoteReport::fundText(const ShownSplit::Fund &fund) const
{
    return notOffered.contains(fund.fundID) ? tr("%1 (no longer offered)").arg(fund.name) : fund.name;
}

QString QuoteReport::restText() const
{
    if (split.restAmount.isZero() && split.restPercent.isZero())
        return {};
    return split.isOver() ? tr("Over-allocated") : tr("Not allocated");
}

void QuoteReport::print(QPagedPaintDevice &device) const
{
    device.setPageMargins(QMarginsF(marginMm, marginMm, marginMm, marginMm), QPageLayout::Millimeter);
    const Layout layout(*this, device);
    QPainter painter;
    if (!painter.begin(&device))
        throw Exception(tr("The printer cannot be used"));
    bool first = true;
    for (const Layout::Page &page : layout.pages()) {
        if (!std::exchange(first, false) && !device.newPage())
            throw Exception(tr("The printer does not accept another page"));
        if (isDraft())
            drawDraftMark(painter, layout.area());
        painter.setPen(QPen(Qt::black, device.logicalDpiX() / 150.0));
        for (const Layout::Item &item : page) {
            if (!item.picture.isNull()) {
                painter.drawImage(item.place, item.picture);
            } else if (item.text.isEmpty()) {
                painter.drawLine(item.place.topLeft(), item.place.topRight());
            } else {
                painter.setFont(item.font);
                painter.drawText(item.place, item.flags, item.text);
            }
        }
    }
    if (!painter.end())
        throw Exception(tr("The quote could not be printed to its end"));
}

void QuoteReport::savePdf(const QString &path) const
{
    const auto refuse = [&path](const QString &reason) {
        throw Exception(tr("%1 cannot be written: %2").arg(QDir::toNativeSeparators(path), reason));
    };
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        refuse(file.errorString());
    {
        QPdfWriter writer(&file);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setTitle(description.isEmpty() ? product : tr("%1 - %2").arg(product, description));
        writer.setCreator(QCoreApplication::applicationName());
        print(writer);
    }
    if (!file.commit())
        refuse(file.errorString());
}

} // namespace QuoteDesk

#include "toolkit/ChoiceBox.h"

#include "toolkit/PlainTip_p.h"

#include <QListView>
#include <QScreen>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Zel
{

ChoiceBox::ChoiceBox(QWidget *parent) : QComboBox(parent)
{
    // With other policies Qt measures every line, which takes longer than filling a long list.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    // Opens the list as a list, not as a menu: a menu lays out all lines to place the chosen one under the
    // mouse, and cuts a long line inside a letter.
    setStyleSheet(u"QComboBox { combobox-popup: 0; }"_s);
    setMaxVisibleItems(16);
}

ChoiceBox::~ChoiceBox() = default;

// Makes the list as wide as its longest lines, up to half the screen; longer lines are elided. Only the lines
// with the most characters are measured, because measuring every line would take longer than filling the
// list.
void ChoiceBox::showPopup()
{
    if (auto *const list = qobject_cast<QListView *>(view())) {
        constexpr std::size_t measured = 8;
        std::vector<std::pair<qsizetype, int>> lines; // length and index
        lines.reserve(static_cast<std::size_t>(count()));
        for (int i = 0; i < count(); ++i)
            lines.emplace_back(itemText(i).size(), i);
        const auto longest = static_cast<std::ptrdiff_t>(std::min(measured, lines.size()));
        std::partial_sort(lines.begin(), lines.begin() + longest, lines.end(), std::greater<>());
        int wanted = 0;
        for (auto line = lines.begin(); line != lines.begin() + longest; ++line)
            wanted = std::max(wanted, fontMetrics().horizontalAdvance(itemText(line->second)));
        const int extra = 4 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) +
                          style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) + 8;
        const int most = std::max(width(), screen()->availableSize().width() / 2);
        list->setUniformItemSizes(true);
        list->setTextElideMode(Qt::ElideRight);
        // Restores the scroll bar, because the view was created for a menu, which has none.
        list->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        list->setSpacing(1);
        list->setMinimumWidth(std::clamp(wanted + extra, width(), most));
    }
    QComboBox::showPopup();
}

void ChoiceBox::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    constexpr int margins = 2; // styles leave one pixel at each side
    const int picture = option->currentIcon.isNull() ? 0 : option->iconSize.width() + 4;
    option->currentText = option->fontMetrics.elidedText(option->currentText, Qt::ElideRight,
                                                         field.width() - margins - picture);
}

bool ChoiceBox::event(QEvent *event)
{
    // A tool tip set by the page has precedence.
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !isEditable()) {
        QStyleOptionComboBox shown;
        initStyleOption(&shown);
        if (shown.currentText != currentText()) {
            ShowPlainTip(static_cast<const QHelpEvent &>(*event), currentText(), this, rect());
            return true;
        }
    }
    return QComboBox::event(event);
}

} // namespace Zel

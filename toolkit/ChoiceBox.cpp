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
    // Measuring every line to find the widest takes longer than filling a long list.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    // A list that opens as a menu lays out all of its lines to put the chosen one under the mouse, and cuts a
    // line that is too long in the middle of a letter.
    setStyleSheet(u"QComboBox { combobox-popup: 0; }"_s);
    setMaxVisibleItems(16);
}

ChoiceBox::~ChoiceBox() = default;

// The list is as wide as its longest lines need, up to half the screen; longer ones are cut between letters.
// The longest lines are told by their length: measuring every line would take longer than filling the list.
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
        // As for a list; the view was made when the style still spoke of a menu, which has no scroll bar.
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
    constexpr int margins = 2; // one that the styles leave at each side
    const int picture = option->currentIcon.isNull() ? 0 : option->iconSize.width() + 4;
    option->currentText = option->fontMetrics.elidedText(option->currentText, Qt::ElideRight,
                                                         field.width() - margins - picture);
}

bool ChoiceBox::event(QEvent *event)
{
    // A tool tip of the page's own goes first.
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

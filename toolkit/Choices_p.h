#pragma once

#include "toolkit/PlainTip_p.h"

#include <QComboBox>
#include <QListView>
#include <QScreen>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

/// What the drop-down lists have in common.
namespace Zel
{
/// The style sheet of a list that opens as a list. One that opens as a menu lays out all of its lines to put
/// the chosen one under the mouse, and cuts a line that is too long in the middle of a letter.
inline QString OpensAsList()
{
    return QStringLiteral("QComboBox { combobox-popup: 0; }");
}

/// Cuts the chosen text between two letters, and says that there is more, where the field has no room for all
/// of it.
inline void ElideChoice(const QComboBox &combo, QStyleOptionComboBox &option)
{
    const QRect field =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
    constexpr int margins = 2; // one that the styles leave at each side
    const int picture = option.currentIcon.isNull() ? 0 : option.iconSize.width() + 4;
    option.currentText =
        option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, field.width() - margins - picture);
}

/// Shows a chosen text that is cut whole while the mouse rests on it; says whether @p event asked for that.
/// A tool tip of the page's own goes first.
inline bool ShowsWholeChoice(QComboBox &combo, const QEvent &event, const QStyleOptionComboBox &shown)
{
    if (event.type() != QEvent::ToolTip || !combo.toolTip().isEmpty() || combo.isEditable() ||
        shown.currentText == combo.currentText())
        return false;
    ShowPlainTip(static_cast<const QHelpEvent &>(event), combo.currentText(), &combo, combo.rect());
    return true;
}

/// Makes ready the list that drops down: as wide as its longest lines need, up to half the screen, and with
/// longer ones cut between letters. The longest are told by their length: measuring every line would take
/// longer than filling the list. @p textAt is asked for the text of each line.
template <typename TextAt> void PrepareDropDown(QComboBox &combo, int count, TextAt textAt)
{
    auto *list = qobject_cast<QListView *>(combo.view());
    if (!list)
        return;
    constexpr std::size_t measured = 8;
    std::vector<std::pair<qsizetype, int>> lines; // length and index
    lines.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        lines.emplace_back(textAt(i).size(), i);
    const auto longest = static_cast<std::ptrdiff_t>(std::min(measured, lines.size()));
    std::partial_sort(lines.begin(), lines.begin() + longest, lines.end(), std::greater<>());
    int width = 0;
    for (auto line = lines.begin(); line != lines.begin() + longest; ++line)
        width = std::max(width, combo.fontMetrics().horizontalAdvance(textAt(line->second)));
    const int extra = 4 * combo.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &combo) +
                      combo.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &combo) + 8;
    const int most = std::max(combo.width(), combo.screen()->availableSize().width() / 2);
    list->setUniformItemSizes(true);
    list->setTextElideMode(Qt::ElideRight);
    // As for a list; the view was made when the style still spoke of a menu, which has no scroll bar.
    list->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    list->setSpacing(1);
    list->setMinimumWidth(std::clamp(width + extra, combo.width(), most));
}
} // namespace Zel

#include "toolkit/TComboBox.h"

#include "toolkit/ListIndex_p.h"

#include <QSignalBlocker>

#include <algorithm>

TComboItems::TComboItems(TComboBox *combo) : QAbstractListModel(combo), m_combo(combo) {}

TComboItems::~TComboItems() = default;

// Runs one change of the lines. QComboBox chooses a line by itself on some changes. Its signals are blocked
// during the change and the right line is set afterwards, so that its signals report only a real change of
// the choice.
template <typename Change> void TComboItems::Announce(int itemIndex, Change change)
{
    const int before = m_combo->currentIndex();
    {
        const QSignalBlocker quiet(m_combo);
        change();
        m_combo->setCurrentIndex(itemIndex);
    }
    m_combo->update();
    if (itemIndex != before) {
        Q_EMIT m_combo->currentIndexChanged(itemIndex);
        Q_EMIT m_combo->currentTextChanged(m_combo->currentText());
    }
}

void TComboItems::Hide()
{
    m_itemIndex = m_formerIndex = m_combo->currentIndex();
    m_kept = true;
    const QSignalBlocker quiet(m_combo);
    beginResetModel();
    m_hidden = true;
    endResetModel();
}

int TComboItems::AddObject(const QString &text, void *object)
{
    const int index = Count();
    if (Updating() && !m_hidden)
        Hide();
    if (m_hidden) {
        m_lines.push_back({text, object});
    } else {
        Announce(m_combo->currentIndex(), [&] {
            beginInsertRows({}, index, index);
            m_lines.push_back({text, object});
            endInsertRows();
        });
    }
    return index;
}

const QString &TComboItems::Text(int index) const
{
    Zel::CheckListIndex(index, Count());
    return m_lines[static_cast<std::size_t>(index)].Text;
}

void *TComboItems::Object(int index) const
{
    Zel::CheckListIndex(index, Count());
    return m_lines[static_cast<std::size_t>(index)].Object;
}

void TComboItems::SetObject(int index, void *object)
{
    Zel::CheckListIndex(index, Count());
    m_lines[static_cast<std::size_t>(index)].Object = object;
}

void TComboItems::Delete(int index)
{
    Zel::CheckListIndex(index, Count());
    if (Updating() && !m_hidden)
        Hide();
    const int chosen = m_combo->ItemIndex();
    const int then = index == chosen ? -1 : chosen - (index < chosen ? 1 : 0);
    if (m_hidden) {
        m_lines.erase(m_lines.begin() + index);
        m_itemIndex = then;
        m_kept = m_kept && index != chosen;
    } else {
        Announce(then, [&] {
            beginRemoveRows({}, index, index);
            m_lines.erase(m_lines.begin() + index);
            endRemoveRows();
        });
    }
}

void TComboItems::Clear()
{
    if (m_lines.empty())
        return;
    BeginUpdate();
    if (!m_hidden)
        Hide();
    m_lines.clear();
    m_itemIndex = -1;
    m_kept = false;
    EndUpdate();
}

int TComboItems::IndexOf(const QString &text) const
{
    const auto found =
        std::find_if(m_lines.begin(), m_lines.end(), [&](const Line &line) { return line.Text == text; });
    return found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
}

int TComboItems::IndexOfObject(const void *object) const
{
    const auto found =
        std::find_if(m_lines.begin(), m_lines.end(), [&](const Line &line) { return line.Object == object; });
    return found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
}

void TComboItems::BeginUpdate()
{
    ++m_updates;
}

void TComboItems::EndUpdate()
{
    if (m_updates == 0 || --m_updates > 0 || !m_hidden)
        return;
    const int chosen = m_itemIndex < Count() ? m_itemIndex : -1;
    {
        const QSignalBlocker quiet(m_combo);
        beginResetModel();
        m_hidden = false;
        endResetModel();
        m_combo->setCurrentIndex(chosen);
    }
    m_combo->update();
    if (chosen != m_formerIndex || (chosen >= 0 && !m_kept)) {
        Q_EMIT m_combo->currentIndexChanged(chosen);
        Q_EMIT m_combo->currentTextChanged(m_combo->currentText());
    }
}

int TComboItems::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || m_hidden ? 0 : Count();
}

QVariant TComboItems::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Line &line = m_lines[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return line.Text;
    if (role == Qt::UserRole)
        return QVariant::fromValue(line.Object);
    return {};
}

TComboBox::TComboBox(QWidget *parent) : Zel::ChoiceBox(parent), m_lines(new TComboItems(this))
{
    setMinimumContentsLength(12);
    setModel(m_lines);
}

TComboBox::~TComboBox() = default;

int TComboBox::ItemIndex() const
{
    return m_lines->m_hidden ? m_lines->m_itemIndex : currentIndex();
}

void TComboBox::SetItemIndex(int index)
{
    const int chosen = index >= 0 && index < m_lines->Count() ? index : -1;
    if (m_lines->m_hidden) {
        m_lines->m_kept = m_lines->m_kept && chosen == m_lines->m_itemIndex;
        m_lines->m_itemIndex = chosen;
    } else {
        setCurrentIndex(chosen);
    }
}

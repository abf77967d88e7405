#pragma once

#include "toolkit/ChoiceBox.h"

#include <QAbstractListModel>

#include <vector>

class TComboBox;

/// The lines of one combo box. Each has a text and an object, which is a plain pointer that the combo box
/// never dereferences: a dataset bookmark, a client, or nullptr.
class ZEL_TOOLKIT_EXPORT TComboItems : public QAbstractListModel
{
    Q_OBJECT
public:
    explicit TComboItems(TComboBox *combo); ///< Only the combo box calls this; it owns the lines.
    ~TComboItems() override;

    int Add(const QString &text) { return AddObject(text, nullptr); } ///< Appends a line without an object.
    int AddObject(const QString &text, void *object);                 ///< Appends a line; returns its index.
    int Count() const noexcept { return static_cast<int>(m_lines.size()); } ///< The number of lines.
    const QString &Text(int index) const; ///< Throws EListError outside 0..Count-1, as do the next four.
    const QString &operator[](int index) const { return Text(index); } ///< The same as Text.
    void *Object(int index) const;                                     ///< nullptr for a line without one.
    void SetObject(int index, void *object);                           ///< Does not delete the former object.
    void Delete(int index);                      ///< The choice stays unless its line is deleted.
    void Clear();                                ///< Removes all lines; no line is chosen afterwards.
    int IndexOf(const QString &text) const;      ///< The first line with that text; -1 for none.
    int IndexOfObject(const void *object) const; ///< The first line with that object; -1 for none.

    /// Holds the notification of the combo box back until the matching EndUpdate (calls are counted), which
    /// notifies it of all changes at once.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const noexcept { return m_updates > 0; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    friend class TComboBox;
    struct Line {
        QString Text;
        void *Object;
    };
    void Hide();
    template <typename Change> void Announce(int itemIndex, Change change);

    TComboBox *m_combo;
    std::vector<Line> m_lines;
    int m_updates = 0;
    bool m_hidden = false;  // the combo box does not see the lines
    int m_itemIndex = -1;   // while hidden: the chosen line
    int m_formerIndex = -1; // while hidden: the line last announced by the combo box
    bool m_kept = true;     // while hidden: whether the chosen line is still that line
};

/// A drop-down list over its own lines. It never chooses a line by itself: filling the list does not change
/// ItemIndex, and Clear sets it to -1. The list always opens as a scrolling list, at least as wide as the box
/// and wide enough for long texts. Typing searches the list.
class ZEL_TOOLKIT_EXPORT TComboBox : public Zel::ChoiceBox
{
    Q_OBJECT
    Q_PROPERTY(int ItemIndex READ ItemIndex WRITE SetItemIndex STORED false)
public:
    explicit TComboBox(QWidget *parent = nullptr);
    ~TComboBox() override;

    TComboItems &Items() noexcept { return *m_lines; }             ///< The lines, owned by the box.
    const TComboItems &Items() const noexcept { return *m_lines; } ///< The same, read-only.
    /// The index of the chosen line; -1 for none. Setting an index outside the lines chooses none.
    int ItemIndex() const;
    void SetItemIndex(int index);

private:
    TComboItems *m_lines; // a child of this
};

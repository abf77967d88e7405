#pragma once

#include "toolkit/ChoiceBox.h"

#include <QAbstractListModel>

#include <vector>

class TComboBox;

/// The lines of one combo box: a text and an object each. The object is a plain pointer that the combo box
/// carries and never follows: a dataset bookmark, a client, or nullptr.
class ZEL_TOOLKIT_EXPORT TComboItems : public QAbstractListModel
{
    Q_OBJECT
public:
    explicit TComboItems(TComboBox *combo); ///< For the combo box, which owns it.
    ~TComboItems() override;

    int Add(const QString &text) { return AddObject(text, nullptr); } ///< Without an object.
    int AddObject(const QString &text, void *object);                 ///< After the last; returns its index.
    int Count() const noexcept { return static_cast<int>(m_lines.size()); } ///< How many lines there are.
    const QString &Text(int index) const; ///< EListError outside 0..Count-1, as for the next three.
    const QString &operator[](int index) const { return Text(index); } ///< The same as Text.
    void *Object(int index) const;                                     ///< nullptr for a line without one.
    void SetObject(int index, void *object);                           ///< The former one is only forgotten.
    void Delete(int index);                      ///< The chosen line stays chosen unless it goes.
    void Clear();                                ///< Removes all lines; none is chosen then.
    int IndexOf(const QString &text) const;      ///< The first line of that text; -1 for none.
    int IndexOfObject(const void *object) const; ///< The first line with that object; -1 for none.

    /// Until the matching EndUpdate (calls are counted) the combo box is told of no change, then of all at
    /// once.
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
    int m_itemIndex = -1;   // the rest is meaningful while hidden
    int m_formerIndex = -1; // what the combo box last said
    bool m_kept = true;     // the line chosen before is chosen still
};

/// A combo box that picks from a list of its own lines. It never chooses a line by itself: after a fill it
/// shows what ItemIndex says, none after Clear. The list opens as a scrolling list at any length, at least as
/// wide as the box and wide enough for long texts; typing searches it.
class ZEL_TOOLKIT_EXPORT TComboBox : public Zel::ChoiceBox
{
    Q_OBJECT
    Q_PROPERTY(int ItemIndex READ ItemIndex WRITE SetItemIndex STORED false)
public:
    explicit TComboBox(QWidget *parent = nullptr);
    ~TComboBox() override;

    TComboItems &Items() noexcept { return *m_lines; } ///< The lines; they live as long as the box.
    const TComboItems &Items() const noexcept { return *m_lines; } ///< The same, to look at.
    /// The chosen line, -1 for none. Setting an index outside the lines chooses none.
    int ItemIndex() const;
    void SetItemIndex(int index);

private:
    TComboItems *m_lines; // a child of this
};

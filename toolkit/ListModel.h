#pragma once

#include "toolkit/ItemsModel.h"

class TListItem;
class TListItems;

namespace Zel
{

/// The model of a list view: its items and columns.
class ZEL_TOOLKIT_EXPORT ListModel : public ItemsModel
{
    Q_OBJECT
public:
    /// A model of @p items, whose destructor clears the model's link to them.
    ListModel(TListItems *items, QObject *parent);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    void AddColumn(const QString &caption);                                    ///< Appends a column.
    const QString &Caption(int column) const { return At(column).caption; }    ///< The heading of a column.
    void SetCaption(int column, const QString &caption);                       ///< Shown at once.
    Qt::Alignment Alignment(int column) const { return At(column).alignment; } ///< For texts and heading.
    void SetAlignment(int column, Qt::Alignment alignment);                    ///< Shown at once.
    /// Whether each item has a check box in column 0.
    bool CheckBoxes() const noexcept { return m_checkBoxes; }
    void SetCheckBoxes(bool checkBoxes) noexcept { m_checkBoxes = checkBoxes; }

    QModelIndex IndexOf(const TListItem *item, int column = 0) const; ///< Invalid for nullptr.
    /// The item of an index of this model.
    static TListItem *ItemOf(const QModelIndex &index)
    {
        return static_cast<TListItem *>(index.internalPointer());
    }

private:
    friend class ::TListItems;
    struct Column {
        QString caption;
        Qt::Alignment alignment = Qt::AlignLeft;
    };
    const Column &At(int column) const { return m_columns.at(column); }
    int AlignmentOf(int column) const { return int(At(column).alignment | Qt::AlignVCenter); }
    TListItems *m_items; // nullptr after the items are destroyed
    QList<Column> m_columns;
    bool m_checkBoxes = false;
};

} // namespace Zel

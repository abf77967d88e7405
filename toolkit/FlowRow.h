#pragma once

#include "export/zel_toolkit_export.h"

#include <QLayout>

#include <vector>

namespace Zel
{

/// Lays out widgets side by side in their preferred sizes, and goes on below when a row is full.
class ZEL_TOOLKIT_EXPORT FlowRow : public QLayout
{
public:
    /// @p parent gets the layout.
    explicit FlowRow(QWidget *parent);
    ~FlowRow() override;

    void addItem(QLayoutItem *item) override;
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override; ///< All in one row.
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    int arrange(const QRect &rect, bool apply) const;

    std::vector<QLayoutItem *> m_items;
};

} // namespace Zel

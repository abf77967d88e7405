#pragma once

#include "export/zel_toolkit_export.h"
#include "toolkit/TImageList.h"

#include <QAbstractItemModel>
#include <QPointer>

namespace Zel
{

/// The common base of the models of the list view and the tree view.
class ZEL_TOOLKIT_EXPORT ItemsModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    ~ItemsModel() override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

    bool ReadOnly() const noexcept { return m_readOnly; }               ///< Whether in-place editing is off.
    void SetReadOnly(bool readOnly) noexcept { m_readOnly = readOnly; } ///< Sets that.
    /// The pictures of the items. Not owned; nullptr after the list is destroyed.
    TImageList *Images() const { return m_images; }
    void SetImages(TImageList *images) { m_images = images; }

protected:
    using QAbstractItemModel::QAbstractItemModel;
    /// The picture at @p index; an invalid variant when there is none.
    QVariant Picture(int index) const;

private:
    QPointer<TImageList> m_images; // not owned
    bool m_readOnly = false;
};

} // namespace Zel

#pragma once

#include "export/zel_toolkit_export.h"
#include "toolkit/TImageList.h"

#include <QAbstractItemModel>
#include <QPointer>

namespace Zel
{

/// What the models of both views carry for their view.
class ZEL_TOOLKIT_EXPORT ItemsModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    ~ItemsModel() override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

    bool ReadOnly() const noexcept { return m_readOnly; } ///< Texts cannot be edited in place.
    void SetReadOnly(bool readOnly) noexcept { m_readOnly = readOnly; }
    /// The pictures of the items; not owned, forgotten when destroyed.
    TImageList *Images() const { return m_images; }
    void SetImages(TImageList *images) { m_images = images; }

protected:
    using QAbstractItemModel::QAbstractItemModel;
    /// The picture at @p index, nothing for none.
    QVariant Picture(int index) const;

private:
    QPointer<TImageList> m_images; // not owned
    bool m_readOnly = false;
};

} // namespace Zel

#include "toolkit/ItemsModel.h"

namespace Zel
{

ItemsModel::~ItemsModel() = default;

QVariant ItemsModel::Picture(int index) const
{
    return m_images && index >= 0 ? QVariant(m_images->Icon(index)) : QVariant();
}

} // namespace Zel

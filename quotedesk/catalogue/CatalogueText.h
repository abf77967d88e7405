#pragma once

#include <QByteArrayView>

namespace QuoteDesk
{

/// The source files of the embedded catalogue as they stand in catalogue/, in UTF-8.
namespace CatalogueText
{
QByteArrayView products();
QByteArrayView groupTypes();
QByteArrayView fundGroups();
QByteArrayView fundGroupProductGroups();
QByteArrayView fundGroupProducts();
QByteArrayView funds();
QByteArrayView fundMessages();
} // namespace CatalogueText

} // namespace QuoteDesk

#pragma once

#include <QByteArrayView>

namespace QuoteDesk
{

/// The embedded source files of the catalogue, in UTF-8.
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

#pragma once

#include "quote/ElementsPage.h"
#include "store/Quote.h"

#include <QStringList>

#include <functional>

namespace QuoteDesk
{

/// What a product asks for on its own pages.
struct ProductPages {
    QList<PageElement> details;
    QList<PageElement> income; ///< None in a product without an income page.
    /// What is wrong in a quote as a whole, in sentences; empty when nothing can be.
    std::function<QStringList(const Quote &)> problems = {};
};
/// Nothing for a product without an editor.
ProductPages pagesOf(int productID);
/// A sentence for each thing that is missing or wrong in a quote whose details stand on two pages.
QStringList problemsOf(const Quote &quote, const ProductPages &product, const ElementsPage &details,
                       const ElementsPage &income);

} // namespace QuoteDesk

#pragma once

#include "quote/ElementsPage.h"
#include "quote/OpenPoint.h"
#include "store/Quote.h"

#include <functional>

namespace QuoteDesk
{

/// What a product asks for on its own pages.
struct ProductPages {
    QList<PageElement> details;
    QList<PageElement> income; ///< empty for a product without an income page
    /// Checks the quote as a whole; returns what is wrong, or an empty list.
    std::function<QList<OpenPoint>(const Quote &)> problems = {};
};
/// Empty for a product without an editor.
ProductPages pagesOf(int productID);
/// What is missing or wrong among the entries of a quote with two pages of details. The split is not
/// considered.
QList<OpenPoint> problemsOf(const Quote &quote, const ProductPages &product, const ElementsPage &details,
                            const ElementsPage &income);

} // namespace QuoteDesk

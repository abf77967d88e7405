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
    QList<PageElement> income; ///< empty for a product without an income page
    /// Checks the quote as a whole; returns sentences, or an empty list.
    std::function<QStringList(const Quote &)> problems = {};
};
/// Empty for a product without an editor.
ProductPages pagesOf(int productID);
/// A sentence for each missing or wrong entry of a quote with two pages of details.
QStringList problemsOf(const Quote &quote, const ProductPages &product, const ElementsPage &details,
                       const ElementsPage &income);

} // namespace QuoteDesk

#pragma once

#include "quote/FundsPage.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteForm.h"
#include "quote/QuoteSession.h"

namespace QuoteDesk
{

/// Opens the editor form of the quote's product on its first page and hands it to the module manager; brings
/// it up when it is open already. The funds page takes funds once it has been seen: go there
/// (editor.form()->goTo(QuoteForm::Page::Funds)) and wait for FundsPage::ready(). Raises CatalogueError for a
/// product that has no editor.
void openProductEditor(QuoteEditor &editor);

/// Whether there is an editor form for quotes of a product.
bool hasProductEditor(int productID);

} // namespace QuoteDesk

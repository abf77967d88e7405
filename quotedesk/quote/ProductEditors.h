#pragma once

#include "quote/FundsPage.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteForm.h"
#include "quote/QuoteSession.h"

namespace QuoteDesk
{

/// Opens the editor form for the quote's product on its first page and passes it to the module manager; an
/// open form is brought to the front. The funds page accepts funds once it has been shown: call
/// editor.form()->goTo(QuoteForm::Page::Funds) and wait for FundsPage::ready(). Throws CatalogueError for a
/// product without an editor.
void openProductEditor(QuoteEditor &editor);

/// Whether a product has an editor form.
bool hasProductEditor(int productID);

} // namespace QuoteDesk

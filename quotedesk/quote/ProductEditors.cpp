#include "quote/ProductEditors.h"

#include "catalogue/CatalogueError.h"

#include <QCoreApplication>

namespace QuoteDesk
{
namespace
{

using Opener = bool (*)(TCustomQuoteEditor *, bool);

Opener openerOf(int productID)
{
    switch (productID) {
    case 1:
        return &TfrmBaseProductEditor::Execute<RetirementAnnuityForm>;
    case 2:
        return &TfrmBaseProductEditor::Execute<LivingAnnuityForm>;
    case 3:
        return &TfrmBaseProductEditor::Execute<InvestmentPlanForm>;
    default:
        return nullptr;
    }
}

} // namespace

void openProductEditor(QuoteEditor &editor)
{
    const Opener open = openerOf(editor.product().productID);
    if (!open)
        throw CatalogueError(
            QCoreApplication::translate("ProductEditors", "There is no editor for quotes of the %1")
                .arg(editor.product().name));
    if (const IZelModulePtr module = editor.Get_Module())
        SafecallCheck(module->ShowModule());
    else
        open(&editor, true);
}

bool hasProductEditor(int productID)
{
    return openerOf(productID) != nullptr;
}

} // namespace QuoteDesk

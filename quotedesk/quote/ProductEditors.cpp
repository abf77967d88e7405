#include "quote/ProductEditors.h"

#include "quote/ProductForms.h"

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
    case RetirementAnnuityForm::ProductID:
        return &TfrmBaseProductEditor::Execute<RetirementAnnuityForm>;
    case LivingAnnuityForm::ProductID:
        return &TfrmBaseProductEditor::Execute<LivingAnnuityForm>;
    case InvestmentPlanForm::ProductID:
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
            QCoreApplication::translate("ProductEditors",
                                        "Quotes of the %1 cannot be opened: there is no editor for them")
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

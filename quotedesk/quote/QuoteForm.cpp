#include "quote/QuoteForm.h"

#include "quote/FundsPage.h"
#include "quote/QuoteEditor.h"

#include "toolkit/TApplication.h"

namespace QuoteDesk
{

QuoteForm::QuoteForm(QWidget *parent)
    : TfrmBaseProductEditor(parent), pcPages(new TcxPageControl(pnlProdEditor)),
      fraNavBar(new TfraBaseNavBar(pnlProdEditor)), fundsPage(new FundsPage)
{
    pcPages->setObjectName(QStringLiteral("pcPages"));
    fraNavBar->setObjectName(QStringLiteral("fraNavBar"));
    pcPages->addTab(fundsPage, tr("Funds"));
    layProdEditor->addWidget(pcPages, 1);
    layProdEditor->addWidget(fraNavBar);
    resize(760, 560);

    connect(fraNavBar->btnNext, &QAbstractButton::clicked, this,
            [this] { GuardedCall([this] { fraNavBar->NextSkip(*pcPages, m_skip); }); });
    connect(fraNavBar->btnPrev, &QAbstractButton::clicked, this,
            [this] { GuardedCall([this] { fraNavBar->PrevSkip(*pcPages, m_skip); }); });
    connect(pcPages, &QTabWidget::currentChanged, this,
            [this] { GuardedCall([this] { fraNavBar->RefreshNavButton(*pcPages); }); });
    connect(this, &TfrmModule::VisualPluginShow, this,
            [this] { GuardedCall([this] { fraNavBar->RefreshNavButton(*pcPages); }); });
    connect(edtDescription, &QLineEdit::textEdited, this, [this] {
        GuardedCall([this] {
            if (quoteEditor())
                quoteEditor()->noticeEdit();
        });
    });
    connect(fundsPage, &FundsPage::edited, this, [this] {
        GuardedCall([this] {
            if (quoteEditor())
                quoteEditor()->noticeEdit();
        });
    });
}

QuoteForm::~QuoteForm() = default;

QuoteEditor *QuoteForm::quoteEditor() const
{
    return static_cast<QuoteEditor *>(Editor());
}

void QuoteForm::SetUpProduct(bool)
{
    QuoteEditor &editor = *quoteEditor();
    QuoteSession &session = editor.session();
    fundsPage->setUp(session, editor.product());
    fraNavBar->ModuleForm = this;
    fraNavBar->SetNextBtn(session.nextItem);
    fraNavBar->SetPrevBtn(session.previousItem);
    fraNavBar->setVisible(!session.nextItem || !session.previousItem);
    setWindowTitle(editor.product().name);
    editor.attach(this);
}

void QuoteForm::showQuote(const Quote &quote)
{
    m_showing = true;
    edtDescription->setText(quote.description);
    cbData->setCurrentIndex(cbData->IndexOfObject(quoteEditor()->session().findClient(quote.clientID)));
    fundsPage->show(quote);
    m_showing = false;
}

void QuoteForm::readInto(Quote &quote) const
{
    if (!quoteEditor())
        return;
    const auto *const client = qobject_cast<ListedClient *>(cbData->SelectedObject());
    quote.clientID = client ? client->clientID() : 0;
    quote.description = quoteEditor()->Get_QuoteInfo()->Get_Description();
    fundsPage->readInto(quote);
}

void QuoteForm::SelectedClientChanged()
{
    if (!m_showing && quoteEditor())
        quoteEditor()->noticeEdit();
}

void QuoteForm::hideEvent(QHideEvent *event)
{
    TfrmBaseProductEditor::hideEvent(event);
}

} // namespace QuoteDesk

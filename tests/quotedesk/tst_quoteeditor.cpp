#include "ZelTest.h"

#include "Frames.h"
#include "catalogue/CatalogueProviders.h"
#include "quote/ProductEditors.h"

#include <QSignalSpy>

using namespace QuoteDesk;

namespace
{

struct Desk {
    CatalogueDatabase catalogue;
    CatalogueProviders providers{catalogue};
    QuoteSession session{catalogue, providers};
    QList<Quote> stored;

    Desk()
    {
        session.saveQuote = [this](Quote &quote, SaveMode, const QString &) {
            if (quote.quoteID == 0)
                quote.quoteID = 1;
            ++quote.revision;
            stored.append(quote);
        };
        session.setClients({{1, QStringLiteral("Adams"), QStringLiteral("Thandi"), {}, {}, {}, {}},
                            {2, QStringLiteral("Botha"), QStringLiteral("Piet"), {}, {}, {}, {}}});
    }
    static Quote quote(int productID = 1)
    {
        Quote quote;
        quote.productID = productID;
        quote.amount = 1000;
        return quote;
    }
    static bool open(QuoteEditor &editor)
    {
        openProductEditor(editor);
        QSignalSpy ready(editor.fundsPage(), &FundsPage::ready);
        return editor.form() && showActive(*editor.form()) && (editor.fundsPage()->isReady() || ready.wait());
    }
};

} // namespace

class tst_quoteeditor : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void aQuoteIsShownAndSaved();
};

void tst_quoteeditor::aQuoteIsShownAndSaved()
{
    Desk desk;
    Quote quote = Desk::quote();
    quote.clientID = 2;
    quote.description = QStringLiteral("Retirement");
    quote.funds = {{1, QStringLiteral("Baobab Equity Fund"), 400, 40}};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(Desk::open(editor));
    QVERIFY(!editor.isModified());
    QCOMPARE(editor.form()->cbData->currentText(), QStringLiteral("Botha, Piet"));
    editor.form()->edtDescription->setFocus();
    editor.form()->edtDescription->selectAll();
    QSignalSpy changed(&editor, &QuoteEditor::changed);
    QTest::keyClicks(editor.form()->edtDescription, QStringLiteral("Old age"));
    QCOMPARE(changed.size(), 7);
    QVERIFY(editor.isModified());
    editor.save();
    QVERIFY(!editor.isModified());
    QCOMPARE(desk.stored.last().description, QStringLiteral("Old age"));
    QCOMPARE(editor.quote().quoteID, 1);
}

ZEL_TEST_MAIN(tst_quoteeditor)
#include "tst_quoteeditor.moc"

// A quote of many funds: opened in its editor over catalogues of several sizes, and typed into.

#include "BenchViews.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "package/ZelCommonFrames.h"
#include "quote/ProductEditors.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// A catalogue of so many funds, a hundred a group.
QString writeCatalogue(const QTemporaryDir &folder, int funds)
{
    QFile file(folder.filePath(u"funds.csv"_s));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n");
    for (int fund = 0; fund < funds; ++fund)
        file.write(u"%1,Type %1,%2,Group %2,%3,%4\r\n"_s.arg(fund / 5000 + 1)
                       .arg(fund / 100 + 1)
                       .arg(fund + 1)
                       .arg(BenchViews::fundName(fund))
                       .toUtf8());
    return file.fileName();
}

/// What an open quote needs: a catalogue of so many funds, and the session over it.
struct Desk {
    explicit Desk(int funds)
    {
        const QString path = writeCatalogue(folder, funds);
        if (path.isEmpty())
            qFatal("no room for the file of the catalogue");
        catalogue.importFile(path);
    }
    const QTemporaryDir folder;
    CatalogueDatabase catalogue;
    CatalogueProviders providers{catalogue};
    std::unique_ptr<QuoteStore> store =
        QuoteStore::open(StoreLocation::fromText(folder.filePath(u"quotes.db"_s)));
    StoreWorker worker{*store};
    QuoteSession session{worker, catalogue, providers};
};

/// Opens the editor on its funds page; false when the page does not become ready.
bool openFunds(QuoteEditor &editor)
{
    openProductEditor(editor);
    QSignalSpy ready(editor.fundsPage(), &FundsPage::ready);
    editor.form()->goTo(QuoteForm::Page::Funds);
    editor.form()->show();
    return editor.fundsPage()->isReady() || ready.wait(600'000);
}

/// The argument is the size of the catalogue; the quote always has as many funds.
void open(benchmark::State &state)
{
    constexpr int Chosen = 10'000;
    const int funds = static_cast<int>(state.range(0));
    Desk desk(funds);
    Quote quote;
    quote.productID = 1;
    quote.amount = 1'000'000;
    for (int i = 0; i < Chosen; ++i) {
        const int fund = static_cast<int>(qint64{i} * funds / Chosen);
        quote.funds.append({fund + 1, BenchViews::fundName(fund), 100, Currency::fromRaw(100)});
    }
    const auto openOnce = [&desk, &quote, &state] {
        QuoteEditor editor(desk.session, quote);
        if (!openFunds(editor))
            state.SkipWithError("the page did not become ready");
        state.PauseTiming();
    };
    for (auto _ : state) {
        openOnce();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}
BENCHMARK(open)->Name("quote.open")->Arg(12'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

enum class Place { Percent, Amount, Investment, Description };

/// The field that the keys go to: a cell that is being edited, or a field of the form.
QLineEdit *fieldAt(Place place, const QuoteForm &form)
{
    if (place == Place::Description)
        return form.edtDescription;
    if (place == Place::Investment) {
        form.fundsPage->edAmount->selectAll();
        QTest::keyClick(form.fundsPage->edAmount, Qt::Key_7);
        return form.fundsPage->edAmount;
    }
    TtsGrid &grid = *form.fundsPage->fraFundAllocation->FundGrid;
    const bool byAmount = place == Place::Amount;
    grid.SetCurrentCell(byAmount ? TfraFundAllocation::AmountColumn : TfraFundAllocation::PercentColumn,
                        grid.RowCount() / 2);
    QTest::keyClick(&grid, Qt::Key_5);
    return grid.findChild<QLineEdit *>(u"edCell"_s);
}

/// A key press, with all that follows from it until the program waits for the next one, the drawing too. The
/// argument is the number of the quote's funds. The cents of the investment do not come out even.
template <Place place> void key(benchmark::State &state)
{
    const int funds = static_cast<int>(state.range(0));
    Desk desk(funds);
    Quote quote;
    quote.productID = 1;
    quote.amount = Currency::fromText(u"1234567.89"_s);
    quote.byAmount = place == Place::Amount;
    for (int fund = 0; fund < funds; ++fund)
        quote.funds.append({fund + 1, BenchViews::fundName(fund), quote.amount / Currency(funds),
                            Currency(100) / Currency(funds)});
    QuoteEditor editor(desk.session, quote);
    // As the window does, whose tab shows whether the quote is modified.
    QObject::connect(&editor, &QuoteEditor::changed, &editor, [&editor] {
        editor.form()->setWindowTitle(editor.title() + u"[*]"_s);
        editor.form()->setWindowModified(editor.isModified());
    });
    if (!openFunds(editor))
        return state.SkipWithError("the page did not become ready");
    QLineEdit *const field = fieldAt(place, *editor.form());
    if (!field)
        return state.SkipWithError("there is no field to type into");
    QCoreApplication::processEvents();
    bool more = true;
    for (auto _ : state) {
        QTest::keyClick(field, more ? Qt::Key_2 : Qt::Key_Backspace);
        more = !more;
        QCoreApplication::processEvents();
    }
}
BENCHMARK(key<Place::Percent>)
    ->Name("quote.key_percent")
    ->Arg(10)
    ->Arg(10'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(key<Place::Amount>)->Name("quote.key_amount")->Arg(10)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(key<Place::Investment>)
    ->Name("quote.key_investment")
    ->Arg(10)
    ->Arg(10'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(key<Place::Description>)
    ->Name("quote.key_description")
    ->Arg(10)
    ->Arg(10'000)
    ->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    Initialize();
    const int result = BenchViews::run(argc, argv);
    Finalize();
    return result;
}

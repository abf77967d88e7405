// A quote of many funds opened in its editor, over catalogues of several sizes.

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

/// The argument is the size of the catalogue; the quote always has as many funds.
void open(benchmark::State &state)
{
    constexpr int Chosen = 10'000;
    const int funds = static_cast<int>(state.range(0));
    const QTemporaryDir folder;
    const QString path = writeCatalogue(folder, funds);
    if (path.isEmpty())
        return state.SkipWithError("no room for the file");
    CatalogueDatabase catalogue;
    catalogue.importFile(path);
    CatalogueProviders providers(catalogue);
    QuoteSession session(catalogue, providers);
    Quote quote;
    quote.productID = 1;
    quote.amount = 1'000'000;
    for (int i = 0; i < Chosen; ++i) {
        const int fund = static_cast<int>(qint64{i} * funds / Chosen);
        quote.funds.append({fund + 1, BenchViews::fundName(fund), 100, Currency::fromRaw(100)});
    }
    const auto openOnce = [&session, &quote, &state] {
        QuoteEditor editor(session, quote);
        openProductEditor(editor);
        QSignalSpy ready(editor.fundsPage(), &FundsPage::ready);
        editor.form()->goTo(QuoteForm::Page::Funds);
        editor.form()->show();
        if (!editor.fundsPage()->isReady() && !ready.wait(600'000))
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

} // namespace

int main(int argc, char **argv)
{
    Initialize();
    const int result = BenchViews::run(argc, argv);
    Finalize();
    return result;
}

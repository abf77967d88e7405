#include "ZelTest.h"

#include "EditorDesk.h"

#include "data/ClientDataSet.h"

#include <QElapsedTimer>
#include <QFile>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

/// A quote on a catalogue of real size, from the import to the printout.
class tst_quotecatalogue : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void quotedOnTheRealCatalogue();
};

void tst_quotecatalogue::quotedOnTheRealCatalogue()
{
    constexpr int Chosen = 100;
    EditorDesk desk;
    QString path = realCatalogue();
    int count = 14280;
    if (path.isEmpty()) {
        qInfo("The real catalogue is not here; one of 12,000 funds is made for the test");
        count = 12000;
        path = desk.folder.filePath(u"catalogue.csv"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\n");
        for (int fund = 0; fund < count; ++fund)
            file.write(u"%1,Type %1,%2,House %2,%3,Fund number %3\n"_s.arg(fund / 600 + 1)
                           .arg(fund / 30 + 1)
                           .arg(100'000 + fund)
                           .toUtf8());
    }
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(desk.catalogue.importFile(path, [](int) { return true; }).imported, count);
    qInfo("Imported in %lld ms", clock.restart());

    QuoteEditor editor(desk.session, EditorDesk::quote(3, 1'000'000));
    QVERIFY(desk.open(editor));
    qInfo("Opened in %lld ms", clock.elapsed());
    const FundsHand hand(editor);

    // Pastes a hundred funds by name, spread over the catalogue. Names that several funds share are skipped,
    // because they are ambiguous.
    TClientDataSet offered;
    offered.SetData(desk.providers.fundPacket(3));
    QCOMPARE(offered.RecordCount(), count);
    QStringList lines;
    QSet<int> wanted;
    FundNames names;
    const TField &id = *offered.FieldByName(u"FundID"_s);
    const TField &name = *offered.FieldByName(u"FundName"_s);
    for (; !offered.Eof(); offered.Next())
        names.add(id.AsInteger(), {name.AsString(), name.AsString(), {}, 0});
    offered.First();
    for (int row = 0; !offered.Eof(); offered.Next(), ++row) {
        if (row % (count / Chosen) != 0 || wanted.size() == Chosen || wanted.contains(id.AsInteger()))
            continue;
        const bool isOnlyOne = names.named(name.AsString()).size() == 1;
        lines.append((isOnlyOne ? name.AsString() : id.AsString()) + u"\t0%"_s);
        wanted.insert(id.AsInteger());
    }
    clock.restart();
    hand.paste(lines.join(u'\n'));
    qInfo("Pasted in %lld ms", clock.restart());
    QCOMPARE(hand.said(), u"%1 fund(s) pasted"_s.arg(lines.size()));
    QCOMPARE(hand.grid().RowCount(), wanted.size());

    // The selector opens on the whole catalogue with these funds selected.
    int selected = -1;
    QVERIFY(hand.inSelector([&](TfrmFundSelector &selector) {
        qInfo("Selector up in %lld ms", clock.elapsed());
        selected = selector.fraFundSelector->fraFundsSelectedListView->lvSelectedFunds->Items().Count();
        QTest::mouseClick(selector.fraFundSelector->btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(selected, wanted.size());
    QCOMPARE(hand.grid().RowCount(), wanted.size());

    clock.restart();
    FundsHand::click(hand.bar().sbtAllocateAmount);
    qInfo("Allocated in %lld ms", clock.elapsed());
    QVERIFY(editor.quote().isAllocated());
    QCOMPARE(editor.report().split.restPercent, Currency());
    editor.save();
    const QString file = desk.folder.filePath(u"quote.pdf"_s);
    editor.exportPdf(file);
    QVERIFY(QFile(file).size() > 10'000);

    QuoteEditor later(desk.session, desk.store->quote(editor.quote().quoteID));
    QVERIFY(desk.open(later));
    QVERIFY(!later.isModified());
    QCOMPARE(FundsHand(later).column(4), hand.column(4));
}

ZEL_TEST_MAIN(tst_quotecatalogue)
#include "tst_quotecatalogue.moc"

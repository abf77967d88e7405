#include "ZelTest.h"
// labels: linux

#include "examples/CatalogueCsv.h"

#include <QTemporaryDir>

namespace
{
QString s(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

/// The reader of catalogue files that the examples and tests share.
class tst_CatalogueCsv : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void cells_data();
    void cells();
    void readsFiles();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();

private:
    QString fileOf(const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(s("catalogue.csv")));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return {};
        return file.fileName();
    }
    QTemporaryDir m_folder;
};

void tst_CatalogueCsv::cells_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rows"); // cells joined by "|", rows by "/"
    QTest::newRow("plain") << s("a,b\nc,d\n") << s("a|b/c|d");
    QTest::newRow("no last line end") << s("a,b\r\nc,d") << s("a|b/c|d");
    QTest::newRow("comma in quotes") << s("\"a,b\",c") << s("a,b|c");
    QTest::newRow("doubled quotes") << s("\"the \"\"Blue\"\" fund\",\"\"\"\"") << s("the \"Blue\" fund|\"");
    QTest::newRow("line end in quotes") << s("\"a\nb\",c") << s("a\nb|c");
    QTest::newRow("empty cells") << s(",\"\",") << s("||");
    QTest::newRow("empty lines") << s("\n\na,b\n\r\n") << s("a|b");
    QTest::newRow("blanks are kept") << s(" a ,\tb") << s(" a |\tb");
    QTest::newRow("nothing") << QString() << QString();
}

void tst_CatalogueCsv::cells()
{
    QFETCH(QString, text);
    QFETCH(QString, rows);
    QStringList found;
    for (const QStringList &row : CatalogueCsv::rowsOf(text))
        found << row.join(QLatin1Char('|'));
    QCOMPARE(found.join(QLatin1Char('/')), rows);
}

void tst_CatalogueCsv::readsFiles()
{
    const QString file = fileOf("\xEF\xBB\xBFType,Name,Group,Name,Fund,Name\r\n"
                                "1,Debt,10,\"North, \"\"old\"\"\",100, \xC3\x84lpha \r\n");
    const QList<QStringList> rows{
        {s("1"), s("Debt"), s("10"), s("North, \"old\""), s("100"), s(" \xC3\x84lpha ")}};
    QCOMPARE(CatalogueCsv::read(file), rows);
    QCOMPARE(QProcess::execute(s("gzip"), {file}), 0);
    QCOMPARE(CatalogueCsv::read(file + s(".gz")), rows);
    if (ZelTest::realCatalogue().isEmpty())
        qInfo("The real catalogue is not there");
    else
        QCOMPARE(CatalogueCsv::read(ZelTest::realCatalogue()).size(), 14280);
}

void tst_CatalogueCsv::saysWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("said");
    const QByteArray heading = "Type,Name,Group,Name,Fund,Name\n";
    QTest::newRow("too few cells") << QByteArray(heading + "1,Debt,10\n") << s("row 2 has 3 cells, not 6");
    QTest::newRow("no number") << QByteArray(heading + "1,Debt,10,North,ten,Alpha\n")
                               << s("row 2: \"ten\" is no number");
    QTest::newRow("open quote") << QByteArray(heading + "1,\"Debt\n") << s("a quote is not closed");
    QTest::newRow("no UTF-8") << QByteArray("\xFF\xFE\x41") << s("it is no text in UTF-8");
    QTest::newRow("damaged") << QByteArray("\x1f\x8b\x08nonsense") << s("it cannot be unpacked");
    QTest::newRow("not there") << QByteArray() << s("No such file or directory");
}

void tst_CatalogueCsv::saysWhatIsWrong()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, said);
    const QString file = bytes.isEmpty() ? m_folder.filePath(s("nowhere.csv")) : fileOf(bytes);
    QString message;
    try {
        CatalogueCsv::read(file);
    } catch (const EDatabaseError &error) {
        message = error.message();
    }
    QCOMPARE(message, s("The catalogue %1 cannot be read: %2.").arg(file, said));
}

ZEL_TEST_MAIN(tst_CatalogueCsv)
#include "tst_catalogue_csv.moc"

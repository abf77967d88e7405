#include "ZelTest.h"

#include "look/ProgramIcon.h"

#include <QDomDocument>
#include <QFile>
#include <QIcon>
#include <QMap>
#include <QProcess>
#include <QSet>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

QString read(const char *file)
{
    QFile source(ZelTest::sourceFile(u"quotedesk/freedesktop/"_s + QLatin1StringView(file)));
    return source.open(QIODevice::ReadOnly) ? QString::fromUtf8(source.readAll()) : QString();
}

/// The keys of the desktop entry's only group.
QMap<QString, QString> entry()
{
    QMap<QString, QString> keys;
    const QStringList lines = read("quotedesk.desktop").split(u'\n', Qt::SkipEmptyParts);
    if (lines.value(0) != u"[Desktop Entry]"_s)
        return {};
    for (const QString &line : lines.mid(1))
        keys.insert(line.section(u'=', 0, 0), line.section(u'=', 1));
    return keys;
}

} // namespace

/// The files that a desktop reads agree with the program.
class tst_freedesktop : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void desktopEntry();
    void metainfo();
    void icon();
};

void tst_freedesktop::desktopEntry()
{
    const QMap<QString, QString> keys = entry();
    QCOMPARE(keys.value(u"Type"_s), u"Application"_s);
    QCOMPARE(keys.value(u"Name"_s), u"Quote Desk"_s);
    QCOMPARE(keys.value(u"Exec"_s), u"quotedesk"_s);
    QCOMPARE(keys.value(u"Icon"_s), u"quotedesk"_s);
    // Desktops find the window by the class that the program sets.
    QCOMPARE(keys.value(u"StartupWMClass"_s), u"quotedesk"_s);
    QVERIFY(keys.value(u"Categories"_s).startsWith(u"Office;Finance;"_s));
    for (const char *key : {"GenericName", "Comment", "Keywords"}) {
        const QString own = keys.value(QLatin1StringView(key));
        const QString afrikaans = keys.value(QLatin1StringView(key) + u"[af]"_s);
        QVERIFY2(!own.isEmpty() && !afrikaans.isEmpty() && own != afrikaans, key);
    }
    QProcess program;
    program.start(builtProgram(u"quotedesk"_s), {u"--version"_s});
    QVERIFY(program.waitForFinished(30'000));
    QCOMPARE(program.exitCode(), 0);
    QVERIFY(program.readAllStandardOutput().startsWith(keys.value(u"Name"_s).toUtf8() + ' '));
}

void tst_freedesktop::metainfo()
{
    QString text = read("quotedesk.metainfo.xml.in");
    QVERIFY(text.contains(u"@PROJECT_VERSION@"_s));
    text.replace(u"@PROJECT_VERSION@"_s, u"1.0.0"_s);
    QDomDocument document;
    QString error;
    QVERIFY2(document.setContent(text, &error), qPrintable(error));
    const QDomElement component = document.documentElement();
    QCOMPARE(component.tagName(), u"component"_s);
    QCOMPARE(component.attribute(u"type"_s), u"desktop-application"_s);
    const auto child = [&component](const char *name) {
        return component.firstChildElement(QLatin1StringView(name));
    };
    for (const char *name :
         {"id", "name", "summary", "metadata_license", "project_license", "description", "content_rating"})
        QVERIFY2(!child(name).isNull(), name);
    QCOMPARE(child("launchable").text(), u"quotedesk.desktop"_s);
    QCOMPARE(child("provides").firstChildElement(u"binary"_s).text(), entry().value(u"Exec"_s));
    // Every text has an Afrikaans translation.
    for (const char *name : {"p", "li", "summary"}) {
        const QDomNodeList all = document.elementsByTagName(QLatin1StringView(name));
        int own = 0;
        int afrikaans = 0;
        for (int i = 0; i < all.size(); ++i)
            ++(all.at(i).toElement().attribute(u"xml:lang"_s) == u"af"_s ? afrikaans : own);
        QVERIFY2(own > 0 && own == afrikaans, name);
    }
}

void tst_freedesktop::icon()
{
    const QIcon icon = programIcon();
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QVERIFY(icon.availableSizes().contains(QSize(size, size)));
        const QImage image = icon.pixmap(size, size).toImage().convertToFormat(QImage::Format_ARGB32);
        // The icon has several colours and transparent corners.
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                colours.insert(image.pixel(x, y));
        }
        QVERIFY(colours.size() > 3);
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    }
}

ZEL_TEST_MAIN(tst_freedesktop)
#include "tst_freedesktop.moc"

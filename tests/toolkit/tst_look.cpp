#include "Contrast.h"
#include "ZelTest.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>

/// The colours, fonts and heights of the application look.
class tst_Look : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { SetLook(Look::Designed); }
    void isTheDesignedOneAtFirst();
    void reachesEveryWidgetOnce();
    void hasContrast_data();
    void hasContrast();
    void fundsDifferFromTheirGround_data();
    void fundsDifferFromTheirGround();
    void followsThePaletteOfTheHost();
    void relatesTheFonts();
    void followsTheFontWithItsHeights();
    void picturesShareOneGrid();
    void picturesTakeTheirColour();
};

void tst_Look::isTheDesignedOneAtFirst()
{
    QCOMPARE(CurrentLook(), Look::Designed);
    SetLook(Look::Application);
    QCOMPARE(CurrentLook(), Look::Application);
}

void tst_Look::reachesEveryWidgetOnce()
{
    class Counter : public QWidget
    {
    public:
        using QWidget::QWidget;
        int count = 0;

    protected:
        void changeEvent(QEvent *event) override { count += event->type() == QEvent::StyleChange ? 1 : 0; }
    };
    Counter parent;
    Counter child(&parent);
    SetLook(Look::Application);
    QCOMPARE(parent.count, 1);
    QCOMPARE(child.count, 1);
    SetLook(Look::Application);
    QCOMPARE(child.count, 1);
    SetLook(Look::Designed);
    QCOMPARE(child.count, 2);
}

void tst_Look::hasContrast_data()
{
    QTest::addColumn<LookColor>("front");
    QTest::addColumn<LookColor>("ground");
    QTest::addColumn<double>("least");
    constexpr double text = 4.5;
    constexpr double edge = 3.0;
    using enum LookColor;
    const auto add = [](const char *name, LookColor front, std::initializer_list<LookColor> grounds,
                        double least) {
        for (const LookColor ground : grounds)
            QTest::addRow("%s on %d", name, static_cast<int>(ground)) << front << ground << least;
    };
    add("text", Text, {Ground, Surface, Raised, AccentSoft, AccentMid, Mark}, text);
    add("labels", Text2, {Ground, Surface, Raised, AccentSoft, OkGround, InfoGround, WarnGround, ErrorGround},
        text);
    add("hints", Text3, {Ground, Surface}, text);
    add("links", AccentText, {Surface, Ground, AccentSoft}, text);
    add("filled button", OnAccent, {Accent, AccentHover, AccentPress}, text);
    add("side bar", SideText, {Side, SideChosen}, text);
    add("side bar, second line", SideText2, {Side, SideChosen}, text);
    add("side bar, button", OnSideButton, {SideButton}, text);
    add("done", OkText, {OkGround, Surface}, text);
    add("news", InfoText, {InfoGround, Surface}, text);
    add("to do", WarnText, {WarnGround, Surface, Ground}, text);
    add("wrong", ErrorText, {ErrorGround, Surface, Ground}, text);
    add("draft", NeutralText, {NeutralGround}, text);
    add("edge of a field", Field, {Surface, Ground}, edge);
    add("edge of the accent", Accent, {Surface, Ground}, edge);
    add("focus ring", Focus, {Surface, Ground, Raised, AccentSoft}, edge);
    add("edge, to do", WarnMark, {Surface}, edge);
    add("edge, wrong", ErrorMark, {Surface}, edge);
    add("strip of the chosen place", SideStrip, {Side, SideChosen}, edge);
    add("dot of unsaved changes", Unsaved, {Side, SideChosen}, edge);
}

void tst_Look::hasContrast()
{
    QFETCH(const LookColor, front);
    QFETCH(const LookColor, ground);
    QFETCH(const double, least);
    for (const bool dark : {false, true}) {
        const QPalette palette = LookPalette(dark);
        QCOMPARE(IsDark(palette), dark);
        const double contrast = Contrast(ColorOf(front, palette), ColorOf(ground, palette));
        QVERIFY2(contrast >= least,
                 qPrintable(QStringLiteral("%1 in %2 colours")
                                .arg(contrast)
                                .arg(dark ? QLatin1String("dark") : QLatin1String("light"))));
    }
}

void tst_Look::fundsDifferFromTheirGround_data()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void tst_Look::fundsDifferFromTheirGround()
{
    QFETCH(const bool, dark);
    const QColor ground = ColorOf(LookColor::Surface, LookPalette(dark));
    for (int index = 0; index <= FundColorCount; ++index) {
        const QColor color = FundColor(index, dark);
        QVERIFY2(Contrast(color, ground) >= 3.0, qPrintable(color.name()));
        for (int other = 0; other < index; ++other)
            QVERIFY(color != FundColor(other, dark));
    }
    QCOMPARE(FundColor(1000, dark), FundColor(FundColorCount, dark));
    QCOMPARE(FundColor(-1, dark), FundColor(0, dark));
}

void tst_Look::followsThePaletteOfTheHost()
{
    QPalette palette(Qt::white, Qt::black);
    palette.setColor(QPalette::Base, Qt::darkBlue);
    QCOMPARE(ColorOf(LookColor::Surface, palette), QColor(Qt::darkBlue));
    QCOMPARE(ColorOf(LookColor::Ground, palette), palette.color(QPalette::Window));
    QCOMPARE(ColorOf(LookColor::Text, palette), palette.color(QPalette::WindowText));
}

void tst_Look::relatesTheFonts()
{
    QFont body = QApplication::font();
    body.setPointSizeF(10);
    QCOMPARE(FontOf(LookFont::Caption, body).pointSizeF(), 9.0);
    QCOMPARE(FontOf(LookFont::Body, body).pointSizeF(), 10.0);
    QCOMPARE(FontOf(LookFont::Heading, body).pointSizeF(), 11.5);
    QCOMPARE(FontOf(LookFont::Title, body).pointSizeF(), 14.0);
    QCOMPARE(FontOf(LookFont::Figure, body).pointSizeF(), 20.0);
    QCOMPARE(FontOf(LookFont::Result, body).pointSizeF(), 15.0);
    QCOMPARE(FontOf(LookFont::Strong, body).weight(), int(QFont::DemiBold));
    QCOMPARE(FontOf(LookFont::Caption, body).weight(), int(QFont::Normal));
    body.setItalic(false);
    QVERIFY(!FontOf(LookFont::Heading, body).italic());
    // A caption is never smaller than eight points, nor larger than the body.
    body.setPointSizeF(8.5);
    QCOMPARE(FontOf(LookFont::Caption, body).pointSizeF(), 8.0);
    body.setPointSizeF(7);
    QCOMPARE(FontOf(LookFont::Caption, body).pointSizeF(), 7.0);
    body.setPixelSize(16);
    QCOMPARE(FontOf(LookFont::Title, body).pixelSize(), 21);
    QCOMPARE(FontOf(LookFont::Caption, body).pixelSize(), 15);
}

void tst_Look::followsTheFontWithItsHeights()
{
    QFont small = QApplication::font();
    small.setPixelSize(12);
    QFont large = small;
    large.setPixelSize(24);
    const QFontMetrics metrics(small);
    QCOMPARE(HeightOf(LookHeight::Row, metrics), metrics.height() + 16);
    QCOMPARE(HeightOf(LookHeight::Chip, metrics), metrics.height() + 4);
    QCOMPARE(HeightOf(LookHeight::CommandBar, QFontMetrics(large)) -
                 HeightOf(LookHeight::CommandBar, metrics),
             QFontMetrics(large).height() - metrics.height());
}

void tst_Look::picturesShareOneGrid()
{
    // A picture of 24 pixels has a margin of two; here each of them is drawn four times as large.
    constexpr int edge = 96;
    constexpr int margin = 7; // rounded lines may blur into the eighth pixel
    for (const QString &name : GlyphNames()) {
        const QImage image = GlyphIcon(name).pixmap(edge, edge).toImage();
        QCOMPARE(image.size(), QSize(edge, edge));
        QRect drawn;
        for (int y = 0; y < edge; ++y) {
            for (int x = 0; x < edge; ++x) {
                if (qAlpha(image.pixel(x, y)) > 0)
                    drawn |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY2(!drawn.isEmpty(), qPrintable(name));
        QVERIFY2(QRect(margin, margin, edge - 2 * margin, edge - 2 * margin).contains(drawn),
                 qPrintable(name));
        QVERIFY2(qMax(drawn.width(), drawn.height()) >= edge / 2, qPrintable(name));
    }
}

void tst_Look::picturesTakeTheirColour()
{
    QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintGlyph(painter, image.rect(), QStringLiteral("new"), Qt::red);
    PaintGlyph(painter, image.rect(), QStringLiteral("no such picture"), Qt::green);
    painter.end();
    QCOMPARE(image.pixelColor(12, 12), QColor(Qt::red));
    QCOMPARE(image.pixelColor(1, 1), QColor(Qt::white));
    const QColor off = QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText);
    const QImage disabled = GlyphIcon(QStringLiteral("new")).pixmap(24, 24, QIcon::Disabled).toImage();
    QCOMPARE(disabled.pixelColor(12, 12).rgb(), off.rgb());
}

ZEL_TEST_MAIN(tst_Look)
#include "tst_look.moc"

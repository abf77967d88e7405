#include "Contrast.h"
#include "ZelTest.h"

#include "look/Banner.h"
#include "look/Chip.h"
#include "look/EmptyState.h"
#include "look/Kinds.h"
#include "look/ProblemLine.h"
#include "look/TextLabel.h"

#include "toolkit/TApplication.h"

#include <QAccessible>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

QString nameOf(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

/// A page with banners above a field.
struct Page {
    QWidget window;
    BannerStack *banners = new BannerStack(&window);
    QLineEdit *field = new QLineEdit(&window);

    Page()
    {
        auto *const column = new QVBoxLayout(&window);
        column->addWidget(banners);
        column->addWidget(field);
        column->addStretch();
        window.resize(700, 300);
        field->setFocus();
    }
    bool show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    QStringList shown() const
    {
        QStringList texts;
        for (const Banner *banner : banners->banners()) {
            if (banner->isVisible())
                texts.append(banner->content().text);
        }
        return texts;
    }
};

} // namespace

/// The parts that Quote Desk's screens share.
class tst_look_components : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void chipShowsPictureAndWord();
    void chipElidesInADelegate();
    void filterChipIsSwitchedByTheKeyboard();
    void newestBannerIsOnTop();
    void waitingBannerReturns();
    void bannerIsReplacedByItsTopic();
    void newsDisappear_data();
    void newsDisappear();
    void newsStayWhileTheyAreUsed();
    void bannerActs();
    void throwingActionIsReported();
    void bannerClosesByKey();
    void bannerIsAMessageToScreenReaders();
    void emptyStateStandsAtTwoFifths();
    void problemLineDescribesTheField();
    void textLabelFollowsFontAndPalette();
    void buttonsHaveKinds();
};

void tst_look_components::chipShowsPictureAndWord()
{
    for (const ChipState state : {ChipState::Draft, ChipState::Allocated, ChipState::TooMuch}) {
        const ChipText chip = chipOf(state, u"a word"_s);
        QVERIFY(!chip.glyph.isEmpty());
        Chip widget;
        widget.setChip(chip);
        QCOMPARE(nameOf(&widget), u"a word"_s);
        QCOMPARE(QAccessible::queryAccessibleInterface(&widget)->role(), QAccessible::StaticText);
        QCOMPARE(widget.sizeHint().height(), HeightOf(LookHeight::Chip, widget.fontMetrics()));
        // The picture takes room beside the word.
        const ChipText bare{chip.kind, {}, chip.text};
        QVERIFY(Chip::sizeOf(bare, widget.font()).width() < widget.sizeHint().width());
    }
}

void tst_look_components::chipElidesInADelegate()
{
    const ChipText chip{ChipKind::Warn, {}, u"a very long word without room"_s};
    QImage image(200, 40, QImage::Format_ARGB32_Premultiplied);
    const QColor outside(Qt::magenta);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        image.fill(outside);
        QPainter painter(&image);
        Chip::paint(painter, QRect(50, 5, 60, 30), chip, LookPalette(false), QApplication::font(), direction);
        painter.end();
        const QColor ground = ColorOf(LookColor::WarnGround, LookPalette(false));
        QCOMPARE(image.pixelColor(55, 20), ground);
        for (int y = 0; y < image.height(); ++y) {
            for (const int x : {10, 49, 110, 190})
                QCOMPARE(image.pixelColor(x, y), outside);
        }
    }
}

void tst_look_components::filterChipIsSwitchedByTheKeyboard()
{
    FilterChip chip(u"Draft"_s);
    const int bare = chip.sizeHint().width();
    chip.setCount(9);
    QVERIFY(chip.sizeHint().width() > bare);
    QCOMPARE(nameOf(&chip), u"Draft"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(&chip)->text(QAccessible::Description), u"9"_s);
    const QSize off = chip.sizeHint();
    chip.show();
    chip.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&chip));
    chip.setFocus();
    QTest::keyClick(&chip, Qt::Key_Space);
    QVERIFY(chip.isChecked());
    QVERIFY(QAccessible::queryAccessibleInterface(&chip)->state().checked);
    QCOMPARE(chip.sizeHint(), off);
}

void tst_look_components::newestBannerIsOnTop()
{
    Page page;
    QVERIFY(page.show());
    QVERIFY(!page.banners->isVisible());
    page.banners->showBanner({BannerKind::Warn, u"first"_s, {}, {}, {}});
    page.banners->showBanner({BannerKind::Error, u"second"_s, {}, {}, {}});
    QCOMPARE(page.shown(), (QStringList{u"second"_s, u"first"_s}));
    QTRY_VERIFY(page.banners->banners().at(0)->y() < page.banners->banners().at(1)->y());
    // The field below keeps the keyboard.
    QCOMPARE(QApplication::focusWidget(), page.field);
    page.banners->showBanner({BannerKind::Error, u"first"_s, {}, {}, {}}); // another kind
    QCOMPARE(page.banners->banners().size(), 3);
    page.banners->showBanner({BannerKind::Error, u"first"_s, {}, {}, {}}); // the same again
    QCOMPARE(page.banners->banners().size(), 3);
    page.banners->clear();
    QVERIFY(!page.banners->isVisible());
}

void tst_look_components::waitingBannerReturns()
{
    Page page;
    QVERIFY(page.show());
    for (const auto &text : {u"first"_s, u"second"_s, u"third"_s})
        page.banners->showBanner({BannerKind::Error, text, {}, {}, {}});
    QCOMPARE(page.shown(), (QStringList{u"third"_s, u"second"_s}));
    QTest::mouseClick(page.banners->banners().first()->closeButton(), Qt::LeftButton);
    QCOMPARE(page.shown(), (QStringList{u"second"_s, u"first"_s}));
}

void tst_look_components::bannerIsReplacedByItsTopic()
{
    Page page;
    QVERIFY(page.show());
    page.banners->showBanner({BannerKind::Error, u"The server is silent."_s, {}, {}, u"server"_s});
    page.banners->showBanner({BannerKind::Warn, u"The server is slow."_s, {}, {}, u"server"_s});
    QCOMPARE(page.shown(), QStringList{u"The server is slow."_s});
    page.banners->dismiss(u"other"_s);
    QCOMPARE(page.shown().size(), 1);
    page.banners->dismiss(u"server"_s);
    QVERIFY(page.shown().isEmpty());
}

void tst_look_components::newsDisappear_data()
{
    QTest::addColumn<BannerKind>("kind");
    QTest::addColumn<bool>("stays");
    QTest::newRow("info") << BannerKind::Info << false;
    QTest::newRow("ok") << BannerKind::Ok << false;
    QTest::newRow("warn") << BannerKind::Warn << true;
    QTest::newRow("error") << BannerKind::Error << true;
}

void tst_look_components::newsDisappear()
{
    QFETCH(const BannerKind, kind);
    QFETCH(const bool, stays);
    Page page;
    page.banners->setShownTime(20);
    QVERIFY(page.show());
    page.banners->showBanner({kind, u"a sentence"_s, {}, {}, {}});
    // A second banner whose time is over shows that the first one's time is over, too.
    page.banners->showBanner({BannerKind::Info, u"another"_s, {}, {}, {}});
    QTRY_COMPARE(page.shown().size(), stays ? 1 : 0);
    QCOMPARE(page.shown().contains(u"a sentence"_s), stays);
}

void tst_look_components::newsStayWhileTheyAreUsed()
{
    Page page;
    page.banners->setShownTime(20);
    QVERIFY(page.show());
    Banner *const used = page.banners->showBanner({BannerKind::Info, u"used"_s, u"Undo"_s, {}, {}});
    used->actionButton()->setFocus();
    for (int i = 0; i < 3; ++i) {
        page.banners->showBanner({BannerKind::Info, u"other"_s, {}, {}, {}});
        QTRY_COMPARE(page.shown(), QStringList{u"used"_s});
    }
    page.field->setFocus();
    QTRY_VERIFY(page.shown().isEmpty());
}

void tst_look_components::bannerActs()
{
    Page page;
    QVERIFY(page.show());
    int count = 0;
    // The action itself may show a banner.
    const auto act = [&] {
        ++count;
        page.banners->showBanner({BannerKind::Ok, u"done"_s, {}, {}, {}});
    };
    Banner *const banner =
        page.banners->showBanner({BannerKind::Error, u"not saved"_s, u"Try again"_s, act, {}});
    QCOMPARE(banner->actionButton()->text(), u"Try again"_s);
    QTest::mouseClick(banner->actionButton(), Qt::LeftButton);
    QCOMPARE(count, 1);
    QCOMPARE(page.shown(), QStringList{u"done"_s});
}

void tst_look_components::throwingActionIsReported()
{
    Page page;
    QVERIFY(page.show());
    QString reported;
    const TExceptionReport former =
        SetExceptionReport([&reported](const QString &message) { reported = message; });
    const auto restore = qScopeGuard([&former] { SetExceptionReport(former); });
    Banner *const banner = page.banners->showBanner(
        {BannerKind::Error, u"not saved"_s, u"Try again"_s, [] { throw Exception(u"still full"_s); }, {}});
    QTest::mouseClick(banner->actionButton(), Qt::LeftButton);
    QCOMPARE(reported, u"still full"_s);
}

void tst_look_components::bannerClosesByKey()
{
    Page page;
    QVERIFY(page.show());
    Banner *const banner = page.banners->showBanner({BannerKind::Warn, u"to do"_s, u"Show"_s, {}, {}});
    page.field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(page.field, Qt::Key_Backtab);
    QVERIFY(banner->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(page.shown().isEmpty());
}

void tst_look_components::bannerIsAMessageToScreenReaders()
{
    Page page;
    QVERIFY(page.show());
    Banner *const banner = page.banners->showBanner({BannerKind::Error, u"It did not work."_s, {}, {}, {}});
    QCOMPARE(QAccessible::queryAccessibleInterface(banner)->role(), QAccessible::AlertMessage);
    QCOMPARE(nameOf(banner), u"It did not work."_s);
    QVERIFY(!nameOf(banner->closeButton()).isEmpty());
}

void tst_look_components::emptyStateStandsAtTwoFifths()
{
    EmptyState state;
    state.setContent(u"search"_s, u"No quote fits"_s, u"Look in all states."_s);
    const QPushButton *const button = state.addButton(u"Clear the search"_s);
    state.resize(800, 600);
    state.show();
    const QWidget *const content = button->parentWidget();
    QTRY_VERIFY(qAbs(content->geometry().center().y() - 240) <= 2);
    QVERIFY(qAbs(content->geometry().center().x() - 400) <= 2);
    // On a low page nothing is cut.
    state.resize(state.minimumSizeHint());
    QTRY_VERIFY(state.rect().contains(content->geometry()));
}

void tst_look_components::problemLineDescribesTheField()
{
    QWidget window;
    auto *const column = new QVBoxLayout(&window);
    auto *const field = new QLineEdit(&window);
    field->setAccessibleDescription(u"the age in years"_s);
    auto *const line = new ProblemLine(field, &window);
    column->addWidget(field);
    column->addWidget(line);
    window.show();
    QVERIFY(!line->isVisible());
    line->showProblem(u"The age is from 55 to 75."_s);
    QVERIFY(line->isVisible());
    QCOMPARE(field->accessibleDescription(), u"The age is from 55 to 75."_s);
    QCOMPARE(fieldMarkOf(field), FieldMark::Problem);
    line->showAdvice(u"Higher than usual."_s);
    QCOMPARE(field->accessibleDescription(), u"Higher than usual."_s);
    QCOMPARE(fieldMarkOf(field), FieldMark::Advice);
    line->clear();
    QVERIFY(!line->isVisible());
    QCOMPARE(field->accessibleDescription(), u"the age in years"_s);
    QCOMPARE(fieldMarkOf(field), FieldMark::None);
}

void tst_look_components::textLabelFollowsFontAndPalette()
{
    const QFont formerFont = QApplication::font();
    const QPalette formerPalette = QApplication::palette();
    const auto restore = qScopeGuard([&] { QApplication::setPalette(formerPalette); });
    QApplication::setPalette(LookPalette(false));
    QWidget window;
    TextLabel label(LookFont::Figure, LookColor::Text2, &window);
    window.show();
    QCOMPARE(label.font().pointSizeF(), formerFont.pointSizeF() + 10);
    QCOMPARE(label.font().weight(), int(QFont::DemiBold));
    QFont larger = formerFont;
    larger.setPointSizeF(formerFont.pointSizeF() + 3);
    window.setFont(larger);
    QCOMPARE(label.font().pointSizeF(), formerFont.pointSizeF() + 13);
    QApplication::setPalette(LookPalette(true));
    QTRY_COMPARE(label.palette().color(QPalette::WindowText), ColorOf(LookColor::Text2, LookPalette(true)));
}

void tst_look_components::buttonsHaveKinds()
{
    QPushButton button;
    QVERIFY(!buttonKindOf(&button));
    setButtonKind(button, ButtonKind::Suggested);
    QCOMPARE(buttonKindOf(&button), ButtonKind::Suggested);
    QVERIFY(!isSmall(&button));
    setSmall(button);
    QVERIFY(isSmall(&button));
}

ZEL_TEST_MAIN(tst_look_components)
#include "tst_look_components.moc"

#include "Contrast.h"
#include "ZelTest.h"

#include "look/Appearance.h"
#include "look/DeskStyle.h"
#include "look/Kinds.h"

#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// How often @p color is drawn on @p widget.
int count(QWidget &widget, const QColor &color)
{
    const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            found += image.pixelColor(x, y) == color ? 1 : 0;
    }
    return found;
}

QColor colorOf(LookColor color)
{
    return ColorOf(color, QApplication::palette());
}

/// The colour in the middle of the widget's upper part, where its ground is without text.
QColor groundOf(QWidget &widget)
{
    return widget.grab().toImage().pixelColor(widget.width() / 2, 4);
}

/// A table of three rows and two columns.
class Table : public QTableWidget
{
public:
    Table() : QTableWidget(3, 2)
    {
        setSelectionBehavior(SelectRows);
        setShowGrid(false);
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 2; ++column)
                setItem(row, column, new QTableWidgetItem(u"cell"_s));
        }
        resize(400, 250);
        setCurrentCell(1, 0);
    }
};

} // namespace

/// The style, the palette and the font of Quote Desk.
class tst_look_style : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() override;
    void cleanupTestCase();

    void controlsFollowTheFont_data();
    void controlsFollowTheFont();
    void buttonsShowTheirKind_data();
    void buttonsShowTheirKind();
    void keyboardFocusHasARing();
    void fieldsShowTheirMark();
    void currentRowHasARingOrAStrip();
    void currentTabHasALine();
    void wordsOfTabsAreWhole();
    void mirrorsWithTheLanguage();
    void colourSchemesDiffer();
    void followsTheSystem();
    void highContrastOfTheSystemStays();
    void rowOfATreeIsChosenWhole();
    void textSizesDiffer();
    void digitsHaveOneWidth();
};

void tst_look_style::init()
{
    ZelTest::init();
    Appearance::apply(ColourScheme::Light, TextSize::Normal);
}

void tst_look_style::cleanupTestCase()
{
    Appearance::apply(ColourScheme::Light, TextSize::Normal);
}

void tst_look_style::controlsFollowTheFont_data()
{
    QTest::addColumn<int>("pixels");
    QTest::newRow("small") << 12;
    QTest::newRow("large") << 26;
}

void tst_look_style::controlsFollowTheFont()
{
    QFETCH(const int, pixels);
    QPushButton button(u"Begin"_s);
    QLineEdit line;
    QComboBox combo;
    QSpinBox spin;
    QDateEdit date;
    QTableWidget table(1, 1);
    QTabBar tabs;
    tabs.addTab(u"Summary"_s);
    for (QWidget *const widget :
         std::initializer_list<QWidget *>{&button, &line, &combo, &spin, &date, &table, &tabs}) {
        QFont font = widget->font();
        font.setPixelSize(pixels);
        widget->setFont(font);
    }
    const QFontMetrics metrics = button.fontMetrics();
    const int field = HeightOf(LookHeight::Field, metrics);
    for (QWidget *const widget : std::initializer_list<QWidget *>{&button, &line, &combo, &spin, &date})
        QCOMPARE(widget->sizeHint().height(), field);
    QCOMPARE(table.horizontalHeader()->sizeHint().height(), HeightOf(LookHeight::TableHead, metrics));
    QCOMPARE(tabs.sizeHint().height(), HeightOf(LookHeight::TabStrip, metrics));
    setSmall(button);
    QCOMPARE(button.sizeHint().height(), HeightOf(LookHeight::SmallField, metrics));
}

void tst_look_style::buttonsShowTheirKind_data()
{
    QTest::addColumn<ButtonKind>("kind");
    QTest::addColumn<LookColor>("ground");
    QTest::newRow("filled") << ButtonKind::Filled << LookColor::Accent;
    QTest::newRow("suggested") << ButtonKind::Suggested << LookColor::AccentSoft;
    QTest::newRow("quiet") << ButtonKind::Quiet << LookColor::Surface;
    QTest::newRow("flat") << ButtonKind::Flat << LookColor::Ground;
}

void tst_look_style::buttonsShowTheirKind()
{
    QFETCH(const ButtonKind, kind);
    QFETCH(const LookColor, ground);
    for (const ColourScheme scheme : {ColourScheme::Light, ColourScheme::Dark}) {
        Appearance::apply(scheme, TextSize::Normal);
        QPushButton button(u"Begin"_s);
        setButtonKind(button, kind);
        button.resize(button.sizeHint());
        QCOMPARE(groundOf(button), colorOf(ground));
        button.setEnabled(false);
        QVERIFY(groundOf(button) != colorOf(LookColor::Accent));
    }
}

void tst_look_style::keyboardFocusHasARing()
{
    QWidget window;
    auto *const row = new QHBoxLayout(&window);
    auto *const first = new QPushButton(u"First"_s);
    auto *const second = new QPushButton(u"Second"_s);
    row->addWidget(first);
    row->addWidget(second);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Tab);
    QVERIFY(second->hasFocus());
    QCOMPARE(count(*first, colorOf(LookColor::Focus)), 0);
    // Two pixels on each side, but for the corners.
    const int around = 2 * 2 * (second->width() + second->height());
    QVERIFY(count(*second, colorOf(LookColor::Focus)) > around * 3 / 4);
}

void tst_look_style::fieldsShowTheirMark()
{
    QLineEdit field(u"999"_s);
    field.resize(200, field.sizeHint().height());
    QVERIFY(count(field, colorOf(LookColor::Field)) > 200);
    setFieldMark(field, FieldMark::Problem);
    QCOMPARE(count(field, colorOf(LookColor::Field)), 0);
    QVERIFY(count(field, colorOf(LookColor::ErrorMark)) > 400);
    setFieldMark(field, FieldMark::Advice);
    QVERIFY(count(field, colorOf(LookColor::WarnMark)) > 400);
    field.setEnabled(false);
    setFieldMark(field, FieldMark::None);
    QCOMPARE(count(field, colorOf(LookColor::Field)), 0);
}

void tst_look_style::currentRowHasARingOrAStrip()
{
    Table table;
    table.show();
    table.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&table));
    table.setFocus();
    const QRect left = table.visualItemRect(table.item(1, 0));
    const QRect right = table.visualItemRect(table.item(1, 1));
    const auto at = [&table](const QPoint &place) {
        return table.viewport()->grab().toImage().pixelColor(place);
    };
    // The ring is round the row and not round a cell.
    QCOMPARE(at({left.left(), left.center().y()}), colorOf(LookColor::Focus));
    QCOMPARE(at({right.right(), right.center().y()}), colorOf(LookColor::Focus));
    QCOMPARE(at({left.right(), left.center().y()}), colorOf(LookColor::AccentSoft));
    table.clearFocus();
    QCOMPARE(at({left.left() + 1, left.center().y()}), colorOf(LookColor::Accent));
    QCOMPARE(at({right.right(), right.center().y()}), colorOf(LookColor::AccentSoft));
}

void tst_look_style::currentTabHasALine()
{
    QTabWidget tabs;
    tabs.addTab(new QWidget, u"Summary"_s);
    tabs.addTab(new QWidget, u"Funds"_s);
    tabs.resize(400, 200);
    tabs.setCurrentIndex(1);
    tabs.show();
    QTabBar &bar = *tabs.tabBar();
    const auto below = [&bar](int tab) {
        const QRect rect = bar.tabRect(tab);
        return bar.grab().toImage().pixelColor(rect.center().x(), rect.bottom() - 1);
    };
    QCOMPARE(below(1), colorOf(LookColor::Accent));
    QVERIFY(below(0) != colorOf(LookColor::Accent));
}

void tst_look_style::wordsOfTabsAreWhole()
{
    QTabBar tabs;
    for (const auto &text : {u"Summary"_s, u"Fund allocation"_s})
        tabs.addTab(text);
    tabs.resize(tabs.sizeHint());
    for (int tab = 0; tab < tabs.count(); ++tab) {
        tabs.setCurrentIndex(tab);
        const int words =
            QFontMetrics(FontOf(LookFont::Strong, tabs.font())).horizontalAdvance(tabs.tabText(tab));
        QVERIFY(tabs.tabRect(tab).width() >= words + 16);
    }
}

void tst_look_style::mirrorsWithTheLanguage()
{
    // A tick stands before the words: on the left, and on the right in a language written to the left.
    QCheckBox box(u"chosen"_s);
    box.setChecked(true);
    box.resize(300, 30);
    QComboBox combo;
    combo.addItem(u"one"_s);
    combo.resize(200, 32);
    const QColor accent = colorOf(LookColor::Accent);
    const auto halves = [&accent](QWidget &widget) {
        const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
        std::pair<int, int> found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == accent)
                    ++(x < image.width() / 2 ? found.first : found.second);
            }
        }
        return found;
    };
    QVERIFY(halves(box).first > 0);
    QCOMPARE(halves(box).second, 0);
    box.setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(halves(box).first, 0);
    QVERIFY(halves(box).second > 0);
    const auto arrow = [&combo] {
        QStyleOptionComboBox option;
        option.initFrom(&combo);
        return combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &combo);
    };
    QVERIFY(arrow().left() > 100);
    combo.setLayoutDirection(Qt::RightToLeft);
    QVERIFY(arrow().right() < 100);
}

void tst_look_style::colourSchemesDiffer()
{
    QVERIFY(qobject_cast<DeskStyle *>(QApplication::style()));
    QVERIFY(!Appearance::isDark());
    Appearance::apply(ColourScheme::Dark, TextSize::Normal);
    QVERIFY(Appearance::isDark());
    QCOMPARE(Appearance::scheme(), ColourScheme::Dark);
    QCOMPARE(QApplication::palette().color(QPalette::Window), LookPalette(true).color(QPalette::Window));
    // The colours of the system are not affected by the program's own.
    Appearance::apply(ColourScheme::System, TextSize::Normal);
    QVERIFY(!Appearance::isDark());
    // Selected text differs from a chosen row.
    QLineEdit field;
    field.ensurePolished();
    QCOMPARE(field.palette().color(QPalette::Highlight), colorOf(LookColor::AccentMid));
    QVERIFY(Contrast(field.palette().color(QPalette::HighlightedText),
                     field.palette().color(QPalette::Highlight)) >= 4.5);
}

/// Tells the program that the system's colours have changed.
void changeSystem(QWidget &window)
{
    QEvent changed(QEvent::ThemeChange);
    QCoreApplication::sendEvent(window.windowHandle(), &changed);
}

void tst_look_style::followsTheSystem()
{
    QPalette system = LookPalette(false);
    system.setColor(QPalette::Window, Qt::lightGray);
    Appearance::setSystemPalette([&system] { return system; });
    QWidget window;
    window.show();
    const auto restore = qScopeGuard([&window] {
        Appearance::setSystemPalette({});
        changeSystem(window);
        QCoreApplication::processEvents();
    });
    Appearance::apply(ColourScheme::System, TextSize::Normal);
    changeSystem(window);
    QTRY_COMPARE(window.palette().color(QPalette::Window), LookPalette(false).color(QPalette::Window));
    system.setColor(QPalette::WindowText, Qt::white);
    system.setColor(QPalette::Window, Qt::darkGray);
    changeSystem(window);
    QTRY_COMPARE(window.palette().color(QPalette::Window), LookPalette(true).color(QPalette::Window));
    // A scheme of the user's own stays.
    Appearance::apply(ColourScheme::Light, TextSize::Normal);
    changeSystem(window);
    QCoreApplication::processEvents();
    QVERIFY(!Appearance::isDark());
}

void tst_look_style::highContrastOfTheSystemStays()
{
    QPalette black(Qt::white, Qt::black);
    black.setColor(QPalette::Base, Qt::black);
    black.setColor(QPalette::Button, Qt::black);
    QVERIFY(Appearance::isHighContrast(black));
    QVERIFY(!Appearance::isHighContrast(LookPalette(false)));
    QVERIFY(!Appearance::isHighContrast(LookPalette(true)));
    QVERIFY(!Appearance::isHighContrast(QApplication::style()->standardPalette()));
    Appearance::setSystemPalette([&black] { return black; });
    QWidget window;
    window.show();
    changeSystem(window);
    QTRY_COMPARE(QApplication::palette().color(QPalette::Window), QColor(Qt::black));
    QVERIFY(!qobject_cast<DeskStyle *>(QApplication::style()));
    Appearance::setSystemPalette({});
    changeSystem(window);
    QTRY_COMPARE(QApplication::palette().color(QPalette::Window), LookPalette(false).color(QPalette::Window));
    QVERIFY(qobject_cast<DeskStyle *>(QApplication::style()));
}

void tst_look_style::rowOfATreeIsChosenWhole()
{
    QTreeWidget tree;
    auto *const group = new QTreeWidgetItem(&tree, {u"group"_s});
    auto *const fund = new QTreeWidgetItem(group, {u"fund"_s});
    tree.expandAll();
    tree.setCurrentItem(fund);
    tree.resize(300, 200);
    tree.show();
    const int middle = tree.visualItemRect(fund).center().y();
    QCOMPARE(tree.viewport()->grab().toImage().pixelColor(2, middle), colorOf(LookColor::AccentSoft));
}

void tst_look_style::textSizesDiffer()
{
    const qreal normal = QApplication::font().pointSizeF();
    const std::array sizes{std::pair{TextSize::Small, -1.0}, std::pair{TextSize::Large, 1.5},
                           std::pair{TextSize::Largest, 3.0}, std::pair{TextSize::Normal, 0.0}};
    for (const auto &[size, more] : sizes) {
        Appearance::apply(ColourScheme::Light, size);
        QCOMPARE(QApplication::font().pointSizeF(), normal + more);
        QCOMPARE(Appearance::textSize(), size);
    }
}

void tst_look_style::digitsHaveOneWidth()
{
    QVERIFY(Appearance::hasEqualDigits(QApplication::font()));
    // "Any font" is replaced by one that is known.
    QFont any(u"A font that is not installed"_s);
    any.setPointSizeF(9);
    const QFont found = Appearance::interfaceFont(any);
    QVERIFY(found.family() != any.family());
    QVERIFY(Appearance::hasEqualDigits(found));
    QVERIFY(found.pointSizeF() >= 10);
    // A font of the desktop with such digits stays as it is.
    QCOMPARE(Appearance::interfaceFont(found), found);
}

ZEL_TEST_MAIN(tst_look_style)
#include "tst_look_style.moc"

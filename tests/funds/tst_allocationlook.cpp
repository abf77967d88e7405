// The allocation frame and the fund selector in the application look.
#include "AllocationWindow.h"
#include "Contrast.h"

#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

/// What a person sees of the widgets below @p root: places, fonts, limits and pictures of a design.
QStringList designOf(const QWidget &root)
{
    QStringList design;
    for (const QWidget *widget : root.findChildren<QWidget *>()) {
        if (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_"_s))
            continue;
        const QRect place = widget->geometry();
        design.append(u"%1 %2,%3 %4x%5 least %6x%7 most %8x%9 %10 %11"_s.arg(widget->objectName())
                          .arg(place.x())
                          .arg(place.y())
                          .arg(place.width())
                          .arg(place.height())
                          .arg(widget->minimumWidth())
                          .arg(widget->minimumHeight())
                          .arg(widget->maximumWidth())
                          .arg(widget->maximumHeight())
                          .arg(widget->font().toString(), widget->property("toolButtonStyle").toString()));
    }
    design.sort();
    return design;
}

QFont fontOf(qreal points)
{
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    return font;
}

} // namespace

class TestAllocationLook : public ZelTest
{
    Q_OBJECT

    QFont m_font;
    QPalette m_palette;

    static void fill(AllocationWindow &window, double last)
    {
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(Currency(1250000));
        window.setup({fundRecord(1, {}, Currency(40)), fundRecord(2, {}, Currency(30)),
                      fundRecord(3, {}, Currency::fromDouble(last))});
    }

private Q_SLOTS:
    void init()
    {
        m_font = QApplication::font();
        m_palette = QApplication::palette();
    }
    void cleanup()
    {
        SetLook(Look::Designed);
        QApplication::setFont(m_font);
        QApplication::setPalette(m_palette);
    }

    void comesBackToItsDesign()
    {
        AllocationWindow window;
        fill(window, 20);
        window.open();
        const QStringList design = designOf(window);
        const QImage picture = window.grab().toImage();
        for (int round = 0; round < 2; ++round) {
            SetLook(Look::Application);
            QTRY_VERIFY(designOf(window) != design);
            QVERIFY(window.grab().toImage() != picture);
            SetLook(Look::Designed);
            QTRY_COMPARE(designOf(window), design);
            QTRY_COMPARE(window.grab().toImage(), picture);
        }
    }

    void isDesignedAfterItWasMadeInTheLook()
    {
        AllocationWindow designed;
        fill(designed, 20);
        designed.open();
        const QStringList design = designOf(designed);
        const QImage picture = designed.grab().toImage();
        designed.hide();
        SetLook(Look::Application);
        AllocationWindow window;
        fill(window, 20);
        window.open();
        SetLook(Look::Designed);
        QTRY_COMPARE(designOf(window), design);
        QTRY_COMPARE(window.grab().toImage(), picture);
    }

    void takesTheFontOfTheApplication()
    {
        SetLook(Look::Application);
        QApplication::setFont(fontOf(10));
        AllocationWindow window;
        fill(window, 20);
        window.open(900, 700);
        TfraFundAllocation &frame = *window.frame;
        for (const qreal points : {10.0, 13.0, 9.0}) {
            QApplication::setFont(fontOf(points));
            QTRY_COMPARE(frame.font().pointSizeF(), points);
            for (const QWidget *widget : QList<const QWidget *>{frame.pnlHeaderCaption, frame.pnlRemainAmount,
                                                                frame.FundGrid, frame.fraFundToolBar}) {
                QCOMPARE(widget->font().pointSizeF(), points);
                QVERIFY(!widget->font().italic());
            }
            QCOMPARE(frame.FundGrid->RowHeight(), HeightOf(LookHeight::FieldRow, frame.fontMetrics()));
            QCOMPARE(frame.FundGrid->HeadingHeight(), HeightOf(LookHeight::TableHead, frame.fontMetrics()));
        }
        window.setStyleSheet(u"QWidget { font-size: 22px; }"_s);
        QTRY_COMPARE(frame.font().pixelSize(), 22);
        QTRY_COMPARE(frame.FundGrid->RowHeight(), HeightOf(LookHeight::FieldRow, frame.fontMetrics()));
    }

    void cutsNoCaption_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<qreal>("points");
        for (const int width : {500, 660, 1000}) {
            for (const qreal points : {10.0, 13.0, 20.0})
                QTest::addRow("%d pixels, %g points", width, points) << width << points;
        }
    }

    void cutsNoCaption()
    {
        QFETCH(const int, width);
        QFETCH(const qreal, points);
        SetLook(Look::Application);
        QApplication::setFont(fontOf(points));
        AllocationWindow window;
        fill(window, 20);
        window.open(width, 600);
        const TfraFundAllocation &frame = *window.frame;
        const auto check = [&frame] {
            for (const TSpeedButton *button : frame.fraFundToolBar->findChildren<TSpeedButton *>()) {
                if (!button->isVisible())
                    continue;
                QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
                const QRect place(button->mapTo(&frame, QPoint(0, 0)), button->size());
                QVERIFY2(frame.rect().contains(place), qPrintable(button->text()));
            }
            for (TPanel *panel : {frame.pnlHeaderCaption, frame.pnlRemainAmount, frame.pnlAmount}) {
                const int text = QFontMetrics(FontOf(LookFont::Strong, panel->font()))
                                     .horizontalAdvance(panel->caption().trimmed());
                QVERIFY2(panel->width() >= text, qPrintable(panel->caption()));
            }
            for (int column = TfraFundAllocation::PercentColumn; column <= TfraFundAllocation::AmountColumn;
                 ++column) {
                const TtsCol &col = frame.FundGrid->Col(column);
                QVERIFY(col.Width() >
                        frame.fontMetrics().horizontalAdvance(frame.FundGrid->CellText(column, 1)));
            }
        };
        QTRY_VERIFY(window.isActiveWindow());
        QCoreApplication::processEvents();
        check();
    }

    void putsCaptionAndCommandsIntoOneLine()
    {
        SetLook(Look::Application);
        AllocationWindow window;
        fill(window, 20);
        window.open(1000, 600);
        const TfraFundAllocation &frame = *window.frame;
        QTRY_COMPARE(frame.Panel3->y(), frame.pnlToolBar->y());
        window.resize(600, 600);
        QTRY_VERIFY(frame.pnlToolBar->y() >= frame.Panel3->geometry().bottom());
    }

    void showsTheRemainderInItsState()
    {
        struct {
            double last;
            LookColor color;
            const char *said;
        } const cases[] = {{20, LookColor::WarnText, "R 125,000.00 not placed"},
                           {30, LookColor::OkText, "Everything is placed"},
                           {51.1, LookColor::ErrorText, "R 263,750.00 too much"}};
        SetLook(Look::Application);
        for (const bool dark : {false, true}) {
            QApplication::setPalette(LookPalette(dark));
            for (const auto &[last, color, said] : cases) {
                AllocationWindow window;
                fill(window, last);
                window.open(900, 500);
                const TfraFundAllocation &frame = *window.frame;
                const auto *const sentence = frame.findChild<QLabel *>(u"lblRest"_s);
                const auto *const bar = frame.findChild<QWidget *>(u"splitBar"_s);
                QVERIFY(sentence && bar && bar->isVisible());
                QCOMPARE(sentence->text(), QLatin1String(said));
                QCOMPARE(bar->accessibleName(), u"%1, %2"_s.arg(window.remaining(), QLatin1String(said)));
                QCOMPARE(frame.pnlRemainAmount->accessibleName(), window.remaining());
                // The colour of the state is drawn, and stands out from the ground.
                const QImage drawn = frame.pnlRemainAmount->grab().toImage();
                const QColor wanted = ColorOf(color, frame.palette());
                int found = 0;
                for (int y = 0; y < drawn.height(); ++y) {
                    for (int x = 0; x < drawn.width(); ++x)
                        found += drawn.pixelColor(x, y) == wanted ? 1 : 0;
                }
                QVERIFY2(found > 10, said);
                QVERIFY(Contrast(wanted, ColorOf(LookColor::Raised, frame.palette())) >= 4.5);
            }
        }
    }

    void drawsNumbersWithSeparatorsAndKeepsTheirCells()
    {
        SetLook(Look::Application);
        AllocationWindow window;
        fill(window, 20);
        window.open(900, 500);
        QCOMPARE(window.cell(TfraFundAllocation::AmountColumn, 1), u"500000.00"_s);
        const QModelIndex computed = window.grid().model()->index(0, TfraFundAllocation::AmountColumn - 1);
        QCOMPARE(computed.data(Qt::FontRole).value<QFont>().weight(), int(QFont::DemiBold));
        QVERIFY(!computed.data(Qt::FontRole).value<QFont>().italic());
        QCOMPARE(computed.data(Qt::AccessibleTextRole).toString(), u"Initial (R): 500000.00"_s);
        window.type(1, "12.5");
        QCOMPARE(window.cell(TfraFundAllocation::PercentColumn, 1), u"12.50"_s);
        QCOMPARE(window.cell(TfraFundAllocation::AmountColumn, 1), u"156250.00"_s);
    }

    void editsInTheField()
    {
        SetLook(Look::Application);
        AllocationWindow window;
        fill(window, 20);
        window.open(900, 500);
        window.stand(TfraFundAllocation::PercentColumn, 2);
        window.keys(u"1"_s);
        QVERIFY(window.grid().IsEditing());
        const QRect cell = window.grid().visualRect(window.grid().currentIndex());
        QVERIFY(cell.contains(window.editor()->geometry()));
        QVERIFY(window.editor()->height() < cell.height() - 4);
        QVERIFY(window.editor()->height() >= window.editor()->fontMetrics().height());
    }

    void theSelectorComesBackToItsDesign()
    {
        AllocationWindow window;
        window.offerOneGroup();
        fill(window, 20);
        window.open();
        QVERIFY(window.inSelector([](TfrmFundSelector &dialog) {
            QCoreApplication::processEvents();
            const QStringList design = designOf(dialog);
            const QImage picture = dialog.grab().toImage();
            SetLook(Look::Application);
            QTRY_VERIFY(dialog.fraFundSelector->btnSelect->isDefault());
            const auto *const count = dialog.findChild<QLabel *>(u"lblCount"_s);
            QVERIFY(count);
            QCOMPARE(count->text(), u"3"_s);
            for (const QLabel *note :
                 {dialog.fraFundSelector->lblInfoMessage, dialog.fraFundSelector->lblWarningMessage}) {
                QVERIFY(!note->font().italic());
                QVERIFY(note->alignment().testFlag(Qt::AlignLeft));
            }
            for (const TSpeedButton *button : dialog.fraFundSelector->Panel2->findChildren<TSpeedButton *>())
                QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
            SetLook(Look::Designed);
            QTRY_COMPARE(designOf(dialog), design);
            QTRY_COMPARE(dialog.grab().toImage(), picture);
            dialog.reject();
        }));
    }
};

ZEL_TEST_MAIN(TestAllocationLook)
#include "tst_allocationlook.moc"

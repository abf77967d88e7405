// The cell grid: masks, cells, rows, keys, events, copying and pasting.
#include "NumberCases.h"
#include "ZelTest.h"

#include "data/Currency.h"
#include "data/Exceptions.h"
#include "data/Format.h"
#include "toolkit/TtsGrid.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QPixmap>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

class TestGrid : public ZelTest
{
    Q_OBJECT

    struct Window : QWidget {
        Window()
        {
            auto *box = new QVBoxLayout(this);
            before = new QLineEdit(this);
            grid = new TtsGrid(this);
            after = new QLineEdit(this);
            box->addWidget(before);
            box->addWidget(grid);
            box->addWidget(after);
            grid->SetColCount(4);
            grid->Col(1).SetReadOnly(true);
            grid->Col(1).SetPictureText(u"fund"_s);
            grid->Col(2).SetReadOnly(true);
            grid->Col(2).SetHeading(u"Fund"_s);
            grid->Col(3).SetHeading(u"Initial (%)"_s);
            grid->Col(3).SetMask(TtsMask(u"[#][#][#].[#][#]"_s));
            grid->Col(4).SetHeading(u"Initial (R)"_s);
            grid->Col(4).SetMask(TtsMask(u"*10[#].[#][#]"_s));
            grid->Col(4).SetReadOnly(true);
            grid->OnCellEdit = [this](int column, int row, bool byUser) {
                log.append(
                    u"edit %1 %2 %3 %4"_s.arg(column).arg(row).arg(byUser).arg(grid->CellText(column, row)));
            };
            grid->OnEndCellEdit = [this](int column, int row, bool &cancel) {
                log.append(u"end %1 %2"_s.arg(column).arg(row));
                cancel = refuseEnd;
            };
            grid->OnRowChanged = [this](int oldRow, int newRow) {
                log.append(u"row %1 %2"_s.arg(oldRow).arg(newRow));
            };
        }
        ~Window() override { delete grid; } // before the log that the grid's handlers write to
        Window(const Window &) = delete;
        Window &operator=(const Window &) = delete;
        void fill(int rows)
        {
            for (int i = 1; i <= rows; ++i) {
                const int row = grid->AppendRow();
                grid->SetCell(1, row, QIcon(QPixmap(16, 16)));
                grid->SetCell(2, row, u"Fund %1"_s.arg(row));
                grid->SetCell(3, row, Currency(row).toVariant());
                grid->SetCell(4, row, u"0.00"_s);
            }
        }
        void open()
        {
            resize(500, 300);
            show();
            activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(this));
            grid->setFocus();
        }
        QLineEdit *editor() const
        {
            // A closed editor is deleted in the event loop only, so the last one is the open one.
            return grid->findChildren<QLineEdit *>(u"edCell"_s).last();
        }
        void keys(const QString &text)
        {
            for (const QChar c : text)
                QTest::keyClicks(grid->IsEditing() ? static_cast<QWidget *>(editor()) : grid, QString(c));
        }
        void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {})
        {
            QTest::keyClick(grid->IsEditing() ? static_cast<QWidget *>(editor()) : grid, which, modifiers);
        }
        QLineEdit *before;
        TtsGrid *grid;
        QLineEdit *after;
        QStringList log;
        bool refuseEnd = false;
    };

private Q_SLOTS:
    void masks_data()
    {
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("taken"); // "-" when it is refused
        const QString percent = u"[#][#][#].[#][#]"_s;
        const QString amount = u"*10[#].[#][#]"_s;
        const auto row = [&](const QString &mask, const char *typed, const char *taken) {
            QTest::addRow("%s %s", qPrintable(mask), typed)
                << mask << QString::fromUtf8(typed) << QString::fromUtf8(taken);
        };
        row(percent, "", "");
        row(percent, "1", "1");
        row(percent, "150", "150");
        row(percent, "1500", "-");
        row(percent, "33.33", "33.33");
        row(percent, "33,33", "33.33");
        row(percent, "33.333", "-");
        row(percent, ".5", ".5");
        row(percent, ",", ".");
        row(percent, "1.2.3", "-");
        row(percent, "-5", "-");
        row(percent, "12a", "-");
        row(percent, "50 %", "50");
        row(percent, "50%", "50");
        row(percent, " 50 ", "50");
        row(percent, "50\n", "50");
        row(percent, "10\n20\n30", "-");
        row(percent, "R", "-");
        row(percent, "%", "-");
        row(amount, "9999999999", "9999999999");
        row(amount, "99999999999", "-");
        row(amount, "9999999999.99", "9999999999.99");
        row(amount, "R 1 234,56", "1234.56");
        row(amount, "R1234.5", "1234.5");
        row(amount, "R\u00a01\u00a0234,56", "1234.56");
        row(amount, "1,000,000,000.00", "1000000000.00");
        row(amount, "1.234,56", "1234.56");
        row(amount, "1 234", "1234");
        row(amount, "1,234", "-");
        row(amount, "1.234", "-");
        row(amount, "1,23,456.00", "-");
        row(amount, "1 23", "-");
        row(amount, "1,234 567.00", "-");
        row(amount, ",234.56", "-");
        row(amount, "1 234 R", "-");
        row(amount, "\u0661\u0662", "-"); // digits of another script
        row(amount, "1e5", "-");
        row(amount, "1234,567.8", "-");
        row(amount, "1,234,567.8", "1234567.8");
        row(amount, "...", "-");
    }
    void masks()
    {
        QFETCH(QString, mask);
        QFETCH(QString, typed);
        QFETCH(QString, taken);
        QCOMPARE(TtsMask(mask).Corrected(typed).value_or(u"-"_s), taken);
    }

    void badMasks()
    {
        for (const char *text : {"*", "*[#]", "*0[#]", "[#", "[", "*99#", "[##]", "*3"})
            QVERIFY_THROWS_EXCEPTION(EConvertError, TtsMask(QString::fromLatin1(text)));
        QVERIFY(TtsMask().IsEmpty());
        QVERIFY(TtsMask().Accepts(u"anything"));
        TtsMaskDefs masks;
        masks.Add(u"two"_s, u"##"_s);
        QVERIFY(masks.Mask(u"two"_s).Accepts(u"1"));
        QVERIFY(!masks.Mask(u"two"_s).Accepts(u"123"));
        QVERIFY_THROWS_EXCEPTION(EListError, masks.Mask(u"three"_s));
    }

    void rowsAndCells()
    {
        Window window;
        QAbstractItemModelTester tester(window.grid->model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        TtsGrid &grid = *window.grid;
        QCOMPARE(grid.RowCount(), 0);
        QCOMPARE(grid.CurrentRow(), 0);
        window.fill(3);
        QCOMPARE(grid.RowCount(), 3);
        QCOMPARE(grid.CurrentRow(), 1);
        QCOMPARE(grid.CurrentCol(), 3); // the first column that can be edited
        QCOMPARE(grid.CellText(3, 2), u"2.00"_s);
        QCOMPARE(grid.CellText(1, 2), QString());
        QCOMPARE(window.log, QStringList{u"row 0 1"_s});
        window.log.clear();

        grid.SetCurrentRow(2);
        grid.DeleteRow(2); // the next row moves up to this number
        QCOMPARE(grid.CurrentRow(), 2);
        QCOMPARE(grid.CellText(2, 2), u"Fund 3"_s);
        QCOMPARE(window.log, (QStringList{u"row 1 2"_s, u"row 2 2"_s}));
        grid.DeleteRow(1);
        QCOMPARE(grid.CurrentRow(), 1);
        QCOMPARE(grid.CellText(2, 1), u"Fund 3"_s);
        grid.DeleteRow(1);
        QCOMPARE(grid.CurrentRow(), 0);
        QCOMPARE(window.log.last(), u"row 1 0"_s);
        window.fill(3);
        grid.SetRowCount(5);
        QCOMPARE(grid.CellText(3, 5), QString());
        grid.SetCurrentRow(5);
        grid.SetRowCount(2);
        QCOMPARE(grid.CurrentRow(), 2);
        QCOMPARE(grid.currentIndex().row(), 1);

        QVERIFY_THROWS_EXCEPTION(EListError, grid.Cell(1, 3));
        QVERIFY_THROWS_EXCEPTION(EListError, grid.Cell(5, 1));
        QVERIFY_THROWS_EXCEPTION(EListError, grid.SetCell(0, 1, 1));
        QVERIFY_THROWS_EXCEPTION(EListError, grid.DeleteRow(3));
        QVERIFY_THROWS_EXCEPTION(EListError, grid.SetCurrentRow(0));
        QVERIFY_THROWS_EXCEPTION(EListError, grid.Col(5));
    }

    void fewerColumns()
    {
        Window window;
        window.fill(1);
        window.grid->SetCurrentCell(4, 1);
        window.grid->SetColCount(2);
        QCOMPARE(window.grid->RowCount(), 0);
        QCOMPARE(window.grid->CurrentCol(), 0);
        window.grid->AppendRow();
        QCOMPARE(window.grid->CurrentRow(), 1);
        QCOMPARE(window.grid->CurrentCol(), 2);
    }

    void updatesReportOnce()
    {
        Window window;
        window.fill(3);
        QAbstractItemModelTester tester(window.grid->model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        window.grid->SetCurrentRow(3);
        window.log.clear();
        QSignalSpy resets(window.grid->model(), &QAbstractItemModel::modelReset);
        QSignalSpy inserts(window.grid->model(), &QAbstractItemModel::rowsInserted);
        window.grid->BeginUpdate();
        window.grid->BeginUpdate();
        window.grid->SetRowCount(0);
        window.fill(4);
        window.grid->EndUpdate();
        QVERIFY(window.log.isEmpty());
        window.grid->EndUpdate();
        QCOMPARE(window.log, QStringList{u"row 3 1"_s});
        QCOMPARE(resets.count(), 1);
        QCOMPARE(inserts.count(), 0);
        QCOMPARE(window.grid->currentIndex(), window.grid->model()->index(0, 2));
        window.grid->EndUpdate(); // an EndUpdate without a BeginUpdate is ignored
        // Another row with the same number is reported as well.
        window.grid->BeginUpdate();
        window.grid->SetRowCount(0);
        window.fill(1);
        window.grid->EndUpdate();
        QCOMPARE(window.log.last(), u"row 1 1"_s);
        window.fill(2);
        window.grid->SetCurrentRow(2);
        window.log.clear();
        window.grid->BeginUpdate();
        window.grid->DeleteRow(1);
        window.grid->EndUpdate();
        QCOMPARE(window.log, QStringList{u"row 2 1"_s});
        window.fill(1);
        window.grid->SetCurrentRow(2);
        window.log.clear();
        window.grid->BeginUpdate();
        window.grid->DeleteRow(2);
        window.grid->EndUpdate();
        QCOMPARE(window.log, QStringList{u"row 2 2"_s});
    }

    void columns()
    {
        Window window;
        window.fill(2);
        window.open();
        TtsGrid &grid = *window.grid;
        grid.Col(2).SetWidth(77);
        QCOMPARE(grid.columnWidth(1), 77);
        grid.Col(2).SetVisible(false);
        QVERIFY(grid.isColumnHidden(1));
        grid.Col(2).SetWidth(88);
        QCOMPARE(grid.Col(2).Width(), 88);
        grid.Col(2).SetVisible(true);
        QCOMPARE(grid.columnWidth(1), 88);
        grid.SetRowCount(0);
        window.fill(9);
        QCOMPARE(grid.columnWidth(1), 88); // filling the rows again keeps the column widths
        grid.Col(3).SetHeadingAlignment(Qt::AlignRight);
        grid.Col(3).SetAlignment(Qt::AlignRight);
        grid.Col(3).SetFontColor(TColor::clSilver);
        const QAbstractItemModel *model = grid.model();
        QCOMPARE(model->headerData(2, Qt::Horizontal), QVariant(u"Initial (%)"_s));
        QVERIFY(model->headerData(2, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>() &
                Qt::AlignRight);
        QVERIFY(model->index(0, 2).data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
        QCOMPARE(model->index(0, 2).data(Qt::ForegroundRole).value<QColor>(), QColor(0xc0, 0xc0, 0xc0));
        QVERIFY(grid.horizontalHeader()->font().bold());
        QVERIFY(!grid.horizontalHeader()->sectionsMovable());
        QCOMPARE(grid.horizontalHeader()->sectionResizeMode(2), QHeaderView::Fixed);
        QCOMPARE(grid.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(grid.RowBarWidth(), 0);
        QCOMPARE(grid.RowHeight(), qMax(18, grid.fontMetrics().height() + 3));
        // The current cell leaves a column that is hidden.
        grid.SetCurrentCell(4, 2);
        grid.Col(4).SetVisible(false);
        QCOMPARE(grid.CurrentCol(), 3);
        QCOMPARE(grid.CurrentRow(), 2);
        grid.Col(4).SetVisible(true);
        QCOMPARE(grid.CurrentCol(), 3);
        // A read-only column differs in its font, not only in its colour.
        QVERIFY(model->index(0, 3).data(Qt::FontRole).value<QFont>().italic());
        QVERIFY(!model->index(0, 2).data(Qt::FontRole).isValid());
    }

    void heightsFollowFontAndStyle()
    {
        Window window;
        window.fill(1);
        window.open();
        TtsGrid &grid = *window.grid;
        QFont large = grid.font();
        large.setPixelSize(40);
        grid.setFont(large);
        QVERIFY(grid.RowHeight() > grid.fontMetrics().height());
        QCOMPARE(grid.rowHeight(0), grid.RowHeight());
        QVERIFY(grid.HeadingHeight() > grid.fontMetrics().height());
        struct WideHeadings : QProxyStyle {
            int pixelMetric(PixelMetric metric, const QStyleOption *option,
                            const QWidget *widget) const override
            {
                return metric == PM_HeaderMargin ? 30 : QProxyStyle::pixelMetric(metric, option, widget);
            }
        } style;
        const int before = grid.HeadingHeight();
        grid.setStyle(&style);
        QVERIFY(grid.HeadingHeight() > before + 30);
        grid.setStyle(nullptr);
        QCOMPARE(grid.HeadingHeight(), before);
    }

    void keystrokes()
    {
        Window window;
        window.fill(3);
        window.open();
        window.log.clear();
        window.keys(u"12,5"_s);
        QCOMPARE(window.log, (QStringList{u"edit 3 1 1 1"_s, u"edit 3 1 1 12"_s, u"edit 3 1 1 12."_s,
                                          u"edit 3 1 1 12.5"_s}));
        QCOMPARE(window.editor()->text(), u"12.5"_s);
        window.keys(u".-x6789"_s);
        QCOMPARE(window.editor()->text(), u"12.56"_s);
        window.log.clear();
        window.key(Qt::Key_Return);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.log, (QStringList{u"end 3 1"_s, u"row 1 2"_s}));
        QCOMPARE(window.grid->CellText(3, 1), u"12.56"_s);
        QVERIFY(window.grid->hasFocus());
        // Characters that the mask refuses start no edit.
        window.keys(u"x- R%"_s);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CurrentRow(), 2);
        // F2 edits the present content.
        window.key(Qt::Key_F2);
        QVERIFY(window.grid->IsEditing());
        QCOMPARE(window.editor()->text(), u"2.00"_s);
        window.key(Qt::Key_End);
        window.key(Qt::Key_Backspace);
        QCOMPARE(window.grid->CellText(3, 2), u"2.0"_s);
        window.key(Qt::Key_Down);
        QCOMPARE(window.grid->CurrentRow(), 3);
        window.keys(u"9"_s);
        window.key(Qt::Key_Enter); // there is no next row to move to
        QCOMPARE(window.grid->CurrentRow(), 3);
        QVERIFY(!window.grid->IsEditing());
        window.key(Qt::Key_Return); // Return also works without an edit
        QCOMPARE(window.grid->currentIndex().row(), 2);
        window.keys(u"8"_s);
        window.key(Qt::Key_Up);
        QCOMPARE(window.grid->CurrentRow(), 2);
        window.key(Qt::Key_Left);
        QCOMPARE(window.grid->CurrentCol(), 2);
        window.keys(u"7"_s); // the column is read-only
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(2, 2), u"Fund 2"_s);
        QVERIFY(!window.grid->BeginEdit());
    }

    void aColumnThatCannotBeEditedEndsItsEdit()
    {
        Window window;
        window.fill(2);
        window.open();
        window.keys(u"5"_s);
        window.log.clear();
        window.grid->Col(4).SetReadOnly(true);
        window.grid->Col(4).SetVisible(false); // changes of another column do not end the edit
        QVERIFY(window.grid->IsEditing());
        window.grid->Col(3).SetReadOnly(true);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(3, 1), u"5"_s);
        QCOMPARE(window.log, QStringList{u"end 3 1"_s});
        window.grid->Col(3).SetReadOnly(false);
        window.keys(u"6"_s);
        QVERIFY(window.grid->IsEditing());
        window.log.clear();
        window.grid->Col(3).SetVisible(false);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(3, 1), u"6"_s);
        QCOMPARE(window.log, QStringList{u"end 3 1"_s});
    }

    // The current cell never is in a hidden column, so the arrow keys always work.
    void theCurrentCellIsAVisibleOne()
    {
        Window window;
        window.fill(3);
        window.open();
        window.grid->Col(3).SetVisible(false);
        window.grid->SetCurrentCell(3, 1);
        QCOMPARE(window.grid->CurrentCol(), 4); // of the two neighbouring columns the right one
        window.key(Qt::Key_Down);
        QCOMPARE(window.grid->CurrentRow(), 2);
        window.grid->Col(4).SetVisible(false);
        window.grid->BeginUpdate();
        window.grid->SetCurrentCell(4, 2);
        QCOMPARE(window.grid->CurrentCol(), 2);
        window.grid->EndUpdate();
        window.key(Qt::Key_Up);
        QCOMPARE(window.grid->CurrentRow(), 1);
        for (int column = 1; column <= 4; ++column)
            window.grid->Col(column).SetVisible(false);
        window.grid->SetCurrentCell(3, 2); // without visible columns the cell stays as requested
        QCOMPARE(window.grid->CurrentCol(), 3);
    }

    void theFirstCellIsOneWithAHeadingWhenNoneCanBeEdited()
    {
        Window window;
        window.grid->Col(3).SetReadOnly(true);
        window.fill(1);
        QCOMPARE(window.grid->CurrentCol(), 2);
    }

    void writtenCellsAreShown()
    {
        Window window;
        window.fill(2);
        QSignalSpy shown(window.grid->model(), &QAbstractItemModel::dataChanged);
        window.grid->SetCell(3, 2, u"7.00"_s);
        QCOMPARE(shown.count(), 1);
        QCOMPARE(shown.last().first().toModelIndex(), window.grid->model()->index(1, 2));
        // Inside an update the signal comes once, at its end.
        window.grid->BeginUpdate();
        window.grid->SetCell(3, 1, u"8.00"_s);
        window.grid->EndUpdate();
        QCOMPARE(shown.count(), 1);
    }

    void whatIsCurrentOrMarkedIsSeen()
    {
        Window window;
        window.fill(3);
        window.open();
        const auto picture = [&] { return window.grid->grab().toImage(); };
        const auto edge = [&](int row) {
            const QRect cell = window.grid->visualRect(window.grid->model()->index(row - 1, 2));
            return picture().pixelColor(cell.topLeft() + window.grid->viewport()->pos());
        };
        const QColor frame = window.grid->palette().color(QPalette::Active, QPalette::Highlight);
        QCOMPARE(edge(1), frame);
        QVERIFY(edge(2) != frame);
        window.key(Qt::Key_Down);
        QVERIFY(edge(1) != frame);
        QCOMPARE(edge(2), frame);
        const QImage plain = picture();
        window.key(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(picture() != plain);
        window.key(Qt::Key_Escape);
        QCOMPARE(picture(), plain);
    }

    void tabGoesOn()
    {
        Window window;
        window.fill(2);
        window.open();
        window.keys(u"5"_s);
        window.key(Qt::Key_Tab);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CurrentRow(), 2);
        QCOMPARE(window.grid->CurrentCol(), 3);
        window.key(Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(window.grid->CurrentRow(), 1);
        window.key(Qt::Key_Tab);
        window.keys(u"6"_s);
        window.key(Qt::Key_Tab);
        QVERIFY(window.after->hasFocus()); // Tab leaves the grid after the last cell
        window.grid->setFocus();
        window.grid->SetCurrentRow(1);
        window.key(Qt::Key_Tab, Qt::ShiftModifier);
        QVERIFY(window.before->hasFocus());
        window.grid->Col(4).SetReadOnly(false);
        window.grid->setFocus();
        window.key(Qt::Key_Tab);
        QCOMPARE(window.grid->CurrentCol(), 4);
        window.key(Qt::Key_Tab);
        QCOMPARE(window.grid->CurrentCol(), 3);
        QCOMPARE(window.grid->CurrentRow(), 2);
    }

    void escape()
    {
        Window window;
        window.fill(1);
        window.open();
        // Without a handler Escape restores the cell's former value.
        window.keys(u"77"_s);
        window.log.clear();
        QSignalSpy edited(window.grid, &TtsGrid::CellEdited);
        window.key(Qt::Key_Escape);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(3, 1), u"1.00"_s);
        QCOMPARE(edited.count(), 1); // listeners also get the restored value
        QCOMPARE(window.log, QStringList{u"edit 3 1 0 1.00"_s});
        // A handler that cancels the undo keeps the entry.
        int asked = 0;
        window.grid->OnUndoCellEdit = [&](int column, int row, bool byUser, bool &cancel) {
            ++asked;
            QCOMPARE(column, 3);
            QCOMPARE(row, 1);
            QVERIFY(byUser);
            cancel = true;
        };
        window.keys(u"77"_s);
        window.log.clear();
        window.key(Qt::Key_Escape);
        QCOMPARE(asked, 1);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(3, 1), u"77"_s);
        QCOMPARE(window.log, QStringList{u"end 3 1"_s});
    }

    void theEndCanBeRefused()
    {
        Window window;
        window.fill(2);
        window.open();
        window.keys(u"5"_s);
        window.refuseEnd = true;
        window.key(Qt::Key_Return);
        QVERIFY(window.grid->IsEditing());
        QCOMPARE(window.grid->CurrentRow(), 1);
        window.grid->EndEdit(true);
        QVERIFY(window.grid->IsEditing());
        // Replacing the rows closes the edit even so.
        window.grid->SetRowCount(0);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->RowCount(), 0);
        window.fill(1);
        window.refuseEnd = false;
        window.keys(u"4"_s);
        QVERIFY(window.grid->IsEditing());
        window.grid->EndEdit(true);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(3, 1), u"4"_s);
        window.keys(u"3"_s);
        window.after->setFocus(); // losing the focus ends the edit, too
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.log.last(), u"end 3 1"_s);
        // Deleting the edited row closes its edit, and so does deleting a row above it.
        for (const int row : {2, 1}) {
            window.grid->SetRowCount(0);
            window.fill(2);
            window.grid->SetCurrentRow(2);
            window.grid->setFocus();
            window.keys(u"6"_s);
            window.refuseEnd = true;
            window.grid->DeleteRow(row);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!window.grid->IsEditing());
            window.refuseEnd = false;
            window.grid->EndEdit(true);
            QCOMPARE(window.grid->CellText(3, 1), QLatin1String(row == 2 ? "1.00" : "6"));
        }
    }

    void pasting()
    {
        Window window;
        window.fill(2);
        window.open();
        QClipboard *clipboard = QGuiApplication::clipboard();
        clipboard->setText(u"R 50,25\n"_s);
        window.log.clear();
        window.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.grid->CellText(3, 1), u"50.25"_s);
        QCOMPARE(window.log, (QStringList{u"edit 3 1 1 50.25"_s, u"end 3 1"_s}));
        for (const char *refused : {"10\n20\n30", "abc", "-5", "1,234", "", "150.555"}) {
            clipboard->setText(QString::fromLatin1(refused));
            window.key(Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(window.grid->CellText(3, 1), u"50.25"_s);
            QCOMPARE(window.grid->CellText(3, 2), u"2.00"_s);
        }
        // Pasting into an open edit, whose whole text is selected at first.
        window.key(Qt::Key_F2);
        clipboard->setText(u" 12,5 % "_s);
        window.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.editor()->text(), u"12.5"_s);
        QCOMPARE(window.grid->CellText(3, 1), u"12.5"_s);
        clipboard->setText(u"10\n20"_s);
        window.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.editor()->text(), u"12.5"_s);
        window.grid->EndEdit(true);
        // A read-only cell takes no paste.
        window.grid->SetCurrentCell(4, 1);
        clipboard->setText(u"5"_s);
        window.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.grid->CellText(4, 1), u"0.00"_s);
    }

    // Pastes and types each text of the table. The cell then holds the number that the text means, or a
    // signal reports that the entry was corrected or refused.
    void numbersAsPeopleWriteThem()
    {
        Window window;
        window.fill(2);
        window.open();
        window.grid->Col(3).SetReadOnly(true);
        window.grid->Col(4).SetReadOnly(false);
        window.grid->Col(4).SetUnit(NumberUnit::Rand);
        const Currency most = StrToCurr(u"9999999999.99"_s);
        QSignalSpy corrected(window.grid, &TtsGrid::EntryCorrected);
        QSignalSpy refused(window.grid, &TtsGrid::EntryRefused);
        for (const NumberCase &each : numberCases) {
            const auto begin = [&] {
                window.grid->SetCurrentCell(4, 2);
                window.grid->SetCurrentCell(4, 1);
                window.grid->SetCell(4, 1, u"40.00"_s);
                corrected.clear();
                refused.clear();
            };
            begin();
            QGuiApplication::clipboard()->setText(each.said());
            window.key(Qt::Key_V, Qt::ControlModifier);
            QVERIFY2(corrected.isEmpty(), each.text);
            if (each.isAmountUpTo(most)) {
                QCOMPARE(StrToCurr(window.grid->CellText(4, 1)), each.number());
                QVERIFY2(refused.isEmpty(), each.text);
            } else {
                QCOMPARE(window.grid->CellText(4, 1), u"40.00"_s);
                QCOMPARE(refused.count(), each.problem == NumberCase::Problem::Blank ? 0 : 1);
                QVERIFY(refused.isEmpty() || !refused.at(0).at(3).toString().isEmpty());
            }

            const QString text = each.said();
            if (std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c < u' ' || c > u'~'; }))
                continue; // cannot be typed
            begin();
            window.keys(text);
            const bool began = window.grid->IsEditing();
            if (began)
                window.key(Qt::Key_Return);
            QVERIFY2(!window.grid->IsEditing(), each.text);
            const QString held = window.grid->CellText(4, 1);
            if (each.isAmountUpTo(most)) {
                QCOMPARE(StrToCurr(held), each.number());
                QVERIFY2(corrected.isEmpty() && refused.isEmpty(), each.text);
            } else if (held == text) { // a lone point: an unfinished number stays as typed
                QVERIFY2(corrected.isEmpty() && refused.isEmpty(), each.text);
            } else if (!began || refused.count() == 1) {
                QCOMPARE(held, u"40.00"_s);
                QVERIFY2(corrected.isEmpty(), each.text);
            } else {
                QVERIFY2(corrected.count() == 1, each.text);
                QCOMPARE(corrected.at(0), (QVariantList{4, 1, text.trimmed()}));
            }
        }
    }

    void thousandsArePartedWhileTyping()
    {
        Window window;
        window.fill(1);
        window.open();
        window.grid->Col(4).SetReadOnly(false);
        window.grid->SetCurrentCell(4, 1);
        const QPair<const char *, const char *> typed[] = {
            {"1,250,000", "1250000"}, {"1.250.000", "1250000"},       {"1,234.56", "1234.56"},
            {"1.234,56", "1234.56"},  {"12,345,678.9", "12345678.9"}, {"12 500.75", "12500.75"}};
        for (const auto &[text, number] : typed) {
            window.keys(QLatin1String(text));
            QCOMPARE(window.grid->CellText(4, 1), QLatin1String(number));
            QCOMPARE(window.editor()->text().remove(u','), QString::fromLatin1(text).contains(u' ')
                                                               ? QLatin1String(number)
                                                               : QString::fromLatin1(text).remove(u','));
            window.key(Qt::Key_Return);
            QCOMPARE(window.grid->CellText(4, 1), QLatin1String(number));
        }
        // Backspace removes one character of the text as typed; a mask with few digits allows no thousands
        // separators.
        window.keys(u"1,250"_s);
        window.key(Qt::Key_Backspace);
        QCOMPARE(window.grid->CellText(4, 1), u"1.25"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.grid->CellText(4, 1), u"1.25"_s);
        window.grid->SetCurrentCell(3, 1);
        window.keys(u"33,333"_s);
        QCOMPARE(window.editor()->text(), u"33.33"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.grid->CellText(3, 1), u"33.33"_s);
    }

    void whatCanBeReadInTwoWaysIsNotTaken()
    {
        Window window;
        window.fill(2);
        window.open();
        window.grid->Col(4).SetReadOnly(false);
        QSignalSpy corrected(window.grid, &TtsGrid::EntryCorrected);
        QSignalSpy refused(window.grid, &TtsGrid::EntryRefused);
        QSignalSpy takenBack(window.grid, &TtsGrid::EntryTakenBack);
        const QString reason = NumberEntry(u"1,250").reason();
        window.grid->SetCurrentCell(4, 1);
        window.keys(u"1,250"_s);
        QCOMPARE(window.editor()->text(), u"1,250"_s);
        QCOMPARE(window.grid->CellText(4, 1), u"0.00"_s);
        QCOMPARE(takenBack.count(), 1);
        window.key(Qt::Key_Return);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(4, 1), u"0.00"_s);
        QCOMPARE(refused.takeFirst(), (QVariantList{4, 1, u"1,250"_s, reason, false}));
        // A point is valid in the mask, so 1.250 is taken as 1.25 and reported as a correction.
        window.grid->SetCurrentCell(4, 1);
        window.keys(u"1.250"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.grid->CellText(4, 1), u"1.25"_s);
        QCOMPARE(corrected.takeFirst(), (QVariantList{4, 1, u"1.250"_s}));
        QVERIFY(refused.isEmpty());

        window.grid->SetRefusesDoubtful(true);
        QVERIFY(window.grid->RefusesDoubtful());
        window.grid->SetCurrentCell(4, 1);
        window.keys(u"1.250"_s);
        QCOMPARE(window.grid->CellText(4, 1), u"1.25"_s);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Up}) {
            window.key(key);
            QVERIFY(window.grid->IsEditing());
            QCOMPARE(window.editor()->text(), u"1.250"_s);
            QVERIFY(refused.takeFirst().at(4).toBool());
        }
        window.keys(u".000"_s);
        window.key(Qt::Key_Return);
        QVERIFY(!window.grid->IsEditing());
        QCOMPARE(window.grid->CellText(4, 1), u"1250000"_s);
        QVERIFY(refused.isEmpty() && corrected.isEmpty());
        // Leaving an open question keeps the former value.
        for (const bool escaped : {true, false}) {
            window.grid->SetCurrentCell(4, 1);
            window.keys(u"9,125"_s);
            if (escaped)
                window.key(Qt::Key_Escape);
            else
                window.grid->EndEdit(true);
            QVERIFY(!window.grid->IsEditing());
            QCOMPARE(window.grid->CellText(4, 1), u"1250000"_s);
            QCOMPARE(refused.count(), escaped ? 0 : 1); // Escape is not reported as a refusal
        }
    }

    void correctionsAreTold()
    {
        Window window;
        window.fill(2);
        window.open();
        window.grid->Col(4).SetReadOnly(false);
        window.grid->OnEndCellEdit = [&window](int column, int row, bool &) {
            if (window.grid->CellText(column, row) == u"150"_s)
                window.grid->SetCell(column, row, Currency(100).toVariant());
        };
        QSignalSpy corrected(window.grid, &TtsGrid::EntryCorrected);
        const auto told = [&](const char *typed) {
            window.grid->SetCurrentCell(4, 1);
            window.keys(QLatin1String(typed));
            window.key(Qt::Key_Return);
            return corrected.isEmpty() ? u"-"_s : corrected.takeFirst().at(2).toString();
        };
        for (const char *typed : {"-5", "1e5", "12a", "33.333333", "1.2.3", "99999999999", "150", "5%x"})
            QCOMPARE(told(typed), QLatin1String(typed));
        for (const char *typed : {"5", "5.50", "R5", "1,250,000", "12 500.75", "+5", "007"})
            QCOMPARE(told(typed), u"-"_s);
        // Typing over the cell's content. Keys that another cell ignored do not count.
        window.grid->SetCurrentCell(4, 1);
        window.keys(u"x-"_s);
        window.grid->SetCurrentCell(4, 2);
        QCOMPARE(told("7"), u"-"_s);
        window.grid->SetCurrentCell(4, 1);
        window.key(Qt::Key_F2);
        window.keys(u"-8"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(corrected.takeFirst().at(2).toString(), u"-8"_s);
        QCOMPARE(window.grid->CellText(4, 1), u"8"_s);
        // Without a key there is no correction to report.
        window.grid->SetCurrentCell(4, 1);
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Return);
        QVERIFY(corrected.isEmpty());
    }

    void copying()
    {
        Window window;
        window.fill(2);
        window.open();
        QClipboard *clipboard = QGuiApplication::clipboard();
        window.grid->SetCurrentRow(2);
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"2.00"_s);
        window.grid->SetCell(2, 2, u"A\tB"_s);
        window.key(Qt::Key_A, Qt::ControlModifier);
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"Fund\tInitial (%)\tInitial (R)\n"
                                    "Fund 1\t1.00\t0.00\nA B\t2.00\t0.00\n"_s);
        window.grid->Col(4).SetVisible(false);
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"Fund\tInitial (%)\nFund 1\t1.00\nA B\t2.00\n"_s);
        window.key(Qt::Key_Up); // moving the cursor clears the selection
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"1.00"_s);
        window.key(Qt::Key_A, Qt::ControlModifier);
        window.key(Qt::Key_Escape);
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"1.00"_s);
        window.key(Qt::Key_A, Qt::ControlModifier); // an edit clears the selection, too
        window.keys(u"4"_s);
        window.key(Qt::Key_Return);
        window.key(Qt::Key_Up);
        window.key(Qt::Key_A, Qt::ControlModifier);
        window.key(Qt::Key_F2);
        window.grid->EndEdit(true);
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"4"_s);
        window.grid->SetRowCount(0); // without rows only the headings are copied
        window.key(Qt::Key_A, Qt::ControlModifier);
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"Fund\tInitial (%)\n"_s);
        window.grid->BeginUpdate();
        window.fill(2);
        window.grid->EndUpdate();
        window.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard->text(), u"1.00"_s);
    }

    void readOut()
    {
        Window window;
        window.fill(2);
        window.open();
        QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(window.grid);
        QVERIFY(grid && grid->tableInterface());
        QCOMPARE(grid->tableInterface()->rowCount(), 2);
        QCOMPARE(grid->tableInterface()->columnDescription(2), u"Initial (%)"_s);
        QAccessibleInterface *cell = grid->tableInterface()->cellAt(1, 2);
        QCOMPARE(cell->text(QAccessible::Name), u"Initial (%): 2.00"_s);
        QCOMPARE(grid->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), u"fund"_s);
        QCOMPARE(window.grid->model()->index(0, 3).data(Qt::AccessibleDescriptionRole).toString(),
                 u"read-only"_s);
        QCOMPARE(window.grid->model()->index(0, 2).data(Qt::AccessibleDescriptionRole).toString(),
                 u"can be edited"_s);
        QCOMPARE(window.grid->model()->headerData(0, Qt::Horizontal, Qt::AccessibleTextRole).toString(),
                 u"fund"_s);
        QCOMPARE(window.grid->model()->headerData(1, Qt::Vertical).toInt(), 2);
        window.key(Qt::Key_F2);
        QCOMPARE(window.editor()->accessibleName(), u"Initial (%): 1.00"_s);
    }

    void changedCellsAreTold()
    {
        Window window;
        QMap<int, int> balance;
        window.grid->OnCellChanged = [&](int column, const QVariant &before, const QVariant &now) {
            balance[column] += (now.isValid() ? 1 : 0) - (before.isValid() ? 1 : 0);
        };
        window.fill(4);
        QCOMPARE(balance.value(3), 4);
        window.grid->SetCell(3, 1, 5);
        QCOMPARE(balance.value(3), 4);
        window.grid->DeleteRow(2);
        QCOMPARE(balance.value(3), 3);
        window.grid->SetRowCount(0);
        QCOMPARE(balance.value(3), 0);
        QCOMPARE(balance.value(2), 0);
    }
};

ZEL_TEST_MAIN(TestGrid)
#include "tst_grid.moc"

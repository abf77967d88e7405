#pragma once

#include "Dialogs.h"
#include "Frames.h"
#include "catalogue/CatalogueProviders.h"
#include "database/Database.h"
#include "look/Banner.h"
#include "look/ProblemLine.h"
#include "quote/ProductEditors.h"
#include "quote/SummaryPage.h"
#include "store/StoreWorker.h"

#include "funds/frm_FundSelector.h"

#include <QClipboard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace QuoteDesk
{

/// What quote editors need: a store in a file, a catalogue, two clients, and replies to all questions that
/// would wait for a user.
struct EditorDesk {
    /// Records questions and messages and replies as the desk's members say.
    class Answers final : public Adviser
    {
    public:
        explicit Answers(EditorDesk &desk) : m_desk(desk) {}
        bool askYesNo(QWidget *, const QString &question) override
        {
            m_desk.asked.append(question);
            return m_desk.answer;
        }
        void tell(QWidget *, const QString &message, const QString &details) override
        {
            m_desk.told.append(message);
            m_desk.toldDetails.append(details);
        }
        bool choosePrinter(QPrinter &printer, QWidget *parent) override
        {
            return m_desk.choosePrinter(printer, parent);
        }
        QString chooseFile(QWidget *, const QString &suggestion) override
        {
            return m_desk.chooseFile(suggestion);
        }
        bool openUrl(const QUrl &url) override
        {
            m_desk.opened.append(url);
            return m_desk.opens;
        }

    private:
        EditorDesk &m_desk;
    };
    Answers adviser{*this};
    QTemporaryDir folder;
    std::unique_ptr<QuoteStore> store;
    StoreWorker worker;
    CatalogueDatabase catalogue;
    CatalogueProviders providers;
    QuoteSession session;
    Client adams;
    Client botha;
    QList<QUrl> opened;
    QStringList asked;
    bool answer = false;
    bool opens = true;
    QStringList told;
    QStringList toldDetails;
    std::function<bool(QPrinter &printer, QWidget *parent)> choosePrinter;
    std::function<QString(const QString &suggestion)> chooseFile;

    EditorDesk()
        : store(QuoteStore::open(StoreLocation::fromText(folder.filePath(QStringLiteral("quotes.db"))))),
          worker(*store), catalogue(store->database()), providers(catalogue),
          session(worker, catalogue, providers)
    {
        adams.surname = QStringLiteral("Adams");
        adams.firstNames = QStringLiteral("Thandi");
        botha.surname = QStringLiteral("Botha");
        botha.firstNames = QStringLiteral("Piet");
        store->saveClient(adams);
        store->saveClient(botha);
        session.setClients(store->clients());
        session.setAdviser(adviser);
    }

    /// Makes the database refuse all clients until acceptClients().
    void refuseClients()
    {
        for (const QString &event : {QStringLiteral("INSERT"), QStringLiteral("UPDATE")})
            store->database().run(
                QStringLiteral("CREATE TRIGGER IF NOT EXISTS refuse_%1 BEFORE %1 ON clients BEGIN"
                               " SELECT RAISE(ABORT, '%2'); END")
                    .arg(event, refusal()));
    }
    void acceptClients()
    {
        store->database().run(QStringLiteral("DROP TRIGGER refuse_INSERT"));
        store->database().run(QStringLiteral("DROP TRIGGER refuse_UPDATE"));
    }
    static QString refusal() { return QStringLiteral("No room for clients."); }

    static Quote quote(int productID = 1, Currency amount = 1000)
    {
        Quote quote;
        quote.productID = productID;
        quote.amount = amount;
        return quote;
    }
    static QuotedFund fund(int fundID, Currency percent, Currency amount, const QString &name = {})
    {
        return {fundID, name, amount, percent};
    }

    static bool openForm(QuoteEditor &editor)
    {
        openProductEditor(editor);
        return editor.form() && showActive(*editor.form());
    }
    /// Opens the form and its funds page and waits until the page is ready.
    static bool open(QuoteEditor &editor)
    {
        if (!openForm(editor))
            return false;
        QSignalSpy ready(editor.fundsPage(), &FundsPage::ready);
        editor.form()->goTo(QuoteForm::Page::Funds);
        return editor.fundsPage()->isReady() || ready.wait();
    }
};

/// Drives the funds page of an editor.
struct FundsHand {
    explicit FundsHand(QuoteEditor &editor) : form(*editor.form()), page(*editor.fundsPage()) {}

    QuoteForm &form;
    FundsPage &page;

    TtsGrid &grid() const { return *page.fraFundAllocation->FundGrid; }
    TfraFundToolBar &bar() const { return *page.fraFundAllocation->fraFundToolBar; }
    QString cell(int column, int row) const { return grid().CellText(column, row); }
    QStringList column(int number) const
    {
        QStringList texts;
        for (int row = 1; row <= grid().RowCount(); ++row)
            texts.append(cell(number, row));
        return texts;
    }
    static void click(QAbstractButton *button) { QTest::mouseClick(button, Qt::LeftButton); }
    /// The sentence of the page's newest banner; blank without one.
    QString said() const
    {
        const QList<Banner *> &shown = page.banners->banners();
        return shown.isEmpty() ? QString() : shown.constFirst()->content().text;
    }
    /// Clicks the button of the newest banner; false without one.
    bool followBanner() const
    {
        const QList<Banner *> &shown = page.banners->banners();
        QPushButton *const button = shown.isEmpty() ? nullptr : shown.constFirst()->actionButton();
        if (button)
            click(button);
        return button;
    }
    /// Types a number into the row's cell of the mode's column and presses Enter.
    void type(int row, const QString &number) const
    {
        grid().setFocus();
        grid().SetCurrentCell(page.fraFundAllocation->Get_AllocByAmount() ? 4 : 3, row);
        for (const QChar c : number) {
            QWidget *const target = grid().IsEditing() ? QApplication::focusWidget() : &grid();
            QTest::keyClick(target, c.toLatin1());
        }
        QTest::keyClick(grid().IsEditing() ? QApplication::focusWidget() : &grid(), Qt::Key_Return);
    }
    void typeAmount(const QString &text) const
    {
        page.edAmount->setFocus();
        page.edAmount->selectAll();
        QTest::keyClicks(page.edAmount, text);
        QTest::keyClick(page.edAmount, Qt::Key_Return);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QWidget *const focused = QApplication::focusWidget();
        QTest::keyClick(focused ? focused : &form, key, modifiers);
    }
    void undo() const { key(Qt::Key_Z, Qt::ControlModifier); }
    void redo() const { key(Qt::Key_Y, Qt::ControlModifier); }
    void paste(const QString &text) const
    {
        QGuiApplication::clipboard()->setText(text);
        grid().setFocus();
        key(Qt::Key_V, Qt::ControlModifier);
    }
    /// Clicks Funds and calls @p work with the fund selector; false when it did not open.
    template <typename Work> bool inSelector(Work work) const
    {
        return inDialog<TfrmFundSelector>([this] { click(bar().sbtFunds); }, work);
    }
    /// Whether the grid and the fund list agree in every row.
    bool inStep() const
    {
        const TFunds &funds = page.fraFundAllocation->Funds();
        if (funds.Length() != grid().RowCount())
            return false;
        for (int row = 1; row <= grid().RowCount(); ++row) {
            const TFundRec &record = funds[row - 1];
            const auto shown = [](Currency value) { return TtsGrid::TextOf(value.toVariant()); };
            if (cell(3, row) != shown(record.Percent) || cell(4, row) != shown(record.Amount) ||
                cell(2, row) != page.names().fund(record.FundID).name)
                return false;
        }
        return true;
    }
};

} // namespace QuoteDesk

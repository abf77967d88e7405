#pragma once

#include "Dialogs.h"
#include "Frames.h"
#include "ZelTest.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "database/Database.h"
#include "desk/MainWindow.h"
#include "desk/OpenQuotes.h"
#include "desk/StartPage.h"
#include "look/Appearance.h"
#include "look/Banner.h"
#include "quote/ProductEditors.h"
#include "store/QuoteStore.h"
#include "toolkit/Look.h"

#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>

/// Calls @p open and clicks Import in the question about funds that an import removes. Returns false when the
/// question did not appear.
template <typename Open> bool agreeToImport(Open open)
{
    return inDialog<QMessageBox>(open, [](QMessageBox &box) {
        QTest::mouseClick(box.findChild<QPushButton *>(QStringLiteral("btnImport")), Qt::LeftButton);
    });
}

/// The program's main window with a database of the test's own: an SQLite file, or the given location.
struct DeskWindow {
    QTemporaryDir folder;
    std::unique_ptr<QuoteDesk::QuoteStore> store; ///< The window's own; on a server a second connection.
    QuoteDesk::StoreWorker worker;
    QuoteDesk::CatalogueDatabase catalogue;
    QuoteDesk::CatalogueProviders providers{catalogue};
    std::unique_ptr<QuoteDesk::MainWindow> window;

    explicit DeskWindow(const QuoteDesk::StoreLocation &place = {})
        : store(QuoteDesk::QuoteStore::open(
              place.isServer() || !place.file.isEmpty()
                  ? place
                  : QuoteDesk::StoreLocation::fromText(folder.filePath(QStringLiteral("quotes.db"))))),
          worker(place.isServer() ? QuoteDesk::StoreWorker(place) : QuoteDesk::StoreWorker(*store)),
          catalogue(worker.catalogue())
    {
        SetLook(Look::Application); // as the program does
    }
    ~DeskWindow() { window.reset(); }
    DeskWindow(const DeskWindow &) = delete;
    DeskWindow &operator=(const DeskWindow &) = delete;

    bool show(const QuoteDesk::Options &options = {})
    {
        // Like the program, with its style and font.
        QuoteDesk::Appearance::apply(QuoteDesk::ColourScheme::Light, QuoteDesk::TextSize::Normal);
        // Like the program, sets the language before the window exists, even for English.
        QuoteDesk::setCurrentLanguage(QuoteDesk::currentLanguage());
        window = std::make_unique<QuoteDesk::MainWindow>(worker, catalogue, providers, options);
        settle();
        return showActive(*window);
    }
    /// Waits until the server has answered the window's questions and the questions that follow from the
    /// answers.
    void settle()
    {
        for (int round = 0; !worker.isDirect() && round < 4; ++round) {
            worker.wait([](QuoteDesk::QuoteStore &) {});
            QCoreApplication::processEvents();
        }
    }
    QuoteDesk::StartPage &start() const { return *window->startPage(); }
    TListView &list() const { return *start().lvQuotes; }
    /// The number of open quotes.
    qsizetype openPages() const { return window->pages->modules().size(); }
    /// The row of an open quote in the side bar, counted from 0.
    QModelIndex sideRow(int quote) const
    {
        return window->sideBar->model().index(
            window->sideBar->model().rowOf(window->pages->placeCount() + quote));
    }
    /// The button of a command, in the side bar or the command bar; nullptr when it has none.
    QToolButton *commandButton(const QAction *action) const
    {
        for (QToolButton *const button : window->sideBar->findChildren<QToolButton *>()) {
            if (button->defaultAction() == action)
                return button;
        }
        return window->commandBar->buttonOf(action);
    }
    /// The texts of the banners, the newest first.
    QString banners() const
    {
        QStringList texts;
        for (const QuoteDesk::Banner *const banner : window->banners->banners())
            texts.append(banner->content().text);
        return texts.join(u'\n');
    }

    /// Stores a client; returns its id.
    qint64 client(const char *surname, const char *firstNames)
    {
        QuoteDesk::Client client;
        client.surname = QString::fromUtf8(surname);
        client.firstNames = QString::fromUtf8(firstNames);
        return store->saveClient(client);
    }
    /// Stores a quote; with a fund it is fully allocated. Returns its number.
    qint64 quote(qint64 clientID, int productID, const char *description, Currency amount, int fundID = 0)
    {
        QuoteDesk::Quote quote;
        quote.productID = productID;
        quote.clientID = clientID;
        quote.description = QString::fromUtf8(description);
        quote.amount = amount;
        if (fundID != 0) {
            const QVariant name = store->database().single(
                QStringLiteral("SELECT FundName FROM funds WHERE FundID = ?"), {fundID});
            quote.funds.append(
                {fundID, name.isValid() ? name.toString() : QStringLiteral("Fund"), amount, 100});
        }
        return store->save(quote);
    }

    /// The texts of a column of the list, from top to bottom.
    QStringList column(QuoteDesk::QuoteColumn column) const
    {
        QStringList texts;
        for (int i = 0; i < list().Items().Count(); ++i)
            texts.append(list().model()->index(i, static_cast<int>(column)).data().toString());
        return texts;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(target(), key, modifiers);
    }
    void type(const QString &text) const { QTest::keyClicks(target(), text); }

private:
    /// The focused widget. Without a window manager no window becomes active when a dialog closes, so the
    /// main window is activated first.
    QWidget *target() const
    {
        if (!QApplication::activeWindow() && !showActive(*window))
            qWarning("The window did not become active");
        QWidget *const focus = QApplication::focusWidget();
        return focus ? focus : QApplication::activeWindow();
    }
};

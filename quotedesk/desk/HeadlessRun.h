#pragma once

#include "desk/AllocationResult.h"
#include "desk/Options.h"
#include "store/Quote.h"

#include <QDir>

class TfrmFundSelector;
class QWidget;

namespace QuoteDesk
{

class CatalogueDatabase;
class MainWindow;
class QuoteAllocation;
class QuoteEditor;

/// A job that could not be done; the message is one line for users.
class HeadlessError : public Exception
{
public:
    using Exception::Exception;
};

/// Does an adviser's job in the real window without a user: begins a quote, chooses the funds in the
/// selector, allocates the amount, reads the result, and saves a picture of each step.
class HeadlessRun
{
public:
    /// @p window, @p catalogue and @p options must outlive the run; @p quote is the quote to begin. The
    /// pictures go to the folder in the options, which is created when missing, or to a new temporary folder.
    HeadlessRun(MainWindow &window, const CatalogueDatabase &catalogue, const Options &options,
                const Quote &quote);

    /// Throws HeadlessError.
    AllocationResult run();
    /// The absolute path of the pictures' folder; blank before the run.
    QString folder() const;

private:
    void prepareFolder();
    void showWindow();
    void beginQuote();
    QuoteAllocation &allocation() const;
    QList<int> fundsToChoose() const;
    void chooseFunds(const QList<int> &funds);
    void driveSelector(TfrmFundSelector &selector, const QList<int> &funds);
    void takePicture(QWidget &widget, const char *step);
    void raiseReported();

    MainWindow &m_window;
    const CatalogueDatabase &m_catalogue;
    const Options &m_options;
    const Quote m_quote;
    QuoteEditor *m_editor = nullptr; ///< owned by the window
    QDir m_folder;
    bool m_hasFolder = false;
    int m_step = 0;
    QString m_reported; ///< the first error that the widgets reported
};

} // namespace QuoteDesk

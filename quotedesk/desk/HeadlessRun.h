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

/// A job that could not be done; one line for people.
class HeadlessError : public Exception
{
public:
    using Exception::Exception;
};

/// Does an adviser's job on the real window without a person: begins a quote, chooses the funds in the
/// selector dialog, allocates the amount, reads the result, and saves a picture of each step.
class HeadlessRun
{
public:
    /// @p window, @p catalogue and @p options must outlive the run; @p quote is what is begun. The pictures
    /// go into the folder of the options, which is made when it is missing, or into a new one among the
    /// temporary files.
    HeadlessRun(MainWindow &window, const CatalogueDatabase &catalogue, const Options &options,
                const Quote &quote);

    /// Raises HeadlessError.
    AllocationResult run();
    /// Where the pictures are, absolute; blank before the run.
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
    QuoteEditor *m_editor = nullptr; ///< Owned by the window.
    QDir m_folder;
    bool m_hasFolder = false;
    int m_step = 0;
    QString m_reported; ///< What the widgets raised while they were driven.
};

} // namespace QuoteDesk

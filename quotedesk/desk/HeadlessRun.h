#pragma once

#include "desk/AllocationResult.h"
#include "desk/Options.h"

#include <QDir>
#include <QObject>

class TfrmFundSelector;
class QWidget;

namespace QuoteDesk
{

class CatalogueDatabase;
class MainWindow;

/// A job that could not be done; one line for people.
class HeadlessError : public Exception
{
public:
    using Exception::Exception;
};

/// Does an adviser's job on the real window without a person: chooses the funds in the selector dialog,
/// allocates the amount, reads the result, and saves a picture of each step.
class HeadlessRun
{
public:
    /// The arguments must outlive the run. The pictures go into the folder of the options, which is made when
    /// it is missing, or into a new one among the temporary files.
    HeadlessRun(MainWindow &window, const CatalogueDatabase &catalogue, const Options &options);

    /// Raises HeadlessError.
    AllocationResult run();
    /// Where the pictures are, absolute; blank before the run.
    QString folder() const;

private:
    void prepareFolder();
    void showWindow();
    QList<int> fundsToChoose() const;
    void chooseFunds(const QList<int> &funds);
    void driveSelector(TfrmFundSelector &selector, const QList<int> &funds);
    AllocationResult readResult() const;
    void takePicture(QWidget &widget, const char *step);
    void raiseReported();

    MainWindow &m_window;
    const CatalogueDatabase &m_catalogue;
    const Options &m_options;
    QDir m_folder;
    bool m_hasFolder = false;
    int m_step = 0;
    QString m_reported; ///< What the widgets raised while they were driven.
};

} // namespace QuoteDesk

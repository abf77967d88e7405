#pragma once

#include "catalogue/CatalogueImport.h"

#include <QDialog>

namespace QuoteDesk
{

class StoreWorker;

/// The result of an import: the number of funds and the skipped lines with their reasons.
class ImportReportDialog : public QDialog
{
    Q_OBJECT
public:
    ImportReportDialog(const QString &fileName, const ImportReport &report, QWidget *parent);
    ~ImportReportDialog() override;

    /// The text that the Copy button copies.
    QString text() const;

private:
    QString m_summary;
    QString m_lines;
};

/// What an import of a file would remove or rename, in sentences.
QString importLossText(const QString &path, const ImportLoss &loss);

/// Says what an import of a file would remove or rename and asks whether to continue; Enter cancels.
bool askForImport(const QString &path, const ImportLoss &loss, QWidget *parent);

/// Imports a catalogue file with a progress bar that can cancel it, asks before funds are removed or renamed,
/// and shows the report. Returns whether the catalogue has changed. Throws the import's errors.
bool importWithProgress(StoreWorker &store, const QString &path, QWidget *parent);

} // namespace QuoteDesk

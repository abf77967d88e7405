#pragma once

#include "catalogue/CatalogueImport.h"

#include <QDialog>

namespace QuoteDesk
{

class StoreWorker;

/// What an import did: how many funds there are now, and line by line what was left out and why.
class ImportReportDialog : public QDialog
{
    Q_OBJECT
public:
    ImportReportDialog(const QString &fileName, const ImportReport &report, QWidget *parent);
    ~ImportReportDialog() override;

    /// What the Copy button puts on the clipboard.
    QString text() const;

private:
    QString m_summary;
    QString m_lines;
};

/// What an import of a file takes away, in whole sentences.
QString importLossText(const QString &path, const ImportLoss &loss);

/// Says what an import of a file takes away and asks whether to go on; Enter leaves all as it is.
bool askForImport(const QString &path, const ImportLoss &loss, QWidget *parent);

/// Imports a catalogue file behind a progress bar that can cancel it, asks before it takes funds away, and
/// shows the report. True when the catalogue has changed. Raises what the import raises.
bool importWithProgress(StoreWorker &store, const QString &path, QWidget *parent);

} // namespace QuoteDesk

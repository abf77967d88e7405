#pragma once

#include <QDialog>
#include <QPlainTextEdit>
#include <QPushButton>

namespace QuoteDesk
{

class QuoteSession;

/// What the program is made of and works with: versions, the catalogue, the place of the quotes, and the
/// licences of the libraries. The text can be copied.
class AboutDialog : public QDialog
{
    Q_OBJECT
public:
    AboutDialog(QuoteSession &session, QWidget *parent);
    ~AboutDialog() override;

    QPlainTextEdit *edFacts;
    QPlainTextEdit *edLicences;
    QPushButton *btnCopy;

    /// Everything that the dialog says, as text.
    QString text() const;
};

/// A library that the program uses, from tools/libraries.txt.
struct UsedLibrary {
    QString name;
    QString licence;
    QString address;
};
QList<UsedLibrary> usedLibraries();

} // namespace QuoteDesk

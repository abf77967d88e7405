#pragma once

#include <QString>

class QPrinter;
class QUrl;
class QWidget;

namespace QuoteDesk
{

/// The functions with which the editors ask and inform the adviser. A run without a user implements its own
/// answers.
class Adviser
{
public:
    virtual ~Adviser();

    /// Asks a yes/no question.
    virtual bool askYesNo(QWidget *parent, const QString &question) = 0;
    /// Shows a message that has to be read before going on. @p details are additional lines, or blank.
    virtual void tell(QWidget *parent, const QString &message, const QString &details) = 0;
    /// Lets the adviser set up a printer; returns false to cancel.
    virtual bool choosePrinter(QPrinter &printer, QWidget *parent) = 0;
    /// Asks for the file name of a PDF, starting from a suggestion; blank to cancel.
    virtual QString chooseFile(QWidget *parent, const QString &suggestion) = 0;
    /// Opens an address in the desktop's program for it; returns false when there is none.
    virtual bool openUrl(const QUrl &url) = 0;
};

/// The real adviser: asked through message boxes, dialogs for printers and files, and the desktop.
class AdviserAtScreen : public Adviser
{
public:
    ~AdviserAtScreen() override;

    bool askYesNo(QWidget *parent, const QString &question) override;
    void tell(QWidget *parent, const QString &message, const QString &details) override;
    bool choosePrinter(QPrinter &printer, QWidget *parent) override;
    QString chooseFile(QWidget *parent, const QString &suggestion) override;
    bool openUrl(const QUrl &url) override;
};

} // namespace QuoteDesk

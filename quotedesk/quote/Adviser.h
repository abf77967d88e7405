#pragma once

#include <QString>

class QPrinter;
class QUrl;
class QWidget;

namespace QuoteDesk
{

/// The person who works with the quotes, as their editors know one: somebody to ask and to tell. A run
/// without a person has answers of its own.
class Adviser
{
public:
    virtual ~Adviser();

    /// Asks a question that is answered by yes or no.
    virtual bool askYesNo(QWidget *parent, const QString &question) = 0;
    /// Tells something that has to be read before going on. @p details are lines of their own, or blank.
    virtual void tell(QWidget *parent, const QString &message, const QString &details) = 0;
    /// Lets a printer be set up; false when nothing is to be printed.
    virtual bool choosePrinter(QPrinter &printer, QWidget *parent) = 0;
    /// Asks for the file to save a PDF as, starting from a name; blank for none.
    virtual QString chooseFile(QWidget *parent, const QString &suggestion) = 0;
    /// Opens an address with the program that the desktop has for it; false when there is none.
    virtual bool openUrl(const QUrl &url) = 0;
};

/// The adviser in front of the screen: message boxes, the dialogs for printers and files, the desktop.
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

#pragma once

#include "desk/SettingsPages.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QStackedWidget>

namespace QuoteDesk
{

class MainWindow;
class QuoteSession;

/// The settings: sections at the left with a search over all of them, and the chosen section's page. What can
/// be seen at once is reported with previewWanted() while the dialog is open; the caller applies it, and
/// applies the former settings when the dialog is cancelled.
class SettingsDialog : public QDialog
{
    Q_OBJECT
public:
    /// The sections in their order.
    enum class Section { Appearance, Numbers, Letterhead, Catalogue, Storage, Shortcuts };

    /// @p window has the commands, and is asked for the catalogue and the quotes of @p session.
    SettingsDialog(const Settings &settings, QuoteSession &session, MainWindow &window);
    ~SettingsDialog() override;

    /// What is entered.
    Settings settings() const;
    void goTo(Section section);
    SettingsPage *page(Section section) const { return m_pages.at(static_cast<qsizetype>(section)); }

    QLineEdit *edFind;
    QListWidget *lstSections;
    QDialogButtonBox *buttons;
    TextLabel *lblProblem; ///< why the entries cannot be taken

    void accept() override;

Q_SIGNALS:
    void previewWanted(const Settings &settings);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addPages(QuoteSession &session, MainWindow &window);
    void layOut();
    void retext();
    void fitSections();
    void find();
    void restoreDefaults();

    Settings m_start;
    QList<SettingsPage *> m_pages;
    QWidget *m_side;
    QStackedWidget *m_stack;
    TextLabel *m_nothing;
    QPushButton *m_defaults;
};

} // namespace QuoteDesk

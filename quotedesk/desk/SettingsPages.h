#pragma once

#include "desk/Commands.h"
#include "desk/SettingsParts.h"

#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

#include <functional>

class QGridLayout;
class QVBoxLayout;

namespace QuoteDesk
{

/// A section of the settings: a title and rows, each with a label, a field and perhaps a line of help.
class SettingsPage : public QWidget
{
    Q_OBJECT
public:
    SettingsPage();

    virtual QString title() const = 0;
    virtual QString glyph() const = 0;
    /// Displays @p settings.
    virtual void show(const Settings &settings) = 0;
    /// Writes what is entered into @p settings.
    virtual void writeInto(Settings &settings) const = 0;
    /// Why an entry cannot be taken, as a sentence; blank when all can.
    virtual QString problem() const { return {}; }

    /// Shows only the rows with all @p words; all rows when there are none. Returns whether there is any.
    bool showFound(const QStringList &words);
    /// Sets all texts in the current language.
    void retext();

Q_SIGNALS:
    /// Something was entered.
    void edited();

protected:
    struct Row {
        TextLabel *label;
        QWidget *field;
        TextLabel *help;
        std::function<QString()> more; ///< other words by which the row is found
    };

    /// Adds a row. @p focus gets the label's mnemonic and name; the field itself when it is nullptr.
    Row &addRow(QWidget *field, QWidget *focus = nullptr);
    /// Adds a row without a label, over the whole width, which takes the height that is left.
    Row &addWide(QWidget *field);
    virtual void setTexts() = 0;
    void setRow(qsizetype row, const QString &label, const QString &help = {});

private:
    TextLabel *m_title;
    QGridLayout *m_grid;
    QVBoxLayout *m_layout;
    QList<Row> m_rows;
};

/// Colours, language and text size.
class AppearancePage : public SettingsPage
{
    Q_OBJECT
public:
    AppearancePage();
    QString title() const override { return tr("Appearance"); }
    QString glyph() const override { return QStringLiteral("palette"); }
    void show(const Settings &settings) override;
    void writeInto(Settings &settings) const override;

private:
    void setTexts() override;

    ThemeChoice *m_colours;
    QComboBox *m_language;
    ChoiceBar *m_textSize;
};

/// The currency sign and the notation of numbers.
class NumbersPage : public SettingsPage
{
    Q_OBJECT
public:
    NumbersPage();
    QString title() const override { return tr("Numbers"); }
    QString glyph() const override { return QStringLiteral("funds"); }
    void show(const Settings &settings) override;
    void writeInto(Settings &settings) const override;
    QString problem() const override;

private:
    void setTexts() override;
    void showExample();

    QComboBox *m_currency;
    QComboBox *m_format;
    TextLabel *m_example;
};

/// The adviser and the firm at the head of the printout.
class LetterheadPage : public SettingsPage
{
    Q_OBJECT
public:
    LetterheadPage();
    QString title() const override { return tr("Letterhead"); }
    QString glyph() const override { return QStringLiteral("building"); }
    void show(const Settings &settings) override;
    void writeInto(Settings &settings) const override;

private:
    void setTexts() override;
    void chooseLogo();
    void showLogo();

    QLineEdit *m_firm;
    QLineEdit *m_adviser;
    QLineEdit *m_licence;
    QPlainTextEdit *m_address;
    QLineEdit *m_telephone;
    QLineEdit *m_email;
    QLabel *m_picture;
    QPushButton *m_choose;
    QPushButton *m_remove;
    QImage m_logo;
};

/// The fund catalogue: what it is, and the way to another one.
class CataloguePage : public SettingsPage
{
    Q_OBJECT
public:
    /// The catalogue's state, read when the page is shown and after an import.
    struct State {
        QDateTime imported; ///< invalid for the catalogue that came with the program
        int funds = 0;
        int products = 0;
    };
    CataloguePage(std::function<State()> read, std::function<void()> import);
    QString title() const override { return tr("Catalogue"); }
    QString glyph() const override { return QStringLiteral("database"); }
    void show(const Settings &settings) override;
    void writeInto(Settings &) const override {}

private:
    void setTexts() override;

    std::function<State()> m_read;
    QLabel *m_date;
    QLabel *m_count;
    QPushButton *m_import;
};

/// Where the quotes are, and copies of them.
class StoragePage : public SettingsPage
{
    Q_OBJECT
public:
    /// @p place is displayed. @p file is the quotes' file, blank for a server. @p backUp writes a copy to a
    /// path and throws when that fails.
    StoragePage(QString place, QString file, std::function<void(const QString &)> backUp);
    QString title() const override { return tr("Storage"); }
    QString glyph() const override { return QStringLiteral("open"); }
    void show(const Settings &settings) override;
    void writeInto(Settings &) const override {}

private:
    void setTexts() override;
    void makeCopy();
    void openFolder();

    QString m_place;
    QString m_file;
    std::function<void(const QString &)> m_backUp;
    QLineEdit *m_shownPlace;
    QPushButton *m_folder;
    QPushButton *m_copy;
    TextLabel *m_said;
};

/// The keys of the commands.
class ShortcutsPage : public SettingsPage
{
    Q_OBJECT
public:
    explicit ShortcutsPage(QList<Command> commands);
    QString title() const override { return tr("Shortcuts"); }
    QString glyph() const override { return QStringLiteral("keyboard"); }
    void show(const Settings &settings) override;
    void writeInto(Settings &settings) const override;

private:
    void setTexts() override;
    void showCommand();
    void showKeys();
    void take(const QKeySequence &keys);
    void reset(bool all);
    QString chosenName() const;

    QList<Command> m_commands;
    ShortcutKeys m_keys;
    QTreeWidget *m_list;
    QLabel *m_caption;
    KeyField *m_edit;
    QPushButton *m_none;
    QPushButton *m_reset;
    QPushButton *m_resetAll;
    TextLabel *m_said;
};

} // namespace QuoteDesk

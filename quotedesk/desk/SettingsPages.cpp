#include "desk/SettingsPages.h"

#include "desk/ErrorDialog.h"
#include "quote/PlainText.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLocale>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The width of the labels' column and the widest field, in pixels.
constexpr int labelWidth = 132;
constexpr int fieldWidth = 420;

/// Widgets beside each other, as one field of a row.
QWidget *beside(std::initializer_list<QWidget *> widgets)
{
    auto *const holder = new QWidget;
    auto *const layout = new QHBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(LookSpace::Small);
    for (QWidget *const widget : widgets)
        layout->addWidget(widget);
    layout->addStretch(1);
    return holder;
}

QPushButton *newButton(const QString &name)
{
    auto *const button = new QPushButton;
    button->setObjectName(name);
    // Enter is for the dialog's own button.
    button->setAutoDefault(false);
    return button;
}

QLineEdit *newEntry(const QString &name)
{
    auto *const entry = new QLineEdit;
    entry->setObjectName(name);
    entry->setMaxLength(Letterhead::LongestEntry);
    entry->setMaximumWidth(fieldWidth);
    return entry;
}

/// A label with a value, which can be selected and copied.
QLabel *newValue(const QString &name)
{
    auto *const value = new QLabel;
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    value->setMargin(7); // the height of a field
    value->setIndent(0);
    return value;
}

} // namespace

SettingsPage::SettingsPage()
    : m_title(new TextLabel(LookFont::Title)), m_grid(new QGridLayout), m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(28, 20, 28, 20);
    m_layout->setSpacing(LookSpace::Large);
    m_layout->addWidget(m_title);
    m_layout->addLayout(m_grid);
    m_layout->addStretch(1);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    m_grid->setHorizontalSpacing(LookSpace::Large);
    m_grid->setVerticalSpacing(LookSpace::Large);
    m_grid->setColumnMinimumWidth(0, labelWidth);
    m_grid->setColumnStretch(1, 1);
}

SettingsPage::Row &SettingsPage::addRow(QWidget *field, QWidget *focus)
{
    Row row{new TextLabel(LookFont::Body, LookColor::Text2),
            new QWidget,
            new TextLabel(LookFont::Caption, LookColor::Text2),
            {}};
    row.label->setWordWrap(true);
    row.label->setContentsMargins(0, 7, 0, 0);
    row.label->setMaximumWidth(240);
    row.label->setBuddy(focus ? focus : field);
    row.help->setWordWrap(true);
    row.help->setMaximumWidth(fieldWidth + 100);
    row.help->hide();
    auto *const layout = new QVBoxLayout(row.field);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(LookSpace::Grid);
    layout->addWidget(field);
    layout->addWidget(row.help);
    const int line = m_grid->rowCount();
    m_grid->addWidget(row.label, line, 0, Qt::AlignTop);
    m_grid->addWidget(row.field, line, 1, Qt::AlignTop);
    m_rows.append(row);
    return m_rows.last();
}

SettingsPage::Row &SettingsPage::addWide(QWidget *field)
{
    m_layout->insertWidget(m_layout->count() - 1, field, 100);
    m_rows.append({nullptr, field, nullptr, {}});
    return m_rows.last();
}

void SettingsPage::setRow(qsizetype place, const QString &label, const QString &help)
{
    const Row &row = m_rows.at(place);
    row.label->setText(label);
    row.help->setText(help);
    row.help->setVisible(!help.isEmpty());
    QWidget *const field = row.label->buddy();
    field->setAccessibleName(label);
    field->setAccessibleDescription(help);
}

bool SettingsPage::showFound(const QStringList &words)
{
    const bool inTitle = std::all_of(words.cbegin(), words.cend(), [this](const QString &word) {
        return title().contains(word, Qt::CaseInsensitive);
    });
    bool any = false;
    for (const Row &row : std::as_const(m_rows)) {
        QString text = title();
        if (row.label)
            text += u'\n' + row.label->text() + u'\n' + row.help->text();
        if (row.more)
            text += u'\n' + row.more();
        const bool found = inTitle || std::all_of(words.cbegin(), words.cend(), [&text](const QString &word) {
                               return text.contains(word, Qt::CaseInsensitive);
                           });
        row.field->setVisible(found);
        if (row.label)
            row.label->setVisible(found);
        any = any || found;
    }
    return any;
}

void SettingsPage::retext()
{
    m_title->setText(title());
    // On the ground of fields a label would take the colour of fields.
    for (TextLabel *const label : findChildren<TextLabel *>())
        label->setForegroundRole(QPalette::WindowText);
    setTexts();
}

AppearancePage::AppearancePage()
    : m_colours(new ThemeChoice), m_language(new QComboBox), m_textSize(new ChoiceBar(4))
{
    m_colours->setObjectName(u"grpColours"_s);
    m_language->setObjectName(u"cbLanguage"_s);
    m_textSize->setObjectName(u"grpTextSize"_s);
    m_language->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const Language language : allLanguages())
        m_language->addItem(languageName(language));
    addRow(m_colours).more = [] { return tr("As the system") + u'\n' + tr("Light") + u'\n' + tr("Dark"); };
    addRow(beside({m_language}), m_language).more = [] { return u"English Afrikaans"_s; };
    addRow(m_textSize).more = [this] { return m_textSize->texts().join(u'\n'); };
    connect(m_colours, &ThemeChoice::picked, this, &SettingsPage::edited);
    connect(m_language, &QComboBox::activated, this, &SettingsPage::edited);
    connect(m_textSize, &ChoiceBar::picked, this, &SettingsPage::edited);
}

void AppearancePage::setTexts()
{
    m_colours->setTexts({tr("As the system"), tr("Light"), tr("Dark")});
    m_textSize->setTexts({tr("Small"), tr("Normal"), tr("Large"), tr("Larger")});
    setRow(0, tr("Colours"));
    setRow(1, tr("Language"), tr("The program and the printout speak this language."));
    setRow(2, tr("Text size"), tr("Added to the size that your system sets."));
}

void AppearancePage::show(const Settings &settings)
{
    m_colours->choose(settings.colours);
    m_language->setCurrentIndex(static_cast<int>(settings.language));
    m_textSize->choose(static_cast<int>(settings.textSize));
}

void AppearancePage::writeInto(Settings &settings) const
{
    settings.colours = m_colours->chosen();
    settings.language = allLanguages().at(std::max(0, m_language->currentIndex()));
    settings.textSize = static_cast<TextSize>(m_textSize->chosen());
}

NumbersPage::NumbersPage()
    : m_currency(new QComboBox), m_format(new QComboBox), m_example(new TextLabel(LookFont::Strong))
{
    m_currency->setObjectName(u"cbCurrency"_s);
    m_currency->setEditable(true);
    m_currency->addItems({u"R"_s, u"ZAR"_s, u"N$"_s, u"P"_s, u"$"_s, u"\u20AC"_s, u"\u00A3"_s});
    m_currency->setMaxCount(m_currency->count());
    m_currency->lineEdit()->setMaxLength(NumberNotation::LongestCurrency);
    m_format->setObjectName(u"cbNumberFormat"_s);
    m_currency->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_format->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_example->setObjectName(u"lblExample"_s);
    m_example->setContentsMargins(0, 7, 0, 7);
    for (const NumberNotation &notation : NumberNotation::choices())
        m_format->addItem(shownMoney(1250000, notation));
    addRow(beside({m_currency}), m_currency).more = [] { return tr("rand euro dollar money"); };
    addRow(beside({m_format}), m_format).more = [] { return tr("decimal comma point thousands"); };
    addRow(m_example);
    const auto change = [this] {
        showExample();
        Q_EMIT edited();
    };
    connect(m_currency, &QComboBox::currentTextChanged, this, change);
    connect(m_format, &QComboBox::activated, this, change);
}

void NumbersPage::setTexts()
{
    setRow(0, tr("Currency sign"), tr("Stands before amounts on the program's pages and in the printout."));
    setRow(1, tr("Number format"),
           tr("For reading only. Fields that you type into, the fund grid and all files keep 1,250,000.00."));
    setRow(2, tr("Example"));
    showExample();
}

void NumbersPage::show(const Settings &settings)
{
    m_currency->setCurrentText(settings.notation.currency);
    const QList<NumberNotation> choices = NumberNotation::choices();
    for (qsizetype i = 0; i < choices.size(); ++i) {
        if (choices.at(i).grouping == settings.notation.grouping &&
            choices.at(i).decimal == settings.notation.decimal)
            m_format->setCurrentIndex(static_cast<int>(i));
    }
    showExample();
}

void NumbersPage::writeInto(Settings &settings) const
{
    settings.notation = NumberNotation::choices().at(std::max(0, m_format->currentIndex()));
    settings.notation.currency = m_currency->currentText().trimmed();
}

QString NumbersPage::problem() const
{
    return NumberNotation::isCurrency(m_currency->currentText().trimmed())
               ? QString()
               : tr("The currency sign is up to %1 letters or a sign such as $. Enter one, for example R.")
                     .arg(NumberNotation::LongestCurrency);
}

void NumbersPage::showExample()
{
    Settings settings;
    writeInto(settings);
    m_example->setText(u"%1    %2%"_s.arg(shownAmount(Currency::fromText(u"1250000.5"_s), settings.notation),
                                          shownPercent(Currency::fromText(u"12.5"_s), settings.notation)));
}

LetterheadPage::LetterheadPage()
    : m_firm(newEntry(u"edFirm"_s)), m_adviser(newEntry(u"edAdviser"_s)), m_licence(newEntry(u"edLicence"_s)),
      m_address(new QPlainTextEdit), m_telephone(newEntry(u"edTelephone"_s)), m_email(newEntry(u"edEMail"_s)),
      m_picture(new QLabel), m_choose(newButton(u"btnChooseLogo"_s)), m_remove(newButton(u"btnRemoveLogo"_s))
{
    m_address->setObjectName(u"edAddress"_s);
    m_address->setTabChangesFocus(true);
    m_address->setMaximumWidth(fieldWidth);
    m_address->setFixedHeight(4 * fontMetrics().lineSpacing() + 2 * LookSpace::Small);
    m_picture->setObjectName(u"lblLogo"_s);
    m_picture->setMinimumHeight(HeightOf(LookHeight::Field, fontMetrics()));
    for (QLineEdit *const entry : {m_firm, m_adviser, m_licence})
        addRow(entry);
    addRow(m_address);
    for (QLineEdit *const entry : {m_telephone, m_email})
        addRow(entry);
    auto *const logo = new QWidget;
    auto *const layout = new QVBoxLayout(logo);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_picture);
    layout->addWidget(beside({m_choose, m_remove}));
    addRow(logo, m_choose).more = [] { return tr("picture"); };
    for (const QLineEdit *const entry : {m_firm, m_adviser, m_licence, m_telephone, m_email})
        connect(entry, &QLineEdit::textEdited, this, &SettingsPage::edited);
    connect(m_address, &QPlainTextEdit::textChanged, this, &SettingsPage::edited);
    connect(m_choose, &QPushButton::clicked, this, [this] { attempt(window(), [this] { chooseLogo(); }); });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        m_logo = {};
        m_choose->setFocus();
        showLogo();
        Q_EMIT edited();
    });
}

void LetterheadPage::setTexts()
{
    setRow(0, tr("Firm"));
    setRow(1, tr("Adviser"));
    setRow(2, tr("Licence"), tr("For example your FSP number, as it should be printed."));
    setRow(3, tr("Address"));
    setRow(4, tr("Telephone"));
    setRow(5, tr("E-mail"));
    setRow(6, tr("Logo"), tr("Printed at the head of every quote, at most 70 mm wide and 20 mm high."));
    m_choose->setText(tr("Choose ..."));
    m_choose->setAccessibleName(tr("Choose a logo"));
    m_remove->setText(tr("Remove"));
    m_remove->setAccessibleName(tr("Remove the logo"));
    showLogo();
}

void LetterheadPage::show(const Settings &settings)
{
    const Letterhead &head = settings.letterhead;
    m_firm->setText(head.firm);
    m_adviser->setText(head.adviser);
    m_licence->setText(head.licence);
    m_address->setPlainText(head.address);
    m_telephone->setText(head.telephone);
    m_email->setText(head.email);
    m_logo = head.logo;
    showLogo();
}

void LetterheadPage::writeInto(Settings &settings) const
{
    Letterhead &head = settings.letterhead;
    head.firm = m_firm->text().trimmed();
    head.adviser = m_adviser->text().trimmed();
    head.licence = m_licence->text().trimmed();
    head.address = m_address->toPlainText().trimmed().left(Letterhead::LongestEntry);
    head.telephone = m_telephone->text().trimmed();
    head.email = m_email->text().trimmed();
    head.logo = m_logo;
}

void LetterheadPage::chooseLogo()
{
    QFileDialog dialog(this, tr("Choose a logo"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({tr("Pictures (*.png *.jpg *.jpeg *.svg)"), tr("All files (*)")});
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    m_logo = Letterhead::readLogo(dialog.selectedFiles().constFirst());
    showLogo();
    Q_EMIT edited();
}

void LetterheadPage::showLogo()
{
    constexpr QSize room(280, 80);
    m_picture->setText(m_logo.isNull() ? tr("No logo") : QString());
    if (!m_logo.isNull()) {
        const qreal scale = devicePixelRatioF();
        QPixmap picture = QPixmap::fromImage(
            m_logo.scaled(m_logo.size().boundedTo(m_logo.size().scaled(room * scale, Qt::KeepAspectRatio)),
                          Qt::KeepAspectRatio, Qt::SmoothTransformation));
        picture.setDevicePixelRatio(scale);
        m_picture->setPixmap(picture);
        m_picture->setAccessibleName(tr("The logo"));
    }
    m_remove->setEnabled(!m_logo.isNull());
}

CataloguePage::CataloguePage(std::function<State()> read, std::function<void()> import)
    : m_read(std::move(read)), m_date(newValue(u"lblCatalogueDate"_s)),
      m_count(newValue(u"lblCatalogueCount"_s)), m_import(newButton(u"btnImport"_s))
{
    addRow(m_date);
    addRow(m_count);
    addRow(beside({m_import}), m_import).more = [] { return tr("funds CSV file"); };
    connect(m_import, &QPushButton::clicked, this, [this, import = std::move(import)] {
        attempt(window(), [this, &import] {
            import();
            retext();
        });
    });
}

void CataloguePage::setTexts()
{
    setRow(0, tr("Date"));
    setRow(1, tr("Contents"));
    setRow(2, tr("Another catalogue"),
           tr("Quotes keep their funds; what is no longer offered is marked in them."));
    m_import->setText(tr("Import ..."));
    attempt(window(), [this] {
        const State state = m_read();
        m_date->setText(
            state.imported.isValid()
                ? tr("Imported on %1").arg(QLocale().toString(state.imported.date(), QLocale::LongFormat))
                : tr("The catalogue that came with the program"));
        m_count->setText(tr("%1, %2").arg(tr("%n fund(s)", nullptr, state.funds),
                                          tr("%n product(s)", nullptr, state.products)));
    });
}

void CataloguePage::show(const Settings &) {}

StoragePage::StoragePage(QString place, QString file, std::function<void(const QString &)> backUp)
    : m_place(std::move(place)), m_file(std::move(file)), m_backUp(std::move(backUp)),
      m_shownPlace(new QLineEdit(m_place)), m_folder(newButton(u"btnOpenFolder"_s)),
      m_copy(newButton(u"btnBackUp"_s)), m_said(new TextLabel(LookFont::Caption, LookColor::OkText))
{
    m_shownPlace->setObjectName(u"edPlace"_s);
    m_shownPlace->setReadOnly(true);
    m_shownPlace->setMaximumWidth(fieldWidth);
    m_shownPlace->setCursorPosition(0);
    m_shownPlace->setToolTip(tipText(m_place));
    m_said->setObjectName(u"lblSaid"_s);
    m_said->setWordWrap(true);
    auto *const copy = new QWidget;
    auto *const layout = new QVBoxLayout(copy);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(beside({m_copy, m_folder}));
    layout->addWidget(m_said);
    m_said->hide();
    addRow(m_shownPlace).more = [] { return tr("file folder server"); };
    addRow(copy, m_copy).more = [] { return tr("backup copy folder"); };
    const bool isFile = !m_file.isEmpty();
    m_copy->setEnabled(isFile);
    m_folder->setEnabled(isFile);
    connect(m_copy, &QPushButton::clicked, this, [this] { attempt(window(), [this] { makeCopy(); }); });
    connect(m_folder, &QPushButton::clicked, this, &StoragePage::openFolder);
}

void StoragePage::setTexts()
{
    setRow(0, tr("Quotes are kept in"));
    setRow(1, tr("Backup"),
           m_file.isEmpty()
               ? tr("The office's server has the quotes; whoever looks after it makes the backups.")
               : tr("The copy has all quotes, clients, drafts and the catalogue. Keep it on another "
                    "disk. The manual says how to go back to it."));
    m_copy->setText(tr("Back up now ..."));
    m_folder->setText(tr("Open folder"));
}

void StoragePage::show(const Settings &) {}

void StoragePage::makeCopy()
{
    const QFileInfo file(m_file);
    QFileDialog dialog(this, tr("Back up the quotes"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({tr("Quote Desk databases (*.db)")});
    dialog.setDefaultSuffix(u"db"_s);
    dialog.setDirectory(QDir::homePath());
    dialog.selectFile(u"%1-%2.db"_s.arg(file.completeBaseName(), QDate::currentDate().toString(Qt::ISODate)));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString target = dialog.selectedFiles().constFirst();
    m_backUp(target);
    m_said->setText(tr("Copied to %1").arg(shortText(QDir::toNativeSeparators(target), 300)));
    m_said->show();
}

void StoragePage::openFolder()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(m_file).absolutePath()));
}

ShortcutsPage::ShortcutsPage(QList<Command> commands)
    : m_commands(std::move(commands)), m_list(new QTreeWidget), m_caption(new QLabel), m_edit(new KeyField),
      m_none(newButton(u"btnNoKeys"_s)), m_reset(newButton(u"btnResetKeys"_s)),
      m_resetAll(newButton(u"btnResetAllKeys"_s)),
      m_said(new TextLabel(LookFont::Caption, LookColor::ErrorText))
{
    m_list->setObjectName(u"lstShortcuts"_s);
    m_list->setColumnCount(2);
    m_list->setUniformRowHeights(true);
    m_list->setRootIsDecorated(false);
    m_list->setItemsExpandable(false);
    m_list->setIndentation(LookSpace::Large);
    m_list->header()->setStretchLastSection(true);
    m_edit->setObjectName(u"edKeys"_s);
    m_caption->setTextFormat(Qt::PlainText);
    m_caption->setBuddy(m_edit);
    m_said->setObjectName(u"lblKeysSaid"_s);
    m_said->setWordWrap(true);
    auto *const all = new QWidget;
    auto *const layout = new QVBoxLayout(all);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(LookSpace::Small);
    layout->addWidget(m_list, 1);
    layout->addWidget(beside({m_caption, m_edit, m_none, m_reset, m_resetAll}));
    layout->addWidget(m_said);
    addWide(all).more = [this] {
        QStringList words;
        for (const Command &command : std::as_const(m_commands))
            words.append(command.text + u' ' + command.keyText());
        return words.join(u'\n') + u'\n' + tr("keys keyboard commands");
    };
    for (const Command &command : std::as_const(m_commands)) {
        QTreeWidgetItem *group = nullptr;
        for (int i = 0; i < m_list->topLevelItemCount() && !group; ++i) {
            if (m_list->topLevelItem(i)->text(0) == command.group)
                group = m_list->topLevelItem(i);
        }
        if (!group) {
            group = new QTreeWidgetItem(m_list, {command.group});
            group->setFlags(Qt::ItemIsEnabled);
            group->setFirstColumnSpanned(true);
            group->setFont(0, FontOf(LookFont::Strong, font()));
            group->setExpanded(true);
        }
        auto *const item = new QTreeWidgetItem(group, {command.text});
        item->setData(0, Qt::UserRole, command.name);
    }
    if (m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(0)->child(0));
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ShortcutsPage::showCommand);
    connect(m_edit, &KeyField::typed, this, &ShortcutsPage::take);
    connect(m_none, &QPushButton::clicked, this, [this] { take({}); });
    connect(m_reset, &QPushButton::clicked, this, [this] { reset(false); });
    connect(m_resetAll, &QPushButton::clicked, this, [this] { reset(true); });
}

void ShortcutsPage::setTexts()
{
    m_list->setHeaderLabels({tr("Command"), tr("Keys")});
    m_list->setAccessibleName(tr("Commands and their keys"));
    m_caption->setText(tr("New keys"));
    m_edit->setAccessibleName(tr("New keys of the chosen command"));
    m_none->setText(tr("No keys"));
    m_reset->setText(tr("Reset"));
    m_reset->setAccessibleName(tr("Reset the keys of the chosen command"));
    m_resetAll->setText(tr("Reset all"));
    showKeys();
}

void ShortcutsPage::show(const Settings &settings)
{
    m_keys = settings.shortcuts;
    for (Command &command : m_commands) {
        const auto chosen = m_keys.constFind(command.name);
        if (command.isFixed || chosen == m_keys.cend())
            command.keys = command.own;
        else
            command.keys = chosen->isEmpty() ? QList<QKeySequence>() : QList<QKeySequence>{*chosen};
    }
    showKeys();
    showCommand();
}

void ShortcutsPage::writeInto(Settings &settings) const
{
    settings.shortcuts = m_keys;
}

QString ShortcutsPage::chosenName() const
{
    const QTreeWidgetItem *const item = m_list->currentItem();
    return item ? item->data(0, Qt::UserRole).toString() : QString();
}

void ShortcutsPage::showKeys()
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *const group = m_list->topLevelItem(i);
        for (int j = 0; j < group->childCount(); ++j) {
            QTreeWidgetItem *const item = group->child(j);
            const QString name = item->data(0, Qt::UserRole).toString();
            const auto command = std::find_if(m_commands.cbegin(), m_commands.cend(),
                                              [&name](const Command &each) { return each.name == name; });
            QString keys = command->keyText();
            if (command->isFixed)
                keys = tr("%1 (fixed)").arg(keys);
            else if (m_keys.contains(name))
                keys = tr("%1 (changed)").arg(keys.isEmpty() ? tr("none") : keys);
            item->setText(1, keys);
        }
    }
}

void ShortcutsPage::showCommand()
{
    const QString name = chosenName();
    const auto command = std::find_if(m_commands.cbegin(), m_commands.cend(),
                                      [&name](const Command &each) { return each.name == name; });
    const bool mayChange = command != m_commands.cend() && !command->isFixed;
    m_edit->show(mayChange && !command->keys.isEmpty() ? command->keys.constFirst() : QKeySequence());
    m_edit->setEnabled(mayChange);
    m_none->setEnabled(mayChange && !command->keys.isEmpty());
    m_reset->setEnabled(m_keys.contains(name));
    m_resetAll->setEnabled(!m_keys.isEmpty());
    m_said->clear();
}

void ShortcutsPage::take(const QKeySequence &keys)
{
    const QString name = chosenName();
    const auto command = std::find_if(m_commands.begin(), m_commands.end(),
                                      [&name](const Command &each) { return each.name == name; });
    if (command == m_commands.end() || command->isFixed)
        return;
    if (!keys.isEmpty()) {
        QString refusal;
        const QString text = keys.toString(QKeySequence::NativeText);
        if (!isUsableShortcut(keys))
            refusal = tr("%1 is needed for typing or moving about. Add Ctrl or Alt.").arg(text);
        else if (const Command *const other = conflictOf(m_commands, name, keys))
            refusal = tr("%1 belongs to \"%2\". Choose other keys, or change those of \"%2\" first.")
                          .arg(text, other->text);
        if (!refusal.isEmpty()) {
            showCommand();
            m_said->setText(refusal);
            return;
        }
    }
    if (command->own.size() <= 1 && command->own.value(0) == keys)
        m_keys.remove(name);
    else
        m_keys.insert(name, keys);
    Settings settings;
    settings.shortcuts = m_keys;
    show(settings);
    Q_EMIT edited();
}

void ShortcutsPage::reset(bool all)
{
    const QString name = chosenName();
    if (!all) {
        const auto command = std::find_if(m_commands.cbegin(), m_commands.cend(),
                                          [&name](const Command &each) { return each.name == name; });
        if (command == m_commands.cend())
            return;
        for (const QKeySequence &own : command->own) {
            if (const Command *const other = conflictOf(m_commands, name, own)) {
                m_said->setText(
                    tr("%1 belongs to \"%2\". Choose other keys, or change those of \"%2\" first.")
                        .arg(own.toString(QKeySequence::NativeText), other->text));
                return;
            }
        }
        m_keys.remove(name);
    } else {
        m_keys.clear();
    }
    Settings settings;
    settings.shortcuts = m_keys;
    show(settings);
    (m_edit->isEnabled() ? static_cast<QWidget *>(m_edit) : m_list)->setFocus();
    Q_EMIT edited();
}

} // namespace QuoteDesk

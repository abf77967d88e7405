#include "desk/SettingsKeeper.h"

#include "desk/MainWindow.h"
#include "desk/OpenQuotes.h"
#include "desk/SettingsDialog.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteForm.h"

#include <QApplication>
#include <QEvent>

namespace QuoteDesk
{

SettingsKeeper::SettingsKeeper(MainWindow &window) : m_window(window)
{
    m_settings.language = currentLanguage();
    m_settings.colours = Appearance::scheme();
    m_settings.textSize = Appearance::textSize();
    m_settings.notation = numberNotation();
    m_settings.letterhead = Letterhead::current();
    m_settings.shortcuts = chosenShortcuts();
}

SettingsKeeper::~SettingsKeeper() = default;

Settings SettingsKeeper::current() const
{
    Settings settings = m_settings;
    settings.language = currentLanguage();
    settings.colours = Appearance::scheme();
    settings.textSize = Appearance::textSize();
    return settings;
}

void SettingsKeeper::choose(const Settings &settings)
{
    apply(settings);
    Q_EMIT chosen(settings);
}

void SettingsKeeper::apply(const Settings &settings)
{
    const Settings former = std::exchange(m_settings, settings);
    setNumberNotation(settings.notation);
    Letterhead::setCurrent(settings.letterhead);
    setChosenShortcuts(settings.shortcuts);
    if (settings.colours != Appearance::scheme() || settings.textSize != Appearance::textSize())
        applyLook();
    if (settings.language != currentLanguage()) {
        m_window.setLanguage(settings.language);
    } else if (settings.notation != former.notation || settings.shortcuts != former.shortcuts) {
        // Every window writes its texts again, with the other numbers and keys.
        QEvent event(QEvent::LanguageChange);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    }
    applyKeys();
}

void SettingsKeeper::applyLook()
{
    Appearance::apply(m_settings.colours, m_settings.textSize);
    m_window.actDark->setChecked(Appearance::isDark());
}

void SettingsKeeper::applyKeys()
{
    applyShortcuts(m_window);
    for (const QuoteEditor *const editor : m_window.quotes().editors()) {
        if (editor->form())
            applyShortcuts(*editor->form());
    }
}

void SettingsKeeper::edit()
{
    const Settings start = current();
    SettingsDialog dialog(start, m_window.session(), m_window);
    connect(&dialog, &SettingsDialog::previewWanted, this, [this, &start](const Settings &entered) {
        // The rest of the settings waits for OK.
        Settings preview = start;
        preview.language = entered.language;
        preview.colours = entered.colours;
        preview.textSize = entered.textSize;
        apply(preview);
    });
    if (dialog.exec() == QDialog::Accepted)
        choose(dialog.settings());
    else
        apply(start);
}

} // namespace QuoteDesk

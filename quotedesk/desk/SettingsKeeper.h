#pragma once

#include "desk/Preferences.h"

#include <QObject>

namespace QuoteDesk
{

class MainWindow;
class QuoteForm;

/// The settings in force in the program with @p window, and their way into force.
class SettingsKeeper : public QObject
{
    Q_OBJECT
public:
    explicit SettingsKeeper(MainWindow &window);
    ~SettingsKeeper() override;

    Settings current() const;
    /// Puts @p settings into force: language, colours, text size, numbers, letterhead and keys.
    void apply(const Settings &settings);
    /// Puts settings that the user has chosen into force and reports them with chosen().
    void choose(const Settings &settings);
    /// Shows the dialog. What can be seen at once applies while it is open; cancelling it turns that back.
    void edit();

Q_SIGNALS:
    /// The user has chosen settings that are to be remembered.
    void chosen(const Settings &settings);

private:
    void applyLook();
    void applyKeys();

    MainWindow &m_window;
    Settings m_settings;
};

} // namespace QuoteDesk

#pragma once

#include "desk/Language.h"

#include <QByteArray>
#include <QSettings>

namespace QuoteDesk
{

/// The user's preferences from the last run, in a file in the user's settings folder. A missing or damaged
/// file counts as empty.
class Preferences
{
public:
    Preferences();

    /// The last language, otherwise the system's if the program has it, otherwise English.
    Language language() const;
    bool dark() const;
    QByteArray geometry() const; ///< from QWidget::saveGeometry()

    void remember(const QByteArray &geometry, Language language, bool dark);

private:
    QSettings m_settings;
};

} // namespace QuoteDesk

#pragma once

#include "desk/Language.h"

#include <QByteArray>
#include <QSettings>

namespace QuoteDesk
{

/// What the program remembers for its user from one time to the next: a small file in the user's settings
/// folder. One that is missing or damaged is the same as none.
class Preferences
{
public:
    Preferences();

    /// The language of the last time, else the machine's, when the program speaks it, else English.
    Language language() const;
    bool dark() const;
    QByteArray geometry() const; ///< As QWidget::saveGeometry gave it.

    void remember(const QByteArray &geometry, Language language, bool dark);

private:
    QSettings m_settings;
};

} // namespace QuoteDesk

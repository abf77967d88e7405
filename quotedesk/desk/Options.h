#pragma once

#include "database/StoreLocation.h"
#include "desk/Language.h"

#include "data/Currency.h"
#include "data/Exceptions.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace QuoteDesk
{

/// The options on the command line. Missing ones get their values when the job is known.
struct Options {
    enum class Question { None, Help, Version };

    Question question = Question::None; ///< print this text and do nothing else
    bool headless = false;
    bool byAmount = false;
    bool allocate = false;
    bool json = false;
    bool dark = false;
    /// When not set, the window uses the last or the system's language and the headless job English.
    std::optional<Language> language;
    StoreLocation database;       ///< blank for the user's own file
    bool beginsQuote = false;     ///< product, amount or mode were given, so the window opens a new quote
    Currency amount = 100000;     ///< rand
    QList<int> funds;             ///< fund ids in the order given; empty to choose a few
    std::optional<int> productID; ///< the first product when not set
    QString catalogue;            ///< a file; empty for the embedded catalogue
    QString import;               ///< a catalogue file to import without a window; empty for none
    bool yes = false;             ///< an import may remove funds without asking
    QString screenshots;          ///< a folder; empty for a temporary one
};

/// A wrong command line; the message is one line for users.
class UsageError : public Exception
{
public:
    using Exception::Exception;
};

/// Reads the command line, including the program's name. Throws UsageError.
Options readOptions(const QStringList &arguments);

/// The text of --help.
QString helpText();

} // namespace QuoteDesk

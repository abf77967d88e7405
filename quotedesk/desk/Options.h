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

/// What the command line asks for. What it leaves open is chosen when the job is known.
struct Options {
    enum class Question { None, Help, Version };

    Question question = Question::None; ///< A text to print in place of any work.
    bool headless = false;
    bool byAmount = false;
    bool allocate = false;
    bool json = false;
    bool dark = false;
    /// When not set, the window speaks that of the last time or of the machine, the job off screen English.
    std::optional<Language> language;
    StoreLocation database;       ///< Blank for the user's own file.
    bool beginsQuote = false;     ///< Product, amount or mode were given: the window starts with a new quote.
    Currency amount = 100000;     ///< rand
    QList<int> funds;             ///< Fund IDs in the order asked for; empty to choose a few.
    std::optional<int> productID; ///< The first product when not set.
    QString catalogue;            ///< A file; empty for the embedded catalogue.
    QString import;               ///< A catalogue file to import without a window; empty for none.
    bool yes = false;             ///< A catalogue may take funds away without a question.
    QString screenshots;          ///< A folder; empty for one of the run's own.
};

/// A command line that cannot be obeyed; one line for people.
class UsageError : public Exception
{
public:
    using Exception::Exception;
};

/// Reads the command line, the program's name first. Raises UsageError.
Options readOptions(const QStringList &arguments);

/// What --help prints.
QString helpText();

} // namespace QuoteDesk

#pragma once

#include "data/Exceptions.h"

namespace QuoteDesk
{

/// An error of a catalogue: a file that cannot be read, a bad line, a database error. The message is one line
/// for users, with the line number where there is one.
class CatalogueError : public Exception
{
public:
    using Exception::Exception;
};

} // namespace QuoteDesk

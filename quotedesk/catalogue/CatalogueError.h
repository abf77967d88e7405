#pragma once

#include "data/Exceptions.h"

namespace QuoteDesk
{

/// A catalogue that cannot be used: a file that cannot be read, a line that is wrong, a database that
/// refuses. The message is one line for people, with the line number where there is one.
class CatalogueError : public Exception
{
public:
    using Exception::Exception;
};

} // namespace QuoteDesk

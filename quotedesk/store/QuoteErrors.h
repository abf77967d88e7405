#pragma once

#include "database/StoreError.h"
#include "store/Quote.h"

namespace QuoteDesk
{

/// The quote to be deleted or restored is not in the right state for this.
class QuoteGone : public StoreError
{
public:
    using StoreError::StoreError;
};

/// Another user has saved or deleted the quote since this copy was read. Nothing was saved.
class QuoteChangedElsewhere : public StoreError
{
public:
    QuoteChangedElsewhere(const QString &message, Quote theirs, bool removed)
        : StoreError(message), m_theirs(std::move(theirs)), m_removed(removed)
    {
    }
    /// The other version with its time and person; for a deleted quote only its id and our own fields.
    const Quote &theirs() const noexcept { return m_theirs; }
    /// Whether the quote was deleted; SaveMode::Overwrite restores it.
    bool isRemoved() const noexcept { return m_removed; }

private:
    Quote m_theirs;
    bool m_removed = false;
};

} // namespace QuoteDesk

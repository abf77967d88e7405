#pragma once

#include "database/StoreError.h"
#include "store/Quote.h"

namespace QuoteDesk
{

/// The quote to be deleted or brought back is not there for that.
class QuoteGone : public StoreError
{
public:
    using StoreError::StoreError;
};

/// The quote was saved, or deleted, by somebody else since this copy of it was read. Nothing has been saved.
class QuoteChangedElsewhere : public StoreError
{
public:
    QuoteChangedElsewhere(const QString &message, Quote theirs, bool removed)
        : StoreError(message), m_theirs(std::move(theirs)), m_removed(removed)
    {
    }
    /// Their version, with when and by whom it was saved; only the number and our own fields when it is gone.
    const Quote &theirs() const noexcept { return m_theirs; }
    /// Whether they deleted it; SaveMode::Overwrite brings it back.
    bool isRemoved() const noexcept { return m_removed; }

private:
    Quote m_theirs;
    bool m_removed = false;
};

} // namespace QuoteDesk

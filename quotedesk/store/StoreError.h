#pragma once

#include "store/Quote.h"

#include "data/Exceptions.h"

namespace QuoteDesk
{

/// What went wrong with the quotes' database. The message is for people, in plain words; details() is what
/// the engine said, for a dialog whose details can be copied.
class StoreError : public Exception
{
public:
    explicit StoreError(const QString &message, QString details = {})
        : Exception(message), m_details(std::move(details))
    {
    }
    const QString &details() const noexcept { return m_details; }

private:
    QString m_details;
};

/// The server has gone away or does not answer. Nothing that was asked for has been done, or at most the one
/// save that was under way, which Quote::saveKey tells apart the next time. The next call connects anew.
class StoreUnreachable : public StoreError
{
public:
    using StoreError::StoreError;
};

/// The server asks for a password and has been given none, or a wrong one.
class StoreNeedsPassword : public StoreError
{
public:
    using StoreError::StoreError;
};

/// The quote to be removed or brought back is not there for that.
class QuoteGone : public StoreError
{
public:
    using StoreError::StoreError;
};

/// The quote was saved, or removed, by somebody else since this copy of it was read. Nothing has been saved.
class QuoteChangedElsewhere : public StoreError
{
public:
    QuoteChangedElsewhere(const QString &message, Quote theirs, bool removed)
        : StoreError(message), m_theirs(std::move(theirs)), m_removed(removed)
    {
    }
    /// Their version, with when and by whom it was saved; only the number and our own fields when it is gone.
    const Quote &theirs() const noexcept { return m_theirs; }
    /// Whether they removed it; SaveMode::Overwrite brings it back.
    bool isRemoved() const noexcept { return m_removed; }

private:
    Quote m_theirs;
    bool m_removed = false;
};

} // namespace QuoteDesk

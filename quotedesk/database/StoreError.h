#pragma once

#include "data/Exceptions.h"

namespace QuoteDesk
{

/// An error of the quotes' database. The message is for users; details() is the engine's message, for a
/// dialog that can copy it.
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

/// The server is gone or does not answer. Nothing was done, except perhaps the save in progress, which
/// Quote::saveKey identifies the next time. The next call connects again.
class StoreUnreachable : public StoreError
{
public:
    using StoreError::StoreError;
};

/// The server requires a password and got none or a wrong one.
class StoreNeedsPassword : public StoreError
{
public:
    using StoreError::StoreError;
};

} // namespace QuoteDesk

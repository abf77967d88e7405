#pragma once

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

} // namespace QuoteDesk

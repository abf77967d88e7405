#pragma once

#include "data/Table.h"

#include <QByteArray>
#include <QMetaType>

/// A whole dataset handed over at once: an immutable, shared table. Copying a packet copies no rows. It
/// travels inside a QVariant as itself, or as bytes (CBOR) between processes.
class ZEL_DATA_EXPORT TDataPacket
{
public:
    TDataPacket() = default;
    /// Carries @p table itself, not a copy.
    explicit TDataPacket(TTablePtr table) : m_table(std::move(table)) {}
    bool IsNull() const noexcept { return m_table == nullptr; } ///< Whether it carries no table.
    const TTablePtr &Table() const noexcept { return m_table; } ///< The table; nullptr in a null packet.

    /// The byte form, with a magic word, a version and a checksum.
    QByteArray ToBytes() const;
    /// Reads the byte form; EDatabaseError when it is cut, corrupted, of another version or its columns are
    /// of unequal length.
    static TDataPacket FromBytes(const QByteArray &bytes);

    QVariant ToVariant() const { return QVariant::fromValue(*this); } ///< The packet as datasets take it.
    /// A TDataPacket, or its bytes in a QByteArray; EDatabaseError for any other content, an empty one
    /// included.
    static TDataPacket FromVariant(const QVariant &value);

private:
    TTablePtr m_table;
};
Q_DECLARE_METATYPE(TDataPacket)

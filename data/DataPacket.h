#pragma once

#include "data/Table.h"

#include <QByteArray>
#include <QMetaType>

/// The rows of a whole dataset: an immutable, shared table. Copying a packet copies no rows. A packet can be
/// passed in a QVariant, or as bytes (CBOR) between processes.
class ZEL_DATA_EXPORT TDataPacket
{
public:
    TDataPacket() = default;
    /// Shares @p table.
    explicit TDataPacket(TTablePtr table) : m_table(std::move(table)) {}
    bool IsNull() const noexcept { return m_table == nullptr; } ///< Whether there is no table.
    const TTablePtr &Table() const noexcept { return m_table; } ///< The table; nullptr in a null packet.

    /// The byte form, with a magic word, a version and a checksum. Throws EDatabaseError for a null packet.
    QByteArray ToBytes() const;
    /// Reads the byte form. Throws EDatabaseError when the bytes are truncated, corrupted or of another
    /// version, or when the columns differ in length.
    static TDataPacket FromBytes(const QByteArray &bytes);

    QVariant ToVariant() const { return QVariant::fromValue(*this); } ///< The packet in a variant.
    /// The packet of a variant that contains a TDataPacket or its bytes in a QByteArray. Throws
    /// EDatabaseError for any other or no content.
    static TDataPacket FromVariant(const QVariant &value);

private:
    TTablePtr m_table;
};
Q_DECLARE_METATYPE(TDataPacket)

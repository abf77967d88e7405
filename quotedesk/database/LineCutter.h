#pragma once

#include <QtGlobal>

#include <mutex>

class QSqlDatabase;

namespace QuoteDesk
{

/// Lets another thread end a wait for a database server. A server that stops answering without closing the
/// connection would be waited for without limit: its system still acknowledges packets, so no setting of the
/// connection helps.
///
/// Pieces of work are numbered, so that a late cut does not hit the next piece.
class LineCutter
{
public:
    LineCutter() = default;
    ~LineCutter();
    Q_DISABLE_COPY_MOVE(LineCutter)

    /// Called by the working thread: holds an open connection to a server in place of the former one. Cuts it
    /// at once when the present piece of work has been cut.
    void hold(const QSqlDatabase &connection);
    /// Called by the working thread: the connection has been closed.
    void release();
    /// Called by the working thread: a piece of work begins. Returns its number.
    quint64 begin();
    /// Whether the present piece of work has been cut; it must not connect again then.
    bool isCut() const;

    /// Called by other threads: cuts the connection of this piece of work. Does nothing when it has ended.
    void cut(quint64 number);
    /// Cuts the connection and all later ones.
    void cutForGood();

private:
    void cutNow();

    mutable std::mutex m_mutex;
    qintptr m_line = -1; ///< A duplicate of the driver's handle, which the driver may close at any time.
    quint64 m_number = 0;
    bool m_isCut = false;
    bool m_isCutForGood = false;
};

} // namespace QuoteDesk

#pragma once

#include <QtGlobal>

#include <mutex>

class QSqlDatabase;

namespace QuoteDesk
{

/// Lets another thread end a wait for a database server. A server that has gone silent without closing its
/// line would be waited for without limit: no setting of the connection ends that, for the system that it
/// runs on still answers in its name.
///
/// The work on the connection is counted, so that a cut that comes a moment too late does not hit the piece
/// of work after the one that was meant.
class LineCutter
{
public:
    LineCutter() = default;
    ~LineCutter();
    Q_DISABLE_COPY_MOVE(LineCutter)

    /// For the thread that works: an open connection to a server, in the place of the one held before. It is
    /// cut at once when its piece of work is.
    void hold(const QSqlDatabase &connection);
    /// For the thread that works: the connection has been closed.
    void release();
    /// For the thread that works: a piece of work begins; its number.
    quint64 begin();
    /// Whether the present piece of work has been cut; then nothing is connected anew for it.
    bool isCut() const;

    /// For other threads: cuts the line that the piece of work is using; nothing when it is over.
    void cut(quint64 number);
    /// Cuts the line, and every later one.
    void cutForGood();

private:
    void cutNow();

    mutable std::mutex m_mutex;
    qintptr m_line = -1; ///< A handle of our own: the driver may close its own at any moment.
    quint64 m_number = 0;
    bool m_isCut = false;
    bool m_isCutForGood = false;
};

} // namespace QuoteDesk

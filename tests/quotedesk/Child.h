#pragma once

#include <QtGlobal>

#include <csignal>
#include <cstdio>
#include <exception>
#include <utility>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace StoreTesting
{

/// A forked copy of this process that runs @p body and can be killed at any moment. It must not use the
/// test's database connections, so no connection may be open when it is created.
class Child
{
public:
    template <class Body> explicit Child(const Body &body) : m_pid(fork())
    {
        if (m_pid != 0)
            return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        try {
            body();
        } catch (const std::exception &error) {
            fprintf(stderr, "In the copy of the process: %s\n", error.what());
            _exit(1);
        }
        _exit(0);
    }
    ~Child() { kill(); }
    Q_DISABLE_COPY_MOVE(Child)

    void kill()
    {
        if (m_pid > 0)
            ::kill(m_pid, SIGKILL);
        wait();
    }
    /// Waits for the end. Returns whether the process exited by itself with status 0.
    bool wait()
    {
        int status = 0;
        const bool ended = m_pid > 0 && waitpid(std::exchange(m_pid, 0), &status, 0) > 0;
        return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    bool isRunning() const
    {
        siginfo_t ended{};
        return m_pid > 0 &&
               waitid(P_PID, static_cast<id_t>(m_pid), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               ended.si_pid == 0;
    }

private:
    pid_t m_pid;
};

} // namespace StoreTesting

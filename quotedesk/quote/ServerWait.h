#pragma once

#include "store/StoreWorker.h"

#include <QEventLoop>
#include <QObject>

#include <future>
#include <type_traits>

class QWidget;

namespace QuoteDesk
{

/// What is shown while a command waits.
enum class WaitsWith {
    OurBox,     ///< A box that comes up after a moment, with a button that ends the wait.
    BoxOfItsOwn ///< What the command itself shows, which keeps the other windows from being used.
};

/// The wait of a command that cannot go on without an answer: nothing else can be done in the program's
/// windows meanwhile, but they stay alive.
class ServerWait : public QObject
{
    Q_OBJECT
public:
    ServerWait(QWidget *parent, WaitsWith box);
    ~ServerWait() override;

    /// The answer is there.
    void end();
    /// Returns once it is; raises StoreUnreachable when somebody did not want to wait for it.
    void run();

private:
    QWidget *m_parent;
    WaitsWith m_box;
    QEventLoop m_loop;
    bool m_ended = false;
};

/// What @p work returns or raises, a function of the store. With a box of its own it may refer to what the
/// caller holds, and takes as long as it says that it goes on.
template <class Work>
std::invoke_result_t<Work, QuoteStore &> fetch(StoreWorker &worker, QWidget *parent, Work work,
                                               WaitsWith box = WaitsWith::OurBox)
{
    std::future<std::invoke_result_t<Work, QuoteStore &>> answer;
    ServerWait wait(parent, box);
    worker.ask(
        &wait, std::move(work),
        [&](auto given) {
            answer = std::move(given);
            wait.end();
        },
        box == WaitsWith::OurBox ? StoreWorker::UsualLimit : StoreWorker::LongLimit);
    wait.run();
    return answer.get();
}

} // namespace QuoteDesk

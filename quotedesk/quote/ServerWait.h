#pragma once

#include "store/StoreWorker.h"

#include <QEventLoop>
#include <QObject>

#include <future>
#include <type_traits>

class QWidget;

namespace QuoteDesk
{

/// What is displayed while a command waits.
enum class WaitsWith {
    OurBox,     ///< a box that appears after a moment, with a Cancel button
    BoxOfItsOwn ///< a modal window of the command's own
};

/// Waits for an answer that a command needs. The program's windows are blocked meanwhile but stay responsive.
class ServerWait : public QObject
{
    Q_OBJECT
public:
    ServerWait(QWidget *parent, WaitsWith box);
    ~ServerWait() override;

    /// The answer has arrived.
    void end();
    /// Returns when the answer has arrived. Throws StoreUnreachable when the user cancels the wait.
    void run();

private:
    QWidget *m_parent;
    WaitsWith m_box;
    QEventLoop m_loop;
    bool m_ended = false;
};

/// Runs @p work, a function of the store, and returns its result or throws its exception. With
/// WaitsWith::BoxOfItsOwn @p work may refer to the caller's variables, and StoreWorker::goesOn() extends its
/// time.
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

#pragma once

#include "store/QuoteStore.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>

namespace QuoteDesk
{

class CatalogueDatabase;
class LineCutter;

/// What a window asks of a store without ever waiting for it.
///
/// The quotes of a file are asked at once, on the caller's thread. Those of a server are asked by a thread of
/// the worker's own, which has the only connection; the answers come in the order of the questions, in the
/// event loop of the thread that made the worker. Every question is answered, once: by the server, or, when
/// its time is over, by StoreUnreachable. The line is cut then, so no answer can come later; what the server
/// did in the meantime all the same is told apart by the next save (Quote::saveKey), and a new connection
/// works only once the session before it has come to its end.
///
/// Except for its own thread's work all of it belongs to the thread that made it.
class StoreWorker : public QObject
{
    Q_OBJECT
public:
    static constexpr int UsualLimit = 10'000; ///< How long a server may take for an answer, in milliseconds.
    static constexpr int LongLimit = 60'000;  ///< The same for one that takes long even on a good day.
    static constexpr int ImportLimit = 30 * 60'000; ///< For a catalogue before there is a window.
    /// A server is called silent when this part of the time for an answer is over.
    static constexpr int SilentPart = 5;

    /// Asks a store that is open, at once; it must outlive the worker.
    explicit StoreWorker(QuoteStore &store);
    /// Opens the database of a server. Waits for that, half a minute at the most, and raises what
    /// QuoteStore::open() raises.
    explicit StoreWorker(const StoreLocation &server);
    /// Waits a few seconds for the questions that are not answered yet; nobody hears the answers.
    ~StoreWorker() override;

    /// Whether questions are answered before ask() returns.
    bool isDirect() const noexcept { return m_store != nullptr; }
    /// The database that a direct worker asks; nullptr when only the worker's own thread may touch it.
    Database *directDatabase() const noexcept { return m_store ? &m_store->database() : nullptr; }
    const StoreLocation &location() const noexcept { return m_location; }
    /// Whether the server has answered lately; a file always has.
    bool isAnswering() const noexcept { return m_isAnswering; }

    /// Has @p work done, a function of the store, and gives what it returns or raises to @p then as a
    /// std::future that is ready. Nobody is told when @p receiver is gone by then. What @p then raises
    /// reaches the caller of a direct worker and the application's exception report otherwise.
    template <class Work, class Then>
    void ask(QObject *receiver, Work work, Then then, int limitMs = UsualLimit);

    /// For work that takes long and goes on: what is called from within it begins the time for an answer
    /// anew.
    void goesOn();

    /// The same as ask(), waiting for the answer: for the time in which there is no window yet.
    template <class Work> std::invoke_result_t<Work, QuoteStore &> wait(Work work, int limitMs = UsualLimit);
    /// The catalogue for the windows on this store: the one of a file itself, and a copy of a server's, for
    /// which it waits. Raises StoreError.
    CatalogueDatabase catalogue();

Q_SIGNALS:
    /// The server has gone silent, or answers again.
    void answering(bool answers);

private:
    struct Question {
        std::function<void(QuoteStore &)> work;         ///< Keeps what the work raises, but raises it, too.
        std::function<void(std::exception_ptr)> refuse; ///< In the place of the work.
        std::function<void()> tell;                     ///< On the thread of the worker's maker.
        int limitMs = UsualLimit;
    };
    template <class Work> static auto prepare(Work work, Question &question);
    void put(Question question);
    void serve(std::promise<void> opened);
    void answer(const Question &question, const std::exception_ptr &unreachable);
    void watch();
    void setAnswering(bool answers);

    QuoteStore *m_store = nullptr; ///< Of a direct worker.
    StoreLocation m_location;
    std::shared_ptr<LineCutter> m_cutter;
    bool m_isAnswering = true;
    QTimer m_watch; ///< Runs while answers are awaited.
    int m_awaited = 0;

    // Of both threads, under the lock.
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Question> m_questions;
    bool m_ending = false;
    bool m_working = false;
    quint64 m_workNumber = 0;
    int m_workLimitMs = 0;
    QElapsedTimer m_workClock;

    std::thread m_thread;
};

template <class Work> auto StoreWorker::prepare(Work work, Question &question)
{
    using Result = std::invoke_result_t<Work, QuoteStore &>;
    const auto promise = std::make_shared<std::promise<Result>>();
    question.work = [promise, work = std::move(work)](QuoteStore &store) mutable {
        try {
            if constexpr (std::is_void_v<Result>) {
                work(store);
                promise->set_value();
            } else {
                promise->set_value(work(store));
            }
        } catch (...) {
            promise->set_exception(std::current_exception());
            throw;
        }
    };
    question.refuse = [promise](const std::exception_ptr &reason) { promise->set_exception(reason); };
    return promise->get_future();
}

template <class Work, class Then> void StoreWorker::ask(QObject *receiver, Work work, Then then, int limitMs)
{
    Question question;
    question.limitMs = limitMs;
    const auto answer = std::make_shared<std::future<std::invoke_result_t<Work, QuoteStore &>>>(
        prepare(std::move(work), question));
    question.tell = [alive = QPointer<QObject>(receiver), answer, then = std::move(then)]() mutable {
        if (alive)
            then(std::move(*answer));
    };
    put(std::move(question));
}

template <class Work> std::invoke_result_t<Work, QuoteStore &> StoreWorker::wait(Work work, int limitMs)
{
    Question question;
    question.limitMs = limitMs;
    question.tell = [] {};
    auto answer = prepare(std::move(work), question);
    put(std::move(question));
    while (answer.wait_for(std::chrono::milliseconds(20)) != std::future_status::ready)
        watch();
    return answer.get();
}

} // namespace QuoteDesk

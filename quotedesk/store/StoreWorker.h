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

/// Lets a window ask a store without ever waiting for it.
///
/// Questions to a file are answered immediately on the caller's thread. Questions to a server are answered by
/// the worker's own thread, which has the only connection; the answers arrive in the order of the questions,
/// in the event loop of the thread that created the worker. Every question gets exactly one answer: from the
/// server, or StoreUnreachable after its time limit. The connection is cut then, so no late answer can
/// arrive. If the server has saved nevertheless, the next save finds that out (Quote::saveKey); a new
/// connection waits until the former session has ended.
///
/// Everything except the own thread's work belongs to the thread that created the worker.
class StoreWorker : public QObject
{
    Q_OBJECT
public:
    static constexpr int UsualLimit = 10'000;       ///< the time limit for an answer, in milliseconds
    static constexpr int LongLimit = 60'000;        ///< the same for questions that take long
    static constexpr int ImportLimit = 30 * 60'000; ///< for a catalogue before there is a window
    /// The server counts as silent after this fraction of the time limit.
    static constexpr int SilentPart = 5;

    /// Asks an open store directly; the store must outlive the worker.
    explicit StoreWorker(QuoteStore &store);
    /// Opens the database of a server and waits up to half a minute for it. Throws what QuoteStore::open()
    /// throws.
    explicit StoreWorker(const StoreLocation &server);
    /// Waits a few seconds for unanswered questions; their answers are dropped.
    ~StoreWorker() override;

    /// Whether questions are answered before ask() returns.
    bool isDirect() const noexcept { return m_store != nullptr; }
    /// The database of a direct worker; nullptr when only the worker's thread may use it.
    Database *directDatabase() const noexcept { return m_store ? &m_store->database() : nullptr; }
    const StoreLocation &location() const noexcept { return m_location; }
    /// Whether the server answers; always true for a file.
    bool isAnswering() const noexcept { return m_isAnswering; }

    /// Runs @p work, a function of the store, and passes its result or exception to @p then as a ready
    /// std::future. When @p receiver is destroyed, @p then is not called. Exceptions of @p then reach the
    /// caller of a direct worker; otherwise they go to the application's exception report.
    template <class Work, class Then>
    void ask(QObject *receiver, Work work, Then then, int limitMs = UsualLimit);

    /// For long work that makes progress: called from inside the work, it restarts the time limit.
    void goesOn();

    /// Like ask(), but waits for the answer: for the time before there is a window.
    template <class Work> std::invoke_result_t<Work, QuoteStore &> wait(Work work, int limitMs = UsualLimit);
    /// The catalogue for the windows on this store: of a file the catalogue itself, of a server a copy, for
    /// which it waits. Throws StoreError.
    CatalogueDatabase catalogue();

Q_SIGNALS:
    /// The server has stopped answering or answers again.
    void answering(bool answers);

private:
    struct Question {
        std::function<void(QuoteStore &)> work; ///< Stores the exception of the work and throws it again.
        std::function<void(std::exception_ptr)> refuse; ///< Called instead of the work.
        std::function<void()> tell;                     ///< Called on the thread that created the worker.
        int limitMs = UsualLimit;
    };
    template <class Work> static auto prepare(Work work, Question &question);
    void put(Question question);
    void serve(std::promise<void> opened);
    void answer(const Question &question, const std::exception_ptr &unreachable);
    void watch();
    void setAnswering(bool answers);

    QuoteStore *m_store = nullptr; ///< of a direct worker
    StoreLocation m_location;
    std::shared_ptr<LineCutter> m_cutter;
    bool m_isAnswering = true;
    QTimer m_watch; ///< runs while answers are awaited
    int m_awaited = 0;

    // Shared by both threads, protected by m_mutex.
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

#include "store/StoreWorker.h"

#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueDatabase.h"
#include "database/LineCutter.h"

#include "toolkit/TApplication.h"

#include <utility>

namespace QuoteDesk
{
namespace
{

constexpr std::chrono::seconds OpenLimit(30);
constexpr std::chrono::seconds EndLimit(5);
constexpr int WatchMs = 100;

/// The exception when the server cannot be reached; nullptr otherwise.
std::exception_ptr unreachableOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const StoreUnreachable &) {
        return std::current_exception();
    } catch (...) {
        // Other exceptions are normal answers.
    }
    return {};
}

} // namespace

StoreWorker::StoreWorker(QuoteStore &store) : m_store(&store), m_location(store.location()) {}

StoreWorker::StoreWorker(const StoreLocation &server)
    : m_location(server), m_cutter(std::make_shared<LineCutter>())
{
    m_watch.setInterval(WatchMs);
    connect(&m_watch, &QTimer::timeout, this, &StoreWorker::watch);
    std::promise<void> opened;
    std::future<void> answer = opened.get_future();
    m_thread = std::thread([this, opened = std::move(opened)]() mutable { serve(std::move(opened)); });
    if (answer.wait_for(OpenLimit) != std::future_status::ready)
        m_cutter->cutForGood();
    try {
        answer.get();
    } catch (...) {
        m_thread.join();
        throw;
    }
}

StoreWorker::~StoreWorker()
{
    if (isDirect())
        return;
    std::promise<void> ended;
    const std::future<void> end = ended.get_future();
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_wake.notify_one();
    std::thread watcher([this, &end] {
        if (end.wait_for(EndLimit) != std::future_status::ready)
            m_cutter->cutForGood();
    });
    m_thread.join();
    ended.set_value();
    watcher.join();
}

CatalogueDatabase StoreWorker::catalogue()
{
    if (Database *const own = directDatabase())
        return CatalogueDatabase(*own);
    return CatalogueDatabase(
        wait([](QuoteStore &store) { return CatalogueCopy::of(store.database()); }, LongLimit));
}

void StoreWorker::put(Question question)
{
    if (isDirect()) {
        try {
            question.work(*m_store);
        } catch (...) {
            // The answer contains the exception.
        }
        question.tell();
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_questions.push_back(std::move(question));
    }
    m_wake.notify_one();
    if (m_awaited++ == 0)
        m_watch.start();
}

/// The loop of the worker's own thread.
void StoreWorker::serve(std::promise<void> opened)
{
    std::unique_ptr<QuoteStore> store;
    try {
        m_cutter->begin();
        store = QuoteStore::open(m_location, m_cutter);
    } catch (...) {
        opened.set_exception(std::current_exception());
        return;
    }
    opened.set_value();
    for (;;) {
        std::unique_lock lock(m_mutex);
        m_wake.wait(lock, [this] { return m_ending || !m_questions.empty(); });
        if (m_questions.empty())
            return;
        Question question = std::move(m_questions.front());
        m_questions.pop_front();
        m_workNumber = m_cutter->begin();
        m_workLimitMs = question.limitMs;
        m_workClock.start();
        m_working = true;
        lock.unlock();

        const std::exception_ptr unreachable = unreachableOf([&] { question.work(*store); });

        std::deque<Question> refused;
        lock.lock();
        m_working = false;
        // The questions behind it would wait for the same server, one after the other.
        if (unreachable)
            refused = std::exchange(m_questions, {});
        lock.unlock();
        answer(question, unreachable);
        for (const Question &other : refused) {
            other.refuse(unreachable);
            answer(other, unreachable);
        }
    }
}

/// Passes the answer to the thread that created the worker.
void StoreWorker::answer(const Question &question, const std::exception_ptr &unreachable)
{
    QMetaObject::invokeMethod(
        this,
        [this, tell = question.tell, answers = !unreachable] {
            if (--m_awaited == 0)
                m_watch.stop();
            setAnswering(answers);
            GuardedCall(tell);
        },
        Qt::QueuedConnection);
}

void StoreWorker::goesOn()
{
    const std::lock_guard lock(m_mutex);
    m_workClock.start();
}

void StoreWorker::watch()
{
    qint64 worked = 0;
    int limit = 0;
    quint64 number = 0;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_working)
            return;
        worked = m_workClock.elapsed();
        limit = m_workLimitMs;
        number = m_workNumber;
    }
    if (worked >= limit / SilentPart)
        setAnswering(false);
    if (worked >= limit)
        m_cutter->cut(number);
}

void StoreWorker::setAnswering(bool answers)
{
    if (std::exchange(m_isAnswering, answers) != answers)
        Q_EMIT answering(answers);
}

} // namespace QuoteDesk

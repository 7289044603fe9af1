#pragma once

#include <QFuture>
#include <QPromise>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <utility>

namespace ravelinth {

// Runs jobs one after another, in the order given, on a thread of its own that starts with the
// first job. The destructor runs what is still queued, then joins the thread.
//
// A plain thread and a standard mutex rather than a QThreadPool: a pool's idle thread is woken
// inside QtCore, where thread checkers cannot see that the job's captures were handed over whole,
// and so they report every job that a reused thread runs.
class SerialQueue {
public:
    SerialQueue() = default;
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;
    ~SerialQueue() {
        {
            std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        m_wake.notify_one();
        if (m_thread.joinable())
            m_thread.join();
    }

    // The job's result arrives through the future; a void job's future only finishes.
    template <typename Job> QFuture<std::invoke_result_t<Job>> run(Job job) {
        using Result = std::invoke_result_t<Job>;
        auto promise = std::make_shared<QPromise<Result>>();
        QFuture<Result> future = promise->future();
        promise->start();
        post([promise, job = std::move(job)]() mutable {
            if constexpr (std::is_void_v<Result>)
                job();
            else
                promise->addResult(job());
            promise->finish();
        });
        return future;
    }

    // Returns once every job queued so far has run.
    void waitForDone() {
        std::unique_lock lock(m_mutex);
        m_idle.wait(lock, [this] { return m_jobs.empty() && !m_busy; });
    }

private:
    void post(std::function<void()> job) {
        {
            std::lock_guard lock(m_mutex);
            m_jobs.push_back(std::move(job));
            if (!m_thread.joinable())
                m_thread = std::thread([this] { work(); });
        }
        m_wake.notify_one();
    }

    void work() {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
            if (m_jobs.empty())
                return;
            std::function<void()> job = std::move(m_jobs.front());
            m_jobs.pop_front();
            m_busy = true;
            lock.unlock();
            job();
            job = nullptr; // its captures go on this thread, before the queue counts as idle
            lock.lock();
            m_busy = false;
            m_idle.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::deque<std::function<void()>> m_jobs;
    bool m_busy = false;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace ravelinth

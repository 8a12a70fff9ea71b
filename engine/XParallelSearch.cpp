#include "XParallelSearch.h"

#include <chrono>
#include <memory>
#include <new>
#include <utility>

XParallelSearch::XParallelSearch(XCoverageSearch search, unsigned seed, int iterations, int total,
                                 int maxSize, int threads, std::atomic<bool> const& stop,
                                 XStopClock* clock)
    : m_search(std::move(search)), m_random(seed), m_seed(seed), m_iterations(iterations),
      m_total(total), m_maxSize(maxSize), m_lookahead(threads), m_stop(stop), m_clock(clock)
{
    if (threads < 2)
        return;
    try {
        for (int t = 0; t < threads; ++t)
            m_workers.emplace_back(&XParallelSearch::work, this);
    } catch (std::exception const&) {
        // Fewer threads than asked for still give the same result.
    }
}

XParallelSearch::~XParallelSearch()
{
    shutDown();
}

void XParallelSearch::shutDown()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_quit.store(true);
    }
    m_changed.notify_all();
    for (std::thread& worker : m_workers)
        worker.join();
    m_workers.clear();
}

void XParallelSearch::work()
{
    const int thread = m_clock ? m_clock->enter() : -1;
    searchSizes();
    if (m_clock)
        m_clock->leave(thread);
}

void XParallelSearch::searchSizes()
{
    std::unique_ptr<XCoverageSearch> search;
    try {
        std::lock_guard<std::mutex> lock(m_mutex);
        search.reset(new XCoverageSearch(m_search));
    } catch (std::bad_alloc const&) {
        search.reset();
    }
    // Each thread takes ever larger sizes, so its generator only moves on.
    XRandom random(m_seed);
    for (;;) {
        int k = 0;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_changed.wait(lock, [this] {
                return m_quit.load() || m_next > m_maxSize || m_next <= m_requested + m_lookahead;
            });
            if (m_quit.load() || m_next > m_maxSize)
                return;
            k = m_next++;
        }
        Done done;
        if (search) {
            random.advance(startOf(k) - random.position());
            done.ok = search->search(k, m_iterations, m_total, random, m_stop, false, &m_quit);
            done.outcome.coverage = search->bestCoverage();
            if (search->improved())
                done.outcome.indices = search->bestIndices();
            done.outcome.attempts = search->attempts();
        }
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            if (m_quit.load() || m_stop.load())
                return;
            m_done[k] = std::move(done);
        }
        m_changed.notify_all();
    }
}

bool XParallelSearch::searchHere(int k, uint64_t position, Outcome& outcome)
{
    if (m_random.position() > position)
        m_random = XRandom(m_seed);
    m_random.advance(position - m_random.position());
    if (!m_search.search(k, m_iterations, m_total, m_random, m_stop)) {
        m_outOfMemory = true;
        return false;
    }
    if (m_stop.load())
        return false;
    outcome.coverage = m_search.bestCoverage();
    outcome.indices = m_search.improved() ? m_search.bestIndices() : QList<int>();
    outcome.attempts = m_search.attempts();
    return true;
}

bool XParallelSearch::result(int k, uint64_t position, Outcome& outcome)
{
    if (m_workers.empty() || position != startOf(k)) {
        // Speculation assumed a different start from here on.
        shutDown();
        return searchHere(k, position, outcome);
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    m_requested = k;
    m_changed.notify_all();
    for (;;) {
        auto it = m_done.find(k);
        if (it != m_done.end()) {
            Done done = std::move(it->second);
            m_done.erase(m_done.begin(), ++it);
            if (!done.ok) {
                m_outOfMemory = true;
                return false;
            }
            outcome = std::move(done.outcome);
            return true;
        }
        if (m_stop.load()) {
            lock.unlock();
            shutDown();
            return false;
        }
        m_changed.wait_for(lock, std::chrono::milliseconds(5));
    }
}

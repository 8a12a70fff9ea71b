#pragma once

#include "XCoverageSearch.h"
#include "XRandom.h"
#include "XStopClock.h"

#include <QList>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

// Runs the searches for core sizes 1, 2, 3, ... on several threads ahead of
// the caller, each from the draw where a sequential run would start it: while
// no smaller size covered every allele, every attempt of size k draws k values,
// so attempt a of size k starts at draw iterations * k(k-1)/2 + a * k. A size
// asked for at any other draw is searched on the calling thread instead.
class XParallelSearch
{
public:
    struct Outcome
    {
        int coverage = 0; // 0: no attempt found an allele
        QList<int> indices;
        int attempts = 0;
    };

    // With one thread every size is searched on the calling thread.
    XParallelSearch(XCoverageSearch search, unsigned seed, int iterations, int total, int maxSize,
                    int threads, std::atomic<bool> const& stop, XStopClock* clock = nullptr);
    ~XParallelSearch();
    XParallelSearch(XParallelSearch const&) = delete;
    XParallelSearch& operator=(XParallelSearch const&) = delete;

    // The search for size k (1..maxSize) from draw `position`. Waits for it,
    // or gives up within milliseconds once `stop` is set. False when stopped
    // or memory ran out (`outOfMemory()`).
    bool result(int k, uint64_t position, Outcome& outcome);
    bool outOfMemory() const { return m_outOfMemory; }

private:
    struct Done
    {
        bool ok = false;
        Outcome outcome;
    };

    uint64_t startOf(int k) const { return uint64_t(m_iterations) * uint64_t(k) * (k - 1) / 2; }
    void work();
    void searchSizes();
    void shutDown();
    bool searchHere(int k, uint64_t position, Outcome& outcome);

    XCoverageSearch m_search;
    XRandom m_random;
    unsigned m_seed;
    int m_iterations;
    int m_total;
    int m_maxSize;
    int m_lookahead;
    std::atomic<bool> const& m_stop;
    XStopClock* m_clock;
    std::atomic<bool> m_quit{false};
    bool m_outOfMemory = false;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_next = 1;      // next size a worker takes
    int m_requested = 0; // latest size asked for
    std::map<int, Done> m_done;
    std::vector<std::thread> m_workers;
};

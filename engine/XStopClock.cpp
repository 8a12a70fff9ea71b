#include "XStopClock.h"

#include <pthread.h>

#include <algorithm>

qint64 XStopClock::read(clockid_t clock)
{
    timespec now{};
    if (clock_gettime(clock, &now) != 0)
        return -1;
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

int XStopClock::enter()
{
    Thread thread;
    if (pthread_getcpuclockid(pthread_self(), &thread.clock) != 0)
        thread.clock = CLOCK_THREAD_CPUTIME_ID;
    std::lock_guard<std::mutex> lock(m_mutex);
    // A thread that starts after the stop counts all its work.
    if (m_stopped)
        thread.atStop = read(thread.clock);
    m_threads.push_back(thread);
    return int(m_threads.size()) - 1;
}

void XStopClock::leave(int number)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    Thread& thread = m_threads[size_t(number)];
    thread.atEnd = read(thread.clock);
}

void XStopClock::stop()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_stopped)
        return;
    m_stopped = true;
    // Threads that already ended cannot be read any more, nor need to be.
    for (Thread& thread : m_threads) {
        if (thread.atEnd < 0)
            thread.atStop = read(thread.clock);
    }
}

qint64 XStopClock::latency() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_stopped)
        return -1;
    qint64 longest = -1;
    for (Thread const& thread : m_threads) {
        if (thread.atStop >= 0 && thread.atEnd >= 0)
            longest = std::max(longest, thread.atEnd - thread.atStop);
    }
    return longest;
}

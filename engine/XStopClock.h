#pragma once

#include <QtGlobal>

#include <ctime>
#include <mutex>
#include <vector>

// How long the engine's threads keep working after a stop was asked for,
// in the processor time of each thread: a loaded machine that leaves the
// threads waiting does not count, only work done after the request does.
class XStopClock
{
public:
    // Called by each engine thread when it starts; returns its number.
    int enter();
    // Called by the thread `number` just before it ends.
    void leave(int number);
    // Notes where every running thread stands; only the first call counts.
    void stop();
    // The most processor time one thread spent from stop() to leave(), in
    // nanoseconds; -1 before both happened.
    qint64 latency() const;

private:
    struct Thread
    {
        clockid_t clock;
        qint64 atStop = -1;
        qint64 atEnd = -1;
    };

    static qint64 read(clockid_t clock);

    mutable std::mutex m_mutex;
    std::vector<Thread> m_threads;
    bool m_stopped = false;
};

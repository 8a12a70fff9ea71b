#pragma once

#include "XSearch.h"

#include <QObject>

#include <climits>
#include <memory>

class QThread;

// Runs one search on a thread it owns, the one way the window, vireon-cli
// and the tests run a search. Emits percentChanged(p) for p = 1..100 and
// searching() as the search reports them, then completed() with a result
// the receiver owns, or error() instead; a stopped run emits nothing. These
// are emitted on the search's thread (receivers elsewhere get them queued,
// in order), and finished() last, when the thread ends.
class XSearchRunner : public QObject
{
    Q_OBJECT

public:
    // The search the settings ask for (XSearch::create).
    XSearchRunner(XCsv const* input, XCsv const* start, XSearchSettings const& settings,
                  QObject* parent = nullptr);
    explicit XSearchRunner(std::unique_ptr<XSearch> search, QObject* parent = nullptr);
    // Stops a running search and waits for its thread, so that destroying
    // the runner mid-run is safe.
    ~XSearchRunner() override;

    XSearch const& search() const { return *m_search; }

    // Starts the thread; a runner runs once.
    void start();
    // Waits for the thread to end; false when ms ran out first.
    bool wait(unsigned long ms = ULONG_MAX);
    // Starts the search and waits for its end in an event loop of the
    // calling thread, so that the signals reach receivers living there.
    // Returns what it emitted: a result, an error, or neither when stopped.
    XSearch::Outcome exec();

signals:
    void percentChanged(int percent);
    void searching(int size, int accessions);
    void error(QString message);
    void completed(XResult* result);
    void finished();

public slots:
    void stopIterating();

private:
    class Relay;
    void work();

    std::unique_ptr<XSearch> m_search;
    std::unique_ptr<QThread> m_thread;
};

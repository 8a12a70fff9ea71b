#include "XSearchRunner.h"

#include <QEventLoop>
#include <QThread>

// Hands what the search reports to the runner's signals.
class XSearchRunner::Relay : public XSearch::Progress
{
public:
    explicit Relay(XSearchRunner& runner) : m_runner(runner) {}
    void percentChanged(int percent) override { emit m_runner.percentChanged(percent); }
    void searching(int size, int accessions) override { emit m_runner.searching(size, accessions); }

private:
    XSearchRunner& m_runner;
};

XSearchRunner::XSearchRunner(XCsv const* input, XCsv const* start, XSearchSettings const& settings,
                             QObject* parent)
    : XSearchRunner(XSearch::create(input, start, settings), parent)
{
}

XSearchRunner::XSearchRunner(std::unique_ptr<XSearch> search, QObject* parent)
    : QObject(parent), m_search(std::move(search))
{
}

XSearchRunner::~XSearchRunner()
{
    stopIterating();
    wait();
}

void XSearchRunner::start()
{
    if (m_thread)
        return;
    m_thread.reset(QThread::create([this] { work(); }));
    // Emitted on the search's thread, after everything the search emitted.
    connect(m_thread.get(), &QThread::finished, this, &XSearchRunner::finished,
            Qt::DirectConnection);
    m_thread->start();
}

bool XSearchRunner::wait(unsigned long ms)
{
    return !m_thread || m_thread->wait(ms);
}

void XSearchRunner::stopIterating()
{
    m_search->stop();
}

void XSearchRunner::work()
{
    Relay relay(*this);
    XSearch::Outcome outcome = m_search->run(relay);
    if (outcome.result)
        emit completed(outcome.result.release());
    else if (!outcome.error.isEmpty())
        emit error(outcome.error);
}

XSearch::Outcome XSearchRunner::exec()
{
    XSearch::Outcome outcome;
    QEventLoop loop;
    connect(this, &XSearchRunner::completed, &loop,
            [&outcome](XResult* result) { outcome.result.reset(result); });
    connect(this, &XSearchRunner::error, &loop,
            [&outcome](QString const& message) { outcome.error = message; });
    connect(this, &XSearchRunner::finished, &loop, &QEventLoop::quit);
    start();
    loop.exec();
    wait();
    return outcome;
}

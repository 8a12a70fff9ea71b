#pragma once

#include "XCore.h"
#include "XResult.h"
#include "XSearchRunner.h"

#include <QList>
#include <QString>

#include <memory>

// Runs the engine to its end on its own thread and records what it emitted,
// in order: "percent:<p>", "error:<text>", "completed".
struct EngineRun
{
    QStringList signalsSeen;
    QList<int> percents;
    QString errorText;
    std::unique_ptr<XResult> result;

    // The result's text form, or "error: <message>", or "nothing".
    QString text() const
    {
        if (result)
            return result->toString();
        if (!errorText.isNull())
            return QStringLiteral("error: ") + errorText;
        return QStringLiteral("nothing");
    }
};

inline void connectRecorder(XSearchRunner& core, EngineRun& run)
{
    // Direct connections: the slots run on the engine thread, and wait()
    // orders their writes before the reads that follow.
    QObject::connect(
        &core, &XSearchRunner::percentChanged, &core,
        [&run](int p) {
            run.percents << p;
            run.signalsSeen << QStringLiteral("percent:%1").arg(p);
        },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XSearchRunner::error, &core,
        [&run](QString const& message) {
            run.errorText = message;
            run.signalsSeen << QStringLiteral("error:") + message;
        },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XSearchRunner::completed, &core,
        [&run](XResult* result) {
            run.result.reset(result);
            run.signalsSeen << QStringLiteral("completed");
        },
        Qt::DirectConnection);
}

// Threads 0: the search's own choice. Returns whether the run ended within
// the ten minutes a test allows.
inline bool runEngine(XCsv const* csv, XCsv const* src, int iterations, int seed, EngineRun& run,
                      int threads = 0)
{
    auto search = std::make_unique<XCore>(csv, src, iterations, seed);
    if (threads > 0)
        search->setThreadCount(threads);
    XSearchRunner core(std::move(search));
    connectRecorder(core, run);
    core.start();
    return core.wait(600000);
}

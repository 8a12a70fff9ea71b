// The exact search on real and synthetic tables: seconds, entries proven
// minimal, the largest gap between a core and its lower bound, and the sizes
// at 90, 95 and 100 % beside those of the reproducible search and the alleles
// its cores really hold.
// With --abort it measures instead how long the search takes to end after
// Abort, stopped at several moments of its run.
// Usage: bench_exact [--budget S] [--only NAME] [--no-reproducible] [--curve] [--abort]
#include "SyntheticTable.h"
#include "XAlleles.h"
#include "XCore.h"
#include "XCsv.h"
#include "XExactCore.h"
#include "XResult.h"
#include "XSearchRunner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace {

QTextStream out(stdout);

std::unique_ptr<XResult> runToEnd(std::unique_ptr<XSearch> search, double* seconds)
{
    std::unique_ptr<XResult> result;
    QElapsedTimer timer;
    timer.start();
    XSearchRunner engine(std::move(search));
    QObject::connect(
        &engine, &XSearchRunner::completed, &engine, [&result](XResult* r) { result.reset(r); },
        Qt::DirectConnection);
    engine.start();
    engine.wait();
    *seconds = timer.nsecsElapsed() / 1e9;
    return result;
}

// Alleles the core of entry p truly holds, read the reproducible way.
int recount(XResult& result, int p)
{
    XCsv const* table = result.csv(p);
    return XAlleles::held({table}, table->headers());
}

// Milliseconds from stopIterating() to the end of the thread, for stops at
// several moments of one run each; "-" where the run had ended before.
void measureAbort(QString const& name, XCsv const& input, XCsv const* start, int budget)
{
    out << name.leftJustified(22) << " abort after";
    qint64 worst = 0;
    for (int after : {100, 250, 500, 1000, 3000, 8000, 20000, 40000}) {
        XSearchRunner exact(std::make_unique<XExactCore>(&input, start, budget));
        exact.start();
        if (exact.wait(after)) {
            out << ' ' << after << " ms: -;";
            continue;
        }
        QElapsedTimer timer;
        timer.start();
        exact.stopIterating();
        exact.wait();
        const qint64 ms = timer.elapsed();
        worst = std::max(worst, ms);
        out << ' ' << after << " ms: " << ms << ';';
        out.flush();
    }
    out << " worst " << worst << " ms\n";
    out.flush();
}

void measureRun(QString const& name, XCsv const& input, XCsv const* start, int budget,
                int iterations, bool reproducible, bool curve)
{
    double exactSeconds = 0;
    std::unique_ptr<XResult> result =
        runToEnd(std::make_unique<XExactCore>(&input, start, budget), &exactSeconds);
    if (!result) {
        out << name << ": no result\n";
        return;
    }
    const int startRows = start ? start->rows() - 1 : 0;
    int proven = 0;
    int gap = 0;
    for (int p = 1; p <= 100; ++p) {
        const int size = result->entries().at(p - 1).second.size();
        const int bound = result->lowerBounds().at(p - 1);
        proven += size == bound;
        gap = qMax(gap, size - bound);
    }
    auto size = [&](XResult const& r, int p) {
        return startRows + r.entries().at(p - 1).second.size();
    };
    QString line =
        QString::asprintf("%-22s %8.1f %6d %4d   %4d %4d %4d", qPrintable(name), exactSeconds,
                          proven, gap, size(*result, 90), size(*result, 95), size(*result, 100));
    if (reproducible) {
        double seconds = 0;
        std::unique_ptr<XResult> other =
            runToEnd(std::make_unique<XCore>(&input, start, iterations, 1), &seconds);
        if (other) {
            line += QString::asprintf(
                "   %4d %4d %4d  %4d/%d  %7.1f (%d it.)", size(*other, 90), size(*other, 95),
                size(*other, 100), recount(*other, 100),
                XAlleles::total({start, &input}, input.headers(), XAlleles::ZeroPairs::LeftOut),
                seconds, iterations);
        }
    }
    out << line << '\n';
    if (curve) {
        for (int p = 1; p <= 100; ++p) {
            const int s = result->entries().at(p - 1).second.size();
            const int b = result->lowerBounds().at(p - 1);
            out << QString::asprintf("  p=%3d size=%4d bound=%4d count=%5d%s\n", p, s, b,
                                     result->count(p), s == b ? "" : "  open");
        }
    }
    out.flush();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    int budget = XSearchSettings::defaultBudget;
    const int at = args.indexOf(QStringLiteral("--budget"));
    if (at > 0)
        budget = args.value(at + 1).toInt();
    const int only = args.indexOf(QStringLiteral("--only"));
    const QString wanted = only > 0 ? args.value(only + 1) : QString();
    const bool reproducible = !args.contains(QStringLiteral("--no-reproducible"));
    const bool curve = args.contains(QStringLiteral("--curve"));
    const bool abort = args.contains(QStringLiteral("--abort"));

    out << "exact search, budget " << budget
        << " s; reproducible search with seed 1 (sizes count the starting collection)\n";
    out << "table                   seconds proven  gap   size at 90/95/100 %   reproducible "
           "90/95/100 %, alleles its 100 % core holds, seconds\n";
    out.flush();
    XCsv microbov(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    XCsv microbovStart(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    auto wants = [&](QString const& name) { return wanted.isEmpty() || name == wanted; };
    auto measure = [&](QString const& name, XCsv const& input, XCsv const* start, int iterations) {
        if (abort)
            measureAbort(name, input, start, budget);
        else
            measureRun(name, input, start, budget, iterations, reproducible, curve);
    };
    if (wants(QStringLiteral("microbov")))
        measure(QStringLiteral("microbov"), microbov, nullptr, 10);
    if (wants(QStringLiteral("microbov+start")))
        measure(QStringLiteral("microbov+start"), microbov, &microbovStart, 10);
    if (wants(QStringLiteral("synthetic704x60"))) {
        XCsv table(syntheticGrid(704, 30, 7));
        measure(QStringLiteral("synthetic704x60"), table, nullptr, 10);
    }
    if (wants(QStringLiteral("synthetic4000x100"))) {
        XCsv table(syntheticGrid(4000, 50, 7));
        measure(QStringLiteral("synthetic4000x100"), table, nullptr, 1);
    }
    if (wants(QStringLiteral("eHGDP"))) {
        XCsv table(QStringLiteral(VIREON_EXAMPLES_DIR "/eHGDP.csv"));
        measure(QStringLiteral("eHGDP"), table, nullptr, 1);
    }
    return 0;
}

// Times the engine against the plain transcription of the search on the
// same inputs, the engine with one thread and with two on the real tables,
// then the engine alone on synthetic tables of growing size.
// Usage: bench_engine [--quick]   (--quick leaves out eHGDP at 10 iterations,
// the 3,000 x 20 table against the plain search and the 1,350 x 678 synthetic
// table)
#include "ReferenceCore.h"
#include "SyntheticTable.h"
#include "XCore.h"
#include "XCsv.h"
#include "XResult.h"
#include "XSearchRunner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

#include <memory>

namespace {

QTextStream out(stdout);

// Starts a new peak: the kernel resets the resident high-water mark.
void resetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

// The resident high-water mark since resetPeak(), in MB.
double peakMegabytes()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (QByteArray const& line : file.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    }
    return 0;
}

struct Timing
{
    QString text;
    double seconds = 0;
    double peak = 0;
};

// Runs the engine on its thread with the given thread count.
Timing runEngine(XCsv const* csv, XCsv const* src, int iterations, int seed, int threads)
{
    Timing timing;
    timing.text = QStringLiteral("nothing");
    resetPeak();
    QElapsedTimer timer;
    timer.start();
    {
        auto search = std::make_unique<XCore>(csv, src, iterations, seed);
        search->setThreadCount(threads);
        XSearchRunner core(std::move(search));
        QObject::connect(
            &core, &XSearchRunner::completed, &core,
            [&timing](XResult* result) {
                timing.text = result->toString();
                delete result;
            },
            Qt::DirectConnection);
        QObject::connect(
            &core, &XSearchRunner::error, &core,
            [&timing](QString const& message) {
                timing.text = QStringLiteral("error: ") + message;
            },
            Qt::DirectConnection);
        core.start();
        core.wait();
    }
    timing.seconds = timer.nsecsElapsed() / 1e9;
    timing.peak = peakMegabytes();
    return timing;
}

Timing runReference(XCsv const& csv, int iterations, int seed)
{
    Timing timing;
    resetPeak();
    QElapsedTimer timer;
    timer.start();
    ReferenceCore reference(csv.data(), nullptr, iterations, seed);
    timing.text = reference.resultText();
    timing.seconds = timer.nsecsElapsed() / 1e9;
    timing.peak = peakMegabytes();
    return timing;
}

QString fixture(QString const& name)
{
    QFile file(QStringLiteral(VIREON_SOURCE_DIR "/tests/fixtures/engine/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

void row(QString const& table, int iterations, QString const& who, Timing const& timing,
         double baseSeconds, QString const& expected)
{
    const QString same = expected.isEmpty()                            ? QStringLiteral("-")
                         : timing.text == expected                     ? QStringLiteral("yes")
                         : timing.text.trimmed() == expected.trimmed() ? QStringLiteral("yes")
                                                                       : QStringLiteral("NO");
    out << QString::asprintf("%-12s %3d  %-18s %9.3f  %8.1f  %7.0f  %s\n", qPrintable(table),
                             iterations, qPrintable(who), timing.seconds,
                             baseSeconds > 0 ? baseSeconds / timing.seconds : 1.0, timing.peak,
                             qPrintable(same));
    out.flush();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const bool quick = app.arguments().contains(QStringLiteral("--quick"));
    XCsv microbov(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    XCsv eHGDP(QStringLiteral(VIREON_EXAMPLES_DIR "/eHGDP.csv"));
    out << "seed 1; ratio: the first row of each table's seconds over this row's; peak: resident "
           "high-water mark of the step\n";
    out << "table        its  run                seconds     ratio  peak_MB  same_result\n";

    const Timing reference = runReference(microbov, 10, 1);
    row(QStringLiteral("microbov"), 10, QStringLiteral("reference"), reference, 0,
        fixture(QStringLiteral("microbov_i10_s1.txt")));
    for (int threads : {1, 2})
        row(QStringLiteral("microbov"), 10,
            QStringLiteral("engine, %1 thread%2").arg(threads).arg(threads > 1 ? "s" : ""),
            runEngine(&microbov, nullptr, 10, 1, threads), reference.seconds, reference.text);

    QList<int> iterationCounts{1};
    if (!quick)
        iterationCounts << 10;
    for (int iterations : iterationCounts) {
        const QString expected =
            iterations == 1 ? fixture(QStringLiteral("eHGDP_i1_s1.txt")) : QString();
        const Timing single = runEngine(&eHGDP, nullptr, iterations, 1, 1);
        row(QStringLiteral("eHGDP"), iterations, QStringLiteral("engine, 1 thread"), single, 0,
            expected);
        row(QStringLiteral("eHGDP"), iterations, QStringLiteral("engine, 2 threads"),
            runEngine(&eHGDP, nullptr, iterations, 1, 2), single.seconds,
            expected.isEmpty() ? single.text : expected);
    }

    if (!quick) {
        // A tall table, where the engine's shortcuts differ most from the
        // plain search: the results must still be the same.
        XCsv tall(syntheticGrid(3000, 10, 7));
        const Timing plain = runReference(tall, 1, 1);
        row(QStringLiteral("3000 x 20"), 1, QStringLiteral("reference"), plain, 0, QString());
        for (int threads : {1, 2})
            row(QStringLiteral("3000 x 20"), 1,
                QStringLiteral("engine, %1 thread%2").arg(threads).arg(threads > 1 ? "s" : ""),
                runEngine(&tall, nullptr, 1, 1, threads), plain.seconds, plain.text);
    }

    out << "\nsynthetic tables, engine only, 1 iteration, seed 1, 2 threads\n";
    out << "accessions  markers  allele_columns  seconds  peak_MB  largest_core\n";
    QList<QPair<int, int>> sizes{{250, 50}, {500, 50}, {1000, 50}, {2000, 50}, {4000, 50}};
    if (!quick)
        sizes << qMakePair(1350, 678);
    for (auto const& size : sizes) {
        XCsv table(syntheticGrid(size.first, size.second, 7));
        const Timing timing = runEngine(&table, nullptr, 1, 1, 2);
        const QString last = timing.text.split(QLatin1Char('\n')).value(99);
        out << QString::asprintf("%10d  %7d  %14d  %7.2f  %7.0f  %d\n", size.first, size.second,
                                 2 * size.second, timing.seconds, timing.peak,
                                 int(last.count(QLatin1Char(','))));
        out.flush();
    }
    return 0;
}

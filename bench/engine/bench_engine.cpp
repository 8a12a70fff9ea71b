// Times the engine against the plain transcription of the search on the
// same inputs, then the engine alone on synthetic tables of growing size.
// Usage: bench_engine [--quick]   (--quick leaves out the 1,350 x 678 table)
#include "ReferenceCore.h"
#include "SyntheticTable.h"
#include "XCore.h"
#include "XCsv.h"
#include "XResult.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <memory>

namespace {

QTextStream out(stdout);

// Runs the engine on its thread; returns the result text and the seconds.
QString runEngine(XCsv const* csv, XCsv const* src, int seed, double* seconds)
{
    QString text = QStringLiteral("nothing");
    QElapsedTimer timer;
    timer.start();
    XCore core(csv, src, 1, seed);
    QObject::connect(
        &core, &XCore::completed, &core,
        [&text](XResult* result) {
            text = result->toString();
            delete result;
        },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XCore::error, &core,
        [&text](QString const& message) { text = QStringLiteral("error: ") + message; },
        Qt::DirectConnection);
    core.start();
    core.wait();
    *seconds = timer.nsecsElapsed() / 1e9;
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const bool quick = app.arguments().contains(QStringLiteral("--quick"));
    XCsv microbov(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    out << "microbov.csv: " << microbov.rows() - 1 << " accessions x " << microbov.columns() - 1
        << " allele columns, 1 iteration\n";
    out << "seed  reference_s  engine_s  ratio  same_result\n";
    for (int seed : {1, 42}) {
        QElapsedTimer timer;
        timer.start();
        ReferenceCore reference(microbov.data(), nullptr, 1, seed);
        const QString expected = reference.resultText();
        const double referenceSeconds = timer.nsecsElapsed() / 1e9;
        double engineSeconds = 0;
        const QString actual = runEngine(&microbov, nullptr, seed, &engineSeconds);
        out << QString::asprintf("%4d  %11.2f  %8.4f  %5.0f  %s\n", seed, referenceSeconds,
                                 engineSeconds, referenceSeconds / engineSeconds,
                                 actual == expected ? "yes" : "NO");
        out.flush();
    }

    out << "\nsynthetic tables, engine only, 1 iteration, seed 1\n";
    out << "accessions  markers  allele_columns  seconds  largest_core\n";
    QList<QPair<int, int>> sizes{{250, 50}, {500, 50}, {1000, 50}, {2000, 50}, {4000, 50}};
    if (!quick)
        sizes << qMakePair(1350, 678);
    for (auto const& size : sizes) {
        XCsv table(syntheticGrid(size.first, size.second, 7));
        double seconds = 0;
        const QString text = runEngine(&table, nullptr, 1, &seconds);
        const QString last = text.split(QLatin1Char('\n')).value(99);
        out << QString::asprintf("%10d  %7d  %14d  %7.2f  %d\n", size.first, size.second,
                                 2 * size.second, seconds, int(last.count(QLatin1Char(','))));
        out.flush();
    }
    return 0;
}

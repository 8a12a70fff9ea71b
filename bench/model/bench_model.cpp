// Times the table and workspace text forms on a large generated table:
// reading a table file, writing its text, writing and reading a workspace.
// Usage: bench_model [accessions] [allele-columns]   (default 10000 200)
#include "XCsv.h"
#include "XResult.h"
#include "XWorkspace.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>
#include <sys/resource.h>

namespace {

long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void report(char const* step, QElapsedTimer const& timer)
{
    std::printf("%-34s %8.3f s   peak RSS %7.1f MiB\n", step, timer.nsecsElapsed() / 1e9,
                peakKiB() / 1024.0);
}

QString generate(int accessions, int columns)
{
    QRandomGenerator rng(2026);
    QString text;
    QTextStream out(&text);
    out << "Name";
    for (int c = 0; c < columns; ++c)
        out << ",M" << (c / 2 + 1);
    out << '\n';
    for (int r = 1; r <= accessions; ++r) {
        out << "ACC" << r;
        for (int c = 0; c < columns; ++c) {
            if (rng.bounded(100) < 4)
                out << ",*";
            else
                out << ',' << 100 + rng.bounded(60);
        }
        out << '\n';
    }
    out.flush();
    return text;
}

bool writeFile(QString const& path, QString const& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return file.write(text.toUtf8()) >= 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int accessions = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    const int columns = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 200;
    QTemporaryDir dir;
    const QString csvPath = dir.filePath(QStringLiteral("table.csv"));
    const QString ccwPath = dir.filePath(QStringLiteral("analysis.ccw"));
    if (!dir.isValid() || !writeFile(csvPath, generate(accessions, columns))) {
        std::fprintf(stderr, "cannot write the generated table\n");
        return 1;
    }
    std::printf("table: %d accessions x %d allele columns, file %.1f MiB\n", accessions, columns,
                QFile(csvPath).size() / 1048576.0);
    std::printf("%-34s %8.3f s   peak RSS %7.1f MiB\n", "start", 0.0, peakKiB() / 1024.0);

    QElapsedTimer timer;
    timer.start();
    auto* csv = new XCsv(csvPath);
    report("read table file", timer);

    timer.restart();
    const QString text = csv->toString();
    report("write table text", timer);

    // Handing the grid around must copy no cells.
    timer.restart();
    const long before = peakKiB();
    QList<XCsv*> copies;
    for (int i = 0; i < 100; ++i)
        copies << new XCsv(csv->data());
    bool shared = true;
    for (XCsv* copy : copies)
        shared = shared && copy->data().isSharedWith(csv->data());
    report("100 tables sharing the grid", timer);
    std::printf("  all share storage: %s, peak RSS grew by %ld KiB\n", shared ? "yes" : "NO",
                peakKiB() - before);
    qDeleteAll(copies);

    XResult::Entries entries;
    QList<int> rows;
    for (int p = 1; p <= 100; ++p) {
        while (rows.size() < p * accessions / 400)
            rows << rows.size() + 1;
        entries << XResult::Entry(p, rows);
    }
    XWorkspace workspace(csv, nullptr, new XResult(entries, csv, nullptr));
    workspace.setSlider(50);

    timer.restart();
    const bool written = writeFile(ccwPath, workspace.toString());
    report("write workspace file", timer);

    timer.restart();
    XWorkspace read(ccwPath);
    report("read workspace file", timer);
    std::printf("  written: %s, read back complete: %s, same text: %s\n", written ? "yes" : "NO",
                read.isComplete() ? "yes" : "NO",
                read.toString() == workspace.toString() ? "yes" : "NO");
    return 0;
}

// What reading a table text costs in memory, against TableMemory's estimate
// made from the file's bytes before reading: hostile shapes (commas alone,
// "1," repeated, line feeds alone) and ordinary tables at 4, 16 and 32 MB,
// microbov and eHGDP, each read in a process of its own so that its peak is
// its own. Then 127 MB of commas and of "1,", which the estimate refuses:
// how long the refusal takes and what it costs.
// Usage: bench_table_memory [EXAMPLES_DIR]   (default: the repository's examples)
#include "TableMemory.h"
#include "TextFile.h"
#include "XCsv.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

long statusKiB(char const* field)
{
    FILE* status = std::fopen("/proc/self/status", "r");
    if (!status)
        return 0;
    char line[256];
    long value = 0;
    const size_t length = std::strlen(field);
    while (std::fgets(line, sizeof line, status)) {
        if (std::strncmp(line, field, length) == 0)
            value = std::atol(line + length);
    }
    std::fclose(status);
    return value;
}

// The child: reads one file as the window and vireon-cli read tables, and
// prints seconds, the peak memory above what it held before, and the
// reader's refusal if there was one.
int readOne(QString const& path)
{
    const long before = statusKiB("VmRSS:");
    QElapsedTimer timer;
    timer.start();
    QString text;
    QString error;
    std::unique_ptr<XCsv> table;
    if (TextFile::read(path, &text, &error))
        table.reset(XCsv::fromText(text));
    const double seconds = timer.nsecsElapsed() / 1e9;
    const long peak = statusKiB("VmHWM:") - before;
    std::printf("%.3f %.1f %s\n", seconds, peak / 1024.0,
                error.isEmpty() ? "read" : qPrintable(error.left(40)));
    return 0;
}

struct Measure
{
    double seconds = 0;
    double peakMiB = 0;
    QString outcome;
};

Measure measure(QString const& program, QString const& path)
{
    QProcess child;
    child.start(program, {QStringLiteral("--read"), path});
    child.waitForFinished(-1);
    const QStringList parts = QString::fromUtf8(child.readAllStandardOutput()).trimmed().split(' ');
    Measure m;
    m.seconds = parts.value(0).toDouble();
    m.peakMiB = parts.value(1).toDouble();
    m.outcome = parts.mid(2).join(' ');
    return m;
}

QByteArray shape(QByteArray const& kind, qint64 bytes)
{
    if (kind == "commas")
        return QByteArray(int(bytes), ',');
    if (kind == "1,")
        return QByteArray("1,").repeated(int(bytes / 2));
    if (kind == "line feeds")
        return QByteArray(int(bytes), '\n');
    // An ordinary table: 60 allele columns of three-digit alleles, names
    // quoted or not.
    const bool quoted = kind == "quoted names";
    QByteArray header("Name");
    for (int c = 0; c < 60; ++c)
        header += ",M" + QByteArray::number(c / 2);
    QByteArray out = header + '\n';
    for (int r = 0; out.size() < bytes; ++r) {
        QByteArray line =
            quoted ? "\"ACC " + QByteArray::number(r) + "\"" : "ACC" + QByteArray::number(r);
        for (int c = 0; c < 60; ++c)
            line += ',' + QByteArray::number(100 + (r * 7 + c * 13) % 60);
        out += line + '\n';
    }
    return out;
}

void row(char const* name, double mb, TableMemory::Estimate const& e, Measure const& m)
{
    const bool read = m.outcome == QLatin1String("read");
    std::printf("%-14s %7.1f %13lld %10.0f %10.0f %6.2f %8.3f %s\n", name, mb,
                static_cast<long long>(e.fields), e.memory / 1048576.0, m.peakMiB,
                read && m.peakMiB > 0 ? e.memory / 1048576.0 / m.peakMiB : 0.0, m.seconds,
                read ? "read" : "refused");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && std::strcmp(argv[1], "--read") == 0)
        return readOne(QString::fromLocal8Bit(argv[2]));
    const QString examples =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(VIREON_EXAMPLES_DIR);
    const QString program = QCoreApplication::applicationFilePath();
    QTemporaryDir dir;
    std::printf("%-14s %7s %13s %10s %10s %6s %8s %s\n", "shape", "MB", "fields", "est. MiB",
                "peak MiB", "est/pk", "seconds", "outcome");
    for (char const* kind : {"commas", "1,", "line feeds", "table", "quoted names"}) {
        Measure first;
        Measure last;
        const QList<int> sizes{4, 16, 32};
        for (int mb : sizes) {
            const QByteArray bytes = shape(kind, qint64(mb) << 20);
            const QString path = dir.filePath(QStringLiteral("shape.csv"));
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
                return 1;
            file.close();
            const Measure m = measure(program, path);
            row(kind, bytes.size() / 1048576.0, TableMemory::estimate(bytes), m);
            if (mb == sizes.first())
                first = m;
            last = m;
        }
        // Growth exponents of time and memory over the 8-fold size, for
        // shapes read at every size.
        if (last.outcome != QLatin1String("read"))
            continue;
        std::printf("%-14s growth exponent: time %.2f, memory %.2f\n", kind,
                    std::log(last.seconds / first.seconds) / std::log(8.0),
                    std::log(last.peakMiB / first.peakMiB) / std::log(8.0));
    }
    for (char const* name : {"microbov.csv", "eHGDP.csv"}) {
        const QString path = examples + QLatin1Char('/') + QLatin1String(name);
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray bytes = file.readAll();
        row(name, bytes.size() / 1048576.0, TableMemory::estimate(bytes), measure(program, path));
    }
    std::printf("\nrefused before reading (limit %.1f GiB):\n",
                TableMemory::limit() / 1073741824.0);
    for (char const* kind : {"commas", "1,"}) {
        const QByteArray bytes = shape(kind, qint64(127) << 20);
        const QString path = dir.filePath(QStringLiteral("huge.csv"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return 1;
        file.close();
        const Measure m = measure(program, path);
        const TableMemory::Estimate e = TableMemory::estimate(bytes);
        std::printf("%-14s %7.1f MB: estimate %.1f GiB, refused in %.3f s at a peak of %.0f MiB "
                    "(%s)\n",
                    kind, bytes.size() / 1048576.0, e.memory / 1073741824.0, m.seconds, m.peakMiB,
                    qPrintable(m.outcome));
    }
    return 0;
}

// Times a search on the seeded genebank-shaped tables at growing sizes: tall
// microsatellite tables (60 allele columns) and wide biallelic SNP tables,
// optionally the real eHGDP table too. Each step runs in a child process of
// its own, so that its peak memory is its own.
// Usage: bench_scale [--sizes N,N,...] [--snp NxS,NxS,...] [--real]
//                    [--threads T] [--iterations I] [--seed S]
//                    [--search reproducible] [--timeout SECONDS] [--budget SECONDS]
// Run without options for the full set; see bench/README.md.
#include "ScaleTables.h"
#include "XCore.h"
#include "XCsv.h"
#include "XResult.h"
#include "XSearchRunner.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>

#include <sys/resource.h>

#include <cmath>
#include <functional>
#include <memory>

namespace {

QTextStream out(stdout);

// A field of /proc/self/status in KiB.
double statusKiB(char const* field)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (QByteArray const& line : file.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field))).trimmed().split(' ').value(0).toDouble();
    }
    return 0;
}

// Processor seconds this process has used so far, all its threads together.
double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

struct Options
{
    QList<int> sizes{2500, 5000, 10000, 20000, 50000};
    QList<QPair<int, int>> snp{{1000, 1000}, {2000, 1000}, {4000, 1000}, {8000, 1000},
                               {1000, 2000}, {1000, 4000}, {1000, 8000}};
    bool real = false;
    int threads = 2;
    QList<int> iterations{1};
    int iterationsNow = 1; // of the step a child runs
    int seed = 1;
    QString search = QStringLiteral("reproducible");
    int timeout = 1800; // seconds a step may take before it is given up
    int budget = 600;   // a series stops growing after a step slower than this
};

// The searches the benchmark knows; each runs one table to its result text.
using Search = std::function<QString(XCsv const&, Options const&)>;

QString runReproducible(XCsv const& table, Options const& options)
{
    QString text = QStringLiteral("nothing");
    auto search = std::make_unique<XCore>(&table, nullptr, options.iterationsNow, options.seed);
    search->setThreadCount(options.threads);
    XSearchRunner core(std::move(search));
    QObject::connect(
        &core, &XSearchRunner::completed, &core,
        [&text](XResult* result) {
            text = result->toString();
            delete result;
        },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XSearchRunner::error, &core,
        [&text](QString const& message) { text = QStringLiteral("error: ") + message; },
        Qt::DirectConnection);
    core.start();
    core.wait();
    return text;
}

Search searchNamed(QString const& name)
{
    if (name == QLatin1String("reproducible"))
        return runReproducible;
    return Search();
}

// The child's side: builds one table, runs the search, prints one line:
// seconds cpu_seconds table_KiB base_KiB peak_KiB cells largest_core result_hash.
int runStep(QStringList const& step, Options const& options)
{
    const double before = statusKiB("VmRSS:");
    std::unique_ptr<XCsv> table;
    const QString kind = step.value(0);
    if (kind == QLatin1String("ssr")) {
        ScaleTables::Ssr ssr;
        QString error;
        if (!ssr.load(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"), &error)) {
            QTextStream(stderr) << error << '\n';
            return 1;
        }
        table.reset(new XCsv(ssr.grid(step.value(1).toInt(), 1)));
    } else if (kind == QLatin1String("snp")) {
        table.reset(
            new XCsv(ScaleTables::Snp::grid(step.value(1).toInt(), step.value(2).toInt(), 1)));
    } else if (kind == QLatin1String("file")) {
        table.reset(new XCsv(step.value(1)));
    } else {
        return 2;
    }
    const double tableKiB = statusKiB("VmRSS:") - before;
    const qint64 cells = qint64(table->rows() - 1) * (table->columns() - 1);
    // From here on the high-water mark is the search's.
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
    clear.close();
    const double base = statusKiB("VmRSS:");
    const double cpuBefore = cpuSeconds();
    QElapsedTimer timer;
    timer.start();
    const QString text = searchNamed(options.search)(*table, options);
    const double seconds = timer.nsecsElapsed() / 1e9;
    const double cpu = cpuSeconds() - cpuBefore;
    const double peak = statusKiB("VmHWM:");
    const QString last = text.split(QLatin1Char('\n')).value(99);
    const int largest = last.isEmpty() ? 0 : int(last.count(QLatin1Char(',')));
    const QByteArray hash =
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    QTextStream(stdout) << QString::asprintf("%.3f %.3f %.0f %.0f %.0f %lld %d %s\n", seconds, cpu,
                                             tableKiB, base, peak, cells, largest,
                                             hash.constData());
    return text.startsWith(QLatin1String("error")) ? 1 : 0;
}

struct Measured
{
    bool done = false;
    double seconds = 0;
    double cpuSeconds = 0;
    double tableMB = 0;
    double searchMB = 0; // high-water mark of the search over what was resident before
    double bytesPerCell = 0;
    qint64 cells = 0;
    int largest = 0;
    QString hash;
};

// One step: a table of `accessions` x `columns` (allele columns).
struct Step
{
    QStringList args; // ssr N | snp N S | file PATH
    QString name;
    int accessions = 0;
    int columns = 0;
};

Measured measure(Step const& step, int iterations, Options const& options)
{
    QStringList args{QStringLiteral("--step")};
    args << step.args << QStringLiteral("--threads") << QString::number(options.threads)
         << QStringLiteral("--iterations") << QString::number(iterations)
         << QStringLiteral("--seed") << QString::number(options.seed) << QStringLiteral("--search")
         << options.search;
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), args);
    Measured m;
    if (!child.waitForFinished(options.timeout * 1000)) {
        child.kill();
        child.waitForFinished();
        return m;
    }
    const QStringList fields =
        QString::fromUtf8(child.readAllStandardOutput()).trimmed().split(QLatin1Char(' '));
    if (child.exitCode() != 0 || fields.size() != 8)
        return m;
    m.done = true;
    m.seconds = fields.at(0).toDouble();
    m.cpuSeconds = fields.at(1).toDouble();
    m.tableMB = fields.at(2).toDouble() / 1024.0;
    const double base = fields.at(3).toDouble();
    const double peak = fields.at(4).toDouble();
    m.searchMB = (peak - base) / 1024.0;
    m.cells = fields.at(5).toLongLong();
    m.bytesPerCell = m.cells > 0 ? (peak - base) * 1024.0 / double(m.cells) : 0;
    m.largest = fields.at(6).toInt();
    m.hash = fields.at(7);
    return m;
}

// Runs steps of growing size. The exponent is the log-log slope of the
// seconds against the accessions, or against the columns where only they
// changed, since the step before.
void series(QString const& title, QList<Step> const& steps, int iterations, Options const& options)
{
    out << '\n'
        << title << ", " << iterations << (iterations == 1 ? " iteration, " : " iterations, ")
        << options.threads << (options.threads == 1 ? " thread\n" : " threads\n");
    out << "table                    seconds  cpu_seconds  exponent  table_MB  search_MB  "
           "search_B/cell  largest_core  result\n";
    out.flush();
    double lastSeconds = 0;
    Step last;
    for (Step const& step : steps) {
        const Measured m = measure(step, iterations, options);
        if (!m.done) {
            out << QString::asprintf("%-22s  not finished after %d s\n", qPrintable(step.name),
                                     options.timeout);
            out.flush();
            break;
        }
        QString exponent = QStringLiteral("-");
        double growth = 0;
        if (last.columns == step.columns && last.accessions > 0)
            growth = double(step.accessions) / last.accessions;
        else if (last.accessions == step.accessions && last.columns > 0)
            growth = double(step.columns) / last.columns;
        if (lastSeconds > 0 && growth > 0 && growth != 1 && m.cpuSeconds > 0)
            exponent =
                QString::number(std::log(m.cpuSeconds / lastSeconds) / std::log(growth), 'f', 2);
        out << QString::asprintf("%-22s %8.2f  %11.2f  %8s  %8.1f  %9.1f  %13.1f  %12d  %s\n",
                                 qPrintable(step.name), m.seconds, m.cpuSeconds,
                                 qPrintable(exponent), m.tableMB, m.searchMB, m.bytesPerCell,
                                 m.largest, qPrintable(m.hash));
        out.flush();
        lastSeconds = m.cpuSeconds;
        last = step;
        if (m.seconds > options.budget)
            break;
    }
}

QList<int> intList(QString const& text)
{
    QList<int> list;
    for (QString const& n : text.split(QLatin1Char(','), Qt::SkipEmptyParts))
        list << n.toInt();
    return list;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    Options options;
    QStringList step;
    for (int i = 0; i < args.size(); ++i) {
        const QString arg = args.at(i);
        const QString value = args.value(i + 1);
        if (arg == QLatin1String("--step")) {
            // ssr N | snp N S | file PATH
            const int count = value == QLatin1String("snp") ? 3 : 2;
            step = args.mid(i + 1, count);
            i += count;
        } else if (arg == QLatin1String("--real")) {
            options.real = true;
        } else if (arg == QLatin1String("--quick")) {
            options.sizes = {2500, 5000};
            options.snp = {{1000, 1000}, {2000, 1000}};
        } else if (arg == QLatin1String("--sizes")) {
            options.sizes = intList(value);
            ++i;
        } else if (arg == QLatin1String("--snp")) {
            options.snp.clear();
            for (QString const& size : value.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
                const QStringList parts = size.split(QLatin1Char('x'));
                options.snp << qMakePair(parts.value(0).toInt(), parts.value(1).toInt());
            }
            ++i;
        } else if (arg == QLatin1String("--threads")) {
            options.threads = value.toInt();
            ++i;
        } else if (arg == QLatin1String("--iterations")) {
            options.iterations = intList(value);
            options.iterationsNow = options.iterations.value(0, 1);
            ++i;
        } else if (arg == QLatin1String("--seed")) {
            options.seed = value.toInt();
            ++i;
        } else if (arg == QLatin1String("--search")) {
            options.search = value;
            ++i;
        } else if (arg == QLatin1String("--timeout")) {
            options.timeout = value.toInt();
            ++i;
        } else if (arg == QLatin1String("--budget")) {
            options.budget = value.toInt();
            ++i;
        } else {
            QTextStream(stderr) << "unknown option " << arg << "; see bench/README.md\n";
            return 2;
        }
    }
    if (!searchNamed(options.search)) {
        QTextStream(stderr) << "unknown search " << options.search << '\n';
        return 2;
    }
    if (!step.isEmpty())
        return runStep(step, options);

    out << "search: " << options.search << ", seed " << options.seed
        << "; each step in a process of its own; seconds: wall clock; cpu_seconds: processor "
           "time of all the search's threads together, which a busy machine does not inflate; "
           "exponent: log-log slope of the cpu_seconds against the accessions (or the columns, "
           "where only they changed) since the step before; search_MB: resident high-water mark "
           "of the search over what was resident before it; result: hash of the result text\n";
    for (int iterations : options.iterations) {
        QList<Step> steps;
        for (int n : options.sizes)
            steps << Step{{QStringLiteral("ssr"), QString::number(n)},
                          QStringLiteral("%1 x 60").arg(n),
                          n,
                          60};
        if (!steps.isEmpty())
            series(QStringLiteral("tall microsatellite tables"), steps, iterations, options);
        steps.clear();
        for (auto const& size : options.snp)
            steps << Step{
                {QStringLiteral("snp"), QString::number(size.first), QString::number(size.second)},
                QStringLiteral("%1 x %2 SNPs").arg(size.first).arg(size.second),
                size.first,
                2 * size.second};
        if (!steps.isEmpty())
            series(QStringLiteral("wide biallelic SNP tables (2 allele columns a SNP)"), steps,
                   iterations, options);
        if (options.real)
            series(QStringLiteral("real table"),
                   {Step{{QStringLiteral("file"), QStringLiteral(VIREON_EXAMPLES_DIR "/eHGDP.csv")},
                         QStringLiteral("eHGDP 1350 x 1356"),
                         1350,
                         1356}},
                   iterations, options);
    }
    return 0;
}

// Times XSpreadsheet::write and XSpreadsheet::read for every file kind, on
// the real tables (microbov, eHGDP) and on a synthetic table of ROWS
// accessions and COLUMNS allele columns (default 5000 x 200). Each read is
// checked against the table written, and its time is also given as a ratio
// to reading the same table as .csv in the same run. microbov is also read
// as openpyxl and odfpy wrote it (the test fixtures), since files made by
// other programs lay their cells out differently.
//   bench_spreadsheet [ROWS COLUMNS REPEATS]
#include "XCsv.h"
#include "XSpreadsheet.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace {

XCsv::Grid makeGrid(int rows, int columns)
{
    QRandomGenerator rng(42);
    XCsv::Grid grid;
    XCsv::Row header{QStringLiteral("Name")};
    for (int c = 0; c < columns; ++c)
        header << QStringLiteral("M%1").arg(c / 2 + 1);
    grid << header;
    for (int r = 1; r <= rows; ++r) {
        XCsv::Row row{QStringLiteral("Accession%1").arg(r)};
        for (int c = 0; c < columns; ++c) {
            if (rng.bounded(20) == 0)
                row << QStringLiteral("*");
            else
                row << int(80 + rng.bounded(200));
        }
        grid << row;
    }
    return grid;
}

qint64 median(QList<qint64> times)
{
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

struct Timing
{
    qint64 write = -1; // -1: not written by Vireon (a fixture)
    qint64 read = 0;
    qint64 bytes = 0;
    bool same = true;
};

// Median times of `repeats` writes (when `write`) and reads of `fileName`.
bool timeFile(XCsv const& table, QString const& fileName, bool write, int repeats, Timing* timing,
              QTextStream& out)
{
    QList<qint64> writes, reads;
    for (int i = 0; i < repeats; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (write) {
            QString error;
            if (!XSpreadsheet::write(table, fileName, &error)) {
                out << fileName << ": write failed: " << error << '\n';
                return false;
            }
            writes << timer.elapsed();
            timer.restart();
        }
        QString error;
        std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
        reads << timer.elapsed();
        if (!back) {
            out << fileName << ": read failed: " << error << '\n';
            return false;
        }
        timing->same = timing->same && back->data() == table.data();
    }
    if (write)
        timing->write = median(writes);
    timing->read = median(reads);
    timing->bytes = QFileInfo(fileName).size();
    return true;
}

bool benchTable(QString const& name, XCsv const& table, QStringList const& fixtures, int repeats,
                QTemporaryDir const& dir, QTextStream& out)
{
    out << name << ": " << table.rows() - 1 << " accessions x " << table.columns() - 1
        << " allele columns\n";
    // .xls holds at most 256 columns.
    QStringList kinds{QStringLiteral(".csv"), QStringLiteral(".xlsx")};
    if (table.columns() <= 256)
        kinds.insert(1, QStringLiteral(".xls"));
    bool ok = true;
    qint64 csvRead = 0;
    auto report = [&](QString const& label, Timing const& t) {
        out << QStringLiteral("  %1 %2 KB, write %3, read %4 ms (%5 x .csv), read back equal: %6\n")
                   .arg(label, -28)
                   .arg(t.bytes / 1024, 7)
                   .arg(t.write < 0 ? QStringLiteral("   -   ")
                                    : QStringLiteral("%1 ms").arg(t.write, 4))
                   .arg(t.read, 5)
                   .arg(csvRead > 0 ? double(t.read) / double(csvRead) : 1.0, 5, 'f', 1)
                   .arg(t.same ? QStringLiteral("yes") : QStringLiteral("no"));
        ok = ok && t.same;
    };
    for (QString const& kind : kinds) {
        Timing t;
        if (!timeFile(table, dir.filePath(name + kind), true, repeats, &t, out))
            return false;
        if (kind == QLatin1String(".csv"))
            csvRead = std::max<qint64>(1, t.read);
        report(kind + QStringLiteral(" (Vireon's own)"), t);
    }
    for (QString const& fixture : fixtures) {
        Timing t;
        if (!timeFile(table, fixture, false, repeats, &t, out))
            return false;
        report(QFileInfo(fixture).fileName(), t);
    }
    return ok;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int rows = args.size() > 1 ? args.at(1).toInt() : 5000;
    const int columns = args.size() > 2 ? args.at(2).toInt() : 200;
    const int repeats = args.size() > 3 ? std::max(1, args.at(3).toInt()) : 5;
    QTextStream out(stdout);
    out << "median of " << repeats << " runs; each read starts the workbook reader program\n";

    QTemporaryDir dir;
    const QString examples = QStringLiteral(VIREON_EXAMPLES_DIR "/");
    const QString fixtures = QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/");
    bool ok = true;
    {
        const XCsv microbov(examples + QStringLiteral("microbov.csv"));
        ok = benchTable(QStringLiteral("microbov"), microbov,
                        {fixtures + QStringLiteral("microbov.xlsx"),
                         fixtures + QStringLiteral("microbov.ods")},
                        repeats, dir, out) &&
             ok;
    }
    {
        const XCsv ehgdp(examples + QStringLiteral("eHGDP.csv"));
        ok = benchTable(QStringLiteral("eHGDP"), ehgdp, {}, repeats, dir, out) && ok;
    }
    const XCsv synthetic(makeGrid(rows, columns));
    ok = benchTable(QStringLiteral("synthetic"), synthetic, {}, repeats, dir, out) && ok;
    out.flush();
    return ok ? 0 : 1;
}

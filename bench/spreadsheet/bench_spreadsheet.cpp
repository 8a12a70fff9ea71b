// Times XSpreadsheet::write and XSpreadsheet::read on an .xls table of
// ROWS accessions and COLUMNS allele columns (default 5000 x 200), plus the
// header row and the label column. Prints the best and median of REPEATS
// runs (default 5) in milliseconds.
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

QString summary(QList<qint64> times)
{
    std::sort(times.begin(), times.end());
    return QStringLiteral("best %1 ms, median %2 ms")
        .arg(times.first())
        .arg(times.at(times.size() / 2));
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

    QTemporaryDir dir;
    const QString fileName = dir.filePath(QStringLiteral("bench.xls"));
    XCsv table(makeGrid(rows, columns));

    QList<qint64> writeTimes, readTimes;
    bool same = true;
    for (int i = 0; i < repeats; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (!XSpreadsheet::write(table, fileName)) {
            out << "write failed\n";
            return 1;
        }
        writeTimes << timer.elapsed();

        timer.restart();
        QString error;
        std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
        readTimes << timer.elapsed();
        if (!back) {
            out << "read failed: " << error << '\n';
            return 1;
        }
        same = same && back->data() == table.data();
    }
    out << "table: " << rows << " accessions x " << columns << " allele columns (" << table.rows()
        << " x " << table.columns() << " cells), file " << QFileInfo(fileName).size() << " bytes\n";
    out << "write .xls: " << summary(writeTimes) << '\n';
    out << "read .xls:  " << summary(readTimes) << '\n';
    out << "read back equal: " << (same ? "yes" : "no") << '\n';
    return same ? 0 : 1;
}

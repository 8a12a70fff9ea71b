#include "EngineRunner.h"
#include "RandomTable.h"
#include "ReferenceCore.h"
#include "SyntheticTable.h"
#include "XCsv.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

// A random table with the awkward shapes the search must get right: pairs
// and triples of same-named columns, a single allele column, "*" and 0
// cells, numbers written as text, duplicate rows.
XCsv::Grid awkwardGrid(quint32 seed)
{
    RandomTableOptions options;
    options.textPercent = seed % 17 == 0 ? 2 : 0;
    options.maxAllele = 2 + int(seed % 9);
    XCsv::Grid grid = randomGrid(seed, options);
    QRandomGenerator rng(seed ^ 0x9e3779b9u);
    XCsv::Row& header = grid[0];
    if (header.size() >= 4 && rng.bounded(3) == 0) {
        // A triple: columns 1..3 share one marker name.
        header[2] = header.at(1);
        header[3] = header.at(1);
    }
    if (rng.bounded(4) == 0) {
        for (int j = 2; j < header.size(); ++j)
            header[j] = QStringLiteral("M%1").arg(rng.bounded(3));
    }
    for (int r = 1; r < grid.size(); ++r) {
        for (int j = 1; j < grid.at(r).size(); ++j) {
            QVariant& cell = grid[r][j];
            if (cell.userType() == QMetaType::Int && rng.bounded(8) == 0)
                cell = cell.toString();
        }
    }
    const int copies = int(rng.bounded(3));
    for (int i = 0; i < copies && grid.size() > 1; ++i)
        grid << grid.at(1 + int(rng.bounded(quint32(grid.size() - 1))));
    return grid;
}

XCsv::Grid startFor(XCsv::Grid const& input, quint32 seed)
{
    QRandomGenerator rng(seed * 7919u + 1);
    XCsv::Grid start{input.at(0)};
    const int rows = 1 + int(rng.bounded(3));
    RandomTableOptions options;
    options.textPercent = 0;
    options.minColumns = options.maxColumns = input.at(0).size() - 1;
    const XCsv::Grid other = randomGrid(seed + 100000, options);
    for (int i = 0; i < rows && i + 1 < other.size(); ++i)
        start << other.at(i + 1);
    return start;
}

} // namespace

class TestXCoreProperties : public QObject
{
    Q_OBJECT

private slots:
    void init() {}
    void cleanup() {}

    void matchesReference_data();
    void matchesReference();
    void tallTablesMatchReference_data();
    void tallTablesMatchReference();
};

void TestXCoreProperties::matchesReference_data()
{
    QTest::addColumn<quint32>("tableSeed");
    QTest::addColumn<bool>("withStart");
    QTest::addColumn<int>("iterations");
    QTest::addColumn<int>("seed");
    for (quint32 t = 1; t <= 400; ++t) {
        const bool withStart = t % 3 == 0;
        const int iterations = 1 + int(t % 5);
        const int seed = int(t % 4 == 0 ? 42 : t * 31 + 1);
        QTest::addRow("table%u", t) << t << withStart << iterations << seed;
    }
}

void TestXCoreProperties::matchesReference()
{
    QFETCH(quint32, tableSeed);
    QFETCH(bool, withStart);
    QFETCH(int, iterations);
    QFETCH(int, seed);

    const XCsv::Grid grid = awkwardGrid(tableSeed);
    const XCsv::Grid start = startFor(grid, tableSeed);
    XCsv input(grid);
    XCsv source(start);

    ReferenceCore reference(grid, withStart ? &start : nullptr, iterations, seed);
    const QString expected = reference.resultText();

    EngineRun run;
    runEngine(&input, withStart ? &source : nullptr, iterations, seed, run);
    QCOMPARE(run.text(), expected);
}

// Tables with many more accessions than allele columns: the search's row sets
// and gap rows matter most there, and several sizes are searched at once.
void TestXCoreProperties::tallTablesMatchReference_data()
{
    QTest::addColumn<int>("accessions");
    QTest::addColumn<int>("markers");
    QTest::addColumn<quint32>("tableSeed");
    QTest::addColumn<bool>("withStart");
    QTest::addColumn<int>("iterations");
    QTest::addColumn<int>("threads");
    QTest::newRow("500 x 20, 1 thread") << 500 << 10 << 11u << false << 1 << 1;
    QTest::newRow("500 x 20, 3 threads") << 500 << 10 << 11u << false << 1 << 3;
    QTest::newRow("700 x 12, start, 2 threads") << 700 << 6 << 12u << true << 1 << 2;
    QTest::newRow("1200 x 8, 2 threads") << 1200 << 4 << 13u << false << 3 << 2;
}

void TestXCoreProperties::tallTablesMatchReference()
{
    QFETCH(int, accessions);
    QFETCH(int, markers);
    QFETCH(quint32, tableSeed);
    QFETCH(bool, withStart);
    QFETCH(int, iterations);
    QFETCH(int, threads);

    const XCsv::Grid grid = syntheticGrid(accessions, markers, tableSeed);
    // A starting collection of rows from another table of the same shape.
    const XCsv::Grid other = syntheticGrid(3, markers, tableSeed + 1000);
    XCsv input(grid);
    XCsv source(other);

    ReferenceCore reference(grid, withStart ? &other : nullptr, iterations, 5);
    const QString expected = reference.resultText();
    QCOMPARE(expected.count(QLatin1Char('\n')), 100);

    EngineRun run;
    QVERIFY(runEngine(&input, withStart ? &source : nullptr, iterations, 5, run, threads));
    QCOMPARE(run.text(), expected);
}

QTEST_GUILESS_MAIN(TestXCoreProperties)
#include "tst_xcoreproperties.moc"

#include "SyntheticTable.h"
#include "XCore.h"
#include "XCoverageSearch.h"
#include "XParallelSearch.h"
#include "XRandom.h"

#include <QtTest>

#include <atomic>

namespace {

struct Prepared
{
    XCoverageSearch search;
    int total = 0;
    int rows = 0;
};

Prepared prepare(XCsv::Grid const& grid)
{
    Prepared prepared;
    XCsv table(grid);
    XCore core(&table, nullptr, 1, 1);
    QStringList headers;
    for (QVariant const& cell : grid.at(0))
        headers << cell.toString();
    XCore::Matrix matrix;
    XCore::AlleleMap alleles;
    if (!core.readCsv(&table, headers, matrix, alleles))
        return prepared;
    prepared.search.build(matrix, headers, XCore::AlleleMap());
    prepared.total = alleles.size();
    prepared.rows = matrix.size();
    return prepared;
}

// The search for size k alone, from draw `position`.
XParallelSearch::Outcome alone(XCoverageSearch search, unsigned seed, int iterations, int total,
                               int k, quint64 position)
{
    std::atomic<bool> stop{false};
    XRandom random(seed);
    random.advance(position);
    XParallelSearch::Outcome outcome;
    if (!search.search(k, iterations, total, random, stop))
        return outcome;
    outcome.coverage = search.bestCoverage();
    outcome.indices = search.improved() ? search.bestIndices() : QList<int>();
    outcome.attempts = search.attempts();
    return outcome;
}

} // namespace

class TestXParallelSearch : public QObject
{
    Q_OBJECT

private slots:
    void sizesMatchTheirSequentialStart_data();
    void sizesMatchTheirSequentialStart();
    void otherStartIsSearchedHere();
};

void TestXParallelSearch::sizesMatchTheirSequentialStart_data()
{
    QTest::addColumn<int>("threads");
    QTest::newRow("1 thread") << 1;
    QTest::newRow("2 threads") << 2;
    QTest::newRow("4 threads") << 4;
}

void TestXParallelSearch::sizesMatchTheirSequentialStart()
{
    QFETCH(int, threads);
    const Prepared prepared = prepare(syntheticGrid(120, 12, 3));
    QCOMPARE(prepared.rows, 120);
    const int iterations = 3;
    std::atomic<bool> stop{false};
    XParallelSearch sizes(prepared.search, 11, iterations, prepared.total, prepared.rows, threads,
                          stop);
    for (int k = 1; k <= 12; ++k) {
        const quint64 position = quint64(iterations) * quint64(k) * quint64(k - 1) / 2;
        XParallelSearch::Outcome outcome;
        QVERIFY(sizes.result(k, position, outcome));
        const XParallelSearch::Outcome expected =
            alone(prepared.search, 11, iterations, prepared.total, k, position);
        QCOMPARE(outcome.coverage, expected.coverage);
        QCOMPARE(outcome.indices, expected.indices);
        QCOMPARE(outcome.attempts, iterations);
        QCOMPARE(outcome.indices.size(), k);
    }
}

void TestXParallelSearch::otherStartIsSearchedHere()
{
    // As after a size that covered everything in fewer attempts: the later
    // sizes start earlier in the sequence than the ones searched ahead.
    const Prepared prepared = prepare(syntheticGrid(90, 10, 5));
    const int iterations = 4;
    std::atomic<bool> stop{false};
    XParallelSearch sizes(prepared.search, 2, iterations, prepared.total, prepared.rows, 2, stop);
    XParallelSearch::Outcome outcome;
    bool differs = false;
    QVERIFY(sizes.result(1, 0, outcome));
    QVERIFY(sizes.result(2, 4, outcome));
    for (int k = 3; k <= 6; ++k) {
        const quint64 position = 4 + 2 + quint64(k - 3) * 7;
        QVERIFY(sizes.result(k, position, outcome));
        const XParallelSearch::Outcome expected =
            alone(prepared.search, 2, iterations, prepared.total, k, position);
        QCOMPARE(outcome.coverage, expected.coverage);
        QCOMPARE(outcome.indices, expected.indices);
        const XParallelSearch::Outcome ahead = alone(prepared.search, 2, iterations, prepared.total,
                                                     k, quint64(iterations) * k * (k - 1) / 2);
        differs = differs || ahead.indices != expected.indices;
    }
    // The sizes searched ahead would have given another answer.
    QVERIFY(differs);
}

QTEST_GUILESS_MAIN(TestXParallelSearch)
#include "tst_xparallelsearch.moc"

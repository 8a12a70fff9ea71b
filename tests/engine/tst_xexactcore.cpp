// The exact search: hand-built tables with minima worked out by hand, a
// comparison with every subset of small random tables, and the run's
// signals, errors, stop and budget.
#include "SyntheticTable.h"
#include "XCsv.h"
#include "XExactCore.h"
#include "XResult.h"
#include "XSearchRunner.h"

#include <QRandomGenerator>
#include <QSet>
#include <QtTest>

#include <memory>

namespace {

struct ExactRun
{
    QList<int> percents;
    QString errorText;
    std::unique_ptr<XResult> result;
    int total = -1;
    int zeros = -1;

    int size(int p) const { return result->entries().at(p - 1).second.size(); }
    int bound(int p) const { return result->lowerBounds().at(p - 1); }
    int count(int p) const { return result->entries().at(p - 1).first; }
};

void runExact(XCsv const* csv, XCsv const* src, int budget, ExactRun& run)
{
    auto* exact = new XExactCore(csv, src, budget);
    XSearchRunner core{std::unique_ptr<XSearch>(exact)};
    // Direct connections: the slots run on the engine thread, and wait()
    // orders their writes before the reads that follow.
    QObject::connect(
        &core, &XSearchRunner::percentChanged, &core, [&run](int p) { run.percents << p; },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XSearchRunner::error, &core, [&run](QString const& text) { run.errorText = text; },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XSearchRunner::completed, &core, [&run](XResult* r) { run.result.reset(r); },
        Qt::DirectConnection);
    core.start();
    core.wait();
    run.total = exact->totalAlleles();
    run.zeros = exact->zeroPairs();
}

XCsv::Grid grid(QStringList const& lines)
{
    XCsv::Grid rows;
    for (QString const& line : lines) {
        XCsv::Row row;
        const QStringList cells = line.split(QLatin1Char(','));
        for (int c = 0; c < cells.size(); ++c) {
            bool number = false;
            const int value = cells.at(c).toInt(&number);
            if (c > 0 && number)
                row << value;
            else
                row << cells.at(c);
        }
        rows << row;
    }
    return rows;
}

// The alleles of each data row, read independently of the engine: a cell
// above 0, not "*", not the repeat of its homozygous pair.
QList<QSet<QString>> allelesOf(XCsv::Grid const& table)
{
    QList<QSet<QString>> rows;
    XCsv::Row const& header = table.at(0);
    for (int r = 1; r < table.size(); ++r) {
        QSet<QString> alleles;
        XCsv::Row const& row = table.at(r);
        for (int j = 1; j < row.size(); ++j) {
            const QString cell = row.at(j).toString();
            if (cell == QLatin1String("*") || cell.toInt() <= 0)
                continue;
            if (j > 1 && header.at(j) == header.at(j - 1) && row.at(j - 1).toString() == cell)
                continue;
            alleles.insert(header.at(j).toString() + QLatin1Char('/') + cell);
        }
        rows << alleles;
    }
    return rows;
}

// The alleles that the starting collection and the given input rows hold.
int recount(QList<QSet<QString>> const& input, QList<QSet<QString>> const& start,
            QList<int> const& rows)
{
    QSet<QString> held;
    for (QSet<QString> const& alleles : start)
        held.unite(alleles);
    for (int r : rows)
        held.unite(input.at(r - 1));
    return held.size();
}

int needFor(int p, int total)
{
    const qint64 target =
        static_cast<qint64>(static_cast<long double>(p) * 0.01 * total * 100000.0);
    return int((target + 99999) / 100000);
}

// For every number of alleles c, the fewest input rows that hold c together
// with the starting collection, by trying every subset.
QVector<int> bruteMinima(QList<QSet<QString>> const& input, QList<QSet<QString>> const& start,
                         int total)
{
    QHash<QString, int> ids;
    auto maskOf = [&ids](QSet<QString> const& alleles) {
        quint64 mask = 0;
        for (QString const& a : alleles) {
            if (!ids.contains(a))
                ids.insert(a, ids.size());
            mask |= quint64(1) << ids.value(a);
        }
        return mask;
    };
    quint64 startMask = 0;
    for (QSet<QString> const& alleles : start)
        startMask |= maskOf(alleles);
    QVector<quint64> masks;
    for (QSet<QString> const& alleles : input)
        masks << maskOf(alleles);
    QVector<int> minima(total + 1, INT_MAX);
    const int n = masks.size();
    for (quint32 subset = 0; subset < (1u << n); ++subset) {
        quint64 mask = startMask;
        for (int i = 0; i < n; ++i) {
            if (subset & (1u << i))
                mask |= masks.at(i);
        }
        const int covered = qPopulationCount(mask);
        const int size = qPopulationCount(subset);
        for (int c = 0; c <= covered; ++c)
            minima[c] = qMin(minima[c], size);
    }
    return minima;
}

// Small random genotype tables: 1 to 3 markers of two columns, values 0 to
// 5 and "*", so that every subset can be tried.
XCsv::Grid smallGrid(QRandomGenerator& rng, int rows, int markers)
{
    XCsv::Row header{QStringLiteral("Name")};
    for (int m = 0; m < markers; ++m)
        header << QStringLiteral("M%1").arg(m + 1) << QStringLiteral("M%1").arg(m + 1);
    XCsv::Grid table{header};
    for (int r = 0; r < rows; ++r) {
        XCsv::Row row{QStringLiteral("A%1").arg(r + 1)};
        for (int c = 0; c < 2 * markers; ++c) {
            const int roll = int(rng.bounded(12));
            if (roll == 0)
                row << QStringLiteral("*");
            else
                row << int(rng.bounded(6));
        }
        table << row;
    }
    return table;
}

const QStringList fourRows{QStringLiteral("Name,A,A,B,B"), QStringLiteral("r1,1,2,1,1"),
                           QStringLiteral("r2,3,3,2,3"), QStringLiteral("r3,1,3,2,2"),
                           QStringLiteral("r4,4,*,*,*")};

} // namespace

class TestXExactCore : public QObject
{
    Q_OBJECT

private slots:
    void handBuiltWithoutStart();
    void handBuiltWithStart();
    void startHoldsEverything();
    void zeroCellIsNoAllele();
    void oneRow();
    void oneAlleleColumn();
    void errors_data();
    void errors();
    void againstEverySubset();
    void budgetRunsOut();
    void monotoneRecountedDeterministic();
    void stopEndsWithoutResult();
    void destroyedWhileRunning();
};

void TestXExactCore::handBuiltWithoutStart()
{
    // Alleles: r1 {A1 A2 B1}, r2 {A3 B2 B3}, r3 {A1 A3 B2}, r4 {A4}; 7 in all.
    // Three alleles take one row, up to six take r1 and r2 (no other pair
    // holds six), all seven take r1, r2 and r4. Need > 3 from p = 43, > 6
    // from p = 86.
    XCsv input(grid(fourRows));
    ExactRun run;
    runExact(&input, nullptr, 60, run);
    QVERIFY(run.result);
    QCOMPARE(run.total, 7);
    QCOMPARE(run.zeros, 0);
    QList<int> expected;
    for (int p = 1; p <= 100; ++p)
        expected << p;
    QCOMPARE(run.percents, expected);
    for (int p = 1; p <= 42; ++p) {
        QCOMPARE(run.size(p), 1);
        QCOMPARE(run.count(p), 3);
    }
    for (int p = 43; p <= 85; ++p)
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(6, {1, 2}));
    for (int p = 86; p <= 100; ++p)
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(7, {1, 2, 4}));
    for (int p = 1; p <= 100; ++p)
        QCOMPARE(run.bound(p), run.size(p));
    QCOMPARE(run.result->toString().split(QLatin1Char('\n')).value(99), QStringLiteral("1,2,4,7"));
}

void TestXExactCore::handBuiltWithStart()
{
    // The start holds A1 A2 B1: up to three alleles need nothing, r2 adds
    // three more, and the seventh (A4) needs r4 as well.
    XCsv input(grid(fourRows));
    XCsv start(grid({fourRows.at(0), QStringLiteral("s1,1,2,1,1")}));
    ExactRun run;
    runExact(&input, &start, 60, run);
    QVERIFY(run.result);
    for (int p = 1; p <= 42; ++p)
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(3, {}));
    for (int p = 43; p <= 85; ++p)
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(6, {2}));
    for (int p = 86; p <= 100; ++p)
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(7, {2, 4}));
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << (p <= 42 ? 0 : p <= 85 ? 1 : 2);
    QCOMPARE(run.result->lowerBounds(), bounds);
    // The core table holds the starting collection's rows first.
    QCOMPARE(run.result->csv(100)->rows(), 4);
}

void TestXExactCore::startHoldsEverything()
{
    XCsv input(grid(fourRows));
    XCsv start(grid(fourRows));
    ExactRun run;
    runExact(&input, &start, 60, run);
    QVERIFY(run.result);
    for (int p = 1; p <= 100; ++p) {
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(7, {}));
        QCOMPARE(run.bound(p), 0);
    }
    QCOMPARE(run.percents.size(), 100);
}

void TestXExactCore::zeroCellIsNoAllele()
{
    // (A, 0) is left out: two alleles, both in r2.
    XCsv input(
        grid({QStringLiteral("Name,A,A"), QStringLiteral("r1,0,5"), QStringLiteral("r2,5,6")}));
    ExactRun run;
    runExact(&input, nullptr, 60, run);
    QVERIFY(run.result);
    QCOMPARE(run.total, 2);
    QCOMPARE(run.zeros, 1);
    for (int p = 1; p <= 100; ++p) {
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(2, {2}));
        QCOMPARE(run.bound(p), 1);
    }
}

void TestXExactCore::oneRow()
{
    XCsv input(grid({QStringLiteral("Name,A,A"), QStringLiteral("r1,3,4")}));
    ExactRun run;
    runExact(&input, nullptr, 60, run);
    QVERIFY(run.result);
    for (int p = 1; p <= 100; ++p) {
        QCOMPARE(run.result->entries().at(p - 1), XResult::Entry(2, {1}));
        QCOMPARE(run.bound(p), 1);
    }
}

void TestXExactCore::oneAlleleColumn()
{
    // Three alleles, one per row (r2 and r3 alike): one row up to p = 33,
    // two up to 66, three from 67.
    XCsv input(grid({QStringLiteral("Name,A"), QStringLiteral("r1,1"), QStringLiteral("r2,2"),
                     QStringLiteral("r3,2"), QStringLiteral("r4,3")}));
    ExactRun run;
    runExact(&input, nullptr, 60, run);
    QVERIFY(run.result);
    for (int p = 1; p <= 100; ++p) {
        const int size = p <= 33 ? 1 : p <= 66 ? 2 : 3;
        QCOMPARE(run.size(p), size);
        QCOMPARE(run.count(p), size);
        QCOMPARE(run.bound(p), size);
    }
    QCOMPARE(run.result->entries().at(99).second, QList<int>({1, 2, 4}));
}

void TestXExactCore::errors_data()
{
    QTest::addColumn<QStringList>("input");
    QTest::addColumn<QStringList>("start");
    QTest::addColumn<QString>("message");
    QTest::newRow("different headers")
        << fourRows << QStringList{QStringLiteral("Name,A,A,B,C"), QStringLiteral("s,1,1,1,1")}
        << QStringLiteral("Different headers.");
    QTest::newRow("negative value")
        << QStringList{QStringLiteral("Name,A,A"), QStringLiteral("r1,1,-3")} << QStringList()
        << QStringLiteral("Invalid value in csv.");
    QTest::newRow("text in the start")
        << fourRows << QStringList{fourRows.at(0), QStringLiteral("s,1,x,1,1")}
        << QStringLiteral("Invalid value in csv.");
    QTest::newRow("no accessions") << QStringList{QStringLiteral("Name,A,A")} << QStringList()
                                   << QStringLiteral("The input table has no accessions.");
}

void TestXExactCore::errors()
{
    QFETCH(QStringList, input);
    QFETCH(QStringList, start);
    QFETCH(QString, message);
    XCsv table(grid(input));
    std::unique_ptr<XCsv> source;
    if (!start.isEmpty())
        source = std::make_unique<XCsv>(grid(start));
    ExactRun run;
    runExact(&table, source.get(), 60, run);
    QVERIFY(!run.result);
    QCOMPARE(run.errorText, message);
    QVERIFY(run.percents.isEmpty());
}

void TestXExactCore::againstEverySubset()
{
    QRandomGenerator rng(13);
    for (int t = 0; t < 300; ++t) {
        const int rows = 1 + int(rng.bounded(14));
        const int markers = 1 + int(rng.bounded(3));
        XCsv::Grid inputGrid = smallGrid(rng, rows, markers);
        XCsv::Grid startGrid;
        if (rng.bounded(3) == 0)
            startGrid = smallGrid(rng, 1 + int(rng.bounded(2)), markers);
        XCsv input(inputGrid);
        XCsv start(startGrid);
        XCsv const* src = startGrid.isEmpty() ? nullptr : &start;
        const QList<QSet<QString>> inputAlleles = allelesOf(inputGrid);
        const QList<QSet<QString>> startAlleles =
            src ? allelesOf(startGrid) : QList<QSet<QString>>();
        QList<int> allRows;
        for (int r = 1; r <= rows; ++r)
            allRows << r;
        const int total = recount(inputAlleles, startAlleles, allRows);
        const QVector<int> minima = bruteMinima(inputAlleles, startAlleles, total);

        ExactRun run;
        runExact(&input, src, 60, run);
        QVERIFY2(run.result, qPrintable(QStringLiteral("table %1").arg(t)));
        QCOMPARE(run.total, total);
        for (int p = 1; p <= 100; ++p) {
            const QString where = QStringLiteral("table %1, p %2").arg(t).arg(p);
            const int need = needFor(p, total);
            QVERIFY2(run.size(p) == minima.at(need), qPrintable(where));
            QVERIFY2(run.bound(p) == run.size(p), qPrintable(where));
            QList<int> const& core = run.result->entries().at(p - 1).second;
            QVERIFY2(run.count(p) == recount(inputAlleles, startAlleles, core), qPrintable(where));
            QVERIFY2(run.count(p) >= need, qPrintable(where));
        }
    }
}

void TestXExactCore::budgetRunsOut()
{
    // With no time for proofs the cores come from the swap search and the
    // bounds from the heaviest rows alone: still true, and below the sizes
    // somewhere. None of this depends on the machine's speed.
    QRandomGenerator rng(77);
    int open = 0;
    for (int t = 0; t < 40; ++t) {
        XCsv::Grid inputGrid = smallGrid(rng, 14, 3);
        XCsv input(inputGrid);
        const QList<QSet<QString>> alleles = allelesOf(inputGrid);
        QList<int> allRows;
        for (int r = 1; r <= 14; ++r)
            allRows << r;
        const int total = recount(alleles, {}, allRows);
        const QVector<int> minima = bruteMinima(alleles, {}, total);
        ExactRun run;
        runExact(&input, nullptr, 0, run);
        QVERIFY(run.result);
        for (int p = 1; p <= 100; ++p) {
            const int truth = minima.at(needFor(p, total));
            QVERIFY(run.bound(p) <= truth);
            QVERIFY(run.size(p) >= truth);
            QCOMPARE(run.count(p), recount(alleles, {}, run.result->entries().at(p - 1).second));
            open += run.bound(p) < run.size(p);
        }
    }
    QVERIFY(open > 0);
}

void TestXExactCore::monotoneRecountedDeterministic()
{
    const XCsv::Grid table = syntheticGrid(150, 12, 5);
    XCsv input(table);
    XCsv start(XCsv::Grid{table.at(0), table.at(3), table.at(9)});
    const QList<QSet<QString>> alleles = allelesOf(table);
    const QList<QSet<QString>> startAlleles = allelesOf(start.data());
    ExactRun first;
    ExactRun second;
    runExact(&input, &start, 0, first);
    runExact(&input, &start, 0, second);
    QVERIFY(first.result && second.result);
    QCOMPARE(first.result->toString(), second.result->toString());
    QCOMPARE(first.result->lowerBounds(), second.result->lowerBounds());
    for (int p = 1; p <= 100; ++p) {
        QList<int> const& core = first.result->entries().at(p - 1).second;
        QCOMPARE(first.count(p), recount(alleles, startAlleles, core));
        QVERIFY(first.count(p) >= needFor(p, first.total));
        QVERIFY(first.bound(p) <= first.size(p));
        if (p > 1) {
            QVERIFY(first.size(p) >= first.size(p - 1));
            QVERIFY(first.bound(p) >= first.bound(p - 1));
        }
    }
    QCOMPARE(first.count(100), first.total);
}

void TestXExactCore::stopEndsWithoutResult()
{
    XCsv input(syntheticGrid(1500, 60, 3));
    ExactRun run;
    XSearchRunner core(std::make_unique<XExactCore>(&input, nullptr, 600));
    QObject::connect(
        &core, &XSearchRunner::completed, &core, [&run](XResult* r) { run.result.reset(r); },
        Qt::DirectConnection);
    QObject::connect(
        &core, &XSearchRunner::error, &core, [&run](QString const& text) { run.errorText = text; },
        Qt::DirectConnection);
    core.start();
    QTest::qWait(300);
    core.stopIterating();
    QVERIFY(core.wait(60000));
    QVERIFY(!run.result);
    QVERIFY(run.errorText.isNull());

    // Stopped before it starts: it returns without a result as well.
    XSearchRunner early(std::make_unique<XExactCore>(&input, nullptr, 600));
    QObject::connect(
        &early, &XSearchRunner::completed, &early, [&run](XResult* r) { run.result.reset(r); },
        Qt::DirectConnection);
    early.stopIterating();
    early.start();
    QVERIFY(early.wait(60000));
    QVERIFY(!run.result);
}

void TestXExactCore::destroyedWhileRunning()
{
    XCsv input(syntheticGrid(1500, 60, 4));
    auto core = std::make_unique<XSearchRunner>(std::make_unique<XExactCore>(&input, nullptr, 600));
    core->start();
    QTest::qWait(200);
    core.reset(); // stops and waits
    QVERIFY(true);
}

QTEST_GUILESS_MAIN(TestXExactCore)
#include "tst_xexactcore.moc"

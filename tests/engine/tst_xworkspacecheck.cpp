#include "EngineRunner.h"
#include "RandomTable.h"
#include "XCsv.h"
#include "XExactCore.h"
#include "XResult.h"
#include "XSearchRunner.h"
#include "XWorkspace.h"
#include "XWorkspaceCheck.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// What the window's Export writes and its Import reads back.
std::unique_ptr<XWorkspace> exportedAndRead(XCsv::Grid const& input, XCsv::Grid const& start,
                                            XResult::Entries const& entries,
                                            QList<int> const& bounds, bool exact)
{
    auto* csv = new XCsv(input);
    auto* src = start.isEmpty() ? nullptr : new XCsv(start);
    auto* result = new XResult(entries, csv, src);
    result->setLowerBounds(bounds);
    XWorkspace written(csv, src, result);
    if (exact)
        written.setRun(XSearchSettings::exact(5), 0.4);
    else
        written.setRun(XSearchSettings::reproducible(3, 7));
    return std::make_unique<XWorkspace>(written.toString());
}

std::unique_ptr<XWorkspace> reproducibleRun(XCsv::Grid const& input, XCsv::Grid const& start,
                                            int iterations, int seed)
{
    XCsv csv(input);
    std::unique_ptr<XCsv> src(start.isEmpty() ? nullptr : new XCsv(start));
    EngineRun run;
    runEngine(&csv, src.get(), iterations, seed, run);
    if (!run.result)
        return nullptr;
    return exportedAndRead(input, start, run.result->entries(), {}, false);
}

std::unique_ptr<XWorkspace> exactRun(XCsv::Grid const& input, XCsv::Grid const& start)
{
    XCsv csv(input);
    std::unique_ptr<XCsv> src(start.isEmpty() ? nullptr : new XCsv(start));
    XSearchRunner core(std::make_unique<XExactCore>(&csv, src.get(), 5));
    std::unique_ptr<XResult> result;
    QObject::connect(
        &core, &XSearchRunner::completed, &core, [&result](XResult* r) { result.reset(r); },
        Qt::DirectConnection);
    core.start();
    core.wait();
    if (!result)
        return nullptr;
    return exportedAndRead(input, start, result->entries(), result->lowerBounds(), true);
}

XCsv::Grid table(QString const& text)
{
    return XCsv(text).data();
}

// r1 {A1 A2 B1}, r2 {A3 B2 B3}, r3 {A1 A3 B2}, r4 {A4} and a (B, 0) cell.
const QString fourRows =
    QStringLiteral("Name,A,A,B,B\nr1,1,2,1,1\nr2,3,3,2,3\nr3,1,3,2,2\nr4,4,*,*,0\n");

XResult::Entries repeated(XResult::Entry const& entry)
{
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p)
        entries << entry;
    return entries;
}

} // namespace

class TestXWorkspaceCheck : public QObject
{
    Q_OBJECT

private slots:
    void searchesPassOnRandomTables();
    void microbovPasses();
    void startHoldingEverything();
    void onlyZeroAlleles();
    void repeatedRowOnlyInReproducibleCore();
    void exactCountsWithStart();
    void olderFilesWithoutSearch();
    void settingsOfTheirType_data();
    void settingsOfTheirType();
    void readFromFile();
};

void TestXWorkspaceCheck::searchesPassOnRandomTables()
{
    // Whatever the searches write passes, (marker, 0) pairs and odd column
    // counts included.
    RandomTableOptions options;
    options.textPercent = 0;
    options.maxAllele = 6;
    int checked = 0;
    for (quint32 seed = 1; seed <= 40; ++seed) {
        const XCsv::Grid input = randomGrid(seed, options);
        if (input.size() < 2)
            continue;
        XCsv::Grid start;
        if (seed % 3 == 0)
            start = input.mid(0, 1 + int(seed % 4));
        for (int iterations : {1, 3}) {
            std::unique_ptr<XWorkspace> read = reproducibleRun(input, start, iterations, int(seed));
            QVERIFY(read);
            QCOMPARE(XWorkspaceCheck::problem(*read), QString());
            ++checked;
        }
        if (seed % 4 == 0) {
            std::unique_ptr<XWorkspace> read = exactRun(input, start);
            QVERIFY(read);
            QCOMPARE(XWorkspaceCheck::problem(*read), QString());
            ++checked;
        }
    }
    QVERIFY(checked >= 80);
}

void TestXWorkspaceCheck::microbovPasses()
{
    const XCsv::Grid input = XCsv(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv")).data();
    const XCsv::Grid start = XCsv(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv")).data();
    for (XCsv::Grid const& begin : {XCsv::Grid(), start}) {
        std::unique_ptr<XWorkspace> read = reproducibleRun(input, begin, 1, 42);
        QVERIFY(read);
        QCOMPARE(XWorkspaceCheck::problem(*read), QString());
    }
}

void TestXWorkspaceCheck::startHoldingEverything()
{
    // Every core is empty, each counting what the start holds.
    const XCsv::Grid input = table(fourRows);
    std::unique_ptr<XWorkspace> read = reproducibleRun(input, input, 2, 1);
    QVERIFY(read);
    QCOMPARE(read->result()->entries().constLast(), XResult::Entry(8, {}));
    QCOMPARE(XWorkspaceCheck::problem(*read), QString());
    read = exactRun(input, input);
    QVERIFY(read);
    QCOMPARE(XWorkspaceCheck::problem(*read), QString());
    // Without that start, empty cores are what no search writes.
    read = exportedAndRead(input, {}, repeated(XResult::Entry(0, {})), {}, false);
    QCOMPARE(XWorkspaceCheck::problem(*read),
             QStringLiteral("line 13: the count 0 falls short of 1 % of the 8 alleles, which the "
                            "core for that share reaches"));
}

void TestXWorkspaceCheck::onlyZeroAlleles()
{
    // The reproducible search counts (marker, 0) pairs it can never cover:
    // its cores stop short, and that is no damage.
    const XCsv::Grid input = table(QStringLiteral("Name,A,A\nr1,0,0\nr2,0,*\n"));
    std::unique_ptr<XWorkspace> read = reproducibleRun(input, {}, 1, 1);
    QVERIFY(read);
    QCOMPARE(read->result()->entries().constLast().first, 0);
    QCOMPARE(XWorkspaceCheck::problem(*read), QString());
}

void TestXWorkspaceCheck::repeatedRowOnlyInReproducibleCore()
{
    const XCsv::Grid input = table(fourRows);
    XResult::Entries entries = repeated(XResult::Entry(8, {1, 1, 2, 4}));
    std::unique_ptr<XWorkspace> read = exportedAndRead(input, {}, entries, {}, false);
    QCOMPARE(XWorkspaceCheck::problem(*read), QString());
    // In an exact core a row stands once; 7 alleles above 0 are the total.
    entries = repeated(XResult::Entry(7, {1, 1, 2, 4}));
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << 3;
    read = exportedAndRead(input, {}, entries, bounds, true);
    QCOMPARE(XWorkspaceCheck::problem(*read),
             QStringLiteral("line 14: the core lists a row twice, and the exact search lists "
                            "each row once"));
}

void TestXWorkspaceCheck::exactCountsWithStart()
{
    // The start s1 holds A1 A2 B1: r2 and r4 add A3 B2 B3 A4.
    const XCsv::Grid input = table(fourRows);
    const XCsv::Grid start = table(QStringLiteral("Name,A,A,B,B\ns1,1,2,1,1\n"));
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << 2;
    std::unique_ptr<XWorkspace> read =
        exportedAndRead(input, start, repeated(XResult::Entry(7, {2, 4})), bounds, true);
    QCOMPARE(XWorkspaceCheck::problem(*read), QString());
    read = exportedAndRead(input, start, repeated(XResult::Entry(6, {2, 4})), bounds, true);
    QCOMPARE(XWorkspaceCheck::problem(*read),
             QStringLiteral("line 19: the count 6 differs from the 7 alleles the core holds "
                            "with the starting collection"));
}

void TestXWorkspaceCheck::olderFilesWithoutSearch()
{
    // Files from before the search was recorded: lower bounds mean the exact search.
    const XCsv::Grid input = table(fourRows);
    auto* csv = new XCsv(input);
    auto* result = new XResult(repeated(XResult::Entry(8, {1, 2, 4})), csv, nullptr);
    XWorkspace plain(csv, nullptr, result);
    XWorkspace read(plain.toString());
    QCOMPARE(read.search(), QString());
    QCOMPARE(XWorkspaceCheck::problem(read), QString());

    auto* csv2 = new XCsv(input);
    auto* bounded = new XResult(repeated(XResult::Entry(8, {1, 2, 4})), csv2, nullptr);
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << 3;
    bounded->setLowerBounds(bounds);
    XWorkspace exact(csv2, nullptr, bounded);
    // The constructor records the exact search; an older file did not.
    QString text = exact.toString().remove(QStringLiteral("Search=exact\n"));
    XWorkspace readExact(text);
    QCOMPARE(readExact.search(), QString());
    QCOMPARE(XWorkspaceCheck::problem(readExact),
             QStringLiteral("line 11: the count 8 is more than the 7 alleles the tables hold"));
}

void TestXWorkspaceCheck::settingsOfTheirType_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("problem");
    QTest::newRow("Seed text") << "Seed=x"
                               << "line 1: Seed is \"x\", where a whole number belongs";
    QTest::newRow("Seed past int") << "Seed=2147483648"
                                   << "line 1: Seed is \"2147483648\", where a whole number "
                                      "belongs";
    QTest::newRow("Budget -1") << "Budget=-1"
                               << "line 1: Budget is \"-1\", where a whole number of 0 or more "
                                  "belongs";
    QTest::newRow("Seconds inf") << "Seconds=inf"
                                 << "line 1: Seconds is \"inf\", where a number of 0 or more "
                                    "belongs";
    QTest::newRow("Seconds -2") << "Seconds=-2"
                                << "line 1: Seconds is \"-2\", where a number of 0 or more "
                                   "belongs";
    QTest::newRow("SliderValue 0") << "SliderValue=0"
                                   << "line 1: SliderValue is \"0\", where a whole number from 1 "
                                      "to 100 belongs";
    QTest::newRow("HasSource yes") << "HasSource=yes"
                                   << "line 1: HasSource is \"yes\", where true or false belongs";
    QTest::newRow("exact without bounds") << "Search=exact"
                                          << "line 1: the exact search's lower bounds are missing";
    QTest::newRow("bounds of the reproducible search")
        << "Search=reproducible\nLowerBounds=1"
        << "line 2: lower bounds come from the exact search, and this result is the "
           "reproducible search's";
    QTest::newRow("unknown setting") << "Colour=blue" << QString();
    QTest::newRow("Seconds 0.5") << "Seconds=0.5" << QString();
}

void TestXWorkspaceCheck::settingsOfTheirType()
{
    QFETCH(QString, setting);
    QFETCH(QString, problem);
    auto* csv = new XCsv(table(fourRows));
    XWorkspace written(csv, nullptr,
                       new XResult(repeated(XResult::Entry(8, {1, 2, 4})), csv, nullptr));
    // Settings are read in the text's order; the check names the line.
    XWorkspace read(setting + QLatin1Char('\n') + written.toString());
    QCOMPARE(XWorkspaceCheck::problem(read), problem);
}

void TestXWorkspaceCheck::readFromFile()
{
    QTemporaryDir dir;
    auto* csv = new XCsv(table(fourRows));
    XWorkspace written(csv, nullptr,
                       new XResult(repeated(XResult::Entry(8, {1, 2, 4})), csv, nullptr));
    const QString path = dir.filePath(QStringLiteral("a.ccw"));
    // Old Mac line ends: the file is read by lines all the same.
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(written.toString().toUtf8().replace('\n', '\r'));
    file.close();
    XWorkspaceCheck::Reading reading = XWorkspaceCheck::read(path);
    QCOMPARE(reading.unreadable, QString());
    QCOMPARE(reading.invalid, QString());
    QVERIFY(reading.workspace);
    QCOMPARE(reading.workspace->toString(), written.toString());

    reading = XWorkspaceCheck::read(dir.filePath(QStringLiteral("none.ccw")));
    QCOMPARE(reading.unreadable, QStringLiteral("no such file"));
    QVERIFY(!reading.workspace);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("Name,M\nA,1\n");
    file.close();
    reading = XWorkspaceCheck::read(path);
    QCOMPARE(reading.unreadable, QString());
    QCOMPARE(reading.invalid, QStringLiteral("it does not hold a whole analysis"));
    QVERIFY(!reading.workspace);
}

QTEST_GUILESS_MAIN(TestXWorkspaceCheck)
#include "tst_xworkspacecheck.moc"

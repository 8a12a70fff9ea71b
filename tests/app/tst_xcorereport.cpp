#include "XCoreReport.h"
#include "XCsv.h"
#include "XResult.h"
#include "XWorkspace.h"

#include <QtTest>

namespace {

// Percentages 1-50 share the core [1], 51-100 the core [1, 2]; the search
// reports 3 and 5 alleles. A1 holds 1, 2; A2 holds 3, 4; A3 holds 5.
XWorkspace* workspace(bool withStart, QList<int> const& bounds = {})
{
    auto* csv = new XCsv(QStringLiteral("Name,M,M\nA1,1,2\nA2,3,4\nA3,5,*\n"));
    XCsv* src = withStart ? new XCsv(QStringLiteral("Name,M,M\nS1,7,7\n")) : nullptr;
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p)
        entries << XResult::Entry(p <= 50 ? 3 : 5, p <= 50 ? QList<int>{1} : QList<int>{1, 2});
    auto* result = new XResult(entries, csv, src);
    result->setLowerBounds(bounds);
    return new XWorkspace(csv, src, result);
}

QList<int> boundsOf(int low, int high)
{
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << (p <= 50 ? low : high);
    return bounds;
}

} // namespace

class TestXCoreReport : public QObject
{
    Q_OBJECT

private slots:
    void percentText_data();
    void percentText();
    void reproducibleLines();
    void startingCollectionCounted();
    void exactLines();
    void heldPerPercent();
    void unreadableCellNotCounted();
    void noWorkspace();
};

void TestXCoreReport::percentText_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("whole");
    QTest::addColumn<QString>("text");
    QTest::newRow("microbov") << 319 << 373 << QStringLiteral("85.5");
    QTest::newRow("half") << 167 << 373 << QStringLiteral("44.8");
    QTest::newRow("all") << 373 << 373 << QStringLiteral("100");
    QTest::newRow("third") << 1 << 3 << QStringLiteral("33.3");
    QTest::newRow("nothing") << 0 << 0 << QStringLiteral("0");
}

void TestXCoreReport::percentText()
{
    QFETCH(int, part);
    QFETCH(int, whole);
    QFETCH(QString, text);
    QCOMPARE(XCoreReport::percentText(part, whole), text);
}

void TestXCoreReport::reproducibleLines()
{
    std::unique_ptr<XWorkspace> analysis(workspace(false));
    XCoreReport report(analysis.get());
    QCOMPARE(report.total(), 5);
    QCOMPARE(
        report.coverageLine(10),
        QStringLiteral("1 accession · the search reports 3 of 5 alleles · they hold 2 (40 %)"));
    QCOMPARE(report.coverageLine(100), QStringLiteral("2 accessions · the search reports 5 of 5 "
                                                      "alleles · they hold 4 (80 %)"));
    QCOMPARE(report.runLine(), QStringLiteral("Reproducible search"));
    analysis->setRun(XSearchSettings::reproducible(1, 1));
    QCOMPARE(report.runLine(), QStringLiteral("Reproducible search · seed 1 · 1 iteration"));
    analysis->setRun(XSearchSettings::reproducible(5, 1732345678));
    QCOMPARE(report.runLine(), QStringLiteral("Reproducible search · seed 1732345678 · 5 "
                                              "iterations"));
}

void TestXCoreReport::startingCollectionCounted()
{
    std::unique_ptr<XWorkspace> analysis(workspace(true));
    XCoreReport report(analysis.get());
    QCOMPARE(report.total(), 6);
    QCOMPARE(report.coverageLine(50),
             QStringLiteral("2 accessions (1 in the starting collection) · the search reports 3 "
                            "of 6 alleles · they hold 3 (50 %)"));
}

void TestXCoreReport::exactLines()
{
    // 1-50 proven (bound 1 = size 1), 51-100 only bounded by 1 of 2.
    std::unique_ptr<XWorkspace> analysis(workspace(true, boundsOf(1, 1)));
    XCoreReport report(analysis.get());
    QCOMPARE(report.coverageLine(50),
             QStringLiteral("2 accessions (1 in the starting collection) · they hold 3 of 6 "
                            "alleles (50 %) · proven smallest"));
    QCOMPARE(report.coverageLine(51),
             QStringLiteral("3 accessions (1 in the starting collection) · they hold 5 of 6 "
                            "alleles (83.3 %) · at least 2 accessions are needed"));
    QCOMPARE(report.runLine(), QStringLiteral("Exact search · 50 of 100 cores proven smallest"));
    analysis->setRun(XSearchSettings::exact(60), 41.26);
    QCOMPARE(report.runLine(),
             QStringLiteral("Exact search · 50 of 100 cores proven smallest · 41 s"));
    analysis->setRun(XSearchSettings::exact(60), 2.04);
    QCOMPARE(report.runLine(),
             QStringLiteral("Exact search · 50 of 100 cores proven smallest · 2.0 s"));
}

void TestXCoreReport::heldPerPercent()
{
    std::unique_ptr<XWorkspace> analysis(workspace(false));
    XCoreReport report(analysis.get());
    const QVector<int> held = report.heldPerPercent();
    QCOMPARE(held.size(), 100);
    QCOMPARE(held.first(), 2);
    QCOMPARE(held.at(49), 2);
    QCOMPARE(held.at(50), 4);
    QCOMPARE(held.last(), 4);
    QCOMPARE(report.held(0), -1);
    QCOMPARE(report.held(101), -1);
}

void TestXCoreReport::unreadableCellNotCounted()
{
    std::unique_ptr<XWorkspace> analysis(workspace(false));
    analysis->csv()->setCell(1, 1, QStringLiteral("x"));
    // The result's core tables are built from the input when first asked for.
    XCoreReport report(analysis.get());
    QCOMPARE(report.held(1), -1);
    QCOMPARE(report.coverageLine(1),
             QStringLiteral("1 accession · the search reports 3 of ? alleles · a cell of the "
                            "tables is not an allele"));
}

void TestXCoreReport::noWorkspace()
{
    XCoreReport report(nullptr);
    QCOMPARE(report.total(), -1);
    QCOMPARE(report.coverageLine(100), QString());
    QCOMPARE(report.runLine(), QString());
    QCOMPARE(report.held(100), -1);
}

QTEST_GUILESS_MAIN(TestXCoreReport)
#include "tst_xcorereport.moc"

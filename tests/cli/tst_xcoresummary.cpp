#include "XCoreSummary.h"
#include "XCsv.h"
#include "XResult.h"

#include <QtTest>

namespace {

// Five alleles: M1 holds 1, 2 and 3; M2 holds 5 and 6.
XCsv::Grid inputGrid()
{
    return {{"Name", "M1", "M1", "M2"}, {"a", 1, 2, 5}, {"b", 1, 1, 6}, {"c", 3, "*", 5}};
}

XResult::Entry entry(int alleles, QList<int> rows)
{
    return XResult::Entry(alleles, rows);
}

} // namespace

class TestXCoreSummary : public QObject
{
    Q_OBJECT

private slots:
    void equalNeighboursShareALine();
    void sameCoreApartGetsOwnLines();
    void startingCollectionCounted();
    void invalidCellNamed();
};

void TestXCoreSummary::equalNeighboursShareALine()
{
    XCsv input(inputGrid());
    // The reported counts are the search's; the recount reads the core's
    // rows, so a core of row a alone recounts three alleles.
    XResult result(
        XResult::Entries{entry(2, {1}), entry(2, {1}), entry(4, {1, 2}), entry(5, {1, 2, 3})},
        &input, nullptr);
    QCOMPARE(XCoreSummary::text(result, 5, 9),
             QStringLiteral("percent\taccessions\talleles\trecounted\n"
                            "1-2\t1\t2\t3\n"
                            "3\t2\t4\t4\n"
                            "4\t3\t5\t5\n"
                            "Total alleles: 5; seed: 9\n"));
}

void TestXCoreSummary::sameCoreApartGetsOwnLines()
{
    XCsv input(inputGrid());
    XResult result(XResult::Entries{entry(3, {1}), entry(4, {1, 2}), entry(3, {1})}, &input,
                   nullptr);
    QCOMPARE(XCoreSummary::text(result, 5, 0),
             QStringLiteral("percent\taccessions\talleles\trecounted\n"
                            "1\t1\t3\t3\n"
                            "2\t2\t4\t4\n"
                            "3\t1\t3\t3\n"
                            "Total alleles: 5; seed: 0\n"));
}

void TestXCoreSummary::startingCollectionCounted()
{
    XCsv input(inputGrid());
    XCsv start(XCsv::Grid{{"Name", "M1", "M1", "M2"}, {"s", 7, 7, 8}});
    // Each core holds the starting accession too: one more accession, and
    // its alleles 7 and 8 in the recount.
    XResult result(XResult::Entries{entry(5, {1}), entry(7, {1, 2})}, &input, &start);
    QCOMPARE(XCoreSummary::text(result, 7, 3),
             QStringLiteral("percent\taccessions\talleles\trecounted\n"
                            "1\t2\t5\t5\n"
                            "2\t3\t7\t6\n"
                            "Total alleles: 7; seed: 3\n"));
}

void TestXCoreSummary::invalidCellNamed()
{
    const QString input = QStringLiteral("input");
    XCsv named(XCsv::Grid{{"Name", "M1", "M1"}, {"a", 1, 2}, {"b", 3, "1.5"}});
    QCOMPARE(XCoreSummary::invalidCell(input, &named),
             QStringLiteral("input row 3 (b), column M1: \"1.5\""));
    XCsv valid(XCsv::Grid{{"Name", "M1"}, {"a", 1}});
    QCOMPARE(XCoreSummary::invalidCell(input, &valid), QString());
    // A workbook's first row can be shorter than the rest: the cell is
    // still named by its place.
    XCsv unnamed(XCsv::Grid{{"Name", "", ""}, {"a", 1, 2}, {"", 1, ""}});
    QCOMPARE(XCoreSummary::invalidCell(input, &unnamed),
             QStringLiteral("input row 3, column 3 (no header): \"\""));
}

QTEST_GUILESS_MAIN(TestXCoreSummary)
#include "tst_xcoresummary.moc"

#include "XAlleles.h"
#include "XCsv.h"

#include <QtTest>

class TestXAlleles : public QObject
{
    Q_OBJECT

private slots:
    void heldCountsDistinctMarkerAlleles();
    void heldAcrossTables();
    void heldRefusesNonAlleles();
    void encodeStopsWhenAsked();
};

void TestXAlleles::heldCountsDistinctMarkerAlleles()
{
    // M1: 1, 2, 3; M2: 3, 5 (the homozygous 5,5 once); "*" holds nothing;
    // allele 3 of M1 and of M2 are different alleles.
    XCsv table(QStringLiteral("Name,M1,M1,M2,M2\nA,1,2,3,*\nB,3,1,5,5\nC,*,*,3,3\n"));
    QCOMPARE(XAlleles::held({&table}, table.headers()), 5);
}

void TestXAlleles::heldAcrossTables()
{
    XCsv start(QStringLiteral("Name,M1,M1\nS,7,8\n"));
    XCsv input(QStringLiteral("Name,M1,M1\nA,1,7\n"));
    QCOMPARE(XAlleles::held({&start, &input}, input.headers()), 3);
    QCOMPARE(XAlleles::held({nullptr, &input}, input.headers()), 2);
    QCOMPARE(XAlleles::held({}, input.headers()), 0);
}

void TestXAlleles::heldRefusesNonAlleles()
{
    XCsv table(QStringLiteral("Name,M1,M1\nA,1,-2\n"));
    QCOMPARE(XAlleles::held({&table}, table.headers()), -1);
    XCsv text(QStringLiteral("Name,M1,M1\nA,1,x\n"));
    QCOMPARE(XAlleles::held({&text}, text.headers()), -1);
}

void TestXAlleles::encodeStopsWhenAsked()
{
    XCsv table(QStringLiteral("Name,M1,M1\nA,1,2\nB,3,4\n"));
    XAlleles::Matrix matrix;
    XAlleles::AlleleMap alleles;
    std::atomic<bool> stop{true};
    QVERIFY(XAlleles::encode(table, table.headers(), matrix, alleles, &stop));
    QVERIFY(matrix.isEmpty());
    stop = false;
    QVERIFY(XAlleles::encode(table, table.headers(), matrix, alleles, &stop));
    QCOMPARE(matrix, (XAlleles::Matrix{{1, 1, 2}, {2, 3, 4}}));
    QCOMPARE(alleles.size(), 4);
}

QTEST_GUILESS_MAIN(TestXAlleles)
#include "tst_xalleles.moc"

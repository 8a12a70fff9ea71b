#include "TableNotes.h"
#include "XCsv.h"

#include <QtTest>

class TestTableNotes : public QObject
{
    Q_OBJECT

private slots:
    void leftOut_data();
    void leftOut();
    void columnRuns();
    void returningMarkers_data();
    void returningMarkers();
    void duplicateNames_data();
    void duplicateNames();
    void notesInOrder();
};

void TestTableNotes::leftOut_data()
{
    QTest::addColumn<QList<int>>("lines");
    QTest::addColumn<QString>("note");
    QTest::newRow("none") << QList<int>() << QString();
    QTest::newRow("one") << QList<int>{5}
                         << "1 line of the file was left out because its number of fields "
                            "differs from the header row: line 5.";
    QTest::newRow("two") << QList<int>{5, 17}
                         << "2 lines of the file were left out because their number of fields "
                            "differs from the header row: lines 5 and 17.";
    QTest::newRow("three") << QList<int>{2, 3, 9}
                           << "3 lines of the file were left out because their number of fields "
                              "differs from the header row: lines 2, 3 and 9.";
    QList<int> many;
    for (int line = 2; line <= 13; ++line)
        many << line;
    QTest::newRow("twelve") << many
                            << "12 lines of the file were left out because their number of "
                               "fields differs from the header row: lines 2, 3, 4, 5, 6, 7, 8, "
                               "9, 10, 11 and 2 more.";
}

void TestTableNotes::leftOut()
{
    QFETCH(QList<int>, lines);
    QFETCH(QString, note);
    QCOMPARE(TableNotes::leftOut(lines), note);
}

void TestTableNotes::columnRuns()
{
    const QList<TableNotes::ColumnRun> runs =
        TableNotes::columnRuns({"Name", "M", "M", "N", "M", "M", "M", "P"});
    QCOMPARE(runs.size(), 4);
    QCOMPARE(runs.at(0).name, QStringLiteral("M"));
    QCOMPARE(runs.at(0).first, 1);
    QCOMPARE(runs.at(0).last, 2);
    QCOMPARE(runs.at(1).name, QStringLiteral("N"));
    QCOMPARE(runs.at(1).first, 3);
    QCOMPARE(runs.at(1).last, 3);
    QCOMPARE(runs.at(2).name, QStringLiteral("M"));
    QCOMPARE(runs.at(2).first, 4);
    QCOMPARE(runs.at(2).last, 6);
    QCOMPARE(runs.at(3).first, 7);
    // The corner cell is no marker, whatever its name.
    QCOMPARE(TableNotes::columnRuns({"M", "M", "M"}).size(), 1);
    QCOMPARE(TableNotes::columnRuns({"Name"}).size(), 0);
}

void TestTableNotes::returningMarkers_data()
{
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<QString>("note");
    QTest::newRow("diploid markers") << QStringList{"Name", "M", "M", "N", "N"} << QString();
    QTest::newRow("haploid markers") << QStringList{"Name", "M", "N", "P"} << QString();
    QTest::newRow("corner named like a marker") << QStringList{"M", "M", "M"} << QString();
    QTest::newRow("M,M,N,N,M,M")
        << QStringList{"Name", "M", "M", "N", "N", "M", "M"}
        << "A marker's name returns after other markers' columns, and the alleles of all its "
           "columns are counted as one marker: \"M\" (columns 2-3 and 6-7).";
    QTest::newRow("three times, once alone")
        << QStringList{"Name", "M", "N", "M", "M", "P", "M"}
        << "A marker's name returns after other markers' columns, and the alleles of all its "
           "columns are counted as one marker: \"M\" (columns 2, 4-5 and 7).";
    QStringList many{"Name"};
    for (int round = 0; round < 2; ++round) {
        for (char m = 'A'; m <= 'G'; ++m)
            many << QString(QLatin1Char(m));
    }
    QTest::newRow("seven markers twice")
        << many
        << "7 markers' names return after other markers' columns, and the alleles of all "
           "columns of one name are counted as one marker: \"A\" (columns 2 and 9), \"B\" "
           "(columns 3 and 10), \"C\" (columns 4 and 11), \"D\" (columns 5 and 12), \"E\" "
           "(columns 6 and 13) and 2 more.";
}

void TestTableNotes::returningMarkers()
{
    QFETCH(QStringList, headers);
    QFETCH(QString, note);
    QCOMPARE(TableNotes::returningMarkers(headers), note);
    QCOMPARE(TableNotes::hasReturningMarker(headers), !note.isEmpty());
}

void TestTableNotes::duplicateNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("note");
    QTest::newRow("distinct") << "Name,M\nA,1\nB,2\n" << QString();
    QTest::newRow("header row alone") << "Name,M\n" << QString();
    QTest::newRow("one name twice")
        << "Name,M\nA,1\nB,2\nA,3\n"
        << "An accession name stands in more than one row: \"A\" (rows 2 and 4).";
    QTest::newRow("a name like the corner's is no duplicate") << "Name,M\nName,1\n" << QString();
    QTest::newRow("numbers and text alike")
        << "Name,M\n12,1\n\"12\",2\n"
        << "An accession name stands in more than one row: \"12\" (rows 2 and 3).";
    QTest::newRow("lines left out count")
        << "Name,M\nA,1\nB,2,3\nA,3\n"
        << "An accession name stands in more than one row: \"A\" (rows 2 and 4).";
    QTest::newRow("two names")
        << "Name,M\nA,1\nB,2\nA,3\nB,4\nA,5\n"
        << "2 accession names stand in more than one row: \"A\" (rows 2, 4 and 6) and \"B\" "
           "(rows 3 and 5).";
}

void TestTableNotes::duplicateNames()
{
    QFETCH(QString, text);
    QFETCH(QString, note);
    XCsv table(text);
    QCOMPARE(TableNotes::duplicateNames(table), note);
}

void TestTableNotes::notesInOrder()
{
    XCsv table(QStringLiteral("Name,M,M,N,N,M,M\nA,1,2,3,4,5,6\nA,1,2,3,4,5,6\nB,1,2\n"));
    QCOMPARE(TableNotes::notes(table),
             QStringList({
                 "1 line of the file was left out because its number of fields differs "
                 "from the header row: line 4.",
                 "A marker's name returns after other markers' columns, and the alleles "
                 "of all its columns are counted as one marker: \"M\" (columns 2-3 and "
                 "6-7).",
                 "An accession name stands in more than one row: \"A\" (rows 2 and "
                 "3).",
             }));
    QCOMPARE(TableNotes::notes(XCsv(QStringLiteral("Name,M,M\nA,1,2\n"))), QStringList());
}

QTEST_GUILESS_MAIN(TestTableNotes)
#include "tst_tablenotes.moc"

#include "CellText.h"
#include "XCsv.h"
#include "XResult.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

XResult::Entries growingEntries()
{
    // Cores that only grow: percentages 1-40 share [2], 41-70 share [2, 4],
    // 71-100 share [2, 4, 1].
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p) {
        if (p <= 40)
            entries << XResult::Entry(10, {2});
        else if (p <= 70)
            entries << XResult::Entry(15, {2, 4});
        else
            entries << XResult::Entry(p, {2, 4, 1});
    }
    return entries;
}

XCsv inputTable()
{
    return XCsv(QStringLiteral("Name,M,M\nA1,1,2\nA2,3,4\nA3,5,6\nA4,7,*\n"));
}

} // namespace

class TestXResult : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textHasHundredLines();
    void textOfEntries();
    void readLines_data();
    void readLines();
    void blankLinesSkipped();
    void linesOfEntriesKept();
    void readAppendsAndShortTexts();
    void readFromFile();
    void roundTrip();
    void count();
    void cacheLowerFirst();
    void cacheHigherFirst();
    void coreWithoutStart();
    void coreWithStart();
    void coreRowZeroAndMissingRows();
    void destructorDeletesEachTableOnce();

private:
    QTemporaryDir* m_dir = nullptr;
};

void TestXResult::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
}

void TestXResult::cleanup()
{
    delete m_dir;
    m_dir = nullptr;
}

void TestXResult::textHasHundredLines()
{
    XResult result(growingEntries(), nullptr, nullptr);
    const QString text = result.toString();
    QVERIFY(text.endsWith(QLatin1Char('\n')));
    QCOMPARE(text.count(QLatin1Char('\n')), 100);
    const QStringList lines = text.split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 101);
    QCOMPARE(lines.at(0), QStringLiteral("2,10"));
    QCOMPARE(lines.at(40), QStringLiteral("2,4,15"));
    QCOMPARE(lines.at(99), QStringLiteral("2,4,1,100"));
    QCOMPARE(lines.at(100), QString());
}

void TestXResult::textOfEntries()
{
    XResult::Entries entries;
    entries << XResult::Entry(37, {12, 4, 9}) << XResult::Entry(5, {});
    for (int i = 2; i < 100; ++i)
        entries << XResult::Entry(0, {1});
    XResult result(entries, nullptr, nullptr);
    QVERIFY(result.toString().startsWith(QStringLiteral("12,4,9,37\n5\n1,0\n")));
}

void TestXResult::readLines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<bool>("wellFormed");
    QTest::newRow("blanks around") << "  3,7,20 \t" << 20 << QList<int>{3, 7} << true;
    QTest::newRow("count only") << "5" << 5 << QList<int>{} << true;
    QTest::newRow("comma first") << ",5" << 5 << QList<int>{0} << false;
    QTest::newRow("two commas") << "1,,9" << 9 << QList<int>{1, 0} << false;
    QTest::newRow("not a number") << "x,4,y" << 0 << QList<int>{0, 4} << false;
    QTest::newRow("inner blank is no number") << "3, 7,20" << 20 << QList<int>{3, 0} << false;
    QTest::newRow("trailing comma") << "3," << 0 << QList<int>{3} << false;
    QTest::newRow("negative count") << "3,-1" << -1 << QList<int>{3} << false;
    QTest::newRow("row twice") << "3,4,3,9" << 9 << QList<int>{3, 4, 3} << true;
    QTest::newRow("zero count") << "0" << 0 << QList<int>{} << true;
}

void TestXResult::readLines()
{
    QFETCH(QString, line);
    QFETCH(int, count);
    QFETCH(QList<int>, rows);
    QFETCH(bool, wellFormed);
    XResult result(line + QLatin1Char('\n'), nullptr, nullptr);
    QCOMPARE(result.entries().size(), 1);
    QCOMPARE(result.entries().at(0).first, count);
    QCOMPARE(result.entries().at(0).second, rows);
    QCOMPARE(result.isWellFormed(), wellFormed);
}

void TestXResult::blankLinesSkipped()
{
    XResult result(QStringLiteral("1,2\n\n   \n3,4\n\n"), nullptr, nullptr);
    QCOMPARE(result.entries().size(), 2);
    QCOMPARE(result.entries().at(0), XResult::Entry(2, {1}));
    QCOMPARE(result.entries().at(1), XResult::Entry(4, {3}));
}

void TestXResult::linesOfEntriesKept()
{
    // Messages name the line an entry was read from, blank lines counted.
    XResult result(QStringLiteral("1,2\n\n   \n3,4\nx,5\n3,-6\n"), nullptr, nullptr);
    QCOMPARE(result.entries().size(), 4);
    QCOMPARE(result.lineOf(0), 1);
    QCOMPARE(result.lineOf(1), 4);
    QCOMPARE(result.lineOf(2), 5);
    QCOMPARE(result.lineOf(3), 6);
    QCOMPARE(result.damagedLine(), 5);
    QVERIFY(!result.isWellFormed());
    XResult whole(QStringLiteral("1,2\n3,4\n"), nullptr, nullptr);
    QCOMPARE(whole.damagedLine(), 0);
    QVERIFY(whole.isWellFormed());
    // Entries made by a search have no text: their own place stands in.
    XResult made(XResult::Entries{XResult::Entry(2, {1})}, nullptr, nullptr);
    QCOMPARE(made.lineOf(0), 1);
}

void TestXResult::readAppendsAndShortTexts()
{
    XResult result(QStringLiteral("1,2\n"), nullptr, nullptr);
    QString more = QStringLiteral("7\n");
    result.fromString(more);
    QCOMPARE(result.entries().size(), 2);
    QCOMPARE(result.entries().at(1), XResult::Entry(7, {}));
    // A short result writes only what it holds instead of reading past it.
    QCOMPARE(result.toString(), QStringLiteral("1,2\n7\n"));
    QCOMPARE(result.count(3), 0);
    QCOMPARE(result.csv(3), nullptr);
}

void TestXResult::readFromFile()
{
    const QString path = m_dir->filePath("r.txt");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("4,1,8\n9\n");
    file.close();
    XResult result(path, nullptr, nullptr);
    QCOMPARE(result.entries().size(), 2);
    QCOMPARE(result.entries().at(0), XResult::Entry(8, {4, 1}));
}

void TestXResult::roundTrip()
{
    XResult result(growingEntries(), nullptr, nullptr);
    XResult again(result.toString(), nullptr, nullptr);
    QCOMPARE(again.entries(), result.entries());
    QCOMPARE(again.toString(), result.toString());
}

void TestXResult::count()
{
    XResult result(growingEntries(), nullptr, nullptr);
    QCOMPARE(result.count(1), 10);
    QCOMPARE(result.count(41), 15);
    QCOMPARE(result.count(100), 100);
}

void TestXResult::cacheLowerFirst()
{
    XCsv input = inputTable();
    XResult result(growingEntries(), &input, nullptr);
    XCsv* low = result.csv(41);
    QVERIFY(low);
    QCOMPARE(result.csv(70), low);
    QCOMPARE(result.csv(55), low);
    QVERIFY(result.csv(71) != low);
    QVERIFY(result.csv(40) != low);
}

void TestXResult::cacheHigherFirst()
{
    XCsv input = inputTable();
    XResult result(growingEntries(), &input, nullptr);
    XCsv* high = result.csv(70);
    QCOMPARE(result.csv(41), high);
    QCOMPARE(result.csv(41), high);
}

void TestXResult::coreWithoutStart()
{
    XCsv input = inputTable();
    XResult result(growingEntries(), &input, nullptr);
    XCsv* core = result.csv(100);
    QCOMPARE(core->parent(), nullptr);
    QCOMPARE(core->columns(), 3);
    QCOMPARE(gridText(*core),
             QStringList({"s:Name|s:M|s:M", "s:A2|i:3|i:4", "s:A4|i:7|s:*", "s:A1|i:1|i:2"}));
}

void TestXResult::coreWithStart()
{
    XCsv input = inputTable();
    XCsv start(QStringLiteral("Name,M,M\nS1,9,9\nS2,8,*\n"));
    XResult result(growingEntries(), &input, &start);
    XCsv* core = result.csv(41);
    QCOMPARE(gridText(*core), QStringList({"s:Name|s:M|s:M", "s:S1|i:9|i:9", "s:S2|i:8|s:*",
                                           "s:A2|i:3|i:4", "s:A4|i:7|s:*"}));
}

void TestXResult::coreRowZeroAndMissingRows()
{
    // Row 0 copies the header row; rows past the table are left out.
    XCsv input = inputTable();
    XResult::Entries entries{XResult::Entry(1, {0, 9, 3, -2})};
    XResult result(entries, &input, nullptr);
    QCOMPARE(gridText(*result.csv(1)),
             QStringList({"s:Name|s:M|s:M", "s:Name|s:M|s:M", "s:A3|i:5|i:6"}));
}

void TestXResult::destructorDeletesEachTableOnce()
{
    XCsv input = inputTable();
    auto* result = new XResult(growingEntries(), &input, nullptr);
    QList<QPointer<XCsv>> tables;
    for (int p = 1; p <= 100; ++p)
        tables << result->csv(p);
    delete result;
    for (auto const& table : tables)
        QVERIFY(table.isNull());
    QCOMPARE(input.rows(), 5);
}

QTEST_GUILESS_MAIN(TestXResult)
#include "tst_xresult.moc"

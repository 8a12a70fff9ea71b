#include "TableMemory.h"

#include <QtTest>

class TestTableMemory : public QObject
{
    Q_OBJECT

private slots:
    void shapeCounted_data();
    void shapeCounted();
    void ordinaryTablesWithinLimit();
    void hostileShapesRefused_data();
    void hostileShapesRefused();
    void limitIsTwoGigabytes();
};

void TestTableMemory::shapeCounted_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("lines");
    QTest::addColumn<qint64>("fields");
    QTest::addColumn<qint64>("widest");
    QTest::addColumn<qint64>("texts");
    QTest::newRow("empty") << QByteArray() << qint64(0) << qint64(0) << qint64(1) << qint64(0);
    QTest::newRow("two lines") << QByteArray("Name,M,M\nA,1,2\n") << qint64(2) << qint64(6)
                               << qint64(3) << qint64(2);
    QTest::newRow("no last line feed")
        << QByteArray("Name,M,M\nA,1,2") << qint64(2) << qint64(6) << qint64(3) << qint64(2);
    QTest::newRow("ragged") << QByteArray("a,b\nc,d,e,f\n\n") << qint64(3) << qint64(7) << qint64(4)
                            << qint64(3);
    QTest::newRow("quoted texts")
        << QByteArray("\"N\",\"M\",\"M\"\n\"a\",1,2\n\"b\",3,4\n\"c\",5,6\n\"d\",7,8\n")
        << qint64(5) << qint64(15) << qint64(3) << qint64(7);
    QTest::newRow("semicolons") << QByteArray("N;M;M\nA;1;2\n") << qint64(2) << qint64(6)
                                << qint64(3) << qint64(2);
    QTest::newRow("commas win over semicolons")
        << QByteArray("N;a,M\nA;b,1\n") << qint64(2) << qint64(4) << qint64(2) << qint64(2);
    QTest::newRow("carriage returns alone")
        << QByteArray("N,M,M\rA,1,2\rB,3,4\r") << qint64(3) << qint64(9) << qint64(3) << qint64(3);
    QTest::newRow("carriage returns before line feeds")
        << QByteArray("N,M,M\r\nA,1,2\r\n") << qint64(2) << qint64(6) << qint64(3) << qint64(2);
    QTest::newRow("one line of commas")
        << QByteArray(",,,,") << qint64(1) << qint64(5) << qint64(5) << qint64(1);
}

void TestTableMemory::shapeCounted()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, lines);
    QFETCH(qint64, fields);
    QFETCH(qint64, widest);
    QFETCH(qint64, texts);
    const TableMemory::Estimate e = TableMemory::estimate(bytes);
    QCOMPARE(e.bytes, qint64(bytes.size()));
    QCOMPARE(e.lines, lines);
    QCOMPARE(e.fields, fields);
    QCOMPARE(e.widestLine, widest);
    QCOMPARE(e.texts, texts);
    QCOMPARE(e.memory, 3 * e.bytes + 40 * fields + 40 * lines + 48 * texts + 16 * widest);
}

void TestTableMemory::ordinaryTablesWithinLimit()
{
    // 128 MB of three-digit alleles, 60 columns a line: about 33 million
    // cells, which bench_model measured at 40 bytes each.
    QByteArray line("Accession123456");
    for (int c = 0; c < 60; ++c)
        line += ",183";
    line += '\n';
    const QByteArray sample = line.repeated(1000);
    TableMemory::Estimate e = TableMemory::estimate(sample);
    const double scale = double(qint64(128) << 20) / sample.size();
    const qint64 memory = qint64(e.memory * scale);
    QVERIFY2(memory < TableMemory::limit(), qPrintable(QString::number(memory)));
    QVERIFY(memory > TableMemory::limit() / 2);
    QCOMPARE(TableMemory::problem(e), QString());
}

void TestTableMemory::hostileShapesRefused_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<int>("megabytes");
    QTest::addColumn<QString>("message");
    QTest::newRow("64 MB of commas")
        << QByteArray(",") << 64
        << "is too large to read: its 64.0 MB hold 67,108,865 fields, which would take about "
           "3.7 GB of memory, and Vireon reads tables of up to 2.0 GB";
    QTest::newRow("127 MB of 1,")
        << QByteArray("1,") << 127
        << "is too large to read: its 127.0 MB hold 66,584,577 fields, which would take about "
           "3.8 GB of memory, and Vireon reads tables of up to 2.0 GB";
    QTest::newRow("127 MB of line feeds")
        << QByteArray("\n") << 127
        << "is too large to read: its 127.0 MB hold 133,169,152 fields, which would take about "
           "16.2 GB of memory, and Vireon reads tables of up to 2.0 GB";
}

void TestTableMemory::hostileShapesRefused()
{
    QFETCH(QByteArray, unit);
    QFETCH(int, megabytes);
    QFETCH(QString, message);
    const QByteArray bytes = unit.repeated(int((qint64(megabytes) << 20) / unit.size()));
    QCOMPARE(TableMemory::problem(TableMemory::estimate(bytes)), message);
}

void TestTableMemory::limitIsTwoGigabytes()
{
    QCOMPARE(TableMemory::limit(), qint64(2) << 30);
}

QTEST_GUILESS_MAIN(TestTableMemory)
#include "tst_tablememory.moc"

#include "XProgressBar.h"

#include <QtTest>

#include <cstdio>

namespace {

// Everything written to the stream so far.
QByteArray contents(FILE* stream)
{
    std::fflush(stream);
    const long size = std::ftell(stream);
    QByteArray bytes(int(size), '\0');
    std::rewind(stream);
    if (size > 0 && std::fread(bytes.data(), 1, size_t(size), stream) != size_t(size))
        bytes.clear();
    std::fseek(stream, 0, SEEK_END);
    return bytes;
}

QByteArray bar(int filled, int percent)
{
    return "\r[" + QByteArray(filled, '#') + QByteArray(40 - filled, ' ') + "] " +
           QByteArray::number(percent).rightJustified(3, ' ') + "%";
}

} // namespace

class TestXProgressBar : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void drawsInPlace_data();
    void drawsInPlace();
    void endsLineWhenDestroyed();
    void saysWhichSizeIsSearched();
    void silentWhenNeverDrawn();

private:
    FILE* m_stream = nullptr;
};

void TestXProgressBar::init()
{
    m_stream = std::tmpfile();
    QVERIFY(m_stream);
}

void TestXProgressBar::cleanup()
{
    if (m_stream)
        std::fclose(m_stream);
    m_stream = nullptr;
}

void TestXProgressBar::drawsInPlace_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("0") << 0 << bar(0, 0);
    QTest::newRow("1") << 1 << bar(0, 1);
    QTest::newRow("3") << 3 << bar(1, 3);
    QTest::newRow("50") << 50 << bar(20, 50);
    QTest::newRow("99") << 99 << bar(39, 99);
    QTest::newRow("100") << 100 << bar(40, 100);
    QTest::newRow("below 0") << -5 << bar(0, 0);
    QTest::newRow("above 100") << 140 << bar(40, 100);
}

void TestXProgressBar::drawsInPlace()
{
    QFETCH(int, percent);
    QFETCH(QByteArray, expected);
    XProgressBar progress(m_stream);
    progress.setPercent(percent);
    QCOMPARE(contents(m_stream), expected);
}

void TestXProgressBar::endsLineWhenDestroyed()
{
    {
        XProgressBar progress(m_stream);
        progress.setPercent(10);
        progress.setPercent(20);
        QCOMPARE(contents(m_stream), bar(4, 10) + bar(8, 20));
    }
    QCOMPARE(contents(m_stream), bar(4, 10) + bar(8, 20) + "\n");
}

void TestXProgressBar::saysWhichSizeIsSearched()
{
    XProgressBar progress(m_stream);
    progress.setPercent(97);
    progress.setSearching(312, 1350);
    progress.setSearching(9, 1350);
    progress.setPercent(98);
    QCOMPARE(contents(m_stream), bar(38, 97) + bar(38, 97) +
                                     " Searching cores of 312 of 1350 accessions" + bar(38, 97) +
                                     " Searching cores of 9 of 1350 accessions  " + bar(39, 98) +
                                     " Searching cores of 9 of 1350 accessions");
}

void TestXProgressBar::silentWhenNeverDrawn()
{
    {
        XProgressBar progress(m_stream);
    }
    QCOMPARE(contents(m_stream), QByteArray());
}

QTEST_GUILESS_MAIN(TestXProgressBar)
#include "tst_xprogressbar.moc"

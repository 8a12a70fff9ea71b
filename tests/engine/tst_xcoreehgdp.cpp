#include "EngineRunner.h"
#include "XCore.h"
#include "XCsv.h"

#include <QtTest>

#include <atomic>

namespace {

QString readFixture(QString const& name)
{
    QFile file(QStringLiteral(VIREON_FIXTURES_DIR "/engine/") + name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    return QString::fromUtf8(file.readAll());
}

} // namespace

// The wide real table: many rare alleles, 1,350 accessions.
class TestXCoreEHGDP : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void matchesEarlierRuns_data();
    void matchesEarlierRuns();
    void stopsWithin100ms_data();
    void stopsWithin100ms();

private:
    std::unique_ptr<XCsv> m_table;
};

void TestXCoreEHGDP::initTestCase()
{
    m_table.reset(new XCsv(QStringLiteral(VIREON_EXAMPLES_DIR "/eHGDP.csv")));
    QCOMPARE(m_table->rows(), 1351);
}

void TestXCoreEHGDP::matchesEarlierRuns_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("threads");
    // One run on a single thread, one with sizes searched ahead on two.
    QTest::newRow("seed 1, 2 threads") << 1 << 2;
    QTest::newRow("seed 42, 1 thread") << 42 << 1;
}

void TestXCoreEHGDP::matchesEarlierRuns()
{
    QFETCH(int, seed);
    QFETCH(int, threads);
    const QString expected = readFixture(QStringLiteral("eHGDP_i1_s%1.txt").arg(seed));
    QCOMPARE(expected.count(QLatin1Char('\n')), 100);
    EngineRun run;
    QVERIFY(runEngine(m_table.get(), nullptr, 1, seed, run, threads));
    QCOMPARE(run.text(), expected);
}

void TestXCoreEHGDP::stopsWithin100ms_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("while reading") << 0;
    QTest::newRow("small cores") << 20;
    QTest::newRow("cores of 200") << 200;
}

void TestXCoreEHGDP::stopsWithin100ms()
{
    QFETCH(int, size);
    EngineRun run;
    auto* search = new XCore(m_table.get(), nullptr, 1, 3);
    XSearchRunner core{std::unique_ptr<XSearch>(search)};
    connectRecorder(core, run);
    // Stops from the engine's own thread the moment it names the size, so
    // the moment does not depend on how fast the test thread is woken.
    connect(
        &core, &XSearchRunner::searching, &core,
        [&core, size](int searched, int) {
            if (searched == size)
                core.stopIterating();
        },
        Qt::DirectConnection);
    core.start();
    if (size == 0)
        core.stopIterating();
    QVERIFY(core.wait(600000));
    const qint64 ms = search->stopLatency() / 1000000;
    QVERIFY2(search->stopLatency() >= 0, "the run ended without a stop");
#ifdef VIREON_SANITIZED
    // Sanitized code runs several times slower; the bound is for real builds.
    const qint64 limit = 300;
#else
    const qint64 limit = 100;
#endif
    QVERIFY2(ms < limit, qPrintable(QStringLiteral("stopped after %1 ms").arg(ms)));
    QVERIFY(!run.result);
    QVERIFY(run.errorText.isNull());
    QVERIFY(!run.signalsSeen.contains(QStringLiteral("completed")));
}

QTEST_GUILESS_MAIN(TestXCoreEHGDP)
#include "tst_xcoreehgdp.moc"

#include "XRandom.h"

#include <QtTest>

#include <cstdlib>

class TestXRandom : public QObject
{
    Q_OBJECT

private slots:
    void matchesTheCLibrary();
    void advanceSkipsValues();
    void longAdvanceJumps_data();
    void longAdvanceJumps();
    void jumpsAddUp();
    void copiesCarryOn();
};

void TestXRandom::matchesTheCLibrary()
{
    // 1,000 seeds spread over the whole unsigned range, ends included.
    QList<unsigned> seeds{0u, 1u, 2u, 42u, 2147483647u, 2147483648u, 4294967295u};
    for (unsigned i = 0; seeds.size() < 1000; ++i)
        seeds << 3u + i * 4294967u;
    for (unsigned seed : seeds) {
        srand(seed);
        XRandom random(seed);
        for (int position = 0; position < 10000; ++position) {
            const int expected = rand();
            const int actual = random.next();
            if (actual != expected)
                QFAIL(qPrintable(QStringLiteral("seed %1, position %2: %3 instead of %4")
                                     .arg(seed)
                                     .arg(position)
                                     .arg(actual)
                                     .arg(expected)));
        }
        QCOMPARE(random.position(), quint64(10000));
    }
}

void TestXRandom::advanceSkipsValues()
{
    XRandom walked(7);
    for (int i = 0; i < 12345; ++i)
        walked.next();
    XRandom jumped(7);
    jumped.advance(12345);
    QCOMPARE(jumped.position(), quint64(12345));
    for (int i = 0; i < 100; ++i)
        QCOMPARE(jumped.next(), walked.next());
}

void TestXRandom::longAdvanceJumps_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<quint64>("count");
    // Around the length where skipping turns from stepping to jumping, and
    // well beyond it, after a start that is not a multiple of the lag.
    for (quint64 count : {4095ull, 4096ull, 4097ull, 100000ull, 2000003ull})
        QTest::addRow("seed 5, %llu", count) << 5u << count;
    QTest::addRow("seed 0, 777777") << 0u << quint64(777777);
    QTest::addRow("seed 4294967295, 31000") << 4294967295u << quint64(31000);
}

void TestXRandom::longAdvanceJumps()
{
    QFETCH(unsigned, seed);
    QFETCH(quint64, count);
    XRandom walked(seed);
    XRandom jumped(seed);
    walked.next();
    jumped.next();
    for (quint64 i = 0; i < count; ++i)
        walked.next();
    jumped.advance(count);
    QCOMPARE(jumped.position(), count + 1);
    for (int i = 0; i < 200; ++i)
        QCOMPARE(jumped.next(), walked.next());
}

void TestXRandom::jumpsAddUp()
{
    // Where the sequence stands after 10^13 values, two ways.
    const quint64 far = 10000000000000ull;
    XRandom once(3);
    once.advance(far + 123456);
    XRandom twice(3);
    twice.advance(far);
    twice.advance(123456);
    XRandom stepped(3);
    stepped.advance(far + 100000);
    for (int i = 0; i < 23456; ++i)
        stepped.next();
    QCOMPARE(once.position(), far + 123456);
    for (int i = 0; i < 100; ++i) {
        const int value = once.next();
        QCOMPARE(twice.next(), value);
        QCOMPARE(stepped.next(), value);
    }
}

void TestXRandom::copiesCarryOn()
{
    XRandom random(99);
    random.advance(10);
    XRandom copy = random;
    const int a = random.next();
    const int b = random.next();
    QCOMPARE(copy.next(), a);
    QCOMPARE(copy.next(), b);
    QVERIFY(a != b);
}

QTEST_APPLESS_MAIN(TestXRandom)
#include "tst_xrandom.moc"

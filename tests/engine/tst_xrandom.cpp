#include "XRandom.h"

#include <QtTest>

#include <cstdlib>

class TestXRandom : public QObject
{
    Q_OBJECT

private slots:
    void matchesTheCLibrary();
    void advanceSkipsValues();
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

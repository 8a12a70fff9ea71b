#include "StrictInt.h"

#include <QtTest>

class TestStrictInt : public QObject
{
    Q_OBJECT

private slots:
    void convert_data();
    void convert();
    void nullPointerForOk();
};

void TestStrictInt::convert_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<int>("value");

    QTest::newRow("zero") << "0" << true << 0;
    QTest::newRow("digits") << "183" << true << 183;
    QTest::newRow("leading zeros") << "007" << true << 7;
    QTest::newRow("plus") << "+5" << true << 5;
    QTest::newRow("minus") << "-12" << true << -12;
    QTest::newRow("int max") << "2147483647" << true << 2147483647;
    QTest::newRow("int min") << "-2147483648" << true << int(-2147483647 - 1);
    QTest::newRow("over max") << "2147483648" << false << 0;
    QTest::newRow("under min") << "-2147483649" << false << 0;
    QTest::newRow("huge") << "99999999999999999999" << false << 0;
    QTest::newRow("empty") << "" << false << 0;
    QTest::newRow("null") << QString() << false << 0;
    QTest::newRow("sign only") << "-" << false << 0;
    QTest::newRow("two signs") << "+-1" << false << 0;
    QTest::newRow("leading blank") << " 12" << false << 0;
    QTest::newRow("trailing blank") << "12 " << false << 0;
    QTest::newRow("tab") << "\t1" << false << 0;
    QTest::newRow("inner blank") << "1 2" << false << 0;
    QTest::newRow("decimal") << "1.5" << false << 0;
    QTest::newRow("exponent") << "1e3" << false << 0;
    QTest::newRow("hex") << "0x10" << false << 0;
    QTest::newRow("star") << "*" << false << 0;
    QTest::newRow("word") << "abc" << false << 0;
    QTest::newRow("quoted") << "\"1\"" << false << 0;
    QTest::newRow("arabic-indic digit") << QString(QChar(0x0661)) << false << 0;
    QTest::newRow("fullwidth digit") << QString(QChar(0xFF11)) << false << 0;
}

void TestStrictInt::convert()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(int, value);
    bool converted = !ok;
    QCOMPARE(strictToInt(text, &converted), value);
    QCOMPARE(converted, ok);
}

void TestStrictInt::nullPointerForOk()
{
    QCOMPARE(strictToInt(QStringLiteral("42")), 42);
    QCOMPARE(strictToInt(QStringLiteral("x")), 0);
}

QTEST_GUILESS_MAIN(TestStrictInt)
#include "tst_strictint.moc"

#include "XCellValue.h"

#include <QtTest>

#include <limits>

class TestXCellValue : public QObject
{
    Q_OBJECT

private slots:
    void equals_data();
    void equals();
    void toInt_data();
    void toInt();
    void isMissing_data();
    void isMissing();
};

void TestXCellValue::equals_data()
{
    QTest::addColumn<QVariant>("left");
    QTest::addColumn<QVariant>("right");
    QTest::addColumn<bool>("equal");
    const QString s12 = QStringLiteral("12");
    QTest::newRow("int int") << QVariant(12) << QVariant(12) << true;
    QTest::newRow("int other int") << QVariant(12) << QVariant(13) << false;
    QTest::newRow("int long long") << QVariant(5) << QVariant(qlonglong(5)) << true;
    QTest::newRow("int text") << QVariant(12) << QVariant(s12) << true;
    QTest::newRow("int text with blank")
        << QVariant(12) << QVariant(QStringLiteral(" 12")) << false;
    QTest::newRow("int text with fraction")
        << QVariant(12) << QVariant(QStringLiteral("12.0")) << false;
    QTest::newRow("int text past int") << QVariant(std::numeric_limits<int>::max())
                                       << QVariant(QStringLiteral("2147483648")) << false;
    QTest::newRow("int whole double") << QVariant(12) << QVariant(12.0) << true;
    QTest::newRow("double int") << QVariant(12.5) << QVariant(12) << false;
    QTest::newRow("double text") << QVariant(5.0) << QVariant(QStringLiteral("5")) << true;
    QTest::newRow("text int") << QVariant(s12) << QVariant(12) << true;
    QTest::newRow("text with blank int")
        << QVariant(QStringLiteral(" 12")) << QVariant(12) << false;
    QTest::newRow("star star") << QVariant(QStringLiteral("*")) << QVariant(QStringLiteral("*"))
                               << true;
    QTest::newRow("star zero") << QVariant(QStringLiteral("*")) << QVariant(0) << false;
    QTest::newRow("zero star") << QVariant(0) << QVariant(QStringLiteral("*")) << false;
    QTest::newRow("texts differ by case")
        << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("A")) << false;
    QTest::newRow("invalid invalid") << QVariant() << QVariant() << true;
}

void TestXCellValue::equals()
{
    QFETCH(QVariant, left);
    QFETCH(QVariant, right);
    QFETCH(bool, equal);
    QCOMPARE(XCellValue::equals(left, right), equal);
}

void TestXCellValue::toInt_data()
{
    QTest::addColumn<QVariant>("cell");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<int>("value");
    QTest::newRow("int") << QVariant(7) << true << 7;
    QTest::newRow("negative int") << QVariant(-7) << true << -7;
    QTest::newRow("long long in range") << QVariant(qlonglong(2147483647)) << true << 2147483647;
    QTest::newRow("long long past int") << QVariant(qlonglong(3000000000LL)) << false << 0;
    QTest::newRow("unsigned") << QVariant(uint(9)) << true << 9;
    QTest::newRow("whole double") << QVariant(12.0) << true << 12;
    QTest::newRow("fraction") << QVariant(12.5) << false << 0;
    QTest::newRow("huge double") << QVariant(1e20) << false << 0;
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << false
                                  << 0;
    QTest::newRow("text") << QVariant(QStringLiteral("42")) << true << 42;
    QTest::newRow("signed text") << QVariant(QStringLiteral("-3")) << true << -3;
    QTest::newRow("text with leading blank") << QVariant(QStringLiteral(" 4")) << false << 0;
    QTest::newRow("text with trailing blank") << QVariant(QStringLiteral("4 ")) << false << 0;
    QTest::newRow("empty text") << QVariant(QString()) << false << 0;
    QTest::newRow("star") << QVariant(QStringLiteral("*")) << false << 0;
    QTest::newRow("bool") << QVariant(true) << false << 0;
    QTest::newRow("invalid") << QVariant() << false << 0;
}

void TestXCellValue::toInt()
{
    QFETCH(QVariant, cell);
    QFETCH(bool, ok);
    QFETCH(int, value);
    bool converted = !ok;
    QCOMPARE(XCellValue::toInt(cell, &converted), value);
    QCOMPARE(converted, ok);
}

void TestXCellValue::isMissing_data()
{
    QTest::addColumn<QVariant>("cell");
    QTest::addColumn<bool>("missing");
    QTest::newRow("star") << QVariant(QStringLiteral("*")) << true;
    QTest::newRow("star with blank") << QVariant(QStringLiteral(" *")) << false;
    QTest::newRow("two stars") << QVariant(QStringLiteral("**")) << false;
    QTest::newRow("zero") << QVariant(0) << false;
    QTest::newRow("empty text") << QVariant(QString()) << false;
    QTest::newRow("invalid") << QVariant() << false;
}

void TestXCellValue::isMissing()
{
    QFETCH(QVariant, cell);
    QFETCH(bool, missing);
    QCOMPARE(XCellValue::isMissing(cell), missing);
}

QTEST_GUILESS_MAIN(TestXCellValue)
#include "tst_xcellvalue.moc"

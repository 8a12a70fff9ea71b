#include "XXlsxParser.h"

#include <QtTest>

class TestXXlsxParser : public QObject
{
    Q_OBJECT

private slots:
    void isDateFormat_data();
    void isDateFormat();
    void missingFileUnreadable();
};

void TestXXlsxParser::isDateFormat_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("date");
    QTest::newRow("General") << 0 << "" << false;
    QTest::newRow("0.00") << 2 << "" << false;
    QTest::newRow("built-in m/d/yy") << 14 << "" << true;
    QTest::newRow("built-in h:mm") << 20 << "" << true;
    QTest::newRow("built-in [h]:mm:ss") << 46 << "" << true;
    QTest::newRow("built-in @") << 49 << "" << false;
    QTest::newRow("custom yyyy-mm-dd") << 164 << "yyyy-mm-dd" << true;
    QTest::newRow("custom upper DD/MM/YYYY") << 164 << "DD/MM/YYYY" << true;
    QTest::newRow("custom hh:mm") << 165 << "hh:mm" << true;
    QTest::newRow("custom elapsed [mm]") << 165 << "[mm]:ss" << true;
    QTest::newRow("custom General") << 166 << "General" << false;
    QTest::newRow("custom number with colour") << 166 << "[Red]0.00;[Blue]-0.00" << false;
    QTest::newRow("custom locale") << 166 << "[$-409]0" << false;
    QTest::newRow("custom quoted words") << 166 << "0 \"days\"" << false;
    QTest::newRow("custom escaped d") << 166 << "0\\d" << false;
    QTest::newRow("custom padding") << 166 << "_-* #,##0_-;-* #,##0_-" << false;
    QTest::newRow("custom scientific") << 166 << "0.00E+00" << false;
    QTest::newRow("custom locale then date") << 166 << "[$-F800]dddd, mmmm dd, yyyy" << true;
}

void TestXXlsxParser::isDateFormat()
{
    QFETCH(int, id);
    QFETCH(QString, code);
    QFETCH(bool, date);
    QCOMPARE(XXlsxParser::isDateFormat(id, code), date);
}

void TestXXlsxParser::missingFileUnreadable()
{
    QCOMPARE(XXlsxParser::parse(QStringLiteral("/nonexistent/x.xlsx")).code,
             XWorkbookContent::Unreadable);
}

QTEST_GUILESS_MAIN(TestXXlsxParser)
#include "tst_xxlsxparser.moc"

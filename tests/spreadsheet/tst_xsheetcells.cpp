#include "CellText.h"
#include "XSheetCells.h"

#include <QtTest>

#include <climits>
#include <limits>

class TestXSheetCells : public QObject
{
    Q_OBJECT

private slots:
    void cellsInAnyOrder();
    void runsFillTheirRectangle();
    void emptyTextIsNoCell();
    void firstBadCellInRowMajorOrder();
    void pastTheLargestSheetRefused_data();
    void pastTheLargestSheetRefused();
    void sparseBeforeTooLarge();
    void denseRunsPastTheCellLimit();
    void emptySheet();
    void longTextRefused();
    void repeatedTextCountedBeforeUnpacking();
    void textBudgetAcrossCells();
    void numberCell_data();
    void numberCell();
};

void TestXSheetCells::cellsInAnyOrder()
{
    XSheetCells cells;
    QVERIFY(cells.add(1, 2, 5));
    QVERIFY(cells.add(0, 0, QStringLiteral("Name")));
    const XWorkbookContent content = cells.content();
    QCOMPARE(content.code, XWorkbookContent::Read);
    QCOMPARE(gridText(XCsv(content.grid)), QStringList({"s:Name|s:|s:", "s:|s:|i:5"}));
}

void TestXSheetCells::runsFillTheirRectangle()
{
    XSheetCells cells;
    QVERIFY(cells.add(0, 1, 7, 2, 3));
    QVERIFY(cells.add(2, 0, QStringLiteral("x")));
    const XWorkbookContent content = cells.content();
    QCOMPARE(content.code, XWorkbookContent::Read);
    QCOMPARE(gridText(XCsv(content.grid)),
             QStringList({"s:|i:7|i:7|i:7", "s:|i:7|i:7|i:7", "s:x|s:|s:|s:"}));
}

void TestXSheetCells::emptyTextIsNoCell()
{
    // An empty text at the far end does not widen the table.
    XSheetCells cells;
    QVERIFY(cells.add(0, 0, 1));
    QVERIFY(cells.add(5, 9, QString(QLatin1String(""))));
    QCOMPARE(gridText(XCsv(cells.content().grid)), QStringList({"i:1"}));
}

void TestXSheetCells::firstBadCellInRowMajorOrder()
{
    XSheetCells cells;
    QVERIFY(cells.add(3, 0, QVariant()));
    QVERIFY(cells.add(2, 4, QVariant(), 1, 2));
    QVERIFY(cells.add(2, 5, 1));
    const XWorkbookContent content = cells.content();
    QCOMPARE(content.code, XWorkbookContent::BadCell);
    QCOMPARE(content.row, 2);
    QCOMPARE(content.column, 4);
    QVERIFY(content.grid.isEmpty());
}

void TestXSheetCells::pastTheLargestSheetRefused_data()
{
    QTest::addColumn<qint64>("row");
    QTest::addColumn<qint64>("column");
    QTest::addColumn<qint64>("rows");
    QTest::addColumn<qint64>("columns");
    QTest::addColumn<bool>("added");
    QTest::newRow("last cell") << qint64(1048575) << qint64(16383) << qint64(1) << qint64(1)
                               << true;
    QTest::newRow("row past") << qint64(1048576) << qint64(0) << qint64(1) << qint64(1) << false;
    QTest::newRow("column past") << qint64(0) << qint64(16384) << qint64(1) << qint64(1) << false;
    QTest::newRow("run past") << qint64(1048000) << qint64(0) << qint64(577) << qint64(1) << false;
    QTest::newRow("negative") << qint64(-1) << qint64(0) << qint64(1) << qint64(1) << false;
    QTest::newRow("no rows") << qint64(0) << qint64(0) << qint64(0) << qint64(1) << false;
}

void TestXSheetCells::pastTheLargestSheetRefused()
{
    QFETCH(qint64, row);
    QFETCH(qint64, column);
    QFETCH(qint64, rows);
    QFETCH(qint64, columns);
    QFETCH(bool, added);
    XSheetCells cells;
    QCOMPARE(cells.add(row, column, 1, rows, columns), added);
}

void TestXSheetCells::sparseBeforeTooLarge()
{
    // Two cells at the corners of the largest sheet: sparse, as in .xls.
    XSheetCells cells;
    QVERIFY(cells.add(0, 0, 1));
    QVERIFY(cells.add(1048575, 16383, 1));
    const XWorkbookContent content = cells.content();
    QCOMPARE(content.code, XWorkbookContent::SparseSheet);
    QCOMPARE(content.row, 1048576);
    QCOMPARE(content.column, 16384);
}

void TestXSheetCells::denseRunsPastTheCellLimit()
{
    // A few bytes of repetition that would be 4 billion cells: refused
    // without making one.
    XSheetCells cells;
    QVERIFY(cells.add(0, 0, 1, 1048576, 4096));
    const XWorkbookContent content = cells.content();
    QCOMPARE(content.code, XWorkbookContent::TooLarge);
    QCOMPARE(content.row, 1048576);
    QCOMPARE(content.column, 4096);
    // At the limit itself the table is made; checked by size only.
    QVERIFY(XWorkbookContent::maxCells >= 1350LL * 1357);
}

void TestXSheetCells::emptySheet()
{
    XSheetCells cells;
    QCOMPARE(cells.content().code, XWorkbookContent::EmptyWorksheet);
    QVERIFY(cells.add(4, 4, QString(QLatin1String(""))));
    QCOMPARE(cells.content().code, XWorkbookContent::EmptyWorksheet);
}

void TestXSheetCells::longTextRefused()
{
    XSheetCells cells;
    const QString full(XWorkbookContent::maxCellText, QLatin1Char('x'));
    QVERIFY(cells.add(0, 0, full));
    QVERIFY(!cells.add(3, 1, full + QLatin1Char('x')));
    QCOMPARE(cells.refusal().code, XWorkbookContent::LongCell);
    QCOMPARE(cells.refusal().row, 3);
    QCOMPARE(cells.refusal().column, 1);
    QVERIFY(cells.refusal().grid.isEmpty());
}

void TestXSheetCells::repeatedTextCountedBeforeUnpacking()
{
    // A hundred characters over the whole largest sheet: refused as it is
    // added, at once, without a cell made.
    XSheetCells cells;
    QVERIFY(!cells.add(0, 0, QString(100, QLatin1Char('x')), 1048576, 16384));
    QCOMPARE(cells.refusal().code, XWorkbookContent::TooMuchText);
    QCOMPARE(cells.refusal().row, 0);
    QCOMPARE(cells.refusal().column, 0);
    // Past the largest sheet is still said first.
    QVERIFY(!cells.add(0, 16383, 1, 1, 2));
    QCOMPARE(cells.refusal().code, XWorkbookContent::TooLarge);
    QCOMPARE(cells.refusal().row, 1);
    QCOMPARE(cells.refusal().column, 16385);
}

void TestXSheetCells::textBudgetAcrossCells()
{
    XSheetCells cells;
    const QString full(XWorkbookContent::maxCellText, QLatin1Char(' '));
    const qint64 fit = XWorkbookContent::maxTextCharacters / XWorkbookContent::maxCellText;
    for (qint64 i = 0; i < fit; ++i)
        QVERIFY(cells.add(i / 100, i % 100, full));
    QVERIFY(!cells.add(fit / 100, fit % 100, full));
    QCOMPARE(cells.refusal().code, XWorkbookContent::TooMuchText);
    QCOMPARE(cells.refusal().row, int(fit / 100));
    QCOMPARE(cells.refusal().column, int(fit % 100));
    // Numbers cost no text.
    XSheetCells numbers;
    QVERIFY(numbers.add(0, 0, 7, 1048576, 16384));
}

void TestXSheetCells::numberCell_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("cell");
    QTest::newRow("whole") << 3.0 << "i:3";
    QTest::newRow("negative") << -4.0 << "i:-4";
    QTest::newRow("int max") << double(INT_MAX) << "i:2147483647";
    QTest::newRow("int min") << double(INT_MIN) << "i:-2147483648";
    QTest::newRow("past int max") << double(INT_MAX) + 1 << "null";
    QTest::newRow("fraction") << 1.5 << "null";
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN() << "null";
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << "null";
}

void TestXSheetCells::numberCell()
{
    QFETCH(double, number);
    QFETCH(QString, cell);
    QCOMPARE(cellText(XSheetCells::numberCell(number)), cell);
}

QTEST_GUILESS_MAIN(TestXSheetCells)
#include "tst_xsheetcells.moc"

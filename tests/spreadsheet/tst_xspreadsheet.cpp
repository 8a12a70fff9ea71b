#include "CellText.h"
#include "RandomTable.h"
#include "TemporaryFolder.h"
#include "XBiffWriter.h"
#include "XCsv.h"
#include "XSpreadsheet.h"
#include "XWorkbookWriter.h"

#include <QTemporaryDir>
#include <QtTest>

#include <freexl.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

const QString wrongSuffix =
    QStringLiteral("The file you selected is not a .csv, .xls, .xlsx or .ods file.");
const QString parsePrefix = QStringLiteral("Error while parsing the .xls file:");

// A cell of a workbook as another reader sees it: "int:7", "double:1.5",
// "text:a", "null".
QString rawCell(FreeXL_CellValue const& v)
{
    switch (v.type) {
    case FREEXL_CELL_INT:
        return QStringLiteral("int:%1").arg(v.value.int_value);
    case FREEXL_CELL_DOUBLE:
        return QStringLiteral("double:%1").arg(v.value.double_value);
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
        return QStringLiteral("text:") + QString::fromUtf8(v.value.text_value);
    case FREEXL_CELL_NULL:
        return QStringLiteral("null");
    default:
        return QStringLiteral("other");
    }
}

struct RawWorkbook
{
    unsigned sheets = 0;
    QList<QStringList> firstSheet;
    QList<QPair<unsigned, unsigned>> dimensions;
};

// Reads a workbook directly, independently of the layer under test.
bool readRaw(QString const& fileName, RawWorkbook* book)
{
    void const* handle = nullptr;
    const bool opened = freexl_open(QFile::encodeName(fileName).constData(), &handle) == FREEXL_OK;
    bool ok =
        opened && freexl_get_info(handle, FREEXL_BIFF_SHEET_COUNT, &book->sheets) == FREEXL_OK;
    for (unsigned s = 0; ok && s < book->sheets; ++s) {
        unsigned rows = 0;
        unsigned short columns = 0;
        ok = freexl_select_active_worksheet(handle, (unsigned short)s) == FREEXL_OK &&
             freexl_worksheet_dimensions(handle, &rows, &columns) == FREEXL_OK;
        book->dimensions << qMakePair(rows, unsigned(columns));
        for (unsigned r = 0; ok && s == 0 && r < rows; ++r) {
            QStringList row;
            for (unsigned short c = 0; c < columns; ++c) {
                FreeXL_CellValue v;
                ok = ok && freexl_get_cell_value(handle, r, c, &v) == FREEXL_OK;
                row << rawCell(v);
            }
            book->firstSheet << row;
        }
    }
    if (handle)
        freexl_close(handle);
    return ok;
}

} // namespace

class TestXSpreadsheet : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void refusedSuffixes_data();
    void refusedSuffixes();
    void csvSuffixGoesToTextReader();
    void otherSeparatorsNoted_data();
    void otherSeparatorsNoted();
    void missingFilesRefused();
    void workbookReadCellForCell();
    void parseError_data();
    void parseError();
    void parseErrorMessageText();
    void wholeDoublesBecomeInts();
    void usedExtentEndsAtLastCell();
    void sparseSheetRefused();
    void blankTailLeftOutOnRoundTrip();
    void unreadableWorkbooks_data();
    void unreadableWorkbooks();
    void emptyFirstWorksheet();
    void damagedWorkbooksNeverCrash_data();
    void damagedWorkbooksNeverCrash();
    void writeThreeSheets();
    void writeIntegerLookingTextsAsNumbers();
    void writeEmptyAndOtherCells();
    void writeXlsxReadBack();
    void writeXlsxTooWide();
    void writeShortRow();
    void writeCsvForOtherNames_data();
    void writeCsvForOtherNames();
    void writeUnicodeTexts();
    void unicodeFileName();
    void failedWriteKeepsExistingFile_data();
    void failedWriteKeepsExistingFile();
    void writeToMissingFolderFails();
    void roundTripRandom_data();
    void roundTripRandom();
    void roundTripExample();

private:
    QString path(QString const& name) const { return m_dir->filePath(name); }
    QString writeWorkbook(QString const& name, XBiffWriter const& book) const;
    std::unique_ptr<TemporaryFolder> m_dir;
};

void TestXSpreadsheet::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestXSpreadsheet::cleanup()
{
    m_dir.reset();
}

QString TestXSpreadsheet::writeWorkbook(QString const& name, XBiffWriter const& book) const
{
    return m_dir->write(name, XWorkbookWriter::compoundDocument(book.workbook()));
}

void TestXSpreadsheet::refusedSuffixes_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("upper XLS") << "input.XLS";
    QTest::newRow("mixed Xls") << "input.Xls";
    QTest::newRow("mixed Csv") << "data.Csv";
    QTest::newRow("upper CSV") << "data.CSV";
    QTest::newRow("txt") << "data.txt";
    QTest::newRow("upper XLSX") << "data.XLSX";
    QTest::newRow("mixed Ods") << "data.Ods";
    QTest::newRow("xls then more") << "data.xls.bak";
    QTest::newRow("no suffix") << "data";
    QTest::newRow("empty") << "";
}

void TestXSpreadsheet::refusedSuffixes()
{
    QFETCH(QString, name);
    // The file exists and holds a valid table: only the name decides.
    const QString fileName = name.isEmpty() ? QString() : path(name);
    if (!fileName.isEmpty())
        QVERIFY(!m_dir->write(name, "Name,M1\nAcc1,2\n").isEmpty());

    QString error = QStringLiteral("untouched");
    std::unique_ptr<XCsv> read(XSpreadsheet::read(fileName, &error));
    QVERIFY(!read);
    QCOMPARE(error, wrongSuffix);
}

void TestXSpreadsheet::csvSuffixGoesToTextReader()
{
    QVERIFY(!m_dir->write(QStringLiteral("input.csv"), "Name,M1\nAcc1,12\nAcc2,*\n").isEmpty());
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(path(QStringLiteral("input.csv")), &error));
    QVERIFY(table);
    QVERIFY(error.isEmpty());
    QCOMPARE(gridText(*table), QStringList({"s:Name|s:M1", "s:Acc1|i:12", "s:Acc2|s:*"}));
    QCOMPARE(table->parent(), nullptr);
}

void TestXSpreadsheet::otherSeparatorsNoted_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("notes");
    QTest::addColumn<QStringList>("cells");
    const QString semicolons =
        QStringLiteral("This file separates its fields with semicolons; it was read that way.");
    QTest::newRow("commas") << QByteArray("Name,M1\nAcc1,12\n") << QStringList()
                            << QStringList({"s:Name|s:M1", "s:Acc1|i:12"});
    QTest::newRow("semicolons") << QByteArray("Name;M1\nAcc1;12\n") << QStringList{semicolons}
                                << QStringList({"s:Name|s:M1", "s:Acc1|i:12"});
    QTest::newRow("tabs") << QByteArray("Name\tM1\nAcc1\t12\n")
                          << QStringList{QStringLiteral("This file separates its fields with "
                                                        "tabs; it was read that way.")}
                          << QStringList({"s:Name|s:M1", "s:Acc1|i:12"});
    // "Bétail" in Windows-1252: both notes, the encoding first.
    QTest::newRow("semicolons, Windows-1252")
        << QByteArray("Name;M1\nB\xe9tail;12\n")
        << QStringList{QStringLiteral("This file is not UTF-8; it was read as Windows-1252."),
                       semicolons}
        << QStringList({"s:Name|s:M1", "s:B\u00e9tail|i:12"});
    // A comma anywhere keeps the comma reading.
    QTest::newRow("semicolons and a comma") << QByteArray("Name;M1\nAcc1;1,2\n") << QStringList()
                                            << QStringList({"s:Name;M1", "s:Acc1;1|i:2"});
}

void TestXSpreadsheet::otherSeparatorsNoted()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, notes);
    QFETCH(QStringList, cells);
    const QString fileName = m_dir->write(QStringLiteral("input.csv"), content);
    QString error;
    QStringList read;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error, &read));
    QVERIFY2(table, qPrintable(error));
    QCOMPARE(read, notes);
    QCOMPARE(gridText(*table), cells);
}

void TestXSpreadsheet::missingFilesRefused()
{
    // The name of a missing file is never taken for the table's text.
    for (QString const& name : {QStringLiteral("missing.csv"), QStringLiteral("missing.xls")}) {
        QString error;
        std::unique_ptr<XCsv> table(XSpreadsheet::read(path(name), &error));
        QVERIFY(!table);
        QCOMPARE(error, path(name) + QStringLiteral(": no such file"));
    }
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("dir.csv")));
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(path(QStringLiteral("dir.csv")), &error));
    QVERIFY(!table);
    QCOMPARE(error, path(QStringLiteral("dir.csv")) + QStringLiteral(": is a folder"));
}

void TestXSpreadsheet::workbookReadCellForCell()
{
    XBiffWriter book;
    const QStringList header{"Name", "M1", "M1", "M2"};
    for (int c = 0; c < header.size(); ++c)
        QVERIFY(book.setText(0, c, header.at(c)));
    QVERIFY(book.setText(1, 0, "Acc1"));
    QVERIFY(book.setNumber(1, 1, 120));
    QVERIFY(book.setText(1, 2, "*"));
    QVERIFY(book.setNumber(1, 3, -4));
    QVERIFY(book.setText(2, 0, "Acc2"));
    QVERIFY(book.setText(2, 1, "12")); // digits stored as text stay text
    QVERIFY(book.setNumber(2, 2, 0));
    // (2, 3) left out: an empty cell
    const QString fileName = writeWorkbook(QStringLiteral("input.xls"), book);

    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY2(table, qPrintable(error));
    QCOMPARE(table->parent(), nullptr);
    QCOMPARE(table->rows(), 3);
    QCOMPARE(table->columns(), 4);
    QCOMPARE(gridText(*table),
             QStringList({"s:Name|s:M1|s:M1|s:M2", "s:Acc1|i:120|s:*|i:-4", "s:Acc2|s:12|i:0|s:"}));
}

void TestXSpreadsheet::parseError_data()
{
    QTest::addColumn<QList<QPoint>>("badCells"); // x = column, y = row
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("fraction") << QList<QPoint>{{2, 1}} << 1.5 << 1 << 2;
    QTest::newRow("corner") << QList<QPoint>{{0, 0}} << 0.5 << 0 << 0;
    QTest::newRow("header") << QList<QPoint>{{3, 0}} << -2.25 << 0 << 3;
    QTest::newRow("label") << QList<QPoint>{{0, 2}} << 7.1 << 2 << 0;
    QTest::newRow("last cell") << QList<QPoint>{{3, 2}} << 1e-9 << 2 << 3;
    QTest::newRow("above int range") << QList<QPoint>{{1, 1}} << 2147483648.0 << 1 << 1;
    QTest::newRow("below int range") << QList<QPoint>{{1, 2}} << -2147483649.0 << 2 << 1;
    QTest::newRow("huge") << QList<QPoint>{{2, 2}} << 1e300 << 2 << 2;
    QTest::newRow("nan") << QList<QPoint>{{1, 1}} << nan << 1 << 1;
    QTest::newRow("infinity") << QList<QPoint>{{2, 1}} << inf << 1 << 2;
    QTest::newRow("first in row order") << QList<QPoint>{{1, 2}, {3, 1}, {0, 2}} << 0.5 << 1 << 3;
    QTest::newRow("same row, leftmost") << QList<QPoint>{{3, 1}, {2, 1}} << 0.5 << 1 << 2;
}

void TestXSpreadsheet::parseError()
{
    QFETCH(QList<QPoint>, badCells);
    QFETCH(double, value);
    QFETCH(int, row);
    QFETCH(int, column);

    XBiffWriter book;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (badCells.contains(QPoint(c, r)))
                QVERIFY(book.setNumber(r, c, value));
            else if (r == 0 || c == 0)
                QVERIFY(book.setText(r, c, QStringLiteral("t%1%2").arg(r).arg(c)));
            else
                QVERIFY(book.setNumber(r, c, r * 10 + c));
        }
    }
    const QString fileName = writeWorkbook(QStringLiteral("bad.xls"), book);
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY(!table);
    QCOMPARE(error, XSpreadsheet::parseErrorMessage(row, column));
}

void TestXSpreadsheet::parseErrorMessageText()
{
    QCOMPARE(XSpreadsheet::parseErrorMessage(0, 12),
             QStringLiteral("Error while parsing the .xls file: cell at row 0 and column 12 does "
                            "not appear to be a valid string or number."));
    QCOMPARE(XSpreadsheet::parseErrorMessage(1234, 5),
             QStringLiteral("Error while parsing the .xls file: cell at row 1234 and column 5 "
                            "does not appear to be a valid string or number."));
}

void TestXSpreadsheet::wholeDoublesBecomeInts()
{
    XBiffWriter book;
    QVERIFY(book.setNumber(0, 0, 2147483647.0));
    QVERIFY(book.setNumber(0, 1, -2147483648.0));
    QVERIFY(book.setNumber(0, 2, 1e9));
    QVERIFY(book.setNumber(0, 3, -0.0));
    QVERIFY(book.setNumber(0, 4, 3.0));
    const QString fileName = writeWorkbook(QStringLiteral("doubles.xls"), book);
    RawWorkbook raw;
    QVERIFY(readRaw(fileName, &raw));
    QCOMPARE(raw.firstSheet.value(0).value(0), QStringLiteral("double:2.14748e+09"));

    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY2(table, qPrintable(error));
    QCOMPARE(gridText(*table), QStringList({"i:2147483647|i:-2147483648|i:1000000000|i:0|i:3"}));
}

void TestXSpreadsheet::usedExtentEndsAtLastCell()
{
    // A blank cell far out (a formatted cell, say) makes the sheet declare
    // 1000 rows and 100 columns; only the cells that hold something count.
    XBiffWriter book;
    QVERIFY(book.setText(0, 0, "Name"));
    QVERIFY(book.setText(0, 2, "M1"));
    QVERIFY(book.setText(1, 0, "Acc1"));
    QVERIFY(book.setNumber(2, 1, 5));
    QVERIFY(book.setText(999, 99, QString()));
    const QString fileName = writeWorkbook(QStringLiteral("tail.xls"), book);
    RawWorkbook raw;
    QVERIFY(readRaw(fileName, &raw));
    QCOMPARE(raw.dimensions.value(0), qMakePair(1000u, 100u));

    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY2(table, qPrintable(error));
    QCOMPARE(gridText(*table), QStringList({"s:Name|s:|s:M1", "s:Acc1|s:|s:", "s:|i:5|s:"}));
}

void TestXSpreadsheet::sparseSheetRefused()
{
    // A few bytes that reach the format's last row and column: 16.7 million
    // cells of which four hold something.
    XBiffWriter book;
    QVERIFY(book.setText(0, 0, "Name"));
    QVERIFY(book.setText(0, 1, "M1"));
    QVERIFY(book.setText(1, 0, "Acc1"));
    QVERIFY(book.setNumber(65535, 255, 7));
    const QString fileName = writeWorkbook(QStringLiteral("sparse.xls"), book);
    QVERIFY(QFileInfo(fileName).size() < 10000);
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY(!table);
    QCOMPARE(error, QStringLiteral("Error while parsing the .xls file: the first worksheet reaches "
                                   "row 65536 and column 256, but fewer than one cell in a "
                                   "hundred of that holds something. Copy the table to a new "
                                   "worksheet."));
}

void TestXSpreadsheet::blankTailLeftOutOnRoundTrip()
{
    // Empty texts are written as blank cells, so a last row and a last
    // column of nothing but empty texts do not come back.
    XCsv table(XCsv::Grid{{"Name", "M1", ""}, {"Acc1", 3, ""}, {"", "", ""}});
    const QString fileName = path(QStringLiteral("blank.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    QString error;
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(gridText(*back), QStringList({"s:Name|s:M1", "s:Acc1|i:3"}));
}

void TestXSpreadsheet::unreadableWorkbooks_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("create");
    QTest::newRow("empty file") << QByteArray() << true;
    QTest::newRow("comma-separated text") << QByteArray("Name,M1\nAcc1,2\n") << true;
    QTest::newRow("compound document without workbook")
        << XWorkbookWriter::compoundDocument(QByteArray()) << true;
    QTest::newRow("workbook stream of garbage")
        << XWorkbookWriter::compoundDocument(QByteArray(600, 'x')) << true;
    XBiffWriter book;
    book.setText(0, 0, "x");
    QTest::newRow("truncated") << XWorkbookWriter::compoundDocument(book.workbook()).left(700)
                               << true;
}

void TestXSpreadsheet::unreadableWorkbooks()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, create);
    const QString fileName = path(QStringLiteral("broken.xls"));
    if (create)
        QVERIFY(!m_dir->write(QStringLiteral("broken.xls"), content).isEmpty());
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY(!table);
    QVERIFY2(error.startsWith(parsePrefix + QLatin1Char(' ')), qPrintable(error));
    QVERIFY(error.size() > parsePrefix.size() + 10);
}

void TestXSpreadsheet::damagedWorkbooksNeverCrash_data()
{
    // Inputs that once crashed, hung, over-read or leaked in the workbook
    // library. Whatever the library does, the program gets a table or a
    // message; where the library reads out of bounds either may come.
    enum Expect { Unreadable, Readable, Either };
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("expect");
    const QString dir = QStringLiteral(VIREON_FUZZ_CORPUS_DIR "/xls/");
    // Files that crash the workbook library itself are kept out of the fuzz
    // corpus, where the reading runs in the fuzzer's own process.
    const QString crashes = QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/library_crashes/");
    QTest::newRow("library crash on open")
        << crashes + "freexl_segv_in_open.xls" << int(Unreadable);
    QTest::newRow("library overflow while reading")
        << crashes + "freexl_overflow_in_child.xls" << int(Either);
    QTest::newRow("library frees what it did not allocate")
        << crashes + "freexl_bad_free_in_open.xls" << int(Either);
    // Found by fuzzing: overflows at two more places in the library.
    QTest::newRow("library overflow at a second place")
        << crashes + "freexl_overflow_second_site.xls" << int(Either);
    QTest::newRow("library overflow at a third place")
        << crashes + "freexl_overflow_third_site.xls" << int(Either);
    QTest::newRow("directory name of 5632 bytes")
        << dir + "directory_name_length_5632.xls" << int(Unreadable);
    QTest::newRow("directory name of 65535 bytes")
        << dir + "directory_name_length_65535.xls" << int(Unreadable);
    QTest::newRow("stream larger than the file")
        << dir + "stream_larger_than_file.xls" << int(Unreadable);
    QTest::newRow("no directory") << dir + "no_directory.xls" << int(Unreadable);
    QTest::newRow("dimensions twice") << dir + "dimensions_twice_leak.xls" << int(Readable);
    QTest::newRow("393,218 rows declared in 5 KB")
        << dir + "dimension_393218_rows.xls" << int(Unreadable);
}

void TestXSpreadsheet::damagedWorkbooksNeverCrash()
{
    QFETCH(QString, file);
    QFETCH(int, expect);
    QVERIFY(QFile::exists(file));
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    if (expect != 0)
        QVERIFY2(table || expect == 2, qPrintable(error));
    if (expect != 1)
        QVERIFY(table || error.startsWith(parsePrefix + QLatin1Char(' ')));
    if (table)
        QVERIFY(table->rows() > 0);
}

void TestXSpreadsheet::emptyFirstWorksheet()
{
    XBiffWriter book;
    const QString fileName = writeWorkbook(QStringLiteral("empty.xls"), book);
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    QVERIFY(!table);
    QCOMPARE(error,
             QStringLiteral("Error while parsing the .xls file: the first worksheet is empty."));
}

void TestXSpreadsheet::writeThreeSheets()
{
    XCsv table;
    const QString fileName = path(QStringLiteral("out.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    RawWorkbook raw;
    QVERIFY(readRaw(fileName, &raw));
    QCOMPARE(raw.sheets, 3u);
    QCOMPARE(raw.dimensions.value(0), qMakePair(3u, 3u));
    QCOMPARE(raw.dimensions.value(1), qMakePair(0u, 0u));
    QCOMPARE(raw.dimensions.value(2), qMakePair(0u, 0u));
    // The default table's cells are all text; "1".."4" read as whole numbers.
    QCOMPARE(raw.firstSheet, QList<QStringList>({{"text:Name", "text:H1", "text:H2"},
                                                 {"text:Accession1", "int:1", "int:2"},
                                                 {"text:Accession2", "int:3", "int:4"}}));
}

void TestXSpreadsheet::writeIntegerLookingTextsAsNumbers()
{
    XCsv table(XCsv::Grid{{"12", "007", "+5", "-0"},
                          {"*", " 7", "7 ", "1.5"},
                          {"2147483648", "-2147483648", 42, "x7"}});
    const QString fileName = path(QStringLiteral("numbers.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    RawWorkbook raw;
    QVERIFY(readRaw(fileName, &raw));
    QCOMPARE(raw.firstSheet,
             QList<QStringList>({{"int:12", "int:7", "int:5", "int:0"},
                                 {"text:*", "text: 7", "text:7 ", "text:1.5"},
                                 {"text:2147483648", "double:-2.14748e+09", "int:42", "text:x7"}}));

    QString error;
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(gridText(*back), QStringList({"i:12|i:7|i:5|i:0", "s:*|s: 7|s:7 |s:1.5",
                                           "s:2147483648|i:-2147483648|i:42|s:x7"}));
}

void TestXSpreadsheet::writeXlsxReadBack()
{
    // Cell for cell as the .xls writer: integer-looking texts as numbers.
    XCsv table(XCsv::Grid{{"Name", "12", "007", QString()},
                          {"B\u00e9tail \u65e5\u672c", " 7", "1.5", -4},
                          {"2147483648", "-2147483648", 42, "*"}});
    const QString fileName = path(QStringLiteral("numbers.xlsx"));
    QString error;
    QVERIFY2(XSpreadsheet::write(table, fileName, &error), qPrintable(error));
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(4), QByteArray("PK\x03\x04"));
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(gridText(*back),
             QStringList({"s:Name|i:12|i:7|s:", "s:B\u00e9tail \u65e5\u672c|s: 7|s:1.5|i:-4",
                          "s:2147483648|i:-2147483648|i:42|s:*"}));
    // Nothing is left beside the file.
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("numbers.xlsx")});
}

void TestXSpreadsheet::writeXlsxTooWide()
{
    XCsv::Row header;
    for (int c = 0; c <= 16384; ++c)
        header << c;
    XCsv table(XCsv::Grid{header});
    QString error;
    QVERIFY(!XSpreadsheet::write(table, path(QStringLiteral("wide.xlsx")), &error));
    QCOMPARE(error,
             QStringLiteral("the table has 16,385 columns, and an .xlsx worksheet holds 16,384"));
    QVERIFY(!QFile::exists(path(QStringLiteral("wide.xlsx"))));
}

void TestXSpreadsheet::writeEmptyAndOtherCells()
{
    XCsv table(XCsv::Grid{{"Name", QVariant(), QString()}, {QVariant(true), 2.5, QVariant(9LL)}});
    const QString fileName = path(QStringLiteral("other.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    QString error;
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(gridText(*back), QStringList({"s:Name|s:|s:", "s:true|s:2.5|i:9"}));
}

void TestXSpreadsheet::writeShortRow()
{
    // Cells a row lacks are left out of the sheet and read back empty.
    XCsv table(XCsv::Grid{{"Name", "M1", "M2"}, {"Acc1", 1}});
    const QString fileName = path(QStringLiteral("short.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, nullptr));
    QVERIFY(back);
    QCOMPARE(gridText(*back), QStringList({"s:Name|s:M1|s:M2", "s:Acc1|i:1|s:"}));
}

void TestXSpreadsheet::writeCsvForOtherNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("csv") << "out.csv";
    QTest::newRow("txt") << "out.txt";
    QTest::newRow("no suffix") << "out";
    QTest::newRow("upper XLS") << "out.XLS";
    QTest::newRow("upper XLSX") << "out.XLSX";
    QTest::newRow("ods, which is not written") << "out.ods";
}

void TestXSpreadsheet::writeCsvForOtherNames()
{
    QFETCH(QString, name);
    XCsv table(XCsv::Grid{{"Name", "M1"}, {"Acc1", 12}, {"Acc2", "*"}});
    QVERIFY(XSpreadsheet::write(table, path(name)));
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\"Name\",\"M1\"\n\"Acc1\",12\n\"Acc2\",\"*\"\n"));
}

void TestXSpreadsheet::writeUnicodeTexts()
{
    const QStringList texts{"é",
                            "ÿ",
                            "Ω",
                            "日本",
                            QString::fromUtf8("\xF0\x9F\x8C\xB1"),
                            QString(9000, QChar(0xE9)),
                            QString(5000, QChar(0x3A9))};
    XCsv::Row row;
    for (QString const& t : texts)
        row << t;
    XCsv table(XCsv::Grid{row, row});
    const QString fileName = path(QStringLiteral("unicode.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, nullptr));
    QVERIFY(back);
    QCOMPARE(back->data(), table.data());
    QCOMPARE(gridText(*back), gridText(table));
}

void TestXSpreadsheet::unicodeFileName()
{
    const QString fileName = path(QStringLiteral("données_日本 Ω.xls"));
    XCsv table(XCsv::Grid{{"Name", "M1"}, {"Acc1", 3}});
    QVERIFY(XSpreadsheet::write(table, fileName));
    QVERIFY(QFile::exists(fileName));
    QString error;
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(gridText(*back), QStringList({"s:Name|s:M1", "s:Acc1|i:3"}));
}

void TestXSpreadsheet::failedWriteKeepsExistingFile_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("textLength");
    QTest::addColumn<QString>("why");
    QTest::newRow("too many columns")
        << 2 << 257 << 1 << "the table has 257 columns, and an .xls worksheet holds 256";
    QTest::newRow("too many rows")
        << 65537 << 1 << 1 << "the table has 65,537 rows, and an .xls worksheet holds 65,536";
    QTest::newRow("text too long")
        << 1 << 1 << 32768 << "the table does not fit in an .xls worksheet";
}

void TestXSpreadsheet::failedWriteKeepsExistingFile()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(int, textLength);
    QFETCH(QString, why);
    XCsv::Grid grid;
    for (int r = 0; r < rows; ++r)
        grid << XCsv::Row();
    for (XCsv::Row& row : grid)
        for (int c = 0; c < columns; ++c)
            row << QString(textLength, QLatin1Char('a'));
    XCsv table(grid);

    const QByteArray before("previous content\n");
    const QString fileName = m_dir->write(QStringLiteral("keep.xls"), before);
    QVERIFY(!fileName.isEmpty());
    QString reason;
    QVERIFY(!XSpreadsheet::write(table, fileName, &reason));
    QCOMPARE(reason, why);
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList({"keep.xls"}));
}

void TestXSpreadsheet::writeToMissingFolderFails()
{
    XCsv table;
    for (QString const& name :
         {QStringLiteral("no/such/out.xls"), QStringLiteral("no/such/out.csv")}) {
        QString reason;
        QVERIFY(!XSpreadsheet::write(table, path(name), &reason));
        QCOMPARE(reason, QStringLiteral("No such file or directory"));
    }
}

void TestXSpreadsheet::roundTripRandom_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestXSpreadsheet::roundTripRandom()
{
    QFETCH(quint32, seed);
    RandomTableOptions options;
    options.maxRows = 300;
    options.maxColumns = 60;
    options.maxAllele = 100000;
    XCsv table(randomGrid(seed, options));
    const QString fileName = path(QStringLiteral("round.xls"));
    QVERIFY(XSpreadsheet::write(table, fileName));
    QString error;
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, &error));
    QVERIFY2(back, qPrintable(error));
    QCOMPARE(back->columns(), table.columns());
    QCOMPARE(gridText(*back), gridText(table));
}

void TestXSpreadsheet::roundTripExample()
{
    std::unique_ptr<XCsv> input(
        XSpreadsheet::read(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"), nullptr));
    QVERIFY(input);
    QCOMPARE(input->rows(), 705);
    const QString fileName = path(QStringLiteral("microbov.xls"));
    QVERIFY(XSpreadsheet::write(*input, fileName));
    std::unique_ptr<XCsv> back(XSpreadsheet::read(fileName, nullptr));
    QVERIFY(back);
    QCOMPARE(gridText(*back), gridText(*input));
}

QTEST_GUILESS_MAIN(TestXSpreadsheet)
#include "tst_xspreadsheet.moc"

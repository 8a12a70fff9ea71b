#include "CellText.h"
#include "XBiffWriter.h"
#include "XCsv.h"
#include "XSpreadsheet.h"
#include "XWorkbookContent.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// The workbook reader program and the framed form it answers in.
class TestXWorkbookReader : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void programBuiltAndFound();
    void framedFormRoundTrip();
    void truncatedFramesRefused();
    void foreignFramesRefused_data();
    void foreignFramesRefused();
    void readsThroughTheProgram();
    void missingReaderIsNamed();
    void readerKilledMidRead();
    void stalledReaderIsStopped();
    void garbageFromReaderRefused();
    void messagesNameTheKind_data();
    void messagesNameTheKind();

private:
    QString path(QString const& name) const { return m_dir->filePath(name); }
    // A small workbook: Name,M1 / A,7.
    QString workbook();
    // A shell script standing in for the reader program; $REAL is the real one.
    QString script(QByteArray const& body);

    QTemporaryDir* m_dir = nullptr;
    QString m_real;
};

void TestXWorkbookReader::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
    qunsetenv("VIREON_WORKBOOK_READER");
    m_real = XWorkbookReader::program();
}

void TestXWorkbookReader::cleanup()
{
    qunsetenv("VIREON_WORKBOOK_READER");
    XWorkbookReader::setReadingLimitMs(30000);
    delete m_dir;
    m_dir = nullptr;
}

QString TestXWorkbookReader::workbook()
{
    XBiffWriter book;
    book.setText(0, 0, QStringLiteral("Name"));
    book.setText(0, 1, QStringLiteral("M1"));
    book.setText(1, 0, QStringLiteral("A"));
    book.setNumber(1, 1, 7);
    QFile file(path(QStringLiteral("small.xls")));
    const QByteArray bytes = XWorkbookWriter::compoundDocument(book.workbook());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return QString();
    return file.fileName();
}

QString TestXWorkbookReader::script(QByteArray const& body)
{
    QFile file(path(QStringLiteral("reader.sh")));
    if (!file.open(QIODevice::WriteOnly))
        return QString();
    file.write("#!/bin/sh\nREAL='" + QFile::encodeName(m_real) + "'\n" + body + "\n");
    file.close();
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return file.fileName();
}

void TestXWorkbookReader::programBuiltAndFound()
{
    QFileInfo program(m_real);
    QVERIFY2(program.isExecutable(), qPrintable(m_real));
    QCOMPARE(program.fileName(), QStringLiteral("vireon-workbook-reader"));
    qputenv("VIREON_WORKBOOK_READER", "/some/other/reader");
    QCOMPARE(XWorkbookReader::program(), QStringLiteral("/some/other/reader"));
}

void TestXWorkbookReader::framedFormRoundTrip()
{
    XWorkbookContent sent;
    sent.code = XWorkbookContent::Read;
    sent.grid = {{QStringLiteral("Name"), QStringLiteral("M1")},
                 {QStringLiteral("Ñandú"), -2147483647 - 1},
                 {QStringLiteral(""), 2147483647}};
    XWorkbookContent received;
    QVERIFY(XWorkbookContent::decode(sent.encode(), received));
    QCOMPARE(received.code, XWorkbookContent::Read);
    QCOMPARE(received.grid, sent.grid);
    QCOMPARE(received.grid.at(2).at(0).userType(), int(QMetaType::QString));
    QVERIFY(!received.grid.at(2).at(0).toString().isNull());

    XWorkbookContent bad;
    bad.code = XWorkbookContent::BadCell;
    bad.row = 4;
    bad.column = 9;
    QVERIFY(XWorkbookContent::decode(bad.encode(), received));
    QCOMPARE(received.code, XWorkbookContent::BadCell);
    QCOMPARE(received.row, 4);
    QCOMPARE(received.column, 9);
    QVERIFY(received.grid.isEmpty());
}

void TestXWorkbookReader::truncatedFramesRefused()
{
    XWorkbookContent sent;
    sent.code = XWorkbookContent::Read;
    sent.grid = {{QStringLiteral("Name"), QStringLiteral("M1")}, {QStringLiteral("A"), 7}};
    const QByteArray frame = sent.encode();
    XWorkbookContent received;
    for (int n = 0; n < frame.size(); ++n)
        QVERIFY2(!XWorkbookContent::decode(frame.left(n), received),
                 qPrintable(QString::number(n)));
    QVERIFY(!XWorkbookContent::decode(frame + 'x', received));
    QVERIFY(XWorkbookContent::decode(frame, received));
}

void TestXWorkbookReader::foreignFramesRefused_data()
{
    QTest::addColumn<QByteArray>("frame");
    XWorkbookContent sent;
    sent.code = XWorkbookContent::Read;
    sent.grid = {{QStringLiteral("Name")}};
    const QByteArray good = sent.encode();
    QByteArray wrongMagic = good;
    wrongMagic[0] = 'X';
    QTest::newRow("wrong magic") << wrongMagic;
    QByteArray wrongVersion = good;
    wrongVersion[7] = 2;
    QTest::newRow("other version") << wrongVersion;
    QByteArray wrongCode = good;
    wrongCode[11] = 100;
    QTest::newRow("unknown outcome") << wrongCode;
    QByteArray tooManyRows = good;
    tooManyRows[21] = 0x10; // rows = 1,048,577: past the largest worksheet
    tooManyRows[22] = 0;
    QTest::newRow("more rows than the format holds") << tooManyRows;
    QByteArray wrongTag = good;
    wrongTag[28] = 'q';
    QTest::newRow("unknown cell tag") << wrongTag;
    QTest::newRow("empty") << QByteArray();
}

void TestXWorkbookReader::foreignFramesRefused()
{
    QFETCH(QByteArray, frame);
    XWorkbookContent received;
    QVERIFY(!XWorkbookContent::decode(frame, received));
}

void TestXWorkbookReader::readsThroughTheProgram()
{
    const QString file = workbook();
    QVERIFY(!file.isEmpty());
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    QVERIFY2(table, qPrintable(error));
    QCOMPARE(gridText(*table), QStringList({"s:Name|s:M1", "s:A|i:7"}));
}

void TestXWorkbookReader::missingReaderIsNamed()
{
    const QString file = workbook();
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(path(QStringLiteral("no-such-reader"))));
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    QVERIFY(!table);
    QCOMPARE(error, QStringLiteral("The .xls file cannot be read: the workbook reader could not "
                                   "be started."));
}

void TestXWorkbookReader::messagesNameTheKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty .xlsx") << "empty.xlsx" << QByteArray()
                                 << "Error while parsing the .xlsx file: the file is empty.";
    QTest::newRow("text as .ods")
        << "text.ods" << QByteArray("Name,M1\nA,1\n")
        << "Error while parsing the .ods file: the file is not a .ods workbook but another kind "
           "of file.";
    QTest::newRow("cut-short zip as .xlsx")
        << "cut.xlsx" << QByteArray("PK\x03\x04\x14\x00")
        << "Error while parsing the .xlsx file: the file cannot be read as a workbook.";
    // The .xls reader keeps its own messages.
    QTest::newRow("text as .xls")
        << "text.xls" << QByteArray("Name,M1\nA,1\n")
        << "Error while parsing the .xls file: the file cannot be read as a workbook.";
}

void TestXWorkbookReader::messagesNameTheKind()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
    file.close();
    QString message;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(path(name), &message));
    QVERIFY(!table);
    QCOMPARE(message, error);
}

void TestXWorkbookReader::readerKilledMidRead()
{
    const QString file = workbook();
    // Half of the frame arrives, then the reader dies as if killed.
    const QString fake = script("\"$REAL\" \"$@\" | head -c 20\nkill -KILL $$");
    QVERIFY(!fake.isEmpty());
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(fake));
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    QVERIFY(!table);
    QCOMPARE(error, QStringLiteral("Error while parsing the .xls file: the workbook reader stopped "
                                   "on this file."));
}

void TestXWorkbookReader::stalledReaderIsStopped()
{
    const QString file = workbook();
    const QString fake = script("exec sleep 600");
    QVERIFY(!fake.isEmpty());
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(fake));
    XWorkbookReader::setReadingLimitMs(200);
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    QVERIFY(!table);
    QCOMPARE(error, XWorkbookReader::readerStoppedMessage());
}

void TestXWorkbookReader::garbageFromReaderRefused()
{
    const QString file = workbook();
    const QString fake = script("echo 'Name,M1'; echo 'A,7'; exit 0");
    QVERIFY(!fake.isEmpty());
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(fake));
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    QVERIFY(!table);
    QCOMPARE(error, XWorkbookReader::readerStoppedMessage());
}

QTEST_GUILESS_MAIN(TestXWorkbookReader)
#include "tst_xworkbookreader.moc"

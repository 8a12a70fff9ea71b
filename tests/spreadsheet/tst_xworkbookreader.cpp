#include "CellText.h"
#include "XBiffWriter.h"
#include "XCsv.h"
#include "XSpreadsheet.h"
#include "XWorkbookContent.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <cerrno>
#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Whether the process has ended: gone, or a zombie that nobody has
// collected yet.
bool hasEnded(qint64 pid)
{
    if (::kill(pid_t(pid), 0) != 0)
        return errno == ESRCH;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    // "pid (name) S ...": the state follows the name's closing parenthesis.
    const int close = line.lastIndexOf(')');
    return close < 0 || line.mid(close + 2, 1) == "Z";
}

bool waitUntilEnded(qint64 pid, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!hasEnded(pid) && clock.elapsed() < ms)
        QThread::msleep(5);
    return hasEnded(pid);
}

} // namespace

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
    void positionsCountedFromOneButInXls();
    void framesPastTheTextLimitsRefused();
    void answerPastTheLargestFrameStopped();
    void cancelEndsTheReader();
    void readerDiesWithTheProgram_data();
    void readerDiesWithTheProgram();
    void readerLimitsItself();
    void crashLeavesNoCoreFile();
    void hostileWorkbooksOnTheCommandLine_data();
    void hostileWorkbooksOnTheCommandLine();

private:
    QString path(QString const& name) const { return m_dir->filePath(name); }
    // A small workbook: Name,M1 / A,7.
    QString workbook();
    // A shell script standing in for the reader program; $REAL is the real one.
    QString script(QByteArray const& body);
    // A stand-in reader that writes its process number to pidFile() and
    // then waits for ten minutes.
    QString stalledScript();
    QString pidFile() const { return path(QStringLiteral("reader.pid")); }
    // The number in pidFile(), once it is there (0 after 10 s without).
    qint64 readerPid() const;

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

QString TestXWorkbookReader::stalledScript()
{
    return script("echo $$ > '" + QFile::encodeName(pidFile()) + "'\nexec sleep 600");
}

qint64 TestXWorkbookReader::readerPid() const
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) {
        QFile file(pidFile());
        if (file.open(QIODevice::ReadOnly)) {
            const qint64 pid = file.readAll().trimmed().toLongLong();
            if (pid > 0)
                return pid;
        }
        QThread::msleep(5);
    }
    return 0;
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
    wrongVersion[7] = char(wrongVersion[7] + 1);
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

void TestXWorkbookReader::positionsCountedFromOneButInXls()
{
    // The .xls message keeps its zero-based position on purpose; the
    // others count as the spreadsheets and the table's messages do.
    QCOMPARE(XWorkbookReader::parseErrorMessage(2, 0),
             QStringLiteral("Error while parsing the .xls file: cell at row 2 and column 0 does "
                            "not appear to be a valid string or number."));
    QCOMPARE(XWorkbookReader::parseErrorMessage(2, 0, QStringLiteral(".xlsx")),
             QStringLiteral("Error while parsing the .xlsx file: cell at row 3 and column 1 does "
                            "not appear to be a valid string or number."));
    QCOMPARE(XWorkbookReader::parseErrorMessage(0, 4, QStringLiteral(".ods")),
             QStringLiteral("Error while parsing the .ods file: cell at row 1 and column 5 does "
                            "not appear to be a valid string or number."));
    QCOMPARE(XWorkbookReader::longCellMessage(0, 1, QStringLiteral(".ods")),
             QStringLiteral("Error while parsing the .ods file: the cell at row 1 and column 2 "
                            "holds more than 32,767 characters, more than a spreadsheet cell "
                            "holds."));
    QCOMPARE(XWorkbookReader::tooMuchTextMessage(40, 96, QStringLiteral(".ods")),
             QStringLiteral("Error while parsing the .ods file: by the cell at row 41 and "
                            "column 97, the cells of the first worksheet hold more than "
                            "134,217,728 characters of text, more than Vireon reads."));
}

void TestXWorkbookReader::framesPastTheTextLimitsRefused()
{
    // What the window takes from the reader program is held to the limits
    // the readers keep, whatever the program sends.
    XWorkbookContent sent;
    sent.code = XWorkbookContent::Read;
    const QString full(XWorkbookContent::maxCellText, QLatin1Char('x'));
    sent.grid = {{QStringLiteral("Name"), full}};
    XWorkbookContent received;
    QVERIFY(XWorkbookContent::decode(sent.encode(), received));
    QCOMPARE(received.grid.at(0).at(1).toString().size(), XWorkbookContent::maxCellText);
    sent.grid = {{QStringLiteral("Name"), full + QLatin1Char('x')}};
    QVERIFY(!XWorkbookContent::decode(sent.encode(), received));
    // Cells of full text, shared here, each cost their own in the frame:
    // one past the budget is refused.
    const int cells = int(XWorkbookContent::maxTextCharacters / XWorkbookContent::maxCellText);
    sent.grid = {XCsv::Row()};
    for (int c = 0; c < cells; ++c)
        sent.grid[0] << full;
    QVERIFY(XWorkbookContent::decode(sent.encode(), received));
    sent.grid[0] << full;
    QVERIFY(!XWorkbookContent::decode(sent.encode(), received));
    QVERIFY(XWorkbookContent::maxFrameBytes > sent.encode().size());
}

void TestXWorkbookReader::answerPastTheLargestFrameStopped()
{
    // A reader that would answer without end is stopped once it has sent
    // more than any table within the limits takes, long before the
    // reading limit.
    const QString file = workbook();
    const QString fake = script("exec cat /dev/zero");
    QVERIFY(!fake.isEmpty());
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(fake));
    XWorkbookReader::setReadingLimitMs(600000);
    QElapsedTimer clock;
    clock.start();
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(file, &error));
    QVERIFY(!table);
    QCOMPARE(error, XWorkbookReader::readerStoppedMessage());
    QVERIFY2(clock.elapsed() < 300000, qPrintable(QString::number(clock.elapsed())));
}

void TestXWorkbookReader::cancelEndsTheReader()
{
    const QString file = workbook();
    const QString fake = stalledScript();
    QVERIFY(!fake.isEmpty());
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(fake));
    std::atomic<bool> cancel{false};
    QString error = QStringLiteral("unchanged");
    XCsv* table = nullptr;
    std::unique_ptr<QThread> reading(
        QThread::create([&] { table = XSpreadsheet::read(file, &error, nullptr, &cancel); }));
    reading->start();
    const qint64 pid = readerPid();
    QVERIFY(pid > 0);
    QVERIFY(!hasEnded(pid));
    QElapsedTimer sinceCancel;
    sinceCancel.start();
    cancel = true;
    QVERIFY(reading->wait(10000));
    QVERIFY(waitUntilEnded(pid, 10000));
    qInfo("reader ended %lld ms after the cancel", sinceCancel.elapsed());
    QVERIFY(!table);
    QCOMPARE(error, QString());
}

void TestXWorkbookReader::readerDiesWithTheProgram_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGKILL") << int(SIGKILL);
    QTest::newRow("SIGTERM") << int(SIGTERM);
}

void TestXWorkbookReader::readerDiesWithTheProgram()
{
    // The command line ended while its reader program reads: the reader
    // goes with it instead of reading on for nobody.
    QFETCH(int, signal);
    const QString file = workbook();
    const QString fake = stalledScript();
    QVERIFY(!fake.isEmpty());
    QProcess cli;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VIREON_WORKBOOK_READER"), fake);
    cli.setProcessEnvironment(environment);
    cli.start(QStringLiteral(VIREON_CLI), {QStringLiteral("-q"), file});
    QVERIFY(cli.waitForStarted(10000));
    const qint64 pid = readerPid();
    QVERIFY(pid > 0);
    QVERIFY(!hasEnded(pid));
    QCOMPARE(::kill(pid_t(cli.processId()), signal), 0);
    QVERIFY(cli.waitForFinished(10000));
    const bool ended = waitUntilEnded(pid, 10000);
    if (!ended)
        ::kill(pid_t(pid), SIGKILL);
    QVERIFY2(ended, "the reader program outlived the command line");
}

void TestXWorkbookReader::readerLimitsItself()
{
    // The real reader, stalled on a FIFO that nobody writes: it has its
    // own time limit and no core files.
    const QString fifo = path(QStringLiteral("stalled.xls"));
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QProcess reader;
    reader.start(m_real, {fifo});
    QVERIFY(reader.waitForStarted(10000));
    QString limits;
    auto line = [&limits](char const* name) {
        for (QString const& l : limits.split(QLatin1Char('\n'))) {
            if (l.startsWith(QLatin1String(name)))
                return l.simplified();
        }
        return QString();
    };
    const int seconds = XWorkbookContent::readingSeconds + 5;
    const QString cpu = QStringLiteral("Max cpu time %1 %2 seconds").arg(seconds).arg(seconds + 5);
    // The limits are set first thing: wait until the program has run that
    // far (it then waits for the FIFO).
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000 && line("Max cpu time") != cpu) {
        QFile file(QStringLiteral("/proc/%1/limits").arg(reader.processId()));
        if (file.open(QIODevice::ReadOnly))
            limits = QString::fromLatin1(file.readAll());
        QThread::msleep(5);
    }
    reader.kill();
    reader.waitForFinished(10000);
    QCOMPARE(line("Max cpu time"), cpu);
    QCOMPARE(line("Max core file size"), QStringLiteral("Max core file size 0 0 bytes"));
}

void TestXWorkbookReader::crashLeavesNoCoreFile()
{
    // Core files on, as `ulimit -c unlimited` sets them: the reader's
    // expected crash on a file that breaks the workbook library leaves
    // none in the folder where the program runs.
    QFile pattern(QStringLiteral("/proc/sys/kernel/core_pattern"));
    if (pattern.open(QIODevice::ReadOnly) && pattern.readAll().startsWith('|'))
        QSKIP("core files go to a program on this machine, not to the folder");
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_CORE, &before), 0);
    const rlimit unlimited{before.rlim_max, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_CORE, &unlimited), 0);
    const QString home = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(
        QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/library_crashes/freexl_segv_in_open.xls"),
        &error));
    QDir::setCurrent(home);
    setrlimit(RLIMIT_CORE, &before);
    QVERIFY(!table);
    QCOMPARE(error, XWorkbookReader::readerStoppedMessage());
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList());
}

void TestXWorkbookReader::hostileWorkbooksOnTheCommandLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    const QString parsing = QStringLiteral("Error while parsing the %1 file: ");
    QTest::newRow("part named twice")
        << "parts_named_twice.ods"
        << parsing.arg(".ods") + "the file cannot be read as a workbook.";
    QTest::newRow("part names differing in case")
        << "names_differ_in_case.xlsx"
        << parsing.arg(".xlsx") + "the file cannot be read as a workbook.";
    QTest::newRow("cell text past what a cell holds")
        << "long_cell.ods"
        << parsing.arg(".ods") + "the cell at row 2 and column 3 holds more than 32,767 "
                                 "characters, more than a spreadsheet cell holds.";
    QTest::newRow("counted spaces past the text budget")
        << "counted_spaces.ods"
        << parsing.arg(".ods") + "by the cell at row 41 and column 97, the cells of the first "
                                 "worksheet hold more than 134,217,728 characters of text, more "
                                 "than Vireon reads.";
}

void TestXWorkbookReader::hostileWorkbooksOnTheCommandLine()
{
    // Refused as unreadable input, with the message the window shows.
    QFETCH(QString, name);
    QFETCH(QString, message);
    QProcess cli;
    cli.start(
        QStringLiteral(VIREON_CLI),
        {QStringLiteral("-q"), QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/hostile/") + name});
    QVERIFY(cli.waitForFinished(60000));
    QCOMPARE(cli.exitStatus(), QProcess::NormalExit);
    QCOMPARE(cli.exitCode(), 2);
    const QString err = QString::fromUtf8(cli.readAllStandardError());
    QVERIFY2(err.contains(message), qPrintable(err));
    QCOMPARE(cli.readAllStandardOutput(), QByteArray());
}

QTEST_GUILESS_MAIN(TestXWorkbookReader)
#include "tst_xworkbookreader.moc"

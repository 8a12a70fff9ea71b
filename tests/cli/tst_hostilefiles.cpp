// The command line against files that are not what they seem: FIFOs,
// devices, huge files, long paths, other encodings, single-column text.
#include "CliRun.h"
#include "TemporaryFolder.h"
#include "TextFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <memory>

#include <sys/stat.h>

namespace {

const QString seedOne = QStringLiteral("-r1");
const QString quiet = QStringLiteral("-q");

} // namespace

class TestHostileFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fifoInputRefusedAtOnce_data();
    void fifoInputRefusedAtOnce();
    void fifoStartRefusedAtOnce();
    void deviceInputRefused();
    void tooLargeInputRefused();
    void singleColumnTableRefused_data();
    void singleColumnTableRefused();
    void longPathIsReadAsPath();
    void contentNamingAFileIsText();
    void windows1252NamesKept();
    void headerWithMoreFieldsNamed();
    void fullDiskKeepsOldFile_data();
    void fullDiskKeepsOldFile();
    void deviceTargetRefused_data();
    void deviceTargetRefused();
    void emptyFilesSaySo_data();
    void emptyFilesSaySo();
    void oldMacLineEndsReadByLines();
    void unmarkedUtf16And32Read_data();
    void unmarkedUtf16And32Read();
    void nulBytesRefused();
    void fieldsEstimatedBeforeReading_data();
    void fieldsEstimatedBeforeReading();
    void pathPrintedOnceUnderMemoryLimit();
    void controlCharactersEscaped();

private:
    QString write(QString const& name, QByteArray const& bytes);
    std::unique_ptr<TemporaryFolder> m_dir;
};

void TestHostileFiles::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestHostileFiles::cleanup()
{
    m_dir.reset();
}

QString TestHostileFiles::write(QString const& name, QByteArray const& bytes)
{
    return m_dir->write(name, bytes);
}

void TestHostileFiles::fifoInputRefusedAtOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("csv") << "p.csv";
    QTest::newRow("xls") << "p.xls";
}

void TestHostileFiles::fifoInputRefusedAtOnce()
{
    QFETCH(QString, name);
    const QString path = m_dir->filePath(name);
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const CliOutcome o = runCli({quiet, path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": not a regular file\n"));
    QCOMPARE(o.out, QString());
}

void TestHostileFiles::fifoStartRefusedAtOnce()
{
    const QString input = write("in.csv", "Name,M,M\nA,1,2\n");
    const QString path = m_dir->filePath("start.csv");
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const CliOutcome o = runCli({quiet, QStringLiteral("-s"), path, input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": not a regular file\n"));
}

void TestHostileFiles::deviceInputRefused()
{
    // /dev/zero under a table's name never ends: it must not be read.
    const QString link = m_dir->filePath("z.csv");
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), link));
    const CliOutcome o = runCli({quiet, link});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, link + QStringLiteral(": not a regular file\n"));
}

void TestHostileFiles::tooLargeInputRefused()
{
    // Sparse: the size is there, no bytes are written.
    const QString path = m_dir->filePath("huge.csv");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(qint64(1) << 30));
    file.close();
    const CliOutcome o = runCli({quiet, path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": is too large: 1024.0 MB, and Vireon reads files of "
                                          "up to 128.0 MB\n"));
}

void TestHostileFiles::singleColumnTableRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    // Semicolons or tabs are only taken for the separator when the first
    // line holds them.
    QTest::newRow("semicolons after a title") << QByteArray("Title\nName;M;M\nA;1;2\nB;3;4\n");
    QTest::newRow("tabs after a title") << QByteArray("Title\nName\tM\tM\nA\t1\t2\n");
    QTest::newRow("labels only") << QByteArray("Name\nA\nB\n");
}

void TestHostileFiles::singleColumnTableRefused()
{
    QFETCH(QByteArray, content);
    const QString path = write("one.csv", content);
    const CliOutcome o = runCli({quiet, path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": The table has no allele columns: is it separated by "
                                          "semicolons or tabs?\n"));
    QCOMPARE(o.out, QString());
}

void TestHostileFiles::longPathIsReadAsPath()
{
    // Over 512 characters of path; each folder name stays within the limit.
    QString folder = m_dir->path();
    while (folder.size() < 600) {
        folder += QLatin1Char('/') + QString(100, QLatin1Char('d'));
        QVERIFY(QDir().mkpath(folder));
    }
    const QString path = folder + QStringLiteral("/in.csv");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Name,M,M\nA,1,2\nB,3,4\n");
    file.close();
    QVERIFY(path.size() >= 512);
    const CliOutcome o = runCli({quiet, seedOne, QStringLiteral("--result"), path});
    QCOMPARE(o.err, QString());
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out.count(QLatin1Char('\n')), 100);
    QVERIFY(o.out.endsWith(QStringLiteral("2,1,4\n")) || o.out.endsWith(QStringLiteral("1,2,4\n")));
}

void TestHostileFiles::contentNamingAFileIsText()
{
    // The content of the chosen file is the table, even when it names a file.
    const QString other = write("other.csv", "Name,M,M\nA,1,2\nB,3,4\n");
    const QString path = write("in.csv", other.toUtf8());
    const CliOutcome o = runCli({quiet, seedOne, path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": The table has no accessions: it needs at least one "
                                          "row below its header row.\n"));
}

void TestHostileFiles::windows1252NamesKept()
{
    const QString input = write("in.csv", "Name,M,M\nB\xe9tail,1,2\nB\xe8tail,3,4\n");
    const QString core = m_dir->filePath("core.csv");
    const CliOutcome o = runCli({quiet, seedOne, QStringLiteral("-o"), core, input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.err, input + QStringLiteral(": This file is not UTF-8; it was read as "
                                           "Windows-1252.\n"));
    QFile file(core);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY2(text.contains(QStringLiteral("\"B\u00e9tail\"")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("\"B\u00e8tail\"")), qPrintable(text));
}

void TestHostileFiles::headerWithMoreFieldsNamed()
{
    // Every data line has a field fewer than the header: all are left out.
    const QString input = write(QStringLiteral("comma.csv"), "Name,M1,M1,\nA,1,2\nB,3,4\n");
    const CliOutcome o = runCli({quiet, seedOne, input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, input + QStringLiteral(": No line has as many fields as the header row (4): is "
                                           "there a trailing comma, or a comma in quotes, in the "
                                           "header?\n"));
    QCOMPARE(o.out, QString());
}

void TestHostileFiles::fullDiskKeepsOldFile_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("level");
    for (const char* level : {"nothing free", "one block", "one byte short"}) {
        QTest::addRow("workspace, %s", level) << "-w"
                                              << "old.ccw" << level;
        QTest::addRow("csv, %s", level) << "-o"
                                        << "old.csv" << level;
        QTest::addRow("xls, %s", level) << "-o"
                                        << "old.xls" << level;
    }
}

void TestHostileFiles::fullDiskKeepsOldFile()
{
    QFETCH(QString, option);
    QFETCH(QString, name);
    QFETCH(QString, level);
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    // The size of the file this run writes, measured without a limit.
    const QString free = m_dir->filePath(QStringLiteral("free-") + name);
    QCOMPARE(runCli({quiet, seedOne, option, free, input}).status, 0);
    const qint64 size = QFileInfo(free).size();
    QVERIFY(size > 4096);
    const qint64 limit = level == QLatin1String("nothing free") ? 0
                         : level == QLatin1String("one block")  ? 4096
                                                                : size - 1;
    const QByteArray old("the file that was there before\n");
    const QString target = write(name, old);
    const CliOutcome o = runCli({quiet, seedOne, option, target, input}, limit);
    QCOMPARE(o.status, 1);
    QCOMPARE(o.err, target + QStringLiteral(": could not be written: File too large\n"));
    QFile kept(target);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), old);
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList({"free-" + name, name}));
}

void TestHostileFiles::deviceTargetRefused_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("target");
    QTest::newRow("workspace to /dev/null") << "-w"
                                            << "/dev/null";
    QTest::newRow("core to /dev/full") << "-o"
                                       << "/dev/full";
    QTest::newRow("workspace to a FIFO") << "-w"
                                         << "fifo";
}

void TestHostileFiles::deviceTargetRefused()
{
    QFETCH(QString, option);
    QFETCH(QString, target);
    if (target == QLatin1String("fifo")) {
        target = m_dir->filePath(QStringLiteral("p.ccw"));
        QCOMPARE(mkfifo(QFile::encodeName(target).constData(), 0600), 0);
    }
    // Refused before the search, like every output that cannot be written.
    const CliOutcome o = runCli(
        {quiet, seedOne, option, target, QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv")});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    QCOMPARE(o.err, target + QStringLiteral(": cannot be written: it exists and is not a regular "
                                            "file\n"));
    struct stat info
    {
    };
    QCOMPARE(stat(QFile::encodeName(target).constData(), &info), 0);
    QVERIFY(S_ISCHR(info.st_mode) || S_ISFIFO(info.st_mode));
}

void TestHostileFiles::emptyFilesSaySo_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const QString empty = QStringLiteral("The file is empty.");
    QTest::newRow("empty") << QByteArray() << empty;
    QTest::newRow("byte-order mark alone") << QByteArray("\xef\xbb\xbf") << empty;
    QTest::newRow("UTF-16 byte-order mark alone") << QByteArray("\xff\xfe") << empty;
    QTest::newRow("header row alone")
        << QByteArray("Name,M,M\n")
        << "The table has no accessions: it needs at least one row below its header row.";
}

void TestHostileFiles::emptyFilesSaySo()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString path = write("in.csv", content);
    for (QStringList const& arguments :
         {QStringList{quiet, path},
          QStringList{quiet, QStringLiteral("-s"), path,
                      QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv")}}) {
        const CliOutcome o = runCli(arguments);
        QCOMPARE(o.status, 2);
        QCOMPARE(o.err, path + QStringLiteral(": ") + message + QLatin1Char('\n'));
        QCOMPARE(o.out, QString());
    }
}

void TestHostileFiles::oldMacLineEndsReadByLines()
{
    // The same table with carriage returns alone gives the same result.
    QFile example(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    QVERIFY(example.open(QIODevice::ReadOnly));
    const QByteArray text = example.readAll();
    QVERIFY(!text.contains('\r'));
    const QString mac = write("mac.csv", QByteArray(text).replace('\n', '\r'));
    const QString unix = write("unix.csv", text);
    const CliOutcome fromMac = runCli({quiet, seedOne, QStringLiteral("-i1"), mac});
    const CliOutcome fromUnix = runCli({quiet, seedOne, QStringLiteral("-i1"), unix});
    QCOMPARE(fromMac.status, 0);
    QCOMPARE(fromMac.err, QString());
    QCOMPARE(fromMac.out, fromUnix.out);
    QVERIFY2(fromMac.out.endsWith(QStringLiteral("Total alleles: 373; seed: 1\n")),
             qPrintable(fromMac.out));
}

void TestHostileFiles::unmarkedUtf16And32Read_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QString>("note");
    QTest::newRow("UTF-16LE") << QByteArray("UTF-16LE")
                              << "This file is UTF-16 (little-endian) without a byte-order mark; "
                                 "it was read that way.";
    QTest::newRow("UTF-16BE") << QByteArray("UTF-16BE")
                              << "This file is UTF-16 (big-endian) without a byte-order mark; it "
                                 "was read that way.";
    QTest::newRow("UTF-32LE") << QByteArray("UTF-32LE")
                              << "This file is UTF-32 (little-endian) without a byte-order mark; "
                                 "it was read that way.";
    QTest::newRow("UTF-32BE") << QByteArray("UTF-32BE")
                              << "This file is UTF-32 (big-endian) without a byte-order mark; it "
                                 "was read that way.";
}

void TestHostileFiles::unmarkedUtf16And32Read()
{
    QFETCH(QByteArray, codec);
    QFETCH(QString, note);
    const QString text = QStringLiteral("Name,M,M\nB\u00e9tail,1,2\nB\u00e8tail,3,4\n");
    QTextCodec::ConverterState noMark(QTextCodec::IgnoreHeader);
    const QByteArray bytes =
        QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &noMark);
    QCOMPARE(bytes.size(), text.size() * (codec.startsWith("UTF-16") ? 2 : 4));
    const QString input = write("in.csv", bytes);
    const QString core = m_dir->filePath("core.csv");
    const CliOutcome o = runCli({quiet, seedOne, QStringLiteral("-o"), core, input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.err, input + QStringLiteral(": ") + note + QLatin1Char('\n'));
    QVERIFY2(o.out.endsWith(QStringLiteral("Total alleles: 4; seed: 1\n")), qPrintable(o.out));
    QFile file(core);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()),
             QStringLiteral("\"Name\",\"M\",\"M\"\n\"B\u00e9tail\",1,2\n\"B\u00e8tail\",3,4\n"));
}

void TestHostileFiles::nulBytesRefused()
{
    // NUL bytes in no pattern of UTF-16 or UTF-32: not a text file.
    static const char text[] = "Name,M,M\nA,1,2\0\0\0\nB,3,4\n";
    const QString input = write("in.csv", QByteArray(text, sizeof text - 1));
    const CliOutcome o = runCli({quiet, seedOne, input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, input + QStringLiteral(": is not a text file: it holds NUL bytes\n"));
}

void TestHostileFiles::fieldsEstimatedBeforeReading_data()
{
    // Just under the file-size limit, shapes whose fields would each become
    // a cell: refused from their bytes before any is decoded.
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<QString>("message");
    QTest::newRow("commas") << QByteArray(",")
                            << "is too large to read: its 127.0 MB hold 133,169,153 fields, "
                               "which would take about 7.3 GB of memory, and Vireon reads tables "
                               "of up to 2.0 GB";
    QTest::newRow("1,") << QByteArray("1,")
                        << "is too large to read: its 127.0 MB hold 66,584,577 fields, which "
                           "would take about 3.8 GB of memory, and Vireon reads tables of up to "
                           "2.0 GB";
}

void TestHostileFiles::fieldsEstimatedBeforeReading()
{
    QFETCH(QByteArray, unit);
    QFETCH(QString, message);
    const qint64 size = qint64(127) * 1024 * 1024;
    const QString path = m_dir->filePath("many.csv");
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray block = unit.repeated(int(1024 * 1024 / unit.size()));
        while (file.size() + block.size() <= size)
            QVERIFY(file.write(block) == block.size());
        QVERIFY(file.write(unit.repeated(int((size - file.size()) / unit.size()))) >= 0);
    }
    QCOMPARE(QFileInfo(path).size(), size);
    const CliOutcome o = runCli({quiet, seedOne, path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": ") + message + QLatin1Char('\n'));
    QCOMPARE(o.out, QString());
}

void TestHostileFiles::pathPrintedOnceUnderMemoryLimit()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("AddressSanitizer reserves more address space than the limit allows");
#else
    // eHGDP's 12 MB within an address space of 180 MB: reading its table
    // (88 MB at its peak) runs out of memory, and the file is named once.
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/eHGDP.csv");
    QProcess process;
    process.start(QStringLiteral("prlimit"),
                  QStringList{QStringLiteral("--as=%1").arg(qint64(180) << 20),
                              QStringLiteral(VIREON_CLI), quiet, seedOne, QStringLiteral("-i1"),
                              QStringLiteral("-t1"), input});
    QVERIFY(process.waitForFinished(120000));
    const QString err = QString::fromUtf8(process.readAllStandardError());
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(err, input + QStringLiteral(": is too large to read in the memory available\n"));
#endif
}

void TestHostileFiles::controlCharactersEscaped()
{
    // An escape sequence that would retitle a terminal, in a name and a cell.
    const QString input = write("in.csv", "Name,M,M\nA,1,2\n\x1b]0;owned\x07,1,\x1b[2J\n");
    const CliOutcome o = runCli({quiet, seedOne, input});
    QCOMPARE(o.status, 1);
    QCOMPARE(o.err, QStringLiteral("Invalid value in csv.\ninput row 3 (\\x1b]0;owned\\x07), "
                                   "column M: \"\\x1b[2J\"\n"));
}

QTEST_GUILESS_MAIN(TestHostileFiles)
#include "tst_hostilefiles.moc"

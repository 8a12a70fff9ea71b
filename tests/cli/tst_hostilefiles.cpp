// The command line against files that are not what they seem: FIFOs,
// devices, huge files, long paths, other encodings, single-column text.
#include "TextFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

struct Outcome
{
    int status = -1;
    QString out;
    QString err;
};

// A generous limit: a run that blocks shows as status -1, never as a hang.
// A file-size limit in bytes, when given, stands for a nearly full disk.
Outcome runCli(QStringList const& arguments, qint64 fileSizeLimit = -1)
{
    QProcess process;
    if (fileSizeLimit >= 0)
        process.start(QStringLiteral("prlimit"),
                      QStringList{QStringLiteral("--fsize=%1").arg(fileSizeLimit),
                                  QStringLiteral(VIREON_CLI)} +
                          arguments);
    else
        process.start(QStringLiteral(VIREON_CLI), arguments);
    Outcome outcome;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    outcome.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    outcome.out = QString::fromUtf8(process.readAllStandardOutput());
    outcome.err = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

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

private:
    QString write(QString const& name, QByteArray const& bytes);
    QTemporaryDir* m_dir = nullptr;
};

void TestHostileFiles::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
}

void TestHostileFiles::cleanup()
{
    delete m_dir;
    m_dir = nullptr;
}

QString TestHostileFiles::write(QString const& name, QByteArray const& bytes)
{
    const QString path = m_dir->filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
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
    const Outcome o = runCli({quiet, path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": not a regular file\n"));
    QCOMPARE(o.out, QString());
}

void TestHostileFiles::fifoStartRefusedAtOnce()
{
    const QString input = write("in.csv", "Name,M,M\nA,1,2\n");
    const QString path = m_dir->filePath("start.csv");
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const Outcome o = runCli({quiet, QStringLiteral("-s"), path, input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.err, path + QStringLiteral(": not a regular file\n"));
}

void TestHostileFiles::deviceInputRefused()
{
    // /dev/zero under a table's name never ends: it must not be read.
    const QString link = m_dir->filePath("z.csv");
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), link));
    const Outcome o = runCli({quiet, link});
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
    const Outcome o = runCli({quiet, path});
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
    const Outcome o = runCli({quiet, path});
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
    const Outcome o = runCli({quiet, seedOne, QStringLiteral("--result"), path});
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
    const Outcome o = runCli({quiet, seedOne, path});
    QCOMPARE(o.status, 1);
    QCOMPARE(o.err, QStringLiteral("The input table has no accessions.\n"));
}

void TestHostileFiles::windows1252NamesKept()
{
    const QString input = write("in.csv", "Name,M,M\nB\xe9tail,1,2\nB\xe8tail,3,4\n");
    const QString core = m_dir->filePath("core.csv");
    const Outcome o = runCli({quiet, seedOne, QStringLiteral("-o"), core, input});
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
    const Outcome o = runCli({quiet, seedOne, input});
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
    const Outcome o = runCli({quiet, seedOne, option, target, input}, limit);
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
    const Outcome o = runCli(
        {quiet, seedOne, option, target, QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv")});
    QCOMPARE(o.status, 1);
    QCOMPARE(o.err, target + QStringLiteral(": could not be written: it exists and is not a "
                                            "regular file\n"));
    struct stat info
    {
    };
    QCOMPARE(stat(QFile::encodeName(target).constData(), &info), 0);
    QVERIFY(S_ISCHR(info.st_mode) || S_ISFIFO(info.st_mode));
}

QTEST_GUILESS_MAIN(TestHostileFiles)
#include "tst_hostilefiles.moc"

#include "XSaveFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

class TestXSaveFile : public QObject
{
    Q_OBJECT

private slots:
    void writesUtf8Text();
    void replacesWholeFile();
    void missingFolderNamesReason();
    void folderInTheWayNamesReason();
    void specialTargetRefused_data();
    void specialTargetRefused();
    void fileSizeLimitKeepsOldFile_data();
    void fileSizeLimitKeepsOldFile();
    void targetProblemFoundBeforeWriting_data();
    void targetProblemFoundBeforeWriting();
    void closedFolderFoundBeforeWriting();
};

namespace {

QByteArray readAll(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

// Lowers the file-size limit of this process for one scope, as a nearly
// full disk would; writes past it fail with EFBIG instead of a signal.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit lowered = m_old;
        lowered.rlim_cur = bytes;
        m_set = setrlimit(RLIMIT_FSIZE, &lowered) == 0;
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_handler);
    }
    bool isSet() const { return m_set; }

private:
    rlimit m_old{};
    void (*m_handler)(int) = nullptr;
    bool m_set = false;
};

} // namespace

void TestXSaveFile::writesUtf8Text()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("t.csv"));
    QString error = QStringLiteral("untouched");
    QVERIFY(XSaveFile::writeText(path, QStringLiteral("Name,Ñandú\n"), &error));
    QCOMPARE(error, QStringLiteral("untouched"));
    QCOMPARE(readAll(path), QByteArray("Name,\xc3\x91\x61nd\xc3\xba\n"));
}

void TestXSaveFile::replacesWholeFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("t.ccw"));
    QVERIFY(XSaveFile::write(path, QByteArray("a much longer first content\n")));
    QVERIFY(XSaveFile::write(path, QByteArray("short\n")));
    QCOMPARE(readAll(path), QByteArray("short\n"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList({"t.ccw"}));
}

void TestXSaveFile::missingFolderNamesReason()
{
    QTemporaryDir dir;
    QString error;
    QVERIFY(!XSaveFile::writeText(dir.filePath(QStringLiteral("no/such/t.csv")), "x", &error));
    QCOMPARE(error, QStringLiteral("No such file or directory"));
}

void TestXSaveFile::folderInTheWayNamesReason()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("t.csv")));
    QString error;
    QVERIFY(!XSaveFile::writeText(dir.filePath(QStringLiteral("t.csv")), "x", &error));
    QVERIFY2(!error.isEmpty(), "a failure always has a reason");
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("t.csv"))).isDir());
}

void TestXSaveFile::specialTargetRefused_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("fifo") << "fifo";
    QTest::newRow("device") << "device";
}

void TestXSaveFile::specialTargetRefused()
{
    QFETCH(QString, kind);
    QTemporaryDir dir;
    QString path = QStringLiteral("/dev/null");
    if (kind == QLatin1String("fifo")) {
        path = dir.filePath(QStringLiteral("t.ccw"));
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    }
    QString error;
    QVERIFY(!XSaveFile::writeText(path, QStringLiteral("x"), &error));
    QCOMPARE(error, QStringLiteral("it exists and is not a regular file"));
    struct stat info
    {
    };
    QCOMPARE(stat(QFile::encodeName(path).constData(), &info), 0);
    QVERIFY(kind == QLatin1String("fifo") ? S_ISFIFO(info.st_mode) : S_ISCHR(info.st_mode));
}

void TestXSaveFile::fileSizeLimitKeepsOldFile_data()
{
    QTest::addColumn<qint64>("limit");
    QTest::newRow("nothing free") << qint64(0);
    QTest::newRow("one byte") << qint64(1);
    QTest::newRow("one block") << qint64(4096);
    QTest::newRow("one byte short") << qint64(200000 - 1);
}

void TestXSaveFile::fileSizeLimitKeepsOldFile()
{
    QFETCH(qint64, limit);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("t.ccw"));
    const QByteArray old("the good workspace\n");
    QVERIFY(XSaveFile::write(path, old));
    const QByteArray bigger(200000, 'x');
    QString error;
    bool written = true;
    {
        FileSizeLimit full{rlim_t(limit)};
        QVERIFY(full.isSet());
        written = XSaveFile::write(path, bigger, &error);
    }
    QVERIFY(!written);
    QCOMPARE(error, QStringLiteral("File too large"));
    QCOMPARE(readAll(path), old);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList({"t.ccw"}));
}

void TestXSaveFile::targetProblemFoundBeforeWriting_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("problem");
    QTest::newRow("new file") << "new.csv" << QString();
    QTest::newRow("existing file") << "old.csv" << QString();
    QTest::newRow("missing folder") << "no/such/t.csv"
                                    << "No such file or directory";
    QTest::newRow("a file for a folder") << "old.csv/t.csv"
                                         << "Not a directory";
    QTest::newRow("a folder in the way") << "dir"
                                         << "it is a folder";
    QTest::newRow("a FIFO in the way") << "fifo"
                                       << "it exists and is not a regular file";
    QTest::newRow("a device") << "/dev/null"
                              << "it exists and is not a regular file";
}

void TestXSaveFile::targetProblemFoundBeforeWriting()
{
    QFETCH(QString, target);
    QFETCH(QString, problem);
    QTemporaryDir dir;
    QVERIFY(XSaveFile::write(dir.filePath(QStringLiteral("old.csv")), QByteArray("x")));
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("dir")));
    QCOMPARE(mkfifo(QFile::encodeName(dir.filePath(QStringLiteral("fifo"))).constData(), 0600), 0);
    const QString path = target.startsWith(QLatin1Char('/')) ? target : dir.filePath(target);
    QCOMPARE(XSaveFile::targetProblem(path), problem);
    // The write itself fails for the same reason (a full disk aside).
    if (!problem.isEmpty()) {
        QString error;
        QVERIFY(!XSaveFile::write(path, QByteArray("y"), &error));
        QCOMPARE(error.isEmpty(), false);
    }
    QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
             QStringList({"dir", "fifo", "old.csv"}));
}

void TestXSaveFile::closedFolderFoundBeforeWriting()
{
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("closed"));
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("closed")));
    QVERIFY(QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    if (::access(QFile::encodeName(folder).constData(), W_OK) == 0)
        QSKIP("this user writes into any folder (root)");
    QCOMPARE(XSaveFile::targetProblem(folder + QStringLiteral("/t.csv")),
             QStringLiteral("Permission denied"));
    QVERIFY(!XSaveFile::write(folder + QStringLiteral("/t.csv"), QByteArray("x")));
}

QTEST_GUILESS_MAIN(TestXSaveFile)
#include "tst_xsavefile.moc"

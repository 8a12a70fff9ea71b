#include "XSaveFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestXSaveFile : public QObject
{
    Q_OBJECT

private slots:
    void writesUtf8Text();
    void replacesWholeFile();
    void missingFolderNamesReason();
    void folderInTheWayNamesReason();
};

namespace {

QByteArray readAll(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

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

QTEST_GUILESS_MAIN(TestXSaveFile)
#include "tst_xsavefile.moc"

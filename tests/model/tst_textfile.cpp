#include "TextFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <sys/types.h>

class TestTextFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void utf8();
    void utf8WithByteOrderMark();
    void utf16WithByteOrderMark();
    void latin1ReadAsWindows1252();
    void missingFile();
    void folder();
    void fifoRefusedAtOnce();
    void deviceRefused();
    void tooLargeRefusedBeforeReading();
    void atTheLimitRead();
    void shortContentNeverTakenForName();

private:
    QString write(QString const& name, QByteArray const& bytes);
    QTemporaryDir* m_dir = nullptr;
};

void TestTextFile::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
}

void TestTextFile::cleanup()
{
    delete m_dir;
    m_dir = nullptr;
}

QString TestTextFile::write(QString const& name, QByteArray const& bytes)
{
    const QString path = m_dir->filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
}

void TestTextFile::utf8()
{
    QString text, error;
    TextFile::Encoding encoding = TextFile::Encoding::Windows1252;
    QVERIFY(TextFile::read(write("a.csv", "Name,M\nB\xc3\xa9tail,1\n"), &text, &error, &encoding));
    QCOMPARE(text, QStringLiteral("Name,M\nB\u00e9tail,1\n"));
    QCOMPARE(encoding, TextFile::Encoding::Utf8);
    QCOMPARE(error, QString());
}

void TestTextFile::utf8WithByteOrderMark()
{
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Windows1252;
    QVERIFY(TextFile::read(write("a.csv", "\xef\xbb\xbfN,M\n"), &text, nullptr, &encoding));
    QCOMPARE(text, QStringLiteral("N,M\n"));
    QCOMPARE(encoding, TextFile::Encoding::Utf8);
}

void TestTextFile::utf16WithByteOrderMark()
{
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    const QByteArray bytes("\xff\xfeN\0,\0\xe9\0\n\0", 10);
    QVERIFY(TextFile::read(write("a.csv", bytes), &text, nullptr, &encoding));
    QCOMPARE(text, QStringLiteral("N,\u00e9\n"));
    QCOMPARE(encoding, TextFile::Encoding::Utf16);
}

void TestTextFile::latin1ReadAsWindows1252()
{
    // "Bétail" and a euro sign as old spreadsheet exports write them.
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    QVERIFY(
        TextFile::read(write("a.csv", "Name,M\nB\xe9tail \x80,1\n"), &text, nullptr, &encoding));
    QCOMPARE(text, QStringLiteral("Name,M\nB\u00e9tail \u20ac,1\n"));
    QCOMPARE(encoding, TextFile::Encoding::Windows1252);
    QCOMPARE(TextFile::windows1252Note(),
             QStringLiteral("This file is not UTF-8; it was read as Windows-1252."));
}

void TestTextFile::missingFile()
{
    QString text = QStringLiteral("kept"), error;
    QVERIFY(!TextFile::read(m_dir->filePath("none.csv"), &text, &error));
    QCOMPARE(error, QStringLiteral("no such file"));
    QCOMPARE(text, QStringLiteral("kept"));
    QCOMPARE(TextFile::problem(QString()), QStringLiteral("no such file"));
}

void TestTextFile::folder()
{
    QVERIFY(QDir(m_dir->path()).mkdir("dir.csv"));
    QString text, error;
    QVERIFY(!TextFile::read(m_dir->filePath("dir.csv"), &text, &error));
    QCOMPARE(error, QStringLiteral("is a folder"));
}

void TestTextFile::fifoRefusedAtOnce()
{
    // Opening a FIFO for reading waits for a writer: it must never be opened.
    const QString path = m_dir->filePath("p.csv");
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QString text, error;
    QVERIFY(!TextFile::read(path, &text, &error));
    QCOMPARE(error, QStringLiteral("not a regular file"));
}

void TestTextFile::deviceRefused()
{
    QString text, error;
    QVERIFY(!TextFile::read(QStringLiteral("/dev/zero"), &text, &error));
    QCOMPARE(error, QStringLiteral("not a regular file"));
}

void TestTextFile::tooLargeRefusedBeforeReading()
{
    // A sparse file: its size is there at once, its bytes never are.
    const QString path = m_dir->filePath("big.csv");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(TextFile::sizeLimit() + 1));
    file.close();
    QString text, error;
    QVERIFY(!TextFile::read(path, &text, &error));
    QCOMPARE(error, QStringLiteral("is too large: 256.0 MB, and Vireon reads files of up to "
                                   "256.0 MB"));
    QVERIFY(file.resize(qint64(1) << 40));
    QVERIFY(!TextFile::read(path, &text, &error));
    QCOMPARE(error, QStringLiteral("is too large: 1048576.0 MB, and Vireon reads files of up to "
                                   "256.0 MB"));
}

void TestTextFile::atTheLimitRead()
{
    QCOMPARE(TextFile::sizeLimit(), qint64(256) * 1024 * 1024);
    // Just within the limit is read; built from a small file so the test
    // stays light: the limit itself is checked above.
    QString text;
    QVERIFY(TextFile::read(write("a.csv", QByteArray(4096, 'x')), &text, nullptr));
    QCOMPARE(text.size(), 4096);
}

void TestTextFile::shortContentNeverTakenForName()
{
    // A file whose whole content names another file is still just text.
    const QString other = write("other.csv", "N,M\nA,1\n");
    QString text;
    QVERIFY(TextFile::read(write("a.csv", other.toUtf8()), &text, nullptr));
    QCOMPARE(text, other);
}

QTEST_GUILESS_MAIN(TestTextFile)
#include "tst_textfile.moc"

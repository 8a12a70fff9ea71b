#include "TemporaryFolder.h"
#include "TextFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

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
    void utf32WithByteOrderMark();
    void unmarkedUtf16And32_data();
    void unmarkedUtf16And32();
    void unmarkedButInvalidRefused();
    void nulBytesRefused();
    void oldMacLineEnds_data();
    void oldMacLineEnds();
    void commasRefusedBeforeDecoding();

private:
    std::unique_ptr<TemporaryFolder> m_dir;
};

void TestTextFile::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestTextFile::cleanup()
{
    m_dir.reset();
}

void TestTextFile::utf8()
{
    QString text, error;
    TextFile::Encoding encoding = TextFile::Encoding::Windows1252;
    QVERIFY(TextFile::read(m_dir->write("a.csv", "Name,M\nB\xc3\xa9tail,1\n"), &text, &error,
                           &encoding));
    QCOMPARE(text, QStringLiteral("Name,M\nB\u00e9tail,1\n"));
    QCOMPARE(encoding, TextFile::Encoding::Utf8);
    QCOMPARE(error, QString());
}

void TestTextFile::utf8WithByteOrderMark()
{
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Windows1252;
    QVERIFY(TextFile::read(m_dir->write("a.csv", "\xef\xbb\xbfN,M\n"), &text, nullptr, &encoding));
    QCOMPARE(text, QStringLiteral("N,M\n"));
    QCOMPARE(encoding, TextFile::Encoding::Utf8);
}

void TestTextFile::utf16WithByteOrderMark()
{
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    const QByteArray bytes("\xff\xfeN\0,\0\xe9\0\n\0", 10);
    QVERIFY(TextFile::read(m_dir->write("a.csv", bytes), &text, nullptr, &encoding));
    QCOMPARE(text, QStringLiteral("N,\u00e9\n"));
    QCOMPARE(encoding, TextFile::Encoding::Utf16);
}

void TestTextFile::latin1ReadAsWindows1252()
{
    // "Bétail" and a euro sign as old spreadsheet exports write them.
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    QVERIFY(TextFile::read(m_dir->write("a.csv", "Name,M\nB\xe9tail \x80,1\n"), &text, nullptr,
                           &encoding));
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
    QCOMPARE(error, QStringLiteral("is too large: 128.0 MB, and Vireon reads files of up to "
                                   "128.0 MB"));
    QVERIFY(file.resize(qint64(1) << 40));
    QVERIFY(!TextFile::read(path, &text, &error));
    QCOMPARE(error, QStringLiteral("is too large: 1048576.0 MB, and Vireon reads files of up to "
                                   "128.0 MB"));
}

void TestTextFile::atTheLimitRead()
{
    QCOMPARE(TextFile::sizeLimit(), qint64(128) * 1024 * 1024);
    // Just within the limit is read; built from a small file so the test
    // stays light: the limit itself is checked above.
    QString text;
    QVERIFY(TextFile::read(m_dir->write("a.csv", QByteArray(4096, 'x')), &text, nullptr));
    QCOMPARE(text.size(), 4096);
}

void TestTextFile::shortContentNeverTakenForName()
{
    // A file whose whole content names another file is still just text.
    const QString other = m_dir->write("other.csv", "N,M\nA,1\n");
    QString text;
    QVERIFY(TextFile::read(m_dir->write("a.csv", other.toUtf8()), &text, nullptr));
    QCOMPARE(text, other);
}

void TestTextFile::utf32WithByteOrderMark()
{
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    QVERIFY(
        TextFile::read(m_dir->write("a.csv", QByteArray("\xff\xfe\0\0N\0\0\0,\0\0\0M\0\0\0", 16)),
                       &text, nullptr, &encoding));
    QCOMPARE(text, QStringLiteral("N,M"));
    QCOMPARE(encoding, TextFile::Encoding::Utf32);
    QCOMPARE(TextFile::encodingNote(encoding), QString());
}

void TestTextFile::unmarkedUtf16And32_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<int>("encoding");
    QTest::addColumn<QString>("note");
    QTest::newRow("UTF-16LE") << QByteArray("UTF-16LE") << int(TextFile::Encoding::Utf16LeUnmarked)
                              << "This file is UTF-16 (little-endian) without a byte-order mark; "
                                 "it was read that way.";
    QTest::newRow("UTF-16BE") << QByteArray("UTF-16BE") << int(TextFile::Encoding::Utf16BeUnmarked)
                              << "This file is UTF-16 (big-endian) without a byte-order mark; it "
                                 "was read that way.";
    QTest::newRow("UTF-32LE") << QByteArray("UTF-32LE") << int(TextFile::Encoding::Utf32LeUnmarked)
                              << "This file is UTF-32 (little-endian) without a byte-order mark; "
                                 "it was read that way.";
    QTest::newRow("UTF-32BE") << QByteArray("UTF-32BE") << int(TextFile::Encoding::Utf32BeUnmarked)
                              << "This file is UTF-32 (big-endian) without a byte-order mark; it "
                                 "was read that way.";
}

void TestTextFile::unmarkedUtf16And32()
{
    QFETCH(QByteArray, codec);
    QFETCH(int, encoding);
    QFETCH(QString, note);
    // Letters beyond ASCII, one beyond the first plane too.
    const QString table = QStringLiteral("Name,M,M\nB\u00e9tail \u65e5\U0001F404,1,2\n");
    // Packed by hand: no byte-order mark, and each unit in the order named.
    QByteArray bytes;
    const bool bigEndian = codec.endsWith("BE");
    auto put = [&bytes, bigEndian](quint32 unit, int size) {
        for (int i = 0; i < size; ++i)
            bytes += char((unit >> (8 * (bigEndian ? size - 1 - i : i))) & 0xff);
    };
    if (codec.startsWith("UTF-16")) {
        for (QChar const c : table)
            put(c.unicode(), 2);
    } else {
        for (uint const u : table.toUcs4())
            put(u, 4);
    }
    QString text;
    QString error;
    TextFile::Encoding found = TextFile::Encoding::Utf8;
    QVERIFY2(TextFile::decode(bytes, &text, &error, &found), qPrintable(error));
    QCOMPARE(text, table);
    QCOMPARE(int(found), encoding);
    QCOMPARE(TextFile::encodingNote(found), note);
}

void TestTextFile::unmarkedButInvalidRefused()
{
    // UTF-16LE's pattern, but a surrogate without its pair.
    QByteArray bytes = QByteArray("N\0a\0m\0e\0,\0M\0\n\0A\0,\0001\0\n\0", 22).repeated(10);
    bytes += QByteArray("B\0,\0\x00\xd8\n\0", 8);
    QString text;
    QString error;
    QVERIFY(!TextFile::decode(bytes, &text, &error));
    QCOMPARE(error, QStringLiteral("looks like UTF-16 (little-endian) without a byte-order mark, "
                                   "but is not valid UTF-16 (little-endian)"));
    // A byte left over.
    const QByteArray lines = QByteArray("\0N\0,\0M\0\n\0A\0,\0001\0\n", 16).repeated(10);
    QVERIFY(!TextFile::decode(lines + '\0', &text, &error));
    QCOMPARE(error, QStringLiteral("looks like UTF-16 (big-endian) without a byte-order mark, but "
                                   "is not valid UTF-16 (big-endian)"));
    QVERIFY(TextFile::decode(lines, &text, &error));
    // A code point past U+10FFFF.
    QByteArray wide = QByteArray("N\0\0\0,\0\0\0M\0\0\0\n\0\0\0", 16).repeated(10);
    wide += QByteArray("\0\0\x11\0", 4);
    QVERIFY(!TextFile::decode(wide, &text, &error));
    QCOMPARE(error, QStringLiteral("looks like UTF-32 (little-endian) without a byte-order mark, "
                                   "but is not valid UTF-32 (little-endian)"));
}

void TestTextFile::nulBytesRefused()
{
    QString text;
    QString error;
    QVERIFY(!TextFile::read(m_dir->write("a.csv", QByteArray("Name,M\nA,1\0\nB,2\n", 17)), &text,
                            &error));
    QCOMPARE(error, QStringLiteral("is not a text file: it holds NUL bytes"));
}

void TestTextFile::oldMacLineEnds_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("returns alone") << QByteArray("N,M\rA,1\rB,2\r") << "N,M\nA,1\nB,2\n";
    QTest::newRow("two returns: an empty line") << QByteArray("N,M\r\rA,1") << "N,M\n\nA,1";
    QTest::newRow("line feeds keep returns") << QByteArray("N,M\r\nA\rX,1\n") << "N,M\r\nA\rX,1\n";
    QTest::newRow("Windows-1252 too") << QByteArray("N,M\rB\xe9tail,1") << "N,M\nB\u00e9tail,1";
}

void TestTextFile::oldMacLineEnds()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QString read;
    QVERIFY(TextFile::read(m_dir->write("a.csv", bytes), &read, nullptr));
    QCOMPARE(read, text);
}

void TestTextFile::commasRefusedBeforeDecoding()
{
    // 64 MB of commas: 67 million empty fields, each of which would be a cell.
    const QString path = m_dir->write("commas.csv", QByteArray(64 << 20, ','));
    QString text;
    QString error;
    QVERIFY(!TextFile::read(path, &text, &error));
    QCOMPARE(error, QStringLiteral("is too large to read: its 64.0 MB hold 67,108,865 fields, "
                                   "which would take about 3.7 GB of memory, and Vireon reads "
                                   "tables of up to 2.0 GB"));
    QVERIFY(text.isEmpty());
}

QTEST_GUILESS_MAIN(TestTextFile)
#include "tst_textfile.moc"

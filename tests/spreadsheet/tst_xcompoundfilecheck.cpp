#include "XCompoundFileCheck.h"
#include "XWorkbookWriter.h"

#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

namespace {

quint32 u32(QByteArray const& bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

// Byte by byte: the compiler's bounds analysis cannot follow a copy into
// QByteArray::data() in the sanitizer build.
void putLittleEndian(QByteArray& bytes, int at, quint32 value, int width)
{
    for (int i = 0; i < width; ++i)
        bytes[at + i] = char((value >> (8 * i)) & 0xFF);
}

void put16(QByteArray& bytes, int at, quint16 value)
{
    putLittleEndian(bytes, at, value, 2);
}

void put32(QByteArray& bytes, int at, quint32 value)
{
    putLittleEndian(bytes, at, value, 4);
}

// A compound document with a "Workbook" stream of the given size, large
// enough to sit in regular sectors rather than the mini stream.
QByteArray document(int streamSize)
{
    QByteArray stream(streamSize, '\0');
    for (int i = 0; i < streamSize; ++i)
        stream[i] = char(i * 7);
    return XWorkbookWriter::compoundDocument(stream);
}

const int sectorSize = 512;

int directoryOffset(QByteArray const& bytes)
{
    return int(u32(bytes, 0x30) + 1) * sectorSize;
}

// The directory entry of the "Workbook" stream (the root entry comes first).
int streamEntry(QByteArray const& bytes)
{
    return directoryOffset(bytes) + 128;
}

} // namespace

class TestXCompoundFileCheck : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void layoutAsExpected();
    void directory_data();
    void directory();
    void extraAllocationSectors();
    void missingFilePasses();

private:
    QString write(QByteArray const& bytes);

    QTemporaryDir* m_dir = nullptr;
};

void TestXCompoundFileCheck::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
}

void TestXCompoundFileCheck::cleanup()
{
    delete m_dir;
    m_dir = nullptr;
}

QString TestXCompoundFileCheck::write(QByteArray const& bytes)
{
    const QString path = m_dir->filePath(QStringLiteral("book.xls"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        return QString();
    return path;
}

// The cases below patch the document where these checks say its parts are.
void TestXCompoundFileCheck::layoutAsExpected()
{
    const QByteArray bytes = document(20000);
    QCOMPARE(bytes.left(8), QByteArray::fromHex("D0CF11E0A1B11AE1"));
    QCOMPARE(qFromLittleEndian<quint16>(bytes.constData() + 0x1E), quint16(9));
    QVERIFY(directoryOffset(bytes) + 256 <= bytes.size());
    // Entry names are UTF-16 with their length in bytes, the end mark included.
    QCOMPARE(qFromLittleEndian<quint16>(bytes.constData() + streamEntry(bytes) + 0x40),
             quint16(18));
    QCOMPARE(bytes.mid(streamEntry(bytes), 16), QByteArray("W\0o\0r\0k\0b\0o\0o\0k\0", 16));
    QCOMPARE(bytes.at(streamEntry(bytes) + 0x42), char(2));
    QCOMPARE(u32(bytes, streamEntry(bytes) + 0x78), 20000u);
}

void TestXCompoundFileCheck::directory_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("sound");
    const QByteArray original = document(20000);
    const int size = original.size();
    const int root = directoryOffset(original);
    const int entry = streamEntry(original);
    auto patched = [&original](std::function<void(QByteArray&)> change) {
        QByteArray bytes = original;
        change(bytes);
        return bytes;
    };

    QTest::newRow("as written") << original << true;
    QTest::newRow("not a compound file") << QByteArray(4096, 'x') << true;
    QTest::newRow("shorter than a header") << original.left(300) << true;
    QTest::newRow("root name of 64 bytes")
        << patched([root](QByteArray& b) { put16(b, root + 0x40, 64); }) << true;
    QTest::newRow("root name of 65 bytes")
        << patched([root](QByteArray& b) { put16(b, root + 0x40, 65); }) << false;
    QTest::newRow("stream name of 5632 bytes")
        << patched([entry](QByteArray& b) { put16(b, entry + 0x40, 5632); }) << false;
    QTest::newRow("stream as large as the file")
        << patched([entry, size](QByteArray& b) { put32(b, entry + 0x78, quint32(size)); }) << true;
    QTest::newRow("stream larger than the file")
        << patched([entry, size](QByteArray& b) { put32(b, entry + 0x78, quint32(size) + 1); })
        << false;
    QTest::newRow("root larger than the file")
        << patched([root](QByteArray& b) { put32(b, root + 0x78, 0x7FFFFFFF); }) << false;
    QTest::newRow("sector shift 10") << patched([](QByteArray& b) { put16(b, 0x1E, 10); }) << false;
    QTest::newRow("more allocation sectors than the file holds")
        << patched([size](QByteArray& b) { put32(b, 0x2C, quint32(size / sectorSize + 1)); })
        << false;
    QTest::newRow("no directory") << patched([](QByteArray& b) { put32(b, 0x30, 0xFFFFFFFE); })
                                  << false;
    QTest::newRow("directory past the end")
        << patched([size](QByteArray& b) { put32(b, 0x30, quint32(size / sectorSize + 4)); })
        << false;
    QTest::newRow("directory chain loops") << patched([](QByteArray& b) {
        const quint32 directory = u32(b, 0x30);
        const int fatSector = int(u32(b, 0x4C));
        put32(b, (fatSector + 1) * sectorSize + 4 * int(directory), directory);
    }) << false;
    QTest::newRow("cut inside the directory") << original.left(root + 64) << false;
}

void TestXCompoundFileCheck::directory()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, sound);
    const QString path = write(bytes);
    QVERIFY(!path.isEmpty());
    QCOMPARE(XCompoundFileCheck::directoryIsSound(path), sound);
}

void TestXCompoundFileCheck::extraAllocationSectors()
{
    // Past 109 allocation sectors (about 7 MB) the header lists the rest in
    // a chain of extra sectors.
    QByteArray bytes = document(8 * 1024 * 1024);
    QVERIFY(u32(bytes, 0x2C) > 109);
    QVERIFY(u32(bytes, 0x48) >= 1);
    QVERIFY(XCompoundFileCheck::directoryIsSound(write(bytes)));

    put32(bytes, 0x44, quint32(bytes.size() / sectorSize + 3));
    QVERIFY(!XCompoundFileCheck::directoryIsSound(write(bytes)));
}

void TestXCompoundFileCheck::missingFilePasses()
{
    // Nothing to check: the workbook reader reports the missing file itself.
    QVERIFY(XCompoundFileCheck::directoryIsSound(m_dir->filePath(QStringLiteral("none.xls"))));
}

QTEST_GUILESS_MAIN(TestXCompoundFileCheck)
#include "tst_xcompoundfilecheck.moc"

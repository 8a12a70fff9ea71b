#include "XBiffWriter.h"

#include <QtEndian>
#include <QtTest>

#include <cstring>

namespace {

struct Record
{
    int offset;
    quint16 id;
    QByteArray data;
};

QList<Record> records(QByteArray const& stream)
{
    QList<Record> out;
    int at = 0;
    while (at + 4 <= stream.size()) {
        const quint16 id = qFromLittleEndian<quint16>(stream.constData() + at);
        const quint16 size = qFromLittleEndian<quint16>(stream.constData() + at + 2);
        out << Record{at, id, stream.mid(at + 4, size)};
        at += 4 + size;
    }
    return out;
}

QList<Record> withId(QList<Record> const& all, quint16 id)
{
    QList<Record> out;
    for (Record const& r : all)
        if (r.id == id)
            out << r;
    return out;
}

quint16 u16(QByteArray const& data, int at)
{
    return qFromLittleEndian<quint16>(data.constData() + at);
}

quint32 u32(QByteArray const& data, int at)
{
    return qFromLittleEndian<quint32>(data.constData() + at);
}

// The SST record with its CONTINUE records, as one list of bodies.
QList<QByteArray> sstBodies(QList<Record> const& all)
{
    QList<QByteArray> out;
    for (int i = 0; i < all.size(); ++i) {
        if (all[i].id != 0x00FC)
            continue;
        out << all[i].data;
        for (int j = i + 1; j < all.size() && all[j].id == 0x003C; ++j)
            out << all[j].data;
    }
    return out;
}

} // namespace

class TestXBiffWriter : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void streamLayout();
    void recordsWithinLimit();
    void refusedPositions_data();
    void refusedPositions();
    void numbers_data();
    void numbers();
    void stringEncoding_data();
    void stringEncoding();
    void sharedStrings();
    void longStringsContinue_data();
    void longStringsContinue();
    void emptyTextIsBlank();
    void cellsInRowOrder();
    void dimensions();

private:
    XBiffWriter* m_book = nullptr;
};

void TestXBiffWriter::init()
{
    m_book = new XBiffWriter(3);
}

void TestXBiffWriter::cleanup()
{
    delete m_book;
    m_book = nullptr;
}

void TestXBiffWriter::streamLayout()
{
    QVERIFY(m_book->setText(0, 0, QStringLiteral("Name")));
    const QByteArray stream = m_book->workbook();
    const QList<Record> all = records(stream);
    int consumed = 0;
    for (Record const& r : all)
        consumed += 4 + r.data.size();
    QCOMPARE(consumed, stream.size());

    QCOMPARE(all.first().id, quint16(0x0809));
    QCOMPARE(u16(all.first().data, 0), quint16(0x0600));
    QCOMPARE(u16(all.first().data, 2), quint16(0x0005));
    QCOMPARE(u16(withId(all, 0x0042).value(0).data, 0), quint16(1200));

    const QList<Record> sheets = withId(all, 0x0085);
    QCOMPARE(sheets.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const QByteArray d = sheets[i].data;
        const int offset = int(u32(d, 0));
        QCOMPARE(u16(stream, offset), quint16(0x0809));
        QCOMPARE(u16(stream, offset + 6), quint16(0x0010));
        QCOMPARE(d.mid(8), QByteArray("Sheet") + QByteArray::number(i + 1));
        QCOMPARE(quint8(d.at(6)), quint8(6));
    }
    QCOMPARE(withId(all, 0x000A).size(), 4);
    QCOMPARE(all.last().id, quint16(0x000A));
    QCOMPARE(withId(all, 0x023E).size(), 3);
    QCOMPARE(withId(all, 0x00E0).size(), 16);
    QCOMPARE(withId(all, 0x0031).size(), 4);
}

void TestXBiffWriter::recordsWithinLimit()
{
    for (int i = 0; i < 4000; ++i)
        QVERIFY(m_book->setText(i, 0, QStringLiteral("label number %1 Ω").arg(i)));
    QVERIFY(m_book->setText(0, 1, QString(30000, QLatin1Char('x'))));
    for (Record const& r : records(m_book->workbook()))
        QVERIFY(r.data.size() <= 8224);
}

void TestXBiffWriter::refusedPositions_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("origin") << 0 << 0 << true;
    QTest::newRow("last cell") << 65535 << 255 << true;
    QTest::newRow("negative row") << -1 << 0 << false;
    QTest::newRow("negative column") << 0 << -1 << false;
    QTest::newRow("row past end") << 65536 << 0 << false;
    QTest::newRow("column past end") << 0 << 256 << false;
}

void TestXBiffWriter::refusedPositions()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(bool, accepted);
    QCOMPARE(m_book->setNumber(row, column, 1), accepted);
    QCOMPARE(m_book->setText(row, column, QStringLiteral("a")), accepted);
}

void TestXBiffWriter::numbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<quint16>("id");
    QTest::newRow("small int") << 5.0 << quint16(0x027E);
    QTest::newRow("negative int") << -3.0 << quint16(0x027E);
    QTest::newRow("largest rk") << double((1 << 29) - 1) << quint16(0x027E);
    QTest::newRow("smallest rk") << double(-(1 << 29)) << quint16(0x027E);
    QTest::newRow("past rk") << double(1 << 29) << quint16(0x0203);
    QTest::newRow("int max") << 2147483647.0 << quint16(0x0203);
    QTest::newRow("fraction") << 1.5 << quint16(0x0203);
}

void TestXBiffWriter::numbers()
{
    QFETCH(double, value);
    QFETCH(quint16, id);
    QVERIFY(m_book->setNumber(3, 2, value));
    const QList<Record> all = records(m_book->workbook());
    const QList<Record> cells = withId(all, id);
    QCOMPARE(cells.size(), 1);
    QByteArray const& d = cells[0].data;
    QCOMPARE(u16(d, 0), quint16(3));
    QCOMPARE(u16(d, 2), quint16(2));
    QCOMPARE(u16(d, 4), quint16(15));
    if (id == 0x027E) {
        const quint32 rk = u32(d, 6);
        QCOMPARE(rk & 3u, 2u);
        QCOMPARE(double(qint32(rk) >> 2), value);
    } else {
        const quint64 bits = qFromLittleEndian<quint64>(d.constData() + 6);
        double stored;
        std::memcpy(&stored, &bits, sizeof stored);
        QCOMPARE(stored, value);
    }
}

void TestXBiffWriter::stringEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("encoded"); // cch, flags, characters
    QTest::newRow("ascii") << "abc"
                           << QByteArray("\x03\x00\x00"
                                         "abc",
                                         6);
    QTest::newRow("latin-1") << QStringLiteral("éÿ") << QByteArray("\x02\x00\x00\xE9\xFF", 5);
    QTest::newRow("wide") << QStringLiteral("aΩ")
                          << QByteArray("\x02\x00\x01"
                                        "a\x00\xA9\x03",
                                        7);
}

void TestXBiffWriter::stringEncoding()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, encoded);
    QVERIFY(m_book->setText(0, 0, text));
    const QList<Record> all = records(m_book->workbook());
    const QList<QByteArray> sst = sstBodies(all);
    QCOMPARE(sst.size(), 1);
    QCOMPARE(u32(sst[0], 0), 1u);
    QCOMPARE(u32(sst[0], 4), 1u);
    QCOMPARE(sst[0].mid(8), encoded);
    const QList<Record> labels = withId(all, 0x00FD);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(u32(labels[0].data, 6), 0u);
}

void TestXBiffWriter::sharedStrings()
{
    QVERIFY(m_book->setText(0, 0, QStringLiteral("*")));
    QVERIFY(m_book->setText(0, 1, QStringLiteral("x")));
    QVERIFY(m_book->setText(1, 0, QStringLiteral("*")));
    const QList<Record> all = records(m_book->workbook());
    const QList<QByteArray> sst = sstBodies(all);
    QCOMPARE(u32(sst[0], 0), 3u); // references
    QCOMPARE(u32(sst[0], 4), 2u); // unique strings
    const QList<Record> labels = withId(all, 0x00FD);
    QCOMPARE(labels.size(), 3);
    QCOMPARE(u32(labels[0].data, 6), 0u);
    QCOMPARE(u32(labels[1].data, 6), 1u);
    QCOMPARE(u32(labels[2].data, 6), 0u);
}

void TestXBiffWriter::longStringsContinue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("charSize");
    QTest::newRow("compressed") << QString(9000, QChar(0xE9)) << 1;
    QTest::newRow("wide") << QString(5000, QChar(0x3A9)) << 2;
}

void TestXBiffWriter::longStringsContinue()
{
    QFETCH(QString, text);
    QFETCH(int, charSize);
    QVERIFY(m_book->setText(0, 0, text));
    const QList<QByteArray> sst = sstBodies(records(m_book->workbook()));
    QCOMPARE(sst.size(), 2);
    const int first = (8224 - 11) / charSize;
    QCOMPARE(sst[0].size(), 11 + first * charSize);
    QCOMPARE(int(u16(sst[0], 8)), text.size());
    QCOMPARE(quint8(sst[0].at(10)), quint8(charSize - 1));
    // The continuation repeats the flags, then the remaining characters.
    QCOMPARE(quint8(sst[1].at(0)), quint8(charSize - 1));
    QCOMPARE(sst[1].size() - 1, (text.size() - first) * charSize);
    QByteArray chars = sst[0].mid(11) + sst[1].mid(1);
    const QString decoded =
        charSize == 1 ? QString::fromLatin1(chars)
                      : QString::fromUtf16(reinterpret_cast<ushort const*>(chars.constData()),
                                           chars.size() / 2);
    QCOMPARE(decoded, text);
}

void TestXBiffWriter::emptyTextIsBlank()
{
    QVERIFY(m_book->setText(2, 1, QString()));
    QVERIFY(m_book->setText(2, 2, QStringLiteral("")));
    const QList<Record> all = records(m_book->workbook());
    QCOMPARE(withId(all, 0x00FD).size(), 0);
    QCOMPARE(u32(sstBodies(all).value(0), 4), 0u);
    const QList<Record> blanks = withId(all, 0x0201);
    QCOMPARE(blanks.size(), 2);
    QCOMPARE(blanks[0].data, QByteArray("\x02\x00\x01\x00\x0F\x00", 6));
    QCOMPARE(blanks[1].data, QByteArray("\x02\x00\x02\x00\x0F\x00", 6));
}

void TestXBiffWriter::cellsInRowOrder()
{
    QVERIFY(m_book->setNumber(1, 0, 10));
    QVERIFY(m_book->setNumber(0, 1, 1));
    QVERIFY(m_book->setNumber(0, 0, 0));
    QList<QPair<int, int>> order;
    for (Record const& r : withId(records(m_book->workbook()), 0x027E))
        order << qMakePair(int(u16(r.data, 0)), int(u16(r.data, 2)));
    QCOMPARE(order, (QList<QPair<int, int>>{{0, 0}, {0, 1}, {1, 0}}));
}

void TestXBiffWriter::dimensions()
{
    QVERIFY(m_book->setNumber(2, 5, 1));
    QVERIFY(m_book->setText(4, 1, QStringLiteral("a")));
    const QList<Record> dims = withId(records(m_book->workbook()), 0x0200);
    QCOMPARE(dims.size(), 3);
    QCOMPARE(u32(dims[0].data, 4), 5u);
    QCOMPARE(u16(dims[0].data, 10), quint16(6));
    QCOMPARE(u32(dims[1].data, 4), 0u);
    QCOMPARE(u32(dims[2].data, 4), 0u);
}

QTEST_GUILESS_MAIN(TestXBiffWriter)
#include "tst_xbiffwriter.moc"

#include "TemporaryFolder.h"
#include "TextSource.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestTextSource : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void existingFileIsRead();
    void byteOrderMarkDropped();
    void emptyFileGivesEmptyText();
    void missingFileIsText();
    void textWithLineFeedIsText();
    void longNameIsText();
    void nameJustShortEnoughIsRead();
    void folderGivesEmptyText();

private:
    std::unique_ptr<TemporaryFolder> m_dir;
};

void TestTextSource::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestTextSource::cleanup()
{
    m_dir.reset();
}

void TestTextSource::existingFileIsRead()
{
    const QString path = m_dir->write(QStringLiteral("t.csv"), "Name,M1\na,1\n");
    QVERIFY(!path.isEmpty());
    QCOMPARE(readTextSource(path), QStringLiteral("Name,M1\na,1\n"));
}

void TestTextSource::byteOrderMarkDropped()
{
    const QString path = m_dir->write(QStringLiteral("bom.csv"), "\xEF\xBB\xBFName,M1\n");
    QCOMPARE(readTextSource(path), QStringLiteral("Name,M1\n"));
}

void TestTextSource::emptyFileGivesEmptyText()
{
    const QString path = m_dir->write(QStringLiteral("empty.csv"), QByteArray());
    QVERIFY(!path.isEmpty());
    QCOMPARE(readTextSource(path), QString());
}

void TestTextSource::missingFileIsText()
{
    const QString name = m_dir->filePath(QStringLiteral("nowhere.csv"));
    QCOMPARE(readTextSource(name), name);
    QCOMPARE(readTextSource(QStringLiteral("Name,M1")), QStringLiteral("Name,M1"));
}

void TestTextSource::textWithLineFeedIsText()
{
    // Even when the part before the line feed names a file.
    const QString path = m_dir->write(QStringLiteral("t.csv"), "file content");
    const QString text = path + QStringLiteral("\n");
    QCOMPARE(readTextSource(text), text);
}

void TestTextSource::longNameIsText()
{
    // A path of 512 characters or more is never taken for a file name.
    QString folder = m_dir->path();
    while (folder.size() < 520) {
        folder += QStringLiteral("/") + QString(100, QLatin1Char('d'));
        QVERIFY(QDir().mkpath(folder));
    }
    const QString path = folder + QStringLiteral("/t.csv");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("content");
    file.close();
    QVERIFY(path.size() >= 512);
    QCOMPARE(readTextSource(path), path);
}

void TestTextSource::nameJustShortEnoughIsRead()
{
    QString folder = m_dir->path() + QStringLiteral("/");
    const int room = 511 - folder.size() - QStringLiteral("/t.csv").size();
    QVERIFY(room > 0);
    folder += QString(qMin(room, 200), QLatin1Char('e'));
    while (folder.size() + 6 < 511) {
        QVERIFY(QDir().mkpath(folder));
        const int left = 511 - 6 - folder.size() - 1;
        folder += QStringLiteral("/") + QString(qMin(left, 200), QLatin1Char('e'));
    }
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("/t.csv");
    QCOMPARE(path.size(), 511);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("content");
    file.close();
    QCOMPARE(readTextSource(path), QStringLiteral("content"));
}

void TestTextSource::folderGivesEmptyText()
{
    // A folder exists but cannot be read as a file: no text, rather than its
    // name taken for a table.
    QCOMPARE(readTextSource(m_dir->path()), QString());
}

QTEST_GUILESS_MAIN(TestTextSource)
#include "tst_textsource.moc"

#include "CellText.h"
#include "RandomTable.h"
#include "XCsv.h"
#include "XResult.h"
#include "XWorkspace.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

XResult::Entries entriesFor(int dataRows)
{
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p) {
        QList<int> rows;
        for (int r = 1; r <= qMin(dataRows, 1 + p / 40); ++r)
            rows << r;
        entries << XResult::Entry(p, rows);
    }
    return entries;
}

XWorkspace* makeWorkspace(XCsv* csv, XCsv* src)
{
    return new XWorkspace(csv, src, new XResult(entriesFor(csv->rows() - 1), csv, src));
}

int sectionCount(QString const& text)
{
    return text.split(QLatin1Char('\n')).count(QStringLiteral("#"));
}

} // namespace

class TestXWorkspace : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void exampleText();
    void withoutStartingCollection();
    void withStartingCollection();
    void sliderDefaultAndRoundTrip();
    void settingsLinesTrimmedAndSplit();
    void otherSettingsKept();
    void lowerBoundsRoundTrip();
    void runSettingsRoundTrip();
    void runSettingsAbsentOrDamaged();
    void sliderValues_data();
    void sliderValues();
    void hasSourceValues_data();
    void hasSourceValues();
    void writeReadWrite_data();
    void writeReadWrite();
    void finalLineEndReadsAlike();
    void emptyLineAfterLastSectionEnds();
    void crlfLineEnds();
    void emptyTableSection();
    void emptyTextLeavesNothing();
    void fromFile();
    void unopenableFile();
    void missingFileIsText();
    void secondWorkspaceReplaces();
    void truncatedTexts_data();
    void truncatedTexts();
    void hasSourceWithoutSection();
    void destructorDeletesItsObjects();
    void nullObjectsWritten();
    void isComplete_data();
    void isComplete();
    void problemNamesLine_data();
    void problemNamesLine();
    void linesOfSettingsAndSections();

private:
    QTemporaryDir* m_dir = nullptr;
};

void TestXWorkspace::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
}

void TestXWorkspace::cleanup()
{
    delete m_dir;
    m_dir = nullptr;
}

void TestXWorkspace::exampleText()
{
    XCsv* csv = new XCsv;
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p)
        entries << XResult::Entry(p < 50 ? 2 : 4, p < 50 ? QList<int>{1} : QList<int>{1, 2});
    XWorkspace workspace(csv, nullptr, new XResult(entries, csv, nullptr));
    workspace.setSlider(5);
    QString expected = QStringLiteral("SliderValue=5\n"
                                      "\n"
                                      "#\n"
                                      "\"Name\",\"H1\",\"H2\"\n"
                                      "\"Accession1\",\"1\",\"2\"\n"
                                      "\"Accession2\",\"3\",\"4\"\n"
                                      "\n"
                                      "#\n");
    for (int p = 1; p <= 100; ++p)
        expected += p < 50 ? QStringLiteral("1,2\n") : QStringLiteral("1,2,4\n");
    expected += QStringLiteral("\n#");
    QCOMPARE(workspace.toString(), expected);
    QCOMPARE(workspace.metaObject()->className(), "XWorkspace");
}

void TestXWorkspace::withoutStartingCollection()
{
    XCsv* csv = new XCsv(randomGrid(3));
    QScopedPointer<XWorkspace> written(makeWorkspace(csv, nullptr));
    QVERIFY(!written->hasSource());
    QVERIFY(!written->settings().contains(QStringLiteral("HasSource")));
    const QString text = written->toString();
    QVERIFY(!text.contains(QStringLiteral("HasSource")));
    QCOMPARE(sectionCount(text), 3);

    XWorkspace read(text);
    QVERIFY(!read.hasSource());
    QCOMPARE(read.src(), nullptr);
    QVERIFY(read.csv());
    QCOMPARE(gridText(*read.csv()), gridText(*csv));
    QCOMPARE(read.result()->entries(), written->result()->entries());
    QCOMPARE(read.result()->input(), read.csv());
    QCOMPARE(read.result()->source(), nullptr);
}

void TestXWorkspace::withStartingCollection()
{
    XCsv* csv = new XCsv(randomGrid(4));
    XCsv::Grid startGrid = csv->data().mid(0, 3);
    XCsv* src = new XCsv(startGrid);
    QScopedPointer<XWorkspace> written(makeWorkspace(csv, src));
    QCOMPARE(cellText(written->settings().value(QStringLiteral("HasSource"))),
             QStringLiteral("bool:true"));
    const QString text = written->toString();
    QVERIFY(text.startsWith(QStringLiteral("HasSource=true\n\n#\n")));
    QCOMPARE(sectionCount(text), 4);

    XWorkspace read(text);
    QVERIFY(read.hasSource());
    QCOMPARE(cellText(read.settings().value(QStringLiteral("HasSource"))),
             QStringLiteral("s:true"));
    QVERIFY(read.src());
    QCOMPARE(gridText(*read.src()), gridText(*src));
    QCOMPARE(gridText(*read.csv()), gridText(*csv));
    QCOMPARE(read.result()->source(), read.src());
    QCOMPARE(read.result()->input(), read.csv());
}

void TestXWorkspace::sliderDefaultAndRoundTrip()
{
    QScopedPointer<XWorkspace> written(makeWorkspace(new XCsv, nullptr));
    QCOMPARE(written->slider(), -1);
    written->setSlider(7);
    QCOMPARE(cellText(written->settings().value(QStringLiteral("SliderValue"))),
             QStringLiteral("i:7"));
    written->setSlider(9);
    written->setSlider(7);
    QCOMPARE(written->slider(), 7);
    XWorkspace read(written->toString());
    QCOMPARE(cellText(read.settings().value(QStringLiteral("SliderValue"))), QStringLiteral("s:7"));
    QCOMPARE(read.slider(), 7);
}

void TestXWorkspace::settingsLinesTrimmedAndSplit()
{
    XWorkspace read(QStringLiteral("SliderValue = 12\na=b=c\n\n#\n\n#\n\n#"));
    QCOMPARE(read.slider(), 12);
    QCOMPARE(cellText(read.settings().value(QStringLiteral("a"))), QStringLiteral("s:b"));
    QCOMPARE(read.settings().size(), 2);
}

void TestXWorkspace::otherSettingsKept()
{
    XWorkspace read(QStringLiteral("Zeta=last\nAlpha= 1 \n\n#\n\"N\",\"M\"\n\"a\",1\n\n#\n3\n\n#"));
    QCOMPARE(read.settings().keys(), QStringList({"Alpha", "Zeta"}));
    QVERIFY(read.toString().startsWith(QStringLiteral("Alpha=1\nZeta=last\n\n#\n\"N\",\"M\"\n")));
}

void TestXWorkspace::lowerBoundsRoundTrip()
{
    XCsv* csv = new XCsv(XCsv::Grid{{"Name", "M"}, {"a", 1}, {"b", 2}, {"c", 3}});
    XResult* result = new XResult(entriesFor(3), csv, nullptr);
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << 1 + p / 40;
    result->setLowerBounds(bounds);
    XWorkspace written(csv, nullptr, result);
    const QString text = written.toString();
    QStringList expected;
    for (int bound : bounds)
        expected << QString::number(bound);
    QVERIFY(text.startsWith(QStringLiteral("LowerBounds=") + expected.join(QLatin1Char(',')) +
                            QStringLiteral("\nSearch=exact\n\n#\n")));
    XWorkspace read(text);
    QCOMPARE(read.result()->lowerBounds(), bounds);
    QCOMPARE(read.toString(), text);

    // A reproducible result has no bounds and writes neither setting.
    XCsv* other = new XCsv(XCsv::Grid{{"Name", "M"}, {"a", 1}});
    XWorkspace plain(other, nullptr, new XResult(entriesFor(1), other, nullptr));
    QVERIFY(plain.toString().startsWith(QStringLiteral("\n#\n")));
    QVERIFY(XWorkspace(plain.toString()).result()->lowerBounds().isEmpty());
}

void TestXWorkspace::sliderValues_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("slider");
    QTest::newRow("number") << "SliderValue=42" << 42;
    QTest::newRow("blanks trimmed") << "  SliderValue  =  3  " << 3;
    QTest::newRow("word") << "SliderValue=abc" << -1;
    QTest::newRow("decimal") << "SliderValue=4.5" << -1;
    QTest::newRow("empty") << "SliderValue=" << -1;
    QTest::newRow("inner blank") << "SliderValue=1 2" << -1;
    QTest::newRow("negative") << "SliderValue=-4" << -4;
    QTest::newRow("absent") << "Other=1" << -1;
}

void TestXWorkspace::sliderValues()
{
    QFETCH(QString, line);
    QFETCH(int, slider);
    XWorkspace read(line + QStringLiteral("\n\n#\n\n#\n\n#"));
    QCOMPARE(read.slider(), slider);
}

void TestXWorkspace::hasSourceValues_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("hasSource");
    QTest::newRow("true") << "HasSource=true" << true;
    QTest::newRow("false") << "HasSource=false" << false;
    QTest::newRow("zero") << "HasSource=0" << false;
    QTest::newRow("empty") << "HasSource=" << false;
    QTest::newRow("absent") << "SliderValue=1" << false;
}

void TestXWorkspace::hasSourceValues()
{
    QFETCH(QString, line);
    QFETCH(bool, hasSource);
    XWorkspace read(line + QStringLiteral("\n\n#\n\n#\n\n#\n\n#"));
    QCOMPARE(read.hasSource(), hasSource);
    QCOMPARE(read.src() != nullptr, hasSource);
}

void TestXWorkspace::writeReadWrite_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("withSource");
    for (quint32 seed = 1; seed <= 60; ++seed)
        QTest::newRow(qPrintable(QString::number(seed))) << seed << bool(seed % 2);
}

void TestXWorkspace::writeReadWrite()
{
    QFETCH(quint32, seed);
    QFETCH(bool, withSource);
    XCsv* csv = new XCsv(randomGrid(seed));
    XCsv* src = withSource ? new XCsv(randomGrid(seed + 1000, {1, 5, 1, 12, 10, 5, 9})) : nullptr;
    if (src) {
        // The starting collection shares the input's header row.
        XCsv::Grid grid = src->data();
        grid[0] = csv->at(0);
        for (int r = 1; r < grid.size(); ++r) {
            while (grid[r].size() < csv->columns())
                grid[r] << QStringLiteral("*");
            while (grid[r].size() > csv->columns())
                grid[r].removeLast();
        }
        delete src;
        src = new XCsv(grid);
    }
    QScopedPointer<XWorkspace> written(makeWorkspace(csv, src));
    written->setSlider(int(seed % 100) + 1);
    const QString text = written->toString();
    XWorkspace read(text);
    QCOMPARE(read.toString(), text);
    QVERIFY(read.isComplete());
    QCOMPARE(read.slider(), int(seed % 100) + 1);
}

void TestXWorkspace::finalLineEndReadsAlike()
{
    QScopedPointer<XWorkspace> written(makeWorkspace(new XCsv, new XCsv));
    const QString text = written->toString();
    QVERIFY(text.endsWith(QStringLiteral("\n#")));
    XWorkspace plain(text);
    XWorkspace withLineEnd(text + QLatin1Char('\n'));
    QCOMPARE(withLineEnd.toString(), plain.toString());
    QCOMPARE(plain.toString(), text);
}

void TestXWorkspace::emptyLineAfterLastSectionEnds()
{
    // Reading must end even when the text goes on past its last section.
    QScopedPointer<XWorkspace> written(makeWorkspace(new XCsv, nullptr));
    const QString text = written->toString();
    XWorkspace read(text + QStringLiteral("\n\n"));
    QCOMPARE(read.toString(), text);
    XWorkspace many(text + QStringLiteral("\n\n\n\n   \n"));
    QCOMPARE(many.toString(), text);
}

void TestXWorkspace::crlfLineEnds()
{
    QScopedPointer<XWorkspace> written(makeWorkspace(new XCsv, nullptr));
    written->setSlider(3);
    QString text = written->toString();
    XWorkspace read(QString(text).replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
    QCOMPARE(read.toString(), text);
}

void TestXWorkspace::emptyTableSection()
{
    XCsv* empty = new XCsv(QString());
    XWorkspace written(empty, nullptr, new XResult(entriesFor(0), empty, nullptr));
    const QString text = written.toString();
    QVERIFY(text.startsWith(QStringLiteral("\n#\n\n#\n")));
    XWorkspace read(text);
    QCOMPARE(read.csv()->rows(), 1);
    QCOMPARE(gridText(*read.csv()), QStringList({"s:"}));
}

void TestXWorkspace::emptyTextLeavesNothing()
{
    XWorkspace read{QString()};
    QCOMPARE(read.csv(), nullptr);
    QCOMPARE(read.src(), nullptr);
    QCOMPARE(read.result(), nullptr);
    QVERIFY(read.settings().isEmpty());
    QVERIFY(!read.isComplete());
    QCOMPARE(read.savePath(), QString());
    read.setSavePath(QStringLiteral("/tmp/x.csv"));
    QCOMPARE(read.savePath(), QStringLiteral("/tmp/x.csv"));
}

void TestXWorkspace::fromFile()
{
    QScopedPointer<XWorkspace> written(makeWorkspace(new XCsv(randomGrid(11)), nullptr));
    written->setSlider(50);
    const QString path = m_dir->filePath("w.ccw");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(written->toString().toUtf8());
    file.close();
    XWorkspace read(path);
    QCOMPARE(read.toString(), written->toString());
    QCOMPARE(read.slider(), 50);
    QVERIFY(read.isComplete());
}

void TestXWorkspace::unopenableFile()
{
    XWorkspace read(m_dir->path());
    QCOMPARE(read.csv(), nullptr);
    QCOMPARE(read.result(), nullptr);
    QVERIFY(read.settings().isEmpty());
}

void TestXWorkspace::missingFileIsText()
{
    // A name of no file is a one-line text without "#": reading ends at once.
    XWorkspace read(m_dir->filePath("none.ccw"));
    QCOMPARE(read.csv(), nullptr);
    QVERIFY(read.settings().isEmpty());
    XWorkspace withEquals(m_dir->filePath("a=b"));
    QCOMPARE(withEquals.settings().size(), 1);
    QCOMPARE(withEquals.csv(), nullptr);
}

void TestXWorkspace::secondWorkspaceReplaces()
{
    QScopedPointer<XWorkspace> first(makeWorkspace(new XCsv, nullptr));
    first->setSlider(4);
    QScopedPointer<XWorkspace> second(makeWorkspace(new XCsv(randomGrid(5)), nullptr));
    second->setSlider(9);
    XWorkspace read(first->toString() + QLatin1Char('\n') + QStringLiteral("Extra=1\n") +
                    second->toString());
    QCOMPARE(read.slider(), 9);
    QCOMPARE(read.settings().value(QStringLiteral("Extra")).toString(), QStringLiteral("1"));
    QCOMPARE(gridText(*read.csv()), gridText(*second->csv()));
    QCOMPARE(read.result()->input(), read.csv());
    QCOMPARE(read.result()->entries(), second->result()->entries());
}

void TestXWorkspace::truncatedTexts_data()
{
    QTest::addColumn<int>("cut");
    QTest::addColumn<bool>("hasTable");
    QTest::addColumn<bool>("hasResult");
    // Offsets into the text of makeWorkspace(default table), counted below.
    QTest::newRow("inside settings") << 5 << false << false;
    QTest::newRow("inside input table") << 30 << false << false;
    QTest::newRow("inside result") << -40 << true << false;
    QTest::newRow("before last #") << -1 << true << false;
    QTest::newRow("whole") << 0 << true << true;
}

void TestXWorkspace::truncatedTexts()
{
    QFETCH(int, cut);
    QFETCH(bool, hasTable);
    QFETCH(bool, hasResult);
    QScopedPointer<XWorkspace> written(makeWorkspace(new XCsv, nullptr));
    written->setSlider(1);
    const QString text = written->toString();
    const QString part = cut > 0 ? text.left(cut) : text.left(text.size() + cut);
    XWorkspace read(part);
    QCOMPARE(read.csv() != nullptr, hasTable);
    QCOMPARE(read.result() != nullptr, hasResult);
    QCOMPARE(read.isComplete(), hasResult);
}

void TestXWorkspace::hasSourceWithoutSection()
{
    // The result is taken as the starting collection, and one more section
    // is missing: no result, so the workspace is incomplete.
    XCsv* csv = new XCsv;
    XWorkspace written(csv, nullptr, new XResult(entriesFor(2), csv, nullptr));
    XWorkspace read(QStringLiteral("HasSource=true\n") + written.toString());
    QVERIFY(read.hasSource());
    QVERIFY(read.src());
    QCOMPARE(read.result(), nullptr);
    QVERIFY(!read.isComplete());
}

void TestXWorkspace::destructorDeletesItsObjects()
{
    QPointer<XCsv> csv = new XCsv;
    QPointer<XCsv> src = new XCsv;
    QPointer<XResult> result = new XResult(entriesFor(2), csv, src);
    auto* workspace = new XWorkspace(csv, src, result);
    QCOMPARE(csv->parent(), nullptr);
    QCOMPARE(result->parent(), nullptr);
    delete workspace;
    QVERIFY(csv.isNull());
    QVERIFY(src.isNull());
    QVERIFY(result.isNull());
}

void TestXWorkspace::nullObjectsWritten()
{
    XWorkspace empty(nullptr, nullptr, nullptr);
    QCOMPARE(empty.toString(), QStringLiteral("\n#\n\n#\n\n#"));
}

void TestXWorkspace::isComplete_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("complete");
    QString result;
    for (int p = 1; p <= 100; ++p)
        result += QStringLiteral("1,2,%1\n").arg(p);
    const QString input = QStringLiteral("\"N\",\"M\",\"M\"\n\"a\",1,2\n\"b\",3,4\n");
    const QString start = QStringLiteral("\"N\",\"M\",\"M\"\n\"s\",5,6\n");
    QTest::newRow("whole") << QString("\n#\n" + input + "\n#\n" + result + "\n#") << true;
    QTest::newRow("with start") << QString("HasSource=true\n\n#\n" + input + "\n#\n" + start +
                                           "\n#\n" + result + "\n#")
                                << true;
    QTest::newRow("header only") << QString("\n#\n\"N\",\"M\",\"M\"\n\n#\n" + result + "\n#")
                                 << false;
    QTest::newRow("row past table")
        << QString("\n#\n" + input + "\n#\n" + QString(result).replace("1,2,100", "1,3,100") +
                   "\n#")
        << false;
    QTest::newRow("row zero") << QString("\n#\n" + input + "\n#\n" +
                                         QString(result).replace("1,2,7\n", "0,7\n") + "\n#")
                              << false;
    QTest::newRow("99 entries") << QString("\n#\n" + input + "\n#\n" + result.section('\n', 1) +
                                           "\n#")
                                << false;
    QTest::newRow("101 entries") << QString("\n#\n" + input + "\n#\n" + result + "5\n\n#") << false;
    QTest::newRow("start with other header")
        << QString("HasSource=true\n\n#\n" + input + "\n#\n\"N\",\"M\",\"X\"\n\"s\",5,6\n\n#\n" +
                   result + "\n#")
        << false;
    QTest::newRow("ragged header")
        << QString("\n#\n\"N\"\n\"N\",\"M\",\"M\"\n\"a\",1,2\n\n#\n" + result + "\n#") << false;
    QTest::newRow("single column") << QString("\n#\n\"N\"\n\"a\"\n\n#\n" + result + "\n#") << false;
    QTest::newRow("count not a number")
        << QString("\n#\n" + input + "\n#\n" + QString(result).replace("1,2,7\n", "1,2,x7\n") +
                   "\n#")
        << false;
    QTest::newRow("negative count")
        << QString("\n#\n" + input + "\n#\n" + QString(result).replace("1,2,7\n", "1,2,-7\n") +
                   "\n#")
        << false;
    QString repeated;
    for (int i = 0; i < 100000; ++i)
        repeated += QStringLiteral("1,");
    QTest::newRow("row named 100000 times")
        << QString("\n#\n" + input + "\n#\n" +
                   QString(result).replace("1,2,7\n", repeated + QStringLiteral("7\n")) + "\n#")
        << false;
    QTest::newRow("row named twice, within the table's size")
        << QString("\n#\n" + input + "\n#\n" + QString(result).replace("1,2,7\n", "2,2,7\n") +
                   "\n#")
        << true;
    QTest::newRow("more rows than the table has")
        << QString("\n#\n" + input + "\n#\n" + QString(result).replace("1,2,7\n", "2,1,2,7\n") +
                   "\n#")
        << false;
    QTest::newRow("text after last #")
        << QString("\n#\n" + input + "\n#\n" + result + "\n#\nnot a workspace\n") << false;
    QTest::newRow("half a workspace after last #")
        << QString("\n#\n" + input + "\n#\n" + result + "\n#\nSliderValue=3\n\n#\n" + input)
        << false;
    QTest::newRow("blank lines after last #")
        << QString("\n#\n" + input + "\n#\n" + result + "\n#\n\n  \n\n") << true;
    QTest::newRow("second whole workspace")
        << QString("\n#\n" + input + "\n#\n" + result + "\n#\n\n#\n" + input + "\n#\n" + result +
                   "\n#")
        << true;
}

void TestXWorkspace::isComplete()
{
    QFETCH(QString, text);
    QFETCH(bool, complete);
    XWorkspace read(text);
    QCOMPARE(read.isComplete(), complete);
}

void TestXWorkspace::problemNamesLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    QString result;
    for (int p = 1; p <= 100; ++p)
        result += QStringLiteral("1,2,%1\n").arg(p);
    // Lines: 1 "SliderValue=1", 2 empty, 3 "#", 4-6 the input, 7 empty, 8
    // "#", then the result from line 9.
    const QString input = QStringLiteral("\"N\",\"M\",\"M\"\n\"a\",1,2\n\"b\",3,4\n");
    const QString head = QStringLiteral("SliderValue=1\n\n#\n");
    QTest::newRow("whole") << QString(head + input + "\n#\n" + result + "\n#") << QString();
    QTest::newRow("cut off") << QString(head + input + "\n#\n" + result)
                             << "it does not hold a whole analysis";
    QTest::newRow("line of another width")
        << QString(head + input + "\"c\",5\n\n#\n" + result + "\n#")
        << "line 7: the number of fields differs from the header row's";
    QTest::newRow("header only") << QString(head + "\"N\",\"M\",\"M\"\n\n#\n" + result + "\n#")
                                 << "line 4: the input table has no accessions";
    QTest::newRow("no allele column") << QString(head + "\"N\"\n\"a\"\n\n#\n" + result + "\n#")
                                      << "line 4: the table has no allele columns";
    QTest::newRow("result line damaged")
        << QString(head + input + "\n#\n" + QString(result).replace("1,2,7\n", "1,x,7\n") + "\n#")
        << "line 15: a result line holds something other than row numbers and an allele count "
           "of 0 or more";
    QTest::newRow("99 result lines")
        << QString(head + input + "\n#\n" + result.section('\n', 1) + "\n#")
        << "line 9: the result has 99 lines, and a search writes 100";
    QTest::newRow("row past the table")
        << QString(head + input + "\n#\n" + QString(result).replace("1,2,7\n", "1,3,7\n") + "\n#")
        << "line 15: row 3 is not an accession of the input table, which has 2";
    QTest::newRow("core longer than the table")
        << QString(head + input + "\n#\n" + QString(result).replace("1,2,7\n", "1,2,1,7\n") + "\n#")
        << "line 15: the core lists 3 accessions, and the input table has 2";
    QTest::newRow("start with another header")
        << QString("HasSource=true\n" + head + input + "\n#\n\"N\",\"M\",\"X\"\n\"s\",5,6\n\n#\n" +
                   result + "\n#")
        << "line 10: the starting collection's header row differs from the input table's";
    QTest::newRow("start line of another width")
        << QString("HasSource=true\n" + head + input + "\n#\n\"N\",\"M\",\"M\"\n\"s\",5\n\n#\n" +
                   result + "\n#")
        << "line 11: the number of fields differs from the header row's";
}

void TestXWorkspace::problemNamesLine()
{
    QFETCH(QString, text);
    QFETCH(QString, problem);
    XWorkspace read(text);
    QCOMPARE(read.problem(), problem);
    QCOMPARE(read.isComplete(), problem.isEmpty());
}

void TestXWorkspace::linesOfSettingsAndSections()
{
    XCsv* csv = new XCsv;
    XCsv* src = new XCsv;
    XWorkspace written(csv, src, new XResult(entriesFor(2), csv, src));
    written.setSlider(4);
    QCOMPARE(written.lines().input, 0);
    XWorkspace read(written.toString());
    // HasSource, SliderValue, empty, "#", 3 table lines, empty, "#", again
    // for the start, then the result.
    QCOMPARE(read.lines().settings.value(QStringLiteral("HasSource")), 1);
    QCOMPARE(read.lines().settings.value(QStringLiteral("SliderValue")), 2);
    QCOMPARE(read.lines().input, 5);
    QCOMPARE(read.lines().start, 10);
    QCOMPARE(read.lines().result, 15);
    QCOMPARE(XWorkspace::atLine(12, QStringLiteral("what")), QStringLiteral("line 12: what"));
    QCOMPARE(XWorkspace::atLine(0, QStringLiteral("what")), QStringLiteral("what"));
}

void TestXWorkspace::runSettingsRoundTrip()
{
    XCsv* csv = new XCsv(XCsv::Grid{{"Name", "M"}, {"a", 1}, {"b", 2}, {"c", 3}});
    XWorkspace reproducible(csv, nullptr, new XResult(entriesFor(3), csv, nullptr));
    reproducible.setRun(XSearchSettings::reproducible(5, 1732345678));
    const QString text = reproducible.toString();
    QVERIFY(text.startsWith(
        QStringLiteral("Iterations=5\nSearch=reproducible\nSeed=1732345678\n\n#\n")));
    XWorkspace read(text);
    QCOMPARE(read.search(), QStringLiteral("reproducible"));
    QCOMPARE(read.iterations(), 5);
    QCOMPARE(read.seed(), 1732345678);
    QCOMPARE(read.budget(), -1);
    QCOMPARE(read.seconds(), -1.0);
    QCOMPARE(read.toString(), text);

    XCsv* other = new XCsv(XCsv::Grid{{"Name", "M"}, {"a", 1}, {"b", 2}, {"c", 3}});
    XResult* result = new XResult(entriesFor(3), other, nullptr);
    result->setLowerBounds(QList<int>() << 1);
    XWorkspace exact(other, nullptr, result);
    exact.setRun(XSearchSettings::exact(60), 41.26);
    XWorkspace readExact(exact.toString());
    QCOMPARE(readExact.search(), QStringLiteral("exact"));
    QCOMPARE(readExact.budget(), 60);
    QCOMPARE(readExact.seconds(), 41.3);
    QCOMPARE(readExact.seed(), -1);
    QCOMPARE(readExact.iterations(), -1);
    QVERIFY(exact.toString().startsWith(
        QStringLiteral("Budget=60\nLowerBounds=1\nSearch=exact\nSeconds=41.3\n\n#\n")));
}

void TestXWorkspace::runSettingsAbsentOrDamaged()
{
    XWorkspace none(QStringLiteral("\n#\n\"N\",\"M\"\n\"a\",1\n\n#\n3\n\n#"));
    QCOMPARE(none.search(), QString());
    QCOMPARE(none.seed(), -1);
    QCOMPARE(none.iterations(), -1);
    XWorkspace damaged(QStringLiteral(
        "Seed= 7x\nIterations=\nSeconds=soon\n\n#\n\"N\",\"M\"\n\"a\",1\n\n#\n3\n\n#"));
    QCOMPARE(damaged.seed(), -1);
    QCOMPARE(damaged.iterations(), -1);
    QCOMPARE(damaged.seconds(), -1.0);
}

QTEST_GUILESS_MAIN(TestXWorkspace)
#include "tst_xworkspace.moc"

#include "CellText.h"
#include "RandomTable.h"
#include "TemporaryFolder.h"
#include "XCsv.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestXCsv : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void defaultTable();
    void defaultTableText();
    void emptyText();
    void blankLineSkippedOnceColumnsFixed();
    void linesBeforeColumnsFixed();
    void quotedCommaSplits();
    void quotedCommaSkippedWhenColumnsFixed();
    void quoteFields_data();
    void quoteFields();
    void fieldConversion_data();
    void fieldConversion();
    void unquotedTextWrittenQuoted();
    void fileRoundTrip();
    void crlfLineEnds();
    void byteOrderMark();
    void fromStringAppends();
    void fileNameRule();
    void longNameIsText();
    void nameWithLineFeedIsText();
    void missingFileIsText();
    void unopenableFileGivesNoRows();
    void shortAndLongRowsWritten();
    void invalidCellWrittenEmpty();
    void isRectangular();
    void listConstructor();
    void listConstructorHasNoParent();
    void listConstructorEmptyGrid();
    void gridIsShared();
    void addRow();
    void addRowRange_data();
    void addRowRange();
    void addRowNarrowTable_data();
    void addRowNarrowTable();
    void addRowFrontOfHeader();
    void addColumn();
    void addColumnHeaderOnly();
    void addColumnRange();
    void addColumnNoRows();
    void addColumnShortRow();
    void removeColumnNoRows();
    void removeColumnShortRow();
    void removeColumnRange();
    void removeRowHeader();
    void removeRowRange();
    void setCell();
    void setCellRange();
    void roundTripRandom_data();
    void roundTripRandom();
    void separatorOf_data();
    void separatorOf();
    void semicolonsReadLikeCommas();
    void tabsKeepEmptyEndFields();
    void commaTextUnchangedByFromText();
    void separatorNotes();
    void nameOrTextStaysComma();
    void linesOfRowsKept();

private:
    std::unique_ptr<TemporaryFolder> m_dir;
};

void TestXCsv::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestXCsv::cleanup()
{
    m_dir.reset();
}

void TestXCsv::defaultTable()
{
    QObject parent;
    XCsv* table = new XCsv(&parent);
    QCOMPARE(table->parent(), &parent);
    QCOMPARE(table->rows(), 3);
    QCOMPARE(table->columns(), 3);
    QCOMPARE(gridText(*table),
             QStringList({"s:Name|s:H1|s:H2", "s:Accession1|s:1|s:2", "s:Accession2|s:3|s:4"}));
    QCOMPARE(table->metaObject()->className(), "XCsv");
}

void TestXCsv::defaultTableText()
{
    XCsv table;
    QCOMPARE(table.toString(), QStringLiteral("\"Name\",\"H1\",\"H2\"\n\"Accession1\",\"1\",\"2\"\n"
                                              "\"Accession2\",\"3\",\"4\"\n"));
}

void TestXCsv::emptyText()
{
    XCsv table(QString(), nullptr);
    QCOMPARE(table.rows(), 0);
    QCOMPARE(table.columns(), 0);
    QCOMPARE(table.toString(), QString(""));
}

void TestXCsv::blankLineSkippedOnceColumnsFixed()
{
    XCsv table(QStringLiteral("a,b\n\nc,d"));
    QCOMPARE(table.rows(), 2);
    QCOMPARE(table.columns(), 2);
    QCOMPARE(gridText(table), QStringList({"s:a|s:b", "s:c|s:d"}));
}

void TestXCsv::linesBeforeColumnsFixed()
{
    XCsv table(QStringLiteral("\nx\na,b,c\n1,2\n4,5,6"));
    QCOMPARE(table.rows(), 4);
    QCOMPARE(table.columns(), 3);
    QCOMPARE(gridText(table), QStringList({"s:", "s:x", "s:a|s:b|s:c", "i:4|i:5|i:6"}));
}

void TestXCsv::quotedCommaSplits()
{
    XCsv table(QStringLiteral("\"a,b\",1"));
    QCOMPARE(table.rows(), 1);
    QCOMPARE(table.columns(), 3);
    QCOMPARE(gridText(table), QStringList({"s:\"a|s:b\"|i:1"}));
}

void TestXCsv::quotedCommaSkippedWhenColumnsFixed()
{
    XCsv table(QStringLiteral("h,v\n\"a,b\",1\nc,2"));
    QCOMPARE(table.columns(), 2);
    QCOMPARE(gridText(table), QStringList({"s:h|s:v", "s:c|i:2"}));
}

void TestXCsv::quoteFields_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("cell");
    QTest::newRow("two quotes") << "\"\""
                                << "s:";
    QTest::newRow("one quote") << "\""
                               << "s:";
    QTest::newRow("quoted text") << "\"abc\""
                                 << "s:abc";
    QTest::newRow("quoted number stays text") << "\"12\""
                                              << "s:12";
    QTest::newRow("blanks around quotes") << "  \"ab\" "
                                          << "s:ab";
    QTest::newRow("quote at start only") << "\"ab"
                                         << "s:\"ab";
    QTest::newRow("quote at end only") << "ab\""
                                       << "s:ab\"";
    QTest::newRow("inner quotes kept") << "\"a\"b\""
                                       << "s:a\"b";
}

void TestXCsv::quoteFields()
{
    QFETCH(QString, field);
    QFETCH(QString, cell);
    XCsv table(QStringLiteral("x,") + field);
    QCOMPARE(table.rows(), 1);
    QCOMPARE(cellText(table.at(0, 1)), cell);
    QVERIFY(!table.at(0, 1).isNull());
}

void TestXCsv::fieldConversion_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("cell");
    QTest::newRow("number") << "183"
                            << "i:183";
    QTest::newRow("zero") << "0"
                          << "i:0";
    QTest::newRow("negative") << "-3"
                              << "i:-3";
    QTest::newRow("plus sign") << "+3"
                               << "i:3";
    QTest::newRow("leading zeros") << "007"
                                   << "i:7";
    QTest::newRow("star") << "*"
                          << "s:*";
    QTest::newRow("decimal") << "1.5"
                             << "s:1.5";
    QTest::newRow("exponent") << "1e3"
                              << "s:1e3";
    QTest::newRow("blank before number is text") << " 12"
                                                 << "s:12";
    QTest::newRow("blank after number is text") << "12 "
                                                << "s:12";
    QTest::newRow("empty") << ""
                           << "s:";
    QTest::newRow("blanks only") << "   "
                                 << "s:";
    QTest::newRow("beyond int") << "2147483648"
                                << "s:2147483648";
    QTest::newRow("unicode") << QString::fromUtf8("Zébu ñ 牛") << QString::fromUtf8("s:Zébu ñ 牛");
}

void TestXCsv::fieldConversion()
{
    QFETCH(QString, field);
    QFETCH(QString, cell);
    XCsv table(QStringLiteral("x,") + field + QStringLiteral(",y"));
    QCOMPARE(table.columns(), 3);
    QCOMPARE(cellText(table.at(0, 1)), cell);
}

void TestXCsv::unquotedTextWrittenQuoted()
{
    XCsv table(QStringLiteral("Name,H1,H2\nAccession1,1,2\n"));
    QCOMPARE(table.toString(), QStringLiteral("\"Name\",\"H1\",\"H2\"\n\"Accession1\",1,2\n"));
}

void TestXCsv::fileRoundTrip()
{
    const QString path =
        m_dir->write("t.csv", "Name,M1,M1,M2\nA1,183,185,*\n42,0,7,\"x y\"\n\"B 3\",-1,\"9\",12\n");
    XCsv table(path);
    QCOMPARE(table.rows(), 4);
    QCOMPARE(table.columns(), 4);
    const QStringList cells = gridText(table);
    QCOMPARE(cells, QStringList({"s:Name|s:M1|s:M1|s:M2", "s:A1|i:183|i:185|s:*",
                                 "i:42|i:0|i:7|s:x y", "s:B 3|i:-1|s:9|i:12"}));
    const QString text = table.toString();
    QCOMPARE(text, QStringLiteral("\"Name\",\"M1\",\"M1\",\"M2\"\n\"A1\",183,185,\"*\"\n"
                                  "42,0,7,\"x y\"\n\"B 3\",-1,\"9\",12\n"));
    XCsv again(text);
    QCOMPARE(gridText(again), cells);
    QCOMPARE(again.toString(), text);
}

void TestXCsv::crlfLineEnds()
{
    XCsv table(m_dir->write("crlf.csv", "Name,M1\r\nA,1\r\nB,2\r\n"));
    QCOMPARE(gridText(table), QStringList({"s:Name|s:M1", "s:A|i:1", "s:B|i:2"}));
    // A file cut after its last carriage return keeps its last number.
    XCsv cut(m_dir->write("cut.csv", "Name,M1\r\nA,1\r\nB,2\r"));
    QCOMPARE(gridText(cut), QStringList({"s:Name|s:M1", "s:A|i:1", "s:B|i:2"}));
}

void TestXCsv::byteOrderMark()
{
    XCsv fromFile(m_dir->write("bom.csv", "\xEF\xBB\xBFName,M1\nA,1\n"));
    QCOMPARE(gridText(fromFile), QStringList({"s:Name|s:M1", "s:A|i:1"}));
    XCsv fromText(QString(QChar(0xFEFF)) + QStringLiteral("1,2\n3,4\n"));
    QCOMPARE(gridText(fromText), QStringList({"i:1|i:2", "i:3|i:4"}));
}

void TestXCsv::fromStringAppends()
{
    XCsv table;
    QString more = QStringLiteral("a,b\nc,d,e\n");
    table.fromString(more);
    QCOMPARE(table.rows(), 4);
    QCOMPARE(table.columns(), 2);
    QCOMPARE(rowText(table.at(3)), QStringLiteral("s:a|s:b"));
}

void TestXCsv::fileNameRule()
{
    const QString path = m_dir->write("x.csv", "a,b\n1,2\n");
    XCsv table(path);
    QCOMPARE(gridText(table), QStringList({"s:a|s:b", "i:1|i:2"}));
}

void TestXCsv::longNameIsText()
{
    // A real file whose name is 512 characters or longer is still text.
    QString name = m_dir->path() + QLatin1Char('/');
    while (name.size() < 512)
        name += QStringLiteral("d/");
    QString dirs = name;
    dirs.chop(1);
    QVERIFY(QDir().mkpath(dirs));
    const QString path = dirs + QStringLiteral("/f");
    QVERIFY(path.size() >= 512);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("p,q\n1,2\n");
    file.close();
    QVERIFY(QFile::exists(path));
    XCsv table(path);
    QCOMPARE(table.rows(), 1);
    QCOMPARE(table.columns(), 0);
    QCOMPARE(cellText(table.at(0, 0)), QStringLiteral("s:") + path);
}

void TestXCsv::nameWithLineFeedIsText()
{
    XCsv table(QStringLiteral("a,b\n"));
    QCOMPARE(gridText(table), QStringList({"s:a|s:b"}));
}

void TestXCsv::missingFileIsText()
{
    const QString name = m_dir->filePath("none.csv");
    XCsv table(name);
    QCOMPARE(table.rows(), 1);
    QCOMPARE(table.columns(), 0);
    QCOMPARE(cellText(table.at(0, 0)), QStringLiteral("s:") + name);
}

void TestXCsv::unopenableFileGivesNoRows()
{
    // A directory exists but cannot be read as a file.
    XCsv table(m_dir->path());
    QCOMPARE(table.rows(), 0);
    QCOMPARE(table.columns(), 0);
    XCsv empty(m_dir->write("empty.csv", ""));
    QCOMPARE(empty.rows(), 0);
    QCOMPARE(empty.columns(), 0);
}

void TestXCsv::shortAndLongRowsWritten()
{
    XCsv::Grid grid{{QStringLiteral("x"), QStringLiteral("y")},
                    {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")},
                    {QStringLiteral("z")},
                    {}};
    XCsv table(grid);
    QCOMPARE(table.columns(), 2);
    QCOMPARE(table.toString(), QStringLiteral("\"x\",\"y\"\n\"a\",\"b\"\"c\"\n\"z\",\n\n"));
}

void TestXCsv::invalidCellWrittenEmpty()
{
    XCsv table(XCsv::Grid{{QVariant(), 5, QStringLiteral("t")}, {true, 1.5, QVariant()}});
    QCOMPARE(table.toString(), QStringLiteral(",5,\"t\"\ntrue,1.5,\n"));
}

void TestXCsv::isRectangular()
{
    QVERIFY(XCsv().isRectangular());
    QVERIFY(XCsv(QString()).isRectangular());
    QVERIFY(!XCsv(QStringLiteral("\nx\na,b,c\n1,2\n4,5,6")).isRectangular());
    QVERIFY(!XCsv(XCsv::Grid{{1, 2}, {3}}).isRectangular());
    QVERIFY(!XCsv(XCsv::Grid{{1, 2}, {3, 4, 5}}).isRectangular());
    XCsv table;
    QVERIFY(table.removeColumn(1));
    QVERIFY(table.isRectangular());
}

void TestXCsv::listConstructor()
{
    XCsv::Grid grid{{QStringLiteral("Name"), QStringLiteral("M")}, {QStringLiteral("A"), 3}};
    XCsv table(grid);
    QCOMPARE(table.columns(), 2);
    QCOMPARE(gridText(table), QStringList({"s:Name|s:M", "s:A|i:3"}));
}

void TestXCsv::listConstructorHasNoParent()
{
    QObject parent;
    XCsv* table = new XCsv(XCsv::Grid{{1, 2}}, &parent);
    QCOMPARE(table->parent(), nullptr);
    QVERIFY(parent.children().isEmpty());
    delete table;
}

void TestXCsv::listConstructorEmptyGrid()
{
    XCsv table{XCsv::Grid()};
    QCOMPARE(table.rows(), 0);
    QCOMPARE(table.columns(), 0);
    QCOMPARE(table.toString(), QString(""));
}

void TestXCsv::gridIsShared()
{
    XCsv::Grid grid = randomGrid(7);
    XCsv table(grid);
    QVERIFY(table.data().isSharedWith(grid));
    XCsv::Grid copy = table.data();
    QVERIFY(copy.isSharedWith(table.data()));
    QVERIFY(&table.at(1) == &table.data().at(1));
    QVERIFY(&table.at(1, 1) == &table.data().at(1).at(1));
    // Editing detaches the table; the copy keeps its cells.
    QVERIFY(table.setCell(1, 1, QStringLiteral("*")));
    QVERIFY(!copy.isSharedWith(table.data()));
    QCOMPARE(cellText(table.at(1, 1)), QStringLiteral("s:*"));
    QCOMPARE(copy.at(1).at(1), grid.at(1).at(1));
}

void TestXCsv::addRow()
{
    XCsv table;
    QVERIFY(table.addRow(table.rows(), QStringLiteral("New"), QStringLiteral("*")));
    QCOMPARE(table.rows(), 4);
    QCOMPARE(rowText(table.at(3)), QStringLiteral("s:New|s:*|s:*"));
    QVERIFY(table.addRow(1, QStringLiteral("First"), 0));
    QCOMPARE(rowText(table.at(1)), QStringLiteral("s:First|i:0|i:0"));
    QCOMPARE(rowText(table.at(2)), QStringLiteral("s:Accession1|s:1|s:2"));
    QCOMPARE(table.columns(), 3);
}

void TestXCsv::addRowRange_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("-1") << -1000 << false;
    QTest::newRow("rows()") << 0 << true;
    QTest::newRow("rows() + 1") << 1 << false;
}

void TestXCsv::addRowRange()
{
    QFETCH(int, offset);
    QFETCH(bool, accepted);
    XCsv table;
    const QString before = table.toString();
    const int index = offset == -1000 ? -1 : table.rows() + offset;
    QCOMPARE(table.addRow(index, QStringLiteral("r"), QStringLiteral("*")), accepted);
    if (!accepted)
        QCOMPARE(table.toString(), before);
}

void TestXCsv::addRowNarrowTable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::newRow("columns 0") << "" << 0;
    QTest::newRow("columns 1") << "just one" << 0;
}

void TestXCsv::addRowNarrowTable()
{
    QFETCH(QString, text);
    QFETCH(int, columns);
    XCsv table(text);
    QCOMPARE(table.columns(), columns);
    QVERIFY(table.addRow(table.rows(), QStringLiteral("L"), 9));
    QCOMPARE(rowText(table.at(table.rows() - 1)), QStringLiteral("s:L"));

    XCsv one(XCsv::Grid{{QStringLiteral("h")}});
    QCOMPARE(one.columns(), 1);
    QVERIFY(one.addRow(1, QStringLiteral("L"), 9));
    QCOMPARE(rowText(one.at(1)), QStringLiteral("s:L"));
}

void TestXCsv::addRowFrontOfHeader()
{
    XCsv table;
    QVERIFY(table.addRow(0, QStringLiteral("Top"), QStringLiteral("-")));
    QCOMPARE(rowText(table.at(0)), QStringLiteral("s:Top|s:-|s:-"));
    QCOMPARE(rowText(table.at(1)), QStringLiteral("s:Name|s:H1|s:H2"));
}

void TestXCsv::addColumn()
{
    XCsv table;
    QVERIFY(table.addColumn(table.columns(), QStringLiteral("H3"), QStringLiteral("*")));
    QCOMPARE(table.columns(), 4);
    QCOMPARE(gridText(table), QStringList({"s:Name|s:H1|s:H2|s:H3", "s:Accession1|s:1|s:2|s:*",
                                           "s:Accession2|s:3|s:4|s:*"}));
    QVERIFY(table.addColumn(1, QStringLiteral("H0"), 5));
    QCOMPARE(rowText(table.at(0)), QStringLiteral("s:Name|s:H0|s:H1|s:H2|s:H3"));
    QCOMPARE(rowText(table.at(2)), QStringLiteral("s:Accession2|i:5|s:3|s:4|s:*"));
    QCOMPARE(table.columns(), 5);
}

void TestXCsv::addColumnHeaderOnly()
{
    XCsv table(QStringLiteral("Name,M1\n"));
    QCOMPARE(table.rows(), 1);
    QVERIFY(table.addColumn(table.columns(), QStringLiteral("M2"), QStringLiteral("*")));
    QCOMPARE(table.rows(), 1);
    QCOMPARE(gridText(table), QStringList({"s:Name|s:M1|s:M2"}));
}

void TestXCsv::addColumnRange()
{
    XCsv table;
    const QString before = table.toString();
    QVERIFY(!table.addColumn(-1, QStringLiteral("x"), 1));
    QVERIFY(!table.addColumn(table.columns() + 1, QStringLiteral("x"), 1));
    QCOMPARE(table.toString(), before);
    QCOMPARE(table.columns(), 3);
}

void TestXCsv::addColumnNoRows()
{
    // Without a header row there is nowhere to put the header: refused.
    XCsv table{QString()};
    QVERIFY(!table.addColumn(0, QStringLiteral("x"), 1));
    QCOMPARE(table.columns(), 0);
}

void TestXCsv::addColumnShortRow()
{
    XCsv table(XCsv::Grid{{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")},
                          {QStringLiteral("r")}});
    QVERIFY(table.addColumn(2, QStringLiteral("n"), 0));
    QCOMPARE(gridText(table), QStringList({"s:a|s:b|s:n|s:c", "s:r|i:0"}));
}

void TestXCsv::removeColumnNoRows()
{
    XCsv table(XCsv::Grid{{1, 2, 3}});
    QVERIFY(table.removeRow(0));
    QCOMPARE(table.rows(), 0);
    QCOMPARE(table.columns(), 3);
    QVERIFY(table.removeColumn(1));
    QCOMPARE(table.columns(), 2);
}

void TestXCsv::removeColumnShortRow()
{
    XCsv table(XCsv::Grid{{1, 2, 3}, {4}});
    QVERIFY(table.removeColumn(2));
    QCOMPARE(gridText(table), QStringList({"i:1|i:2", "i:4"}));
    QCOMPARE(table.columns(), 2);
}

void TestXCsv::removeColumnRange()
{
    XCsv table;
    QVERIFY(!table.removeColumn(-1));
    QVERIFY(!table.removeColumn(3));
    QCOMPARE(table.columns(), 3);
    QVERIFY(table.removeColumn(0));
    QCOMPARE(gridText(table), QStringList({"s:H1|s:H2", "s:1|s:2", "s:3|s:4"}));
}

void TestXCsv::removeRowHeader()
{
    XCsv table;
    QVERIFY(table.removeRow(0));
    QCOMPARE(table.rows(), 2);
    QCOMPARE(rowText(table.at(0)), QStringLiteral("s:Accession1|s:1|s:2"));
}

void TestXCsv::removeRowRange()
{
    XCsv table;
    QVERIFY(!table.removeRow(-1));
    QVERIFY(!table.removeRow(3));
    QCOMPARE(table.rows(), 3);
}

void TestXCsv::setCell()
{
    XCsv table;
    QVERIFY(table.setCell(2, 2, 17));
    QCOMPARE(cellText(table.at(2, 2)), QStringLiteral("i:17"));
    QVERIFY(table.setCell(0, 0, QVariant()));
    QCOMPARE(cellText(table.at(0, 0)), QStringLiteral("null"));
}

void TestXCsv::setCellRange()
{
    XCsv table;
    const QString before = table.toString();
    QVERIFY(!table.setCell(table.rows(), 0, 1));
    QVERIFY(!table.setCell(0, table.columns(), 1));
    QCOMPARE(table.toString(), before);
    // A row shorter than the column count has no such cell.
    XCsv ragged(XCsv::Grid{{1, 2, 3}, {4}});
    QVERIFY(!ragged.setCell(1, 2, 9));
}

void TestXCsv::roundTripRandom_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 200; ++seed)
        QTest::newRow(qPrintable(QString::number(seed))) << seed;
}

void TestXCsv::roundTripRandom()
{
    QFETCH(quint32, seed);
    XCsv original(randomGrid(seed));
    const QString path = m_dir->filePath("r.csv");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(original.toString().toUtf8());
    file.close();

    XCsv read(path);
    QCOMPARE(gridText(read), gridText(original));
    QCOMPARE(read.columns(), original.columns());
    QCOMPARE(read.toString(), original.toString());
}

void TestXCsv::separatorOf_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("separator");
    QTest::newRow("commas") << "a,b\n1,2\n"
                            << ",";
    QTest::newRow("semicolons") << "a;b\n1;2\n"
                                << ";";
    QTest::newRow("tabs") << "a\tb\n1\t2\n"
                          << "\t";
    QTest::newRow("tab and two semicolons") << "a\tb;c;d\n"
                                            << ";";
    QTest::newRow("two tabs and a semicolon") << "a\tb\tc;d\n"
                                              << "\t";
    QTest::newRow("tie goes to semicolons") << "a\tb;c\n"
                                            << ";";
    QTest::newRow("crlf") << "a;b\r\n1;2\r\n"
                          << ";";
    QTest::newRow("byte-order mark") << QString(QChar(0xFEFF)) + "a;b\n"
                                     << ";";
    // A comma anywhere gives more than one column when read with commas.
    QTest::newRow("semicolons, comma later") << "a;b\n1;2\n\"x,y\";3\n"
                                             << ",";
    QTest::newRow("first line has a comma") << "a;b,c\n1;2\n"
                                            << ",";
    QTest::newRow("first line without semicolons") << "title\na;b\n1;2\n"
                                                   << ",";
    QTest::newRow("blank first line") << "\na;b\n1;2\n"
                                      << ",";
    QTest::newRow("single column") << "a\nb\n"
                                   << ",";
    QTest::newRow("empty") << ""
                           << ",";
}

void TestXCsv::separatorOf()
{
    QFETCH(QString, text);
    QFETCH(QString, separator);
    QCOMPARE(QString(XCsv::separatorOf(text)), separator);
}

void TestXCsv::semicolonsReadLikeCommas()
{
    // Quotes, trimming, numbers and the field count follow the comma rules.
    const QString text = QStringLiteral(
        "Name;M1;M1;M2\r\n A1 ;183; 185;*\r\n\"B 2\";\"9\";-1;\"\"\r\nshort;1;2\r\n\r\n"
        "42;0;7;x y\r\n");
    QChar separator;
    std::unique_ptr<XCsv> table(XCsv::fromText(text, &separator));
    QCOMPARE(separator, QLatin1Char(';'));
    QCOMPARE(table->columns(), 4);
    QCOMPARE(gridText(*table), QStringList({"s:Name|s:M1|s:M1|s:M2", "s:A1|i:183|s:185|s:*",
                                            "s:B 2|s:9|i:-1|s:", "i:42|i:0|i:7|s:x y"}));
    QCOMPARE(table->leftOutLines(), QList<int>({4}));
    // The same table with commas reads to the same cells.
    QString commas = text;
    commas.replace(QLatin1Char(';'), QLatin1Char(','));
    std::unique_ptr<XCsv> fromCommas(XCsv::fromText(commas));
    QCOMPARE(gridText(*fromCommas), gridText(*table));
    QCOMPARE(fromCommas->leftOutLines(), table->leftOutLines());
}

void TestXCsv::tabsKeepEmptyEndFields()
{
    // Tabs at either end of a line are empty fields, not white space to trim;
    // spaces around them still go.
    QChar separator;
    std::unique_ptr<XCsv> table(
        XCsv::fromText(QStringLiteral("Name\tM\tM \n\t1\t2\nB\t3\t\r\nC\t4\n"), &separator));
    QCOMPARE(separator, QLatin1Char('\t'));
    QCOMPARE(table->columns(), 3);
    QCOMPARE(gridText(*table), QStringList({"s:Name|s:M|s:M", "s:|i:1|i:2", "s:B|i:3|s:"}));
    QCOMPARE(table->leftOutLines(), QList<int>({4}));
}

void TestXCsv::commaTextUnchangedByFromText()
{
    // Comma text reads exactly as fromString reads it, semicolons and tabs
    // inside fields included.
    const QString text = QStringLiteral("Name;x,M\tM,M\nA;1,\t2 ,3\n\"a,b\",1\n");
    QChar separator;
    std::unique_ptr<XCsv> table(XCsv::fromText(text, &separator));
    QCOMPARE(separator, QLatin1Char(','));
    XCsv appended(XCsv::Grid{});
    QString copy = text;
    appended.fromString(copy);
    QCOMPARE(gridText(*table), gridText(appended));
    QCOMPARE(gridText(*table),
             QStringList({"s:Name;x|s:M\tM|s:M", "s:A;1|s:2|i:3", "s:\"a|s:b\"|i:1"}));
}

void TestXCsv::separatorNotes()
{
    QCOMPARE(XCsv::separatorNote(QLatin1Char(';')),
             QStringLiteral("This file separates its fields with semicolons; it was read that "
                            "way."));
    QCOMPARE(XCsv::separatorNote(QLatin1Char('\t')),
             QStringLiteral("This file separates its fields with tabs; it was read that way."));
    QCOMPARE(XCsv::separatorNote(QLatin1Char(',')), QString());
}

void TestXCsv::nameOrTextStaysComma()
{
    // Workspaces embed tables as comma text: only files the user chose are
    // read with another separator.
    XCsv table(QStringLiteral("a;b\n1;2\n"));
    QCOMPARE(table.columns(), 0);
    QCOMPARE(gridText(table), QStringList({"s:a;b", "s:1;2"}));
}

void TestXCsv::linesOfRowsKept()
{
    // Blank and left-out lines are counted, so a row names its own line.
    XCsv table(QStringLiteral("Name,M\n\nA,1\nB,2,3\nC,3\n"));
    QCOMPARE(table.rows(), 3);
    QCOMPARE(table.lineOf(0), 1);
    QCOMPARE(table.lineOf(1), 3);
    QCOMPARE(table.lineOf(2), 5);
    QCOMPARE(table.leftOutLines(), QList<int>{4});
    // Once rows move, only their places are known.
    QVERIFY(table.removeRow(1));
    QCOMPARE(table.lineOf(1), 2);
    XCsv grid(XCsv::Grid{{"Name", "M"}, {"A", 1}});
    QCOMPARE(grid.lineOf(1), 2);
}

QTEST_GUILESS_MAIN(TestXCsv)
#include "tst_xcsv.moc"

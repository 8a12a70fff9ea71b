#include "CellText.h"
#include "CliRun.h"
#include "TemporaryFolder.h"
#include "XCsv.h"
#include "XResult.h"
#include "XSpreadsheet.h"
#include "XWorkspace.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestVireonCli : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void help();
    void version();
    void summary();
    void summaryWithStart();
    void resultEqualsWorkspaceSection();
    void outputWritesCoreOfPercent();
    void workbookInAndOut_data();
    void workbookInAndOut();
    void semicolonTextAsComma();
    void clockSeedIsPrinted();
    void threadCountKeepsResult();
    void usageErrors_data();
    void usageErrors();
    void inputsThatAreNotFiles_data();
    void inputsThatAreNotFiles();
    void unreadableInput();
    void engineErrors_data();
    void engineErrors();
    void microbovExample();
    void exactSummary();
    void exactResultAndWorkspace();
    void workspaceRecordsRun();

private:
    std::unique_ptr<TemporaryFolder> m_dir;
};

void TestVireonCli::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestVireonCli::cleanup()
{
    m_dir.reset();
}

void TestVireonCli::help()
{
    const CliOutcome o = runCli({QStringLiteral("--help")});
    QCOMPARE(o.status, 0);
    for (const char* option :
         {"--start", "--iterations", "--seed", "--workspace", "--output", "--percent", "--result",
          "--quiet", "--threads", "--search", "--budget", "--allow-left-out", "INPUT", ".ccw"})
        QVERIFY2(o.out.contains(QLatin1String(option)), option);
}

void TestVireonCli::version()
{
    const CliOutcome o = runCli({QStringLiteral("--version")});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out, QStringLiteral("vireon-cli 1.0\n"));
}

void TestVireonCli::summary()
{
    // Either row covers half of the four alleles; both cover all.
    const QString input =
        m_dir->write(QStringLiteral("in.csv"), QByteArray("Name,M1,M1\nA,1,2\nB,3,4\n"));
    const CliOutcome o = runCli({QStringLiteral("-r"), QStringLiteral("7"), input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out, QStringLiteral("percent\taccessions\talleles\trecounted\n"
                                   "1-50\t1\t2\t2\n"
                                   "51-100\t2\t4\t4\n"
                                   "Total alleles: 4; seed: 7\n"));
    QCOMPARE(o.err, QString()); // not a terminal: no progress
}

void TestVireonCli::summaryWithStart()
{
    const QString input =
        m_dir->write(QStringLiteral("in.csv"), QByteArray("Name,M1,M1\nA,1,2\nB,3,4\n"));
    const QString start =
        m_dir->write(QStringLiteral("start.csv"), QByteArray("Name,M1,M1\nS,5,6\n"));
    const CliOutcome o =
        runCli({QStringLiteral("--seed"), QStringLiteral("3"), QStringLiteral("-s"), start,
                QStringLiteral("-i"), QStringLiteral("2"), input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out, QStringLiteral("percent\taccessions\talleles\trecounted\n"
                                   "1-33\t1\t2\t2\n"
                                   "34-66\t2\t4\t4\n"
                                   "67-100\t3\t6\t6\n"
                                   "Total alleles: 6; seed: 3\n"));
}

void TestVireonCli::resultEqualsWorkspaceSection()
{
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    const QString start = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv");
    const QString workspace = m_dir->filePath(QStringLiteral("run.ccw"));
    const CliOutcome o =
        runCli({QStringLiteral("-i"), QStringLiteral("1"), QStringLiteral("-r"),
                QStringLiteral("42"), QStringLiteral("-s"), start, QStringLiteral("-w"), workspace,
                QStringLiteral("-p"), QStringLiteral("60"), QStringLiteral("--result"), input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out.count(QLatin1Char('\n')), 100);
    XWorkspace read(workspace);
    QVERIFY(read.isComplete());
    QVERIFY(read.hasSource());
    QCOMPARE(read.slider(), 60);
    QCOMPARE(read.result()->toString(), o.out);
    QCOMPARE(gridText(*read.csv()), gridText(XCsv(input)));
}

void TestVireonCli::outputWritesCoreOfPercent()
{
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    const QString core = m_dir->filePath(QStringLiteral("core.csv"));
    const CliOutcome o = runCli({QStringLiteral("-i"), QStringLiteral("1"), QStringLiteral("-r"),
                                 QStringLiteral("1"), QStringLiteral("-p"), QStringLiteral("75"),
                                 QStringLiteral("-o"), core, QStringLiteral("--result"), input});
    QCOMPARE(o.status, 0);
    XCsv table(input);
    XResult result(o.out, &table, nullptr);
    XCsv written(core);
    QCOMPARE(gridText(written), gridText(*result.csv(75)));
    QCOMPARE(written.rows(), result.entries().at(74).second.size() + 1);
}

void TestVireonCli::workbookInAndOut_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("magic");
    QTest::newRow("xls") << ".xls" << QByteArray("\xd0\xcf\x11\xe0");
    QTest::newRow("xlsx") << ".xlsx" << QByteArray("PK\x03\x04");
}

void TestVireonCli::workbookInAndOut()
{
    // The same analysis from a workbook gives the same result as from text,
    // and --output writes the kind of workbook its suffix names.
    QFETCH(QString, suffix);
    QFETCH(QByteArray, magic);
    const QString csv = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    const QString xls = m_dir->filePath(QStringLiteral("microbov") + suffix);
    XCsv table(csv);
    QVERIFY(XSpreadsheet::write(table, xls));
    const QString core = m_dir->filePath(QStringLiteral("core") + suffix);
    const QStringList common = {QStringLiteral("-i"), QStringLiteral("1"), QStringLiteral("-r"),
                                QStringLiteral("5"), QStringLiteral("--result")};
    const CliOutcome fromText = runCli(common + QStringList{csv});
    const CliOutcome fromBook =
        runCli(common + QStringList{QStringLiteral("-o"), core, QStringLiteral("-p"),
                                    QStringLiteral("40"), xls});
    QCOMPARE(fromBook.status, 0);
    QCOMPARE(fromBook.out, fromText.out);
    QFile head(core);
    QVERIFY(head.open(QIODevice::ReadOnly));
    QCOMPARE(head.read(4), magic);
    QString error;
    QScopedPointer<XCsv> written(XSpreadsheet::read(core, &error));
    QVERIFY2(written, qPrintable(error));
    XResult result(fromBook.out, &table, nullptr);
    QCOMPARE(gridText(*written), gridText(*result.csv(40)));
}

void TestVireonCli::semicolonTextAsComma()
{
    // microbov as a spreadsheet in a locale with the decimal comma saves it:
    // semicolons and CRLF line ends. Same seed, same result, same core.
    const QString csv = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    QFile original(csv);
    QVERIFY(original.open(QIODevice::ReadOnly));
    QByteArray text = original.readAll();
    QVERIFY(!text.contains(';'));
    text.replace(',', ';').replace("\n", "\r\n");
    const QString semicolons = m_dir->write(QStringLiteral("microbov-semicolons.csv"), text);
    const QStringList common = {
        QStringLiteral("-i"), QStringLiteral("1"),  QStringLiteral("-r"),      QStringLiteral("5"),
        QStringLiteral("-p"), QStringLiteral("40"), QStringLiteral("--result")};
    const QString fromCommasCore = m_dir->filePath(QStringLiteral("commas-core.csv"));
    const QString fromSemicolonsCore = m_dir->filePath(QStringLiteral("semicolons-core.csv"));
    const CliOutcome fromCommas =
        runCli(common + QStringList{QStringLiteral("-o"), fromCommasCore, csv});
    const CliOutcome fromSemicolons =
        runCli(common + QStringList{QStringLiteral("-o"), fromSemicolonsCore, semicolons});
    QCOMPARE(fromCommas.status, 0);
    QCOMPARE(fromSemicolons.status, 0);
    QCOMPARE(fromSemicolons.out.count(QLatin1Char('\n')), 100);
    QCOMPARE(fromSemicolons.out, fromCommas.out);
    QCOMPARE(fromCommas.err, QString());
    QCOMPARE(fromSemicolons.err, semicolons + QStringLiteral(": This file separates its fields "
                                                             "with semicolons; it was read that "
                                                             "way.\n"));
    QCOMPARE(gridText(XCsv(fromSemicolonsCore)), gridText(XCsv(fromCommasCore)));
}

void TestVireonCli::clockSeedIsPrinted()
{
    const QString input =
        m_dir->write(QStringLiteral("in.csv"),
                     QByteArray("Name,M1,M1,M2\nA,1,2,3\nB,3,4,3\nC,1,4,5\nD,2,2,6\n"));
    const CliOutcome first = runCli({input});
    QCOMPARE(first.status, 0);
    const QString last = first.out.trimmed().split(QLatin1Char('\n')).last();
    QVERIFY(last.startsWith(QLatin1String("Total alleles: 7; seed: ")));
    const QString seed = last.mid(last.lastIndexOf(QLatin1Char(' ')) + 1);
    QVERIFY(seed != QLatin1String("0"));
    const CliOutcome again = runCli({QStringLiteral("-r"), seed, input});
    QCOMPARE(again.out, first.out);
}

void TestVireonCli::threadCountKeepsResult()
{
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    QStringList results;
    for (const char* threads : {"1", "2", "3"}) {
        const CliOutcome o =
            runCli({QStringLiteral("-i"), QStringLiteral("2"), QStringLiteral("-r"),
                    QStringLiteral("5"), QStringLiteral("--threads"), QLatin1String(threads),
                    QStringLiteral("--result"), input});
        QCOMPARE(o.status, 0);
        QCOMPARE(o.out.count(QLatin1Char('\n')), 100);
        results << o.out;
    }
    QCOMPARE(results.at(1), results.at(0));
    QCOMPARE(results.at(2), results.at(0));
}

void TestVireonCli::usageErrors_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv");
    QTest::newRow("no input") << QStringList{} << "no INPUT given.";
    QTest::newRow("two inputs") << QStringList{input, input} << "only one INPUT may be given.";
    QTest::newRow("unknown option") << QStringList{"--fast", input} << "Unknown option 'fast'.";
    QTest::newRow("iterations 0") << QStringList{"-i", "0", input}
                                  << "--iterations needs a whole number of at least 1.";
    QTest::newRow("iterations text")
        << QStringList{"-i", "ten", input} << "--iterations needs a whole number of at least 1.";
    QTest::newRow("seed text") << QStringList{"-r", " 4", input} << "--seed needs a whole number.";
    QTest::newRow("threads -1") << QStringList{"-t", "-1", input}
                                << "--threads needs a whole number of at least 0.";
    QTest::newRow("threads text") << QStringList{"--threads", "two", input}
                                  << "--threads needs a whole number of at least 0.";
    QTest::newRow("percent 0") << QStringList{"-p", "0", input}
                               << "--percent needs a whole number from 1 to 100.";
    QTest::newRow("percent 101") << QStringList{"-p", "101", input}
                                 << "--percent needs a whole number from 1 to 100.";
    const QString readme = QStringLiteral(VIREON_EXAMPLES_DIR "/README.md");
    QTest::newRow("wrong suffix")
        << QStringList{readme}
        << readme + ": The file you selected is not a .csv, .xls, .xlsx or .ods file.";
    QTest::newRow("search mode") << QStringList{"--search", "fast", input}
                                 << "--search is reproducible or exact.";
    QTest::newRow("budget negative") << QStringList{"--search", "exact", "--budget", "-1", input}
                                     << "--budget needs a whole number of seconds, 0 or more.";
    QTest::newRow("start wrong suffix")
        << QStringList{"-s", readme, input}
        << readme + ": The file you selected is not a .csv, .xls, .xlsx or .ods file.";
}

void TestVireonCli::usageErrors()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const CliOutcome o = runCli(arguments);
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    QVERIFY2(o.err.contains(message), qPrintable(o.err));
}

void TestVireonCli::inputsThatAreNotFiles_data()
{
    // A name is always a file name: one that is not a readable file never
    // falls through to being read as table text.
    QTest::addColumn<bool>("asStart");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("problem");
    for (bool asStart : {false, true}) {
        const char* role = asStart ? "--start" : "INPUT";
        QTest::addRow("%s missing", role) << asStart << "does_not_exist.csv"
                                          << "no such file";
        QTest::addRow("%s missing workbook", role) << asStart << "gone.xls"
                                                   << "no such file";
        QTest::addRow("%s folder", role) << asStart << "dir.csv"
                                         << "is a folder";
    }
}

void TestVireonCli::inputsThatAreNotFiles()
{
    QFETCH(bool, asStart);
    QFETCH(QString, name);
    QFETCH(QString, problem);
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("dir.csv")));
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    const QString path = m_dir->filePath(name);
    const CliOutcome o =
        runCli(asStart ? QStringList{"-q", "-s", path, input} : QStringList{"-q", path});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    QCOMPARE(o.err, path + QStringLiteral(": ") + problem + QLatin1Char('\n'));
}

void TestVireonCli::unreadableInput()
{
    const QString path = m_dir->write(QStringLiteral("locked.csv"), QByteArray("Name,M1\nA,1\n"));
    QVERIFY(QFile::setPermissions(path, QFileDevice::WriteOwner));
    QFile probe(path);
    if (probe.open(QIODevice::ReadOnly))
        QSKIP("this user reads files whatever their permissions (root)");
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    for (QStringList const& arguments : {QStringList{path}, QStringList{"-s", path, input}}) {
        const CliOutcome o = runCli(arguments);
        QCOMPARE(o.status, 2);
        QCOMPARE(o.err, path + QStringLiteral(": cannot be read\n"));
    }
}

void TestVireonCli::engineErrors_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("message");
    QTest::newRow("different headers") << "Name,M1,M1\nA,1,2\n"
                                       << "Name,M1,M2\nS,1,2\n"
                                       << "Different headers.\n";
    QTest::newRow("invalid value") << "Name,M1,M1\nA,1,-2\n"
                                   << ""
                                   << "Invalid value in csv.\ninput row 2 (A), column M1: \"-2\"\n";
    QTest::newRow("invalid start value")
        << "Name,M1,M1\nA,1,2\n"
        << "Name,M1,M1\nS,1,1\nT,1.5,2\n"
        << "Invalid value in csv.\nstart row 3 (T), column M1: \"1.5\"\n";
}

void TestVireonCli::engineErrors()
{
    QFETCH(QString, input);
    QFETCH(QString, start);
    QFETCH(QString, message);
    QStringList arguments{m_dir->write(QStringLiteral("in.csv"), input.toUtf8())};
    if (!start.isEmpty())
        arguments << QStringLiteral("--start")
                  << m_dir->write(QStringLiteral("start.csv"), start.toUtf8());
    const CliOutcome o = runCli(arguments);
    QCOMPARE(o.status, 1);
    QCOMPARE(o.out, QString());
    QCOMPARE(o.err, message);
}

void TestVireonCli::microbovExample()
{
    const CliOutcome o = runCli({QStringLiteral("-i"), QStringLiteral("1"), QStringLiteral("-r"),
                                 QStringLiteral("1"), QStringLiteral("--result"),
                                 QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv")});
    QCOMPARE(o.status, 0);
    QFile fixture(QStringLiteral(VIREON_FIXTURES_DIR "/engine/microbov_i1_s1.txt"));
    QVERIFY(fixture.open(QIODevice::ReadOnly | QIODevice::Text));
    QCOMPARE(o.out, QString::fromUtf8(fixture.readAll()));
}

namespace {

// r1 {A1 A2 B1}, r2 {A3 B2 B3}, r3 {A1 A3 B2}, r4 {A4} and a (B, 0) cell:
// three alleles take one row, six take r1 and r2, all seven r1, r2 and r4.
const QString fourRows =
    QStringLiteral("Name,A,A,B,B\nr1,1,2,1,1\nr2,3,3,2,3\nr3,1,3,2,2\nr4,4,*,*,0\n");

} // namespace

void TestVireonCli::exactSummary()
{
    const QString input = m_dir->write(QStringLiteral("in.csv"), fourRows.toUtf8());
    const CliOutcome o = runCli({QStringLiteral("--search"), QStringLiteral("exact"), input});
    QCOMPARE(o.status, 0);
    QStringList lines = o.out.split(QLatin1Char('\n'));
    const QString last = lines.value(lines.size() - 2);
    QVERIFY2(QRegularExpression(QStringLiteral("^Proven minimal: 100 of 100 entries; time: "
                                               "[0-9]+\\.[0-9] s$"))
                 .match(last)
                 .hasMatch(),
             qPrintable(last));
    lines.removeAt(lines.size() - 2);
    QCOMPARE(lines.join(QLatin1Char('\n')),
             QStringLiteral("percent\taccessions\talleles\tsize\n"
                            "1-42\t1\t3\tminimal\n"
                            "43-85\t2\t6\tminimal\n"
                            "86-100\t3\t7\tminimal\n"
                            "Total alleles: 7; (marker, 0) pairs left out: 1\n"));
}

void TestVireonCli::exactResultAndWorkspace()
{
    const QString input = m_dir->write(QStringLiteral("in.csv"), fourRows.toUtf8());
    const QString start =
        m_dir->write(QStringLiteral("start.csv"), QByteArray("Name,A,A,B,B\ns1,1,2,1,1\n"));
    const QString ccw = m_dir->filePath(QStringLiteral("exact.ccw"));
    const CliOutcome o =
        runCli({QStringLiteral("--search"), QStringLiteral("exact"), QStringLiteral("--budget"),
                QStringLiteral("30"), QStringLiteral("-s"), start, QStringLiteral("--result"),
                QStringLiteral("-w"), ccw, QStringLiteral("-p"), QStringLiteral("90"), input});
    QCOMPARE(o.status, 0);
    QStringList expected;
    QStringList bounds;
    for (int p = 1; p <= 100; ++p) {
        expected << (p <= 42   ? QStringLiteral("3")
                     : p <= 85 ? QStringLiteral("2,6")
                               : QStringLiteral("2,4,7"));
        bounds << QString::number(p <= 42 ? 0 : p <= 85 ? 1 : 2);
    }
    QCOMPARE(o.out, expected.join(QLatin1Char('\n')) + QLatin1Char('\n'));

    XWorkspace read(ccw);
    QVERIFY(read.result());
    QCOMPARE(read.result()->toString(), o.out);
    QCOMPARE(read.settings().value(QStringLiteral("Search")).toString(), QStringLiteral("exact"));
    QCOMPARE(read.settings().value(QStringLiteral("LowerBounds")).toString(),
             bounds.join(QLatin1Char(',')));
    QCOMPARE(read.result()->lowerBounds().size(), 100);
    QCOMPARE(read.slider(), 90);
    QVERIFY(read.hasSource());
}

void TestVireonCli::workspaceRecordsRun()
{
    // The window reads the search and its settings from the workspace.
    const QString input = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    const QString ccw = m_dir->filePath(QStringLiteral("seeded.ccw"));
    const CliOutcome o = runCli({QStringLiteral("-i"), QStringLiteral("2"), QStringLiteral("-r"),
                                 QStringLiteral("0"), QStringLiteral("-w"), ccw, input});
    QCOMPARE(o.status, 0);
    const QRegularExpressionMatch seed =
        QRegularExpression(QStringLiteral("; seed: ([0-9]+)\n$")).match(o.out);
    QVERIFY2(seed.hasMatch(), qPrintable(o.out));
    XWorkspace read(ccw);
    QCOMPARE(read.search(), QStringLiteral("reproducible"));
    QCOMPARE(read.iterations(), 2);
    QCOMPARE(read.seed(), seed.captured(1).toInt());
    QVERIFY(read.seed() > 0);
}

QTEST_GUILESS_MAIN(TestVireonCli)
#include "tst_vireoncli.moc"

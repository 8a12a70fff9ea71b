// What vireon-cli checks before it searches or shows anything: outputs that
// would replace an input or cannot be written, tables that lost lines or
// name a marker twice, and workspace files that no search wrote.
#include "CliRun.h"
#include "TemporaryFolder.h"
#include "XCsv.h"
#include "XResult.h"
#include "XWorkspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include <unistd.h>

namespace {

QByteArray readAll(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

const QString quiet = QStringLiteral("-q");
const QString oneIteration = QStringLiteral("-i1");
const QString seedOne = QStringLiteral("-r1");
const QString microbov = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
const QString microbovStart = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv");

// r1 {A1 A2 B1}, r2 {A3 B2 B3}, r3 {A1 A3 B2}, r4 {A4}: the exact search's
// cores are proven within its budget, so its workspace is always the same.
const QByteArray fourRows("Name,A,A,B,B\nr1,1,2,1,1\nr2,3,3,2,3\nr3,1,3,2,2\nr4,4,*,*,0\n");

// The text with line `number` (from 1) replaced.
QString withLine(QString const& text, int number, QString const& line)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    lines[number - 1] = line;
    return lines.join(QLatin1Char('\n'));
}

QString lineOf(QString const& text, int number)
{
    return text.split(QLatin1Char('\n')).value(number - 1);
}

} // namespace

class TestCliChecks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void outputReplacingInputRefused_data();
    void outputReplacingInputRefused();
    void outputAndWorkspaceOneFileRefused();
    void outputsCheckedBeforeSearch_data();
    void outputsCheckedBeforeSearch();
    void leftOutLinesNoted();
    void tableLosingMoreThanHalfRefused();
    void returningMarkersAndNamesNoted();
    void workspaceShownWithoutSearch();
    void workspaceOutputWritten();
    void searchOptionsRefusedWithWorkspace();
    void workspaceOfNoSearchRefused_data();
    void workspaceOfNoSearchRefused();
    void repeatedRowInReproducibleCoreKept();
    void unknownSettingKept();

private:
    QString write(QString const& name, QByteArray const& bytes);
    std::unique_ptr<TemporaryFolder> m_dir;
    // Written once: a reproducible workspace of microbov with its starting
    // collection, and an exact one of fourRows.
    QTemporaryDir m_fixtures;
    QString m_reproducible;
    QString m_exact;
};

void TestCliChecks::initTestCase()
{
    QVERIFY(m_fixtures.isValid());
    const QString reproducible = m_fixtures.filePath(QStringLiteral("reproducible.ccw"));
    CliOutcome o = runCli({quiet, oneIteration, seedOne, QStringLiteral("-s"), microbovStart,
                           QStringLiteral("-w"), reproducible, microbov});
    QCOMPARE(o.status, 0);
    m_reproducible = QString::fromUtf8(readAll(reproducible));
    const QString four = m_fixtures.filePath(QStringLiteral("four.csv"));
    QFile file(four);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(fourRows);
    file.close();
    const QString exact = m_fixtures.filePath(QStringLiteral("exact.ccw"));
    o = runCli({quiet, QStringLiteral("--search"), QStringLiteral("exact"), QStringLiteral("-w"),
                exact, four});
    QCOMPARE(o.status, 0);
    m_exact = QString::fromUtf8(readAll(exact));
    // The lines the tests below change.
    QCOMPARE(lineOf(m_reproducible, 3), QStringLiteral("Search=reproducible"));
    QCOMPARE(lineOf(m_reproducible, 723), QStringLiteral("121"));
    QCOMPARE(lineOf(m_exact, 2), QStringLiteral("LowerBounds=") +
                                     QStringLiteral("1,").repeated(42) +
                                     QStringLiteral("2,").repeated(43) +
                                     QStringLiteral("3,").repeated(14) + QStringLiteral("3"));
    QVERIFY(lineOf(m_exact, 4).startsWith(QStringLiteral("Seconds=")));
}

void TestCliChecks::init()
{
    m_dir = std::make_unique<TemporaryFolder>();
    QVERIFY(m_dir->isValid());
}

void TestCliChecks::cleanup()
{
    m_dir.reset();
}

QString TestCliChecks::write(QString const& name, QByteArray const& bytes)
{
    return m_dir->write(name, bytes);
}

void TestCliChecks::outputReplacingInputRefused_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("role");
    for (const char* option : {"-o", "--output", "-w", "--workspace"}) {
        QTest::addRow("%s the input", option) << option << "in.csv"
                                              << "the input table";
        QTest::addRow("%s the start", option) << option << "start.csv"
                                              << "the starting collection";
    }
    QTest::newRow("symbolic link to the input") << "-w"
                                                << "link.csv"
                                                << "the input table";
    QTest::newRow("hard link to the start") << "-o"
                                            << "hard.csv"
                                            << "the starting collection";
    QTest::newRow("the input by another path") << "-o"
                                               << "sub/../in.csv"
                                               << "the input table";
}

void TestCliChecks::outputReplacingInputRefused()
{
    QFETCH(QString, option);
    QFETCH(QString, target);
    QFETCH(QString, role);
    const QByteArray inputBytes = readAll(microbov);
    const QByteArray startBytes = readAll(microbovStart);
    const QString input = write("in.csv", inputBytes);
    const QString start = write("start.csv", startBytes);
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("sub")));
    QVERIFY(QFile::link(input, m_dir->filePath("link.csv")));
    QCOMPARE(::link(QFile::encodeName(start).constData(),
                    QFile::encodeName(m_dir->filePath("hard.csv")).constData()),
             0);
    const QString path = m_dir->filePath(target);
    const QString named = role == QLatin1String("the input table") ? input : start;
    const CliOutcome o =
        runCli({quiet, oneIteration, seedOne, QStringLiteral("-s"), start, option, path, input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    const QString expected =
        path == named
            ? QStringLiteral("%1 is %2 of this analysis, and an output never replaces a file the "
                             "analysis reads.\n")
                  .arg(path, role)
            : QStringLiteral("%1 is the same file as %2, %3 of this analysis, and an output "
                             "never replaces a file the analysis reads.\n")
                  .arg(path, named, role);
    QCOMPARE(o.err, expected);
    QCOMPARE(readAll(input), inputBytes);
    QCOMPARE(readAll(start), startBytes);
}

void TestCliChecks::outputAndWorkspaceOneFileRefused()
{
    const QString target = m_dir->filePath("both.csv");
    const CliOutcome o = runCli({quiet, oneIteration, seedOne, QStringLiteral("-o"), target,
                                 QStringLiteral("-w"), target, microbov});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    QVERIFY2(o.err.startsWith(QStringLiteral("vireon-cli: --output and --workspace name the same "
                                             "file, %1.\n")
                                  .arg(target)),
             qPrintable(o.err));
    QVERIFY(!QFile::exists(target));
}

void TestCliChecks::outputsCheckedBeforeSearch_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("why");
    const QString eHGDP = QStringLiteral(VIREON_EXAMPLES_DIR "/eHGDP.csv");
    QTest::newRow("missing folder, core") << microbov << "-o"
                                          << "/nonexistent/x.csv"
                                          << "No such file or directory";
    QTest::newRow("missing folder, workspace") << microbov << "-w"
                                               << "/nonexistent/x.ccw"
                                               << "No such file or directory";
    QTest::newRow("folder that is a file") << microbov << "-o"
                                           << "file/x.csv"
                                           << "Not a directory";
    QTest::newRow("target that is a folder") << microbov << "-w"
                                             << "folder"
                                             << "it is a folder";
    // 10 iterations of eHGDP took 50 s before this was refused.
    QTest::newRow("eHGDP's 1,357 columns in .xls")
        << eHGDP << "-o"
        << "x.xls"
        << "the table has 1,357 columns, and an .xls worksheet holds 256";
}

void TestCliChecks::outputsCheckedBeforeSearch()
{
    QFETCH(QString, input);
    QFETCH(QString, option);
    QFETCH(QString, target);
    QFETCH(QString, why);
    write("file", "x");
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("folder")));
    const QString path = target.startsWith(QLatin1Char('/')) ? target : m_dir->filePath(target);
    const CliOutcome o = runCli({quiet, QStringLiteral("-i10"), seedOne, option, path,
                                 QStringLiteral("-p"), QStringLiteral("50"), input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    QCOMPARE(o.err, path + QStringLiteral(": cannot be written: ") + why + QLatin1Char('\n'));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({"file", "folder"}));
}

namespace {

// microbov with a comma put into the names of `every` lines out of `of`
// (counted from the first data line), quoted, so that those lines have a
// field too many.
QByteArray commasInNames(int every, int of)
{
    QList<QByteArray> lines = readAll(microbov).split('\n');
    for (int i = 1; i < lines.size(); ++i) {
        if (lines[i].isEmpty() || (i - 1) % of >= every)
            continue;
        const int comma = lines[i].indexOf(',');
        lines[i] = '"' + lines[i].left(comma) + ", x\"" + lines[i].mid(comma);
    }
    return lines.join('\n');
}

} // namespace

void TestCliChecks::leftOutLinesNoted()
{
    const QString input = write("half.csv", commasInNames(1, 2));
    const CliOutcome o = runCli({quiet, oneIteration, seedOne, input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.err, input + QStringLiteral(": 352 lines of the file were left out because their "
                                           "number of fields differs from the header row: lines "
                                           "2, 4, 6, 8, 10, 12, 14, 16, 18, 20 and 342 more.\n"));
    QVERIFY2(o.out.endsWith(QStringLiteral("Total alleles: 346; seed: 1\n")), qPrintable(o.out));
}

void TestCliChecks::tableLosingMoreThanHalfRefused()
{
    const QString input = write("most.csv", commasInNames(2, 3));
    const QString note = input + QStringLiteral(": 470 lines of the file were left out because "
                                                "their number of fields differs from the header "
                                                "row: lines 2, 3, 5, 6, 8, 9, 11, 12, 14, 15 and "
                                                "460 more.\n");
    CliOutcome o = runCli({quiet, oneIteration, seedOne, input});
    QCOMPARE(o.status, 2);
    QCOMPARE(o.out, QString());
    QCOMPARE(o.err, note + input +
                        QStringLiteral(": 470 of the 704 lines below the header row were left "
                                       "out, more than half, so the table is refused; "
                                       "--allow-left-out searches the 234 that were read.\n"));
    // As a starting collection too.
    o = runCli({quiet, oneIteration, seedOne, QStringLiteral("-s"), input, microbov});
    QCOMPARE(o.status, 2);
    o = runCli({quiet, oneIteration, seedOne, QStringLiteral("--allow-left-out"), input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.err, note);
    QVERIFY2(o.out.contains(QStringLiteral("Total alleles: ")), qPrintable(o.out));
}

void TestCliChecks::returningMarkersAndNamesNoted()
{
    const QString input = write("dup.csv", "Name,M,M,N,N,M,M,P,N\n"
                                           "A,1,2,3,4,5,6,7,8\n"
                                           "B,1,2,3,4,5,6,7,8\n"
                                           "A,1,1,1,1,1,1,1,1\n"
                                           "C,1,1,1,1,1,1,1,1\n"
                                           "B,1,1,1,1,1,1,1,1\n"
                                           "A,1,1,1,1,1,1,1,1\n");
    const CliOutcome o = runCli({quiet, oneIteration, seedOne, input});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.err, input +
                        QStringLiteral(": 2 markers' names return after other markers' "
                                       "columns, and the alleles of all columns of one name "
                                       "are counted as one marker: \"M\" (columns 2-3 and "
                                       "6-7) and \"N\" (columns 4-5 and 9).\n") +
                        input +
                        QStringLiteral(": 2 accession names stand in more than one row: "
                                       "\"A\" (rows 2, 4 and 7) and \"B\" (rows 3 and "
                                       "6).\n"));
}

void TestCliChecks::workspaceShownWithoutSearch()
{
    const QString reproducible = write("r.ccw", m_reproducible.toUtf8());
    XWorkspace read(m_reproducible);
    CliOutcome o = runCli({QStringLiteral("--result"), reproducible});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.err, QString());
    QCOMPARE(o.out, read.result()->toString());
    // The summary the search printed, from the workspace alone.
    const CliOutcome searched =
        runCli({quiet, oneIteration, seedOne, QStringLiteral("-s"), microbovStart, microbov});
    o = runCli({reproducible});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out, searched.out);

    const QString exact = write("e.ccw", m_exact.toUtf8());
    o = runCli({exact});
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out, QStringLiteral("percent\taccessions\talleles\tsize\n"
                                   "1-42\t1\t3\tminimal\n"
                                   "43-85\t2\t6\tminimal\n"
                                   "86-100\t3\t7\tminimal\n"
                                   "Total alleles: 7; (marker, 0) pairs left out: 1\n"
                                   "Proven minimal: 100 of 100 entries; time: ") +
                        lineOf(m_exact, 4).mid(8) + QStringLiteral(" s\n"));
}

void TestCliChecks::workspaceOutputWritten()
{
    const QString reproducible = write("r.ccw", m_reproducible.toUtf8());
    const QString core = m_dir->filePath("core.csv");
    const CliOutcome o = runCli({QStringLiteral("-o"), core, QStringLiteral("-p"),
                                 QStringLiteral("60"), QStringLiteral("--result"), reproducible});
    QCOMPARE(o.status, 0);
    XWorkspace read(m_reproducible);
    QCOMPARE(QString::fromUtf8(readAll(core)), read.result()->csv(60)->toString());
    // Nor may it replace the workspace it shows.
    const QByteArray before = readAll(reproducible);
    const CliOutcome over = runCli({QStringLiteral("-o"), reproducible, reproducible});
    QCOMPARE(over.status, 2);
    QCOMPARE(over.err, reproducible + QStringLiteral(" is the workspace file of this analysis, "
                                                     "and an output never replaces a file the "
                                                     "analysis reads.\n"));
    QCOMPARE(readAll(reproducible), before);
}

void TestCliChecks::searchOptionsRefusedWithWorkspace()
{
    const QString reproducible = write("r.ccw", m_reproducible.toUtf8());
    const CliOutcome o =
        runCli({QStringLiteral("-s"), microbovStart, QStringLiteral("-i"), QStringLiteral("3"),
                QStringLiteral("-w"), m_dir->filePath("w.ccw"), reproducible});
    QCOMPARE(o.status, 2);
    QVERIFY2(o.err.startsWith(QStringLiteral("vireon-cli: --start, --iterations, --workspace "
                                             "cannot be given with a workspace file: it holds "
                                             "its analysis already.\n")),
             qPrintable(o.err));
    QCOMPARE(o.out, QString());
}

namespace {

// The line with its last field (a result line's count) replaced.
QString withCount(QString const& line, QString const& count)
{
    const int comma = line.lastIndexOf(QLatin1Char(','));
    return line.left(comma + 1) + count;
}

} // namespace

void TestCliChecks::workspaceOfNoSearchRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("why");
    // Reproducible: 5 settings lines, then microbov from line 8, its start
    // from line 715, the result from line 723 (1 % of the alleles).
    QString const& r = m_reproducible;
    const int first = 723;
    QTest::newRow("count of 2147483647")
        << withLine(r, first + 9, withCount(lineOf(r, first + 9), "2147483647"))
        << "line 732: the count 2147483647 is more than the 373 alleles the tables hold";
    QTest::newRow("count above the total")
        << withLine(r, first + 99, withCount(lineOf(r, first + 99), "374"))
        << "line 822: the count 374 is more than the 373 alleles the tables hold";
    const QString before = lineOf(r, first + 59).section(QLatin1Char(','), -1);
    QTest::newRow("count falling")
        << withLine(r, first + 60, withCount(lineOf(r, first + 60), "100"))
        << QStringLiteral("line 783: the count 100 falls below the %1 of the share before it, "
                          "and a search's counts never fall")
               .arg(before);
    const int coreAt50 = lineOf(r, first + 49).count(QLatin1Char(','));
    const int coreAt51 = lineOf(r, first + 50).count(QLatin1Char(','));
    QString listed = lineOf(r, first + 49);
    listed = QStringLiteral("1,").repeated(700) + listed.section(QLatin1Char(','), -1);
    QString moreLines = r;
    // Every share up to 50 % gets the forged core, so sizes grow up to it.
    for (int i = 0; i < 50; ++i)
        moreLines = withLine(moreLines, first + i, listed);
    QVERIFY(coreAt51 < 700 && coreAt50 < coreAt51 + 1);
    QTest::newRow("row 1 listed 700 times")
        << moreLines
        << QStringLiteral("line 773: the core of %1 accessions is smaller than the 700 of the "
                          "share before it, and a search's cores never shrink")
               .arg(coreAt51);
    QString empty = r;
    for (int i = 0; i < 100; ++i)
        empty = withLine(empty, first + i, lineOf(r, first + i).section(QLatin1Char(','), -1));
    // The starting collection holds 121 alleles: up to 32 % its cores are empty.
    QTest::newRow("all cores empty")
        << empty
        << QStringLiteral("line 755: the core is empty, so it holds the starting collection's "
                          "121 alleles, not %1")
               .arg(lineOf(r, first + 32).section(QLatin1Char(','), -1));
    QTest::newRow("input cell of -1")
        << withLine(r, 9, lineOf(r, 9).replace(QStringLiteral(",183,"), QStringLiteral(",-1,")))
        << "line 9: \"-1\" under marker INRA63 is not an allele (a whole number of 0 or more, "
           "or * for a missing one)";
    QTest::newRow("Search=bogus") << withLine(r, 3, "Search=bogus")
                                  << "line 3: the search \"bogus\" is none that Vireon knows "
                                     "(reproducible or exact)";
    QTest::newRow("Iterations=0") << withLine(r, 2, "Iterations=0")
                                  << "line 2: Iterations is \"0\", where a whole number of at "
                                     "least 1 belongs";
    QTest::newRow("SliderValue=101") << withLine(r, 5, "SliderValue=101")
                                     << "line 5: SliderValue is \"101\", where a whole number "
                                        "from 1 to 100 belongs";
    QTest::newRow("HasSource=maybe") << withLine(r, 1, "HasSource=maybe")
                                     << "line 1: HasSource is \"maybe\", where true or false "
                                        "belongs";
    QTest::newRow("row past the table")
        << withLine(r, first + 99, QStringLiteral("705,") + lineOf(r, first + 99))
        << "line 822: row 705 is not an accession of the input table, which has 704";

    // Exact: 5 settings lines, the table from line 8, the result from 15.
    QString const& e = m_exact;
    auto bounds = [&e](QString const& fifth) {
        QStringList parts = lineOf(e, 2).mid(12).split(QLatin1Char(','));
        parts[5] = fifth;
        return withLine(e, 2, QStringLiteral("LowerBounds=") + parts.join(QLatin1Char(',')));
    };
    QTest::newRow("bound of 2147483647")
        << bounds("2147483647")
        << "line 2: the lower bound \"2147483647\" for 6 % is not a whole number from 0 to the "
           "core's size, 1";
    QTest::newRow("bound of -5") << bounds("-5")
                                 << "line 2: the lower bound \"-5\" for 6 % is not a whole number "
                                    "from 0 to the core's size, 1";
    QTest::newRow("bound of text") << bounds("one")
                                   << "line 2: the lower bound \"one\" for 6 % is not a whole "
                                      "number from 0 to the core's size, 1";
    QTest::newRow("a million bounds")
        << withLine(e, 2,
                    QStringLiteral("LowerBounds=") + QStringLiteral("0,").repeated(999999) +
                        QStringLiteral("0"))
        << "line 2: there are 1000000 lower bounds, and the exact search writes one for each of "
           "the 100 shares";
    QTest::newRow("Seconds=nan") << withLine(e, 4, "Seconds=nan")
                                 << "line 4: Seconds is \"nan\", where a number of 0 or more "
                                    "belongs";
    const QString at90 = lineOf(e, 15 + 89);
    const QString firstRow = at90.section(QLatin1Char(','), 0, 0);
    QTest::newRow("row twice in an exact core")
        << withLine(e, 15 + 89, firstRow + QLatin1Char(',') + at90)
        << "line 104: the core lists a row twice, and the exact search lists each row once";
    QTest::newRow("exact count not what the rows hold")
        << withLine(e, 15 + 99, withCount(lineOf(e, 15 + 99), "8"))
        << "line 114: the count 8 is more than the 7 alleles the tables hold";
    QTest::newRow("exact count below what the rows hold")
        << withLine(e, 15, withCount(lineOf(e, 15), "2"))
        << "line 15: the count 2 differs from the 3 alleles the core holds";
    QTest::newRow("count short of its share")
        << withLine(r, first + 99, withCount(lineOf(r, first + 99), "372"))
        << "line 822: the count 372 falls short of 100 % of the 373 alleles, which the core for "
           "that share reaches";
}

void TestCliChecks::workspaceOfNoSearchRefused()
{
    QFETCH(QString, text);
    QFETCH(QString, why);
    const QString path = write("forged.ccw", text.toUtf8());
    for (QStringList const& arguments :
         {QStringList{QStringLiteral("--result"), path}, QStringList{path}}) {
        const CliOutcome o = runCli(arguments);
        QCOMPARE(o.status, 2);
        QCOMPARE(o.out, QString());
        QCOMPARE(o.err,
                 path + QStringLiteral(": not a valid workspace file: ") + why + QLatin1Char('\n'));
    }
}

void TestCliChecks::repeatedRowInReproducibleCoreKept()
{
    // Swaps can bring a row back into a core: such a workspace is kept.
    const int last = 723 + 99;
    QStringList rows = lineOf(m_reproducible, last).split(QLatin1Char(','));
    rows[1] = rows[0];
    const QString text = withLine(m_reproducible, last, rows.join(QLatin1Char(',')));
    const CliOutcome o = runCli({QStringLiteral("--result"), write("twice.ccw", text.toUtf8())});
    QCOMPARE(o.err, QString());
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out.section(QLatin1Char('\n'), 99, 99), rows.join(QLatin1Char(',')));
}

void TestCliChecks::unknownSettingKept()
{
    const QString text = QStringLiteral("Colour=blue\n") + m_reproducible;
    const CliOutcome o = runCli({QStringLiteral("--result"), write("colour.ccw", text.toUtf8())});
    QCOMPARE(o.err, QString());
    QCOMPARE(o.status, 0);
    QCOMPARE(o.out, XWorkspace(m_reproducible).result()->toString());
}

QTEST_GUILESS_MAIN(TestCliChecks)
#include "tst_clichecks.moc"

#include "AnalysisInputs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

class TestAnalysisInputs : public QObject
{
    Q_OBJECT

private slots:
    void sameFileByEveryName_data();
    void sameFileByEveryName();
    void otherFilesAreNoInputs();
    void copyIsNoInput();
};

void TestAnalysisInputs::sameFileByEveryName_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("start");
    QTest::newRow("the input itself") << "in.csv" << false;
    QTest::newRow("the start itself") << "start.csv" << true;
    QTest::newRow("a symbolic link") << "link.csv" << false;
    QTest::newRow("a link to a link") << "linklink.csv" << false;
    QTest::newRow("a hard link") << "hard.csv" << true;
    QTest::newRow("another spelling") << "sub/../in.csv" << false;
}

void TestAnalysisInputs::sameFileByEveryName()
{
    QFETCH(QString, target);
    QFETCH(bool, start);
    QTemporaryDir dir;
    QDir folder(dir.path());
    QVERIFY(folder.mkdir(QStringLiteral("sub")));
    for (const char* name : {"in.csv", "start.csv"}) {
        QFile file(dir.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Name,M\nA,1\n");
    }
    QVERIFY(QFile::link(dir.filePath("in.csv"), dir.filePath("link.csv")));
    QVERIFY(QFile::link(dir.filePath("link.csv"), dir.filePath("linklink.csv")));
    QCOMPARE(::link(QFile::encodeName(dir.filePath("start.csv")).constData(),
                    QFile::encodeName(dir.filePath("hard.csv")).constData()),
             0);

    AnalysisInputs inputs;
    inputs.add(AnalysisInputs::InputTable, dir.filePath("in.csv"));
    inputs.add(AnalysisInputs::StartingCollection, dir.filePath("start.csv"));
    inputs.add(AnalysisInputs::StartingCollection, QString());
    const QString path = dir.filePath(target);
    const QString input = dir.filePath(start ? "start.csv" : "in.csv");
    const QString role = start ? "the starting collection" : "the input table";
    const QString expected =
        path == input
            ? QStringLiteral("%1 is %2 of this analysis, and an output never replaces a file the "
                             "analysis reads.")
                  .arg(path, role)
            : QStringLiteral("%1 is the same file as %2, %3 of this analysis, and an output "
                             "never replaces a file the analysis reads.")
                  .arg(path, input, role);
    QCOMPARE(inputs.replacedBy(path), expected);
}

void TestAnalysisInputs::otherFilesAreNoInputs()
{
    QTemporaryDir dir;
    QFile file(dir.filePath("in.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QFile other(dir.filePath("other.csv"));
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.close();
    AnalysisInputs inputs;
    QVERIFY(inputs.isEmpty());
    QCOMPARE(inputs.replacedBy(dir.filePath("in.csv")), QString());
    inputs.add(AnalysisInputs::Workspace, dir.filePath("in.csv"));
    QVERIFY(!inputs.isEmpty());
    QCOMPARE(inputs.replacedBy(dir.filePath("other.csv")), QString());
    QCOMPARE(inputs.replacedBy(dir.filePath("new.csv")), QString());
    QCOMPARE(inputs.replacedBy(QString()), QString());
    QCOMPARE(inputs.replacedBy(dir.filePath("in.csv")),
             dir.filePath("in.csv") + QStringLiteral(" is the workspace file of this analysis, "
                                                     "and an output never replaces a file the "
                                                     "analysis reads."));
}

void TestAnalysisInputs::copyIsNoInput()
{
    // Same content, another file: writing it loses nothing.
    QTemporaryDir dir;
    for (const char* name : {"in.csv", "copy.csv"}) {
        QFile file(dir.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Name,M\nA,1\n");
    }
    AnalysisInputs inputs;
    inputs.add(AnalysisInputs::InputTable, dir.filePath("in.csv"));
    QCOMPARE(inputs.replacedBy(dir.filePath("copy.csv")), QString());
}

QTEST_GUILESS_MAIN(TestAnalysisInputs)
#include "tst_analysisinputs.moc"

// Every format of the registry (FileFormats.def) is offered by the wizard's
// open dialog and read by its reader; the wrong-suffix message names it.
#include "CellText.h"
#include "FileFormats.h"
#include "WizardTesting.h"
#include "XCsv.h"
#include "XCsvSelectionPage.h"
#include "XSpreadsheet.h"
#include "XWizard.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

class TestFileFormats : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void offeredAndRead_data();
    void offeredAndRead();
    void wrongSuffixNamesEveryFormat();
};

void TestFileFormats::cleanup()
{
    XFileDialog::setOpenHook({});
}

void TestFileFormats::offeredAndRead_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < fileFormats().size(); ++i)
        QTest::newRow(qPrintable(fileFormats().at(i).suffix)) << i;
    QVERIFY(fileFormats().size() >= 4);
}

void TestFileFormats::offeredAndRead()
{
    QFETCH(int, index);
    FileFormat const& format = fileFormats().at(index);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    // A format Vireon writes (text included) is written here; one it only
    // reads comes as the microbov fixture.
    QString fileName;
    QStringList expectedFirstRows;
    if (format.writer || !format.readerProgram) {
        const XCsv table(XCsv::Grid{{"Name", "M1", "M1"}, {"A", 101, 103}, {"B", "*", 105}});
        fileName = dir.filePath(QStringLiteral("table") + format.suffix);
        QString error;
        QVERIFY2(XSpreadsheet::write(table, fileName, &error), qPrintable(error));
        expectedFirstRows = QStringList{"s:Name|s:M1|s:M1", "s:A|i:101|i:103", "s:B|s:*|i:105"};
    } else {
        fileName = QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/microbov") + format.suffix;
        QVERIFY2(QFile::exists(fileName), "a format only read needs its microbov fixture");
    }

    XWizard wizard;
    wizard.next();
    QString filter;
    answerOpenDialog(fileName, &filter);
    auto* page = qobject_cast<XCsvSelectionPage*>(wizard.page(XWizard::SelectionPage));
    clickButton(page->findChild<QPushButton*>(QStringLiteral("inputBrowse")));
    // The exact text the wizard has always shown, with this format among its patterns.
    QCOMPARE(filter, QStringLiteral("Spreadsheets (%1)").arg(readablePatterns()));
    const QRegularExpression offered(
        QStringLiteral("[( ]\\*%1[ )]").arg(QRegularExpression::escape(format.suffix)));
    QVERIFY2(offered.match(filter).hasMatch(), qPrintable(filter));

    QVERIFY2(page->csv(), "the format's reader gave no table");
    const QStringList rows = gridText(*page->csv());
    if (expectedFirstRows.isEmpty()) {
        QCOMPARE(page->csv()->rows(), 705);
        QVERIFY(rows.first().startsWith(QStringLiteral("s:Name|s:INRA63|s:INRA63|")));
    } else {
        QCOMPARE(rows, expectedFirstRows);
    }
}

void TestFileFormats::wrongSuffixNamesEveryFormat()
{
    const QString message = XSpreadsheet::wrongSuffixMessage();
    QCOMPARE(message,
             QStringLiteral("The file you selected is not a .csv, .xls, .xlsx or .ods file."));
    for (FileFormat const& format : fileFormats())
        QVERIFY2(message.contains(format.suffix + QLatin1Char(' ')) ||
                     message.contains(format.suffix + QLatin1Char(',')),
                 qPrintable(format.suffix));
}

QTEST_MAIN(TestFileFormats)
#include "tst_fileformats.moc"

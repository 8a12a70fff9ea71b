#include "CellText.h"
#include "InputDialogAnswer.h"
#include "TableReading.h"
#include "WizardTesting.h"
#include "XCsv.h"
#include "XCsvSelectionPage.h"
#include "XSpreadsheet.h"
#include "XWizard.h"
#include "XWorkbookReader.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <csignal>

class TestXCsvSelectionPage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void titlesAndLayout();
    void enteringHidesEverything();
    void loadValidCsv();
    void browseFilterAndCancel();
    void wrongSuffix_data();
    void wrongSuffix();
    void failedReadKeepsTable();
    void damagedWorkbooksSayWhy_data();
    void damagedWorkbooksSayWhy();
    void invalidCellsThenRepair();
    void loadXls();
    void microbovAsWorkbooksAndSemicolons();
    void startingCollection();
    void uncheckThrowsStartAway();
    void secondInputClearsStart();
    void startWithErrorsBlocks();
    void checkedWithoutStartIsIncomplete();
    void reenteringStartsAfresh();
    void startHeaderDiffersNamedBeforeFinish();
    void noAccessions_data();
    void noAccessions();
    void leftOutLinesWarned();
    void noAlleleColumnsRefused_data();
    void noAlleleColumnsRefused();
    void windows1252Noted();
    void unmarkedUtf16AndOldMacNoted();
    void returningMarkersAndNamesNoted();
    void otherSeparatorsNoted_data();
    void otherSeparatorsNoted();
    void slowReadCancelled();
    void cancelClickEndsTheReader();

private:
    template <typename T> T* named(char const* name)
    {
        return m_page->findChild<T*>(QLatin1String(name));
    }
    QCheckBox* checkBox() { return named<QCheckBox>("startCheck"); }
    // Browses for the input, ticks the box, browses for the start: all clicks.
    void loadBoth(QString const& input, QString const& start);
    QString path(QString const& name) { return m_dir->filePath(name); }

    QTemporaryDir* m_dir = nullptr;
    XWizard* m_wizard = nullptr;
    XCsvSelectionPage* m_page = nullptr;
    QString m_microbov;
};

void TestXCsvSelectionPage::init()
{
    m_dir = new QTemporaryDir;
    QVERIFY(m_dir->isValid());
    m_microbov = QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv");
    m_wizard = new XWizard;
    m_wizard->show();
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), 1);
    m_page = qobject_cast<XCsvSelectionPage*>(m_wizard->currentPage());
    QVERIFY(m_page);
}

void TestXCsvSelectionPage::cleanup()
{
    stopWatchingModals();
    XFileDialog::setOpenHook({});
    delete m_wizard;
    m_wizard = nullptr;
    m_page = nullptr;
    delete m_dir;
    m_dir = nullptr;
}

void TestXCsvSelectionPage::titlesAndLayout()
{
    QCOMPARE(m_page->title(), QStringLiteral("Select file"));
    QCOMPARE(m_page->subTitle(), QStringLiteral("Preview and edit the input spreadsheet"));
    QVERIFY(named<QLineEdit>("inputFile")->isReadOnly());
    QCOMPARE(named<QPushButton>("inputBrowse")->text(), QStringLiteral("Browse..."));
    QCOMPARE(named<QPushButton>("inputEdit")->text(), QStringLiteral("Edit"));
    QCOMPARE(checkBox()->text(), QStringLiteral("Start from an existing core collection"));
    QVERIFY(named<QLineEdit>("startFile")->isReadOnly());
    QCOMPARE(named<QPushButton>("startBrowse")->text(), QStringLiteral("Browse..."));
    QCOMPARE(named<QPushButton>("startEdit")->text(), QStringLiteral("Edit"));
    QCOMPARE(m_page->nextId(), int(XWizard::SettingsPage));
}

void TestXCsvSelectionPage::enteringHidesEverything()
{
    for (char const* name : {"inputStatus", "inputNote", "startStatus", "startNote"})
        QVERIFY(!named<QLabel>(name)->isVisible());
    for (char const* name : {"inputEdit", "startBrowse", "startEdit"})
        QVERIFY(!named<QPushButton>(name)->isVisible());
    QVERIFY(!checkBox()->isVisible());
    QVERIFY(!named<QLineEdit>("startFile")->isVisible());
    QVERIFY(named<QPushButton>("inputBrowse")->isVisible());
    QVERIFY(!m_page->isComplete());
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::loadValidCsv()
{
    answerOpenDialog(QStringLiteral("  ") + m_microbov + QStringLiteral(" "));
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(m_page->csv());
    QCOMPARE(m_page->csv()->rows(), 705);
    QCOMPARE(m_page->csv()->columns(), 61);
    QCOMPARE(m_page->csv()->parent(), nullptr);
    QCOMPARE(named<QLineEdit>("inputFile")->text(), m_microbov);
    QCOMPARE(named<QLabel>("inputStatus")->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QVERIFY(named<QLabel>("inputStatus")->isVisible());
    QCOMPARE(named<QLabel>("inputStatus")->palette().color(QPalette::WindowText),
             QPalette().color(QPalette::WindowText));
    QVERIFY(named<QPushButton>("inputEdit")->isVisible());
    QVERIFY(checkBox()->isVisible());
    QVERIFY(!checkBox()->isChecked());
    QVERIFY(m_page->isComplete());
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::browseFilterAndCancel()
{
    QString filter;
    answerOpenDialog(QString(), &filter);
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(filter, QStringLiteral("Spreadsheets (*.csv *.xls *.xlsx *.ods)"));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(!checkBox()->isVisible());
    answerOpenDialog(QStringLiteral("   "));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(m_page->csv(), nullptr);
}

void TestXCsvSelectionPage::wrongSuffix_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("upper-case XLS") << "input.XLS";
    QTest::newRow("mixed-case Csv") << "data.Csv";
    QTest::newRow("upper-case XLSX") << "data.XLSX";
    QTest::newRow("upper-case ODS") << "data.ODS";
    QTest::newRow("text file") << "notes.txt";
    QTest::newRow("no suffix") << "table";
}

void TestXCsvSelectionPage::wrongSuffix()
{
    QFETCH(QString, name);
    QVERIFY(writeText(path(name), "Name,M\nA,1\n"));
    answerOpenDialog(path(name));
    QString title, text;
    whenModalOpens(messageBoxSeen(&title, &text));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(title, QStringLiteral("Error"));
    QCOMPARE(text,
             QStringLiteral("The file you selected is not a .csv, .xls, .xlsx or .ods file."));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(named<QLineEdit>("inputFile")->text().isEmpty());
}

void TestXCsvSelectionPage::failedReadKeepsTable()
{
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    QPointer<XCsv> first = m_page->csv();
    QVERIFY(writeText(path("x.doc"), "x"));
    answerOpenDialog(path("x.doc"));
    QString title, text;
    whenModalOpens(messageBoxSeen(&title, &text));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(title, QStringLiteral("Error"));
    QVERIFY(!first.isNull());
    QCOMPARE(m_page->csv(), first.data());
    QCOMPARE(named<QLineEdit>("inputFile")->text(), m_microbov);
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::damagedWorkbooksSayWhy_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    // The first half of a real workbook, to cut short.
    QFile made(QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/microbov.ods"));
    QVERIFY(made.open(QIODevice::ReadOnly));
    const QByteArray ods = made.readAll();
    const QString parsing = QStringLiteral("Error while parsing the %1 file: ");
    QTest::newRow("empty .xlsx") << "empty.xlsx" << QByteArray()
                                 << parsing.arg(".xlsx") + "the file is empty.";
    QTest::newRow("text as .ods")
        << "text.ods" << QByteArray("Name,M1\nA,1\n")
        << parsing.arg(".ods") + "the file is not a .ods workbook but another kind of file.";
    QTest::newRow("truncated .ods")
        << "cut.ods" << ods.left(ods.size() / 2)
        << parsing.arg(".ods") + "the file cannot be read as a workbook.";
    auto hostile = [](char const* name) {
        QFile file(QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/hostile/") +
                   QLatin1String(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QTest::newRow("part named twice")
        << "twice.ods" << hostile("parts_named_twice.ods")
        << parsing.arg(".ods") + "the file cannot be read as a workbook.";
    QTest::newRow("part names differing in case")
        << "case.xlsx" << hostile("names_differ_in_case.xlsx")
        << parsing.arg(".xlsx") + "the file cannot be read as a workbook.";
    QTest::newRow("cell text past what a cell holds")
        << "long.ods" << hostile("long_cell.ods")
        << parsing.arg(".ods") + "the cell at row 2 and column 3 holds more than 32,767 "
                                 "characters, more than a spreadsheet cell holds.";
    QTest::newRow("counted spaces past the text budget")
        << "spaces.ods" << hostile("counted_spaces.ods")
        << parsing.arg(".ods") + "by the cell at row 41 and column 97, the cells of the first "
                                 "worksheet hold more than 134,217,728 characters of text, more "
                                 "than Vireon reads.";
}

void TestXCsvSelectionPage::damagedWorkbooksSayWhy()
{
    // The message names what is wrong, and the table read before stays.
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    QPointer<XCsv> first = m_page->csv();
    QVERIFY(first);
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
    file.close();
    answerOpenDialog(path(name));
    QString title, text;
    whenModalOpens(messageBoxSeen(&title, &text));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(title, QStringLiteral("Error"));
    QCOMPARE(text, message);
    QCOMPARE(m_page->csv(), first.data());
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::invalidCellsThenRepair()
{
    QVERIFY(writeText(path("bad.csv"), "Name,M1,M1\nA,1,2\nB,x,3\nC,4,-1\n"));
    answerOpenDialog(path("bad.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(m_page->csv());
    QCOMPARE(named<QLabel>("inputStatus")->text(),
             QStringLiteral("There are errors in the table. Click on the Edit "
                            "button to fix them."));
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(named<QLabel>("inputStatus")->palette().color(group, QPalette::WindowText),
                 QColor(Qt::red));
    QVERIFY(!m_page->isComplete());
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());

    // Fix one of two errors: still incomplete.
    bool seen = false;
    whenModalOpens(editorEdits({{1, 0, "5"}}, &seen));
    clickButton(named<QPushButton>("inputEdit"));
    QVERIFY(seen);
    QVERIFY(!m_page->isComplete());
    QCOMPARE(cellText(m_page->csv()->at(2, 1)), QStringLiteral("s:5"));

    whenModalOpens(editorEdits({{2, 1, "7"}}, &seen));
    clickButton(named<QPushButton>("inputEdit"));
    QVERIFY(m_page->isComplete());
    QCOMPARE(named<QLabel>("inputStatus")->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QCOMPARE(named<QLabel>("inputStatus")->palette().color(QPalette::WindowText),
             QPalette().color(QPalette::WindowText));
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::loadXls()
{
    XCsv table(QStringLiteral("Name,M1,M1\nA,1,2\nB,3,*\n"));
    const QString xls = path("in.xls");
    if (!XSpreadsheet::write(table, xls))
        QSKIP("this build cannot write workbooks");
    answerOpenDialog(xls);
    QString title, text;
    whenModalOpens(messageBoxSeen(&title, &text), 300);
    clickButton(named<QPushButton>("inputBrowse"));
    if (!m_page->csv())
        QSKIP(qPrintable(QStringLiteral("this build cannot read workbooks: ") + text));
    QCOMPARE(gridText(*m_page->csv()),
             QStringList({"s:Name|s:M1|s:M1", "s:A|i:1|i:2", "s:B|i:3|s:*"}));
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::microbovAsWorkbooksAndSemicolons()
{
    // microbov saved as today's spreadsheets save it arrives as the same
    // table as microbov.csv; only the semicolons are noted. The fixtures are
    // written by openpyxl and odfpy (make_microbov_workbooks.py).
    const XCsv csv(m_microbov);
    const QString xlsx = path("microbov.xlsx");
    QString error;
    QVERIFY2(XSpreadsheet::write(csv, xlsx, &error), qPrintable(error));
    QFile original(m_microbov);
    QVERIFY(original.open(QIODevice::ReadOnly));
    QVERIFY(writeText(path("microbov-semicolons.csv"), original.readAll().replace(',', ';')));
    QLabel* note = named<QLabel>("inputNote");
    answerOpenDialog(xlsx);
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(m_page->csv());
    QCOMPARE(gridText(*m_page->csv()), gridText(csv));
    QCOMPARE(m_page->csv()->columns(), 61);
    QVERIFY(!note->isVisible());
    QVERIFY(m_page->isComplete());

    for (char const* made : {"microbov.xlsx", "microbov.ods"}) {
        answerOpenDialog(QStringLiteral(VIREON_FIXTURES_DIR "/spreadsheet/") + QLatin1String(made));
        clickButton(named<QPushButton>("inputBrowse"));
        QVERIFY2(m_page->csv(), made);
        QCOMPARE(gridText(*m_page->csv()), gridText(csv));
        QVERIFY(!note->isVisible());
    }

    answerOpenDialog(path("microbov-semicolons.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(m_page->csv());
    QCOMPARE(gridText(*m_page->csv()), gridText(csv));
    QCOMPARE(note->text(), QStringLiteral("This file separates its fields with semicolons; it was "
                                          "read that way."));
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::startingCollection()
{
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    checkBox()->setChecked(true);
    QVERIFY(named<QLineEdit>("startFile")->isVisible());
    QVERIFY(named<QPushButton>("startBrowse")->isVisible());
    QVERIFY(!named<QPushButton>("startEdit")->isVisible());
    QVERIFY(!m_page->isComplete());

    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(named<QPushButton>("startBrowse"));
    QVERIFY(m_page->src());
    QCOMPARE(m_page->src()->rows(), 6);
    QCOMPARE(named<QLineEdit>("startFile")->text(),
             QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    QCOMPARE(named<QLabel>("startStatus")->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QVERIFY(named<QPushButton>("startEdit")->isVisible());
    QVERIFY(checkBox()->isChecked());
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::uncheckThrowsStartAway()
{
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    checkBox()->setChecked(true);
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(named<QPushButton>("startBrowse"));
    QPointer<XCsv> src = m_page->src();
    QVERIFY(src);
    checkBox()->setChecked(false);
    QVERIFY(src.isNull());
    QCOMPARE(m_page->src(), nullptr);
    QVERIFY(!named<QLineEdit>("startFile")->isVisible());
    QVERIFY(m_page->isComplete());
    // Checking again needs a new Browse.
    checkBox()->setChecked(true);
    QCOMPARE(m_page->src(), nullptr);
    QVERIFY(named<QLineEdit>("startFile")->text().isEmpty());
    QVERIFY(!m_page->isComplete());
}

void TestXCsvSelectionPage::secondInputClearsStart()
{
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    QPointer<XCsv> first = m_page->csv();
    checkBox()->setChecked(true);
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(named<QPushButton>("startBrowse"));
    QPointer<XCsv> src = m_page->src();

    QVERIFY(writeText(path("second.csv"), "Name,M\nA,1\n"));
    answerOpenDialog(path("second.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(first.isNull());
    QVERIFY(src.isNull());
    QCOMPARE(m_page->csv()->rows(), 2);
    QVERIFY(!checkBox()->isChecked());
    QVERIFY(checkBox()->isVisible());
    QVERIFY(!named<QLineEdit>("startFile")->isVisible());
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::startWithErrorsBlocks()
{
    // Headers alike: only the invalid cell blocks.
    QVERIFY(writeText(path("input.csv"), "Name,M\nA,1\n"));
    answerOpenDialog(path("input.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    checkBox()->setChecked(true);
    QVERIFY(writeText(path("start.csv"), "Name,M\nS,abc\n"));
    answerOpenDialog(path("start.csv"));
    clickButton(named<QPushButton>("startBrowse"));
    QCOMPARE(named<QLabel>("startStatus")->palette().color(QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_page->isComplete());
    bool seen = false;
    whenModalOpens(editorEdits({{0, 0, "12"}}, &seen));
    clickButton(named<QPushButton>("startEdit"));
    QVERIFY(seen);
    QCOMPARE(cellText(m_page->src()->at(1, 1)), QStringLiteral("s:12"));
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::checkedWithoutStartIsIncomplete()
{
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    QSignalSpy changed(m_page, &QWizardPage::completeChanged);
    checkBox()->setChecked(true);
    QCOMPARE(changed.count(), 1);
    QVERIFY(!m_page->isComplete());
}

void TestXCsvSelectionPage::reenteringStartsAfresh()
{
    answerOpenDialog(m_microbov);
    clickButton(named<QPushButton>("inputBrowse"));
    QPointer<XCsv> csv = m_page->csv();
    m_wizard->back();
    QCOMPARE(m_wizard->currentId(), 0);
    // Going back keeps the table; entering the page again going forward drops it.
    QVERIFY(!csv.isNull());
    m_wizard->next();
    QVERIFY(csv.isNull());
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(named<QLineEdit>("inputFile")->text().isEmpty());
    QVERIFY(!checkBox()->isVisible());
    QVERIFY(!m_page->isComplete());
}

void TestXCsvSelectionPage::loadBoth(QString const& input, QString const& start)
{
    answerOpenDialog(input);
    clickButton(named<QPushButton>("inputBrowse"));
    QApplication::processEvents();
    // On the indicator: the middle of a wide check box is not a hit.
    QTest::mouseClick(checkBox(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(checkBox()->height() / 2, checkBox()->height() / 2));
    QVERIFY(checkBox()->isChecked());
    answerOpenDialog(start);
    clickButton(named<QPushButton>("startBrowse"));
}

void TestXCsvSelectionPage::startHeaderDiffersNamedBeforeFinish()
{
    QFile file(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    // The third column's header, the second "INRA63", gets a typo.
    text.replace(QByteArray("Name,INRA63,INRA63,"), QByteArray("Name,INRA63,INRA63X,"));
    QVERIFY(writeText(path("start.csv"), text));
    loadBoth(m_microbov, path("start.csv"));
    QVERIFY(m_page->src());
    QLabel* status = named<QLabel>("startStatus");
    QVERIFY(status->isVisible());
    QCOMPARE(status->text(), QStringLiteral("The starting collection's header differs from the "
                                            "input's in column 3: \"INRA63X\" instead of "
                                            "\"INRA63\"."));
    QCOMPARE(status->palette().color(QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());

    // Repaired in the editor: the page says so at once and Next opens.
    InputDialogAnswer rename;
    bool seen = false;
    whenModalOpens([&rename, &seen](QWidget* modal) {
        auto* editor = qobject_cast<XCsvEditor*>(modal);
        seen = editor != nullptr;
        if (!editor) {
            modal->close();
            return;
        }
        QHeaderView* header = editor->findChild<XCsvTableWidget*>()->horizontalHeader();
        rename.arm(QStringLiteral("INRA63"), true);
        const QPoint at(header->sectionViewportPosition(1) + header->sectionSize(1) / 2,
                        header->height() / 2);
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        closeEditorByClick()(editor);
    });
    clickButton(named<QPushButton>("startEdit"));
    QVERIFY(seen);
    QVERIFY(rename.seen);
    QCOMPARE(rename.initial, QStringLiteral("INRA63X"));
    QCOMPARE(status->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::noAccessions_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QString>("statusName");
    QTest::addColumn<QString>("message");
    const QString noRows = QStringLiteral(
        "The table has no accessions: it needs at least one row below its header row.");
    QTest::newRow("header only") << QByteArray("Name,M,M\n") << QByteArray() << "inputStatus"
                                 << noRows;
    QTest::newRow("empty file") << QByteArray() << QByteArray() << "inputStatus"
                                << QStringLiteral("The file is empty.");
    QTest::newRow("byte-order mark alone") << QByteArray("\xef\xbb\xbf") << QByteArray()
                                           << "inputStatus" << QStringLiteral("The file is empty.");
    QTest::newRow("header with a trailing comma")
        << QByteArray("Name,M,M,\nA,1,2\nB,3,4\n") << QByteArray() << "inputStatus"
        << QStringLiteral("No line has as many fields as the header row (4): is there a trailing "
                          "comma, or a comma in quotes, in the header?");
    QTest::newRow("start header only")
        << QByteArray("Name,M,M\nA,1,2\n") << QByteArray("Name,M,M\n") << "startStatus" << noRows;
    QTest::newRow("start empty") << QByteArray("Name,M,M\nA,1,2\n") << QByteArray(" ")
                                 << "startStatus" << noRows;
}

void TestXCsvSelectionPage::noAccessions()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, start);
    QFETCH(QString, statusName);
    QFETCH(QString, message);
    QVERIFY(writeText(path("input.csv"), input));
    if (start.isNull()) {
        answerOpenDialog(path("input.csv"));
        clickButton(named<QPushButton>("inputBrowse"));
    } else {
        QVERIFY(writeText(path("start.csv"), start));
        loadBoth(path("input.csv"), path("start.csv"));
    }
    auto* status = m_page->findChild<QLabel*>(statusName);
    QVERIFY(status->isVisible());
    QCOMPARE(status->text(), message);
    QCOMPARE(status->palette().color(QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_page->isComplete());
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::leftOutLinesWarned()
{
    // Lines 3 and 5 have more or fewer fields than the header row: the
    // quoted name with a comma in it is split in two. The blank line is no loss.
    QVERIFY(writeText(path("input.csv"), "Name,M,M\nA1,1,2\n\"Smith, J\",3,4\nA2,5,6\n"
                                         "A3,7\n\nA4,8,9\n"));
    answerOpenDialog(path("input.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(m_page->csv()->rows(), 4);
    QLabel* note = named<QLabel>("inputNote");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(),
             QStringLiteral("2 lines of the file were left out because their number of fields "
                            "differs from the header row: lines 3 and 5."));
    QCOMPARE(note->palette().color(QPalette::WindowText), QColor(176, 96, 0));
    // A warning, not a refusal.
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());

    QVERIFY(writeText(path("one.csv"), "Name,M,M\nA1,1\nA2,1,2\n"));
    answerOpenDialog(path("one.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(note->text(), QStringLiteral("1 line of the file was left out because its number of "
                                          "fields differs from the header row: line 2."));
    QVERIFY(writeText(path("clean.csv"), "Name,M,M\nA1,1,2\n"));
    answerOpenDialog(path("clean.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(!note->isVisible());
}

void TestXCsvSelectionPage::noAlleleColumnsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    // Semicolons or tabs are only taken for the separator when the first
    // line holds them.
    QTest::newRow("semicolons after a title") << QByteArray("Title\nName;M;M\nA;1;2\nB;3;4\n");
    QTest::newRow("tabs after a title") << QByteArray("Title\nName\tM\tM\nA\t1\t2\n");
    QTest::newRow("labels only") << QByteArray("Name\nA\nB\n");
}

void TestXCsvSelectionPage::noAlleleColumnsRefused()
{
    QFETCH(QByteArray, content);
    QVERIFY(writeText(path("one.csv"), content));
    answerOpenDialog(path("one.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QLabel* status = named<QLabel>("inputStatus");
    QVERIFY(status->isVisible());
    QCOMPARE(status->text(), QStringLiteral("The table has no allele columns: is it separated by "
                                            "semicolons or tabs?"));
    QCOMPARE(status->palette().color(QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::unmarkedUtf16AndOldMacNoted()
{
    // UTF-16 without its mark, with carriage returns alone for line ends.
    QByteArray bytes;
    for (char const c : QByteArray("Name,M,M\rA1,1,2\rA2,3,4\rA3,5\r"))
        bytes += QByteArray(1, c) + '\0';
    QVERIFY(writeText(path("utf16.csv"), bytes));
    answerOpenDialog(path("utf16.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(m_page->csv()->rows(), 3);
    QCOMPARE(m_page->csv()->at(2, 0).toString(), QStringLiteral("A2"));
    QLabel* note = named<QLabel>("inputNote");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(),
             QStringLiteral("This file is UTF-16 (little-endian) without a byte-order mark; it "
                            "was read that way.\n1 line of the file was left out because its "
                            "number of fields differs from the header row: line 4."));
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::returningMarkersAndNamesNoted()
{
    QVERIFY(writeText(path("input.csv"), "Name,M,M,N,N,M,M\nA,1,2,3,4,5,6\nB,1,2,3,4,5,6\n"
                                         "A,1,2,3,4,5,6\n"));
    QVERIFY(writeText(path("start.csv"), "Name,M,M,N,N,M,M\nS,1,2,3,4,5,6\nS,1,2,3,4,5,6\n"));
    loadBoth(path("input.csv"), path("start.csv"));
    const QString markers = QStringLiteral(
        "A marker's name returns after other markers' columns, and the alleles of all its "
        "columns are counted as one marker: \"M\" (columns 2-3 and 6-7).");
    QLabel* note = named<QLabel>("inputNote");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), markers + QStringLiteral("\nAn accession name stands in more than "
                                                    "one row: \"A\" (rows 2 and 4)."));
    QCOMPARE(note->palette().color(QPalette::WindowText), QColor(176, 96, 0));
    QLabel* startNote = named<QLabel>("startNote");
    QVERIFY(startNote->isVisible());
    QCOMPARE(startNote->text(), markers + QStringLiteral("\nAn accession name stands in more "
                                                         "than one row: \"S\" (rows 2 and 3)."));
    // Warnings: the analysis may go on, the merge of the two columns stays.
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::windows1252Noted()
{
    // "Bétail" as an old spreadsheet export in Europe writes it.
    QVERIFY(writeText(path("latin.csv"), "Name,M,M\nB\xe9tail,1,2\nA2,5\n"));
    answerOpenDialog(path("latin.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(m_page->csv()->at(1, 0).toString(), QStringLiteral("B\u00e9tail"));
    QLabel* note = named<QLabel>("inputNote");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(),
             QStringLiteral("This file is not UTF-8; it was read as Windows-1252.\n1 line of the "
                            "file was left out because its number of fields differs from the "
                            "header row: line 3."));
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
    // A UTF-8 file afterwards says nothing of encodings.
    QVERIFY(writeText(path("utf8.csv"), "Name,M,M\nB\xc3\xa9tail,1,2\n"));
    answerOpenDialog(path("utf8.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(m_page->csv()->at(1, 0).toString(), QStringLiteral("B\u00e9tail"));
    QVERIFY(!note->isVisible());
}

void TestXCsvSelectionPage::otherSeparatorsNoted_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("note");
    QTest::newRow("semicolons")
        << QByteArray("Name;M;M\r\nA1;1;2\r\nA2;3;4\r\n")
        << "This file separates its fields with semicolons; it was read that way.";
    QTest::newRow("tabs") << QByteArray("Name\tM\tM\nA1\t1\t2\nA2\t3\t4\n")
                          << "This file separates its fields with tabs; it was read that way.";
}

void TestXCsvSelectionPage::otherSeparatorsNoted()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, note);
    QVERIFY(writeText(path("europe.csv"), content));
    answerOpenDialog(path("europe.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY(m_page->csv());
    QCOMPARE(gridText(*m_page->csv()),
             QStringList({"s:Name|s:M|s:M", "s:A1|i:1|i:2", "s:A2|i:3|i:4"}));
    QCOMPARE(named<QLabel>("inputStatus")->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QLabel* shown = named<QLabel>("inputNote");
    QVERIFY(shown->isVisible());
    QCOMPARE(shown->text(), note);
    QCOMPARE(shown->palette().color(QPalette::WindowText), QColor(176, 96, 0));
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
    // A comma-separated file afterwards says nothing of separators.
    QVERIFY(writeText(path("commas.csv"), "Name,M,M\nA1,1,2\n"));
    answerOpenDialog(path("commas.csv"));
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(m_page->csv()->columns(), 3);
    QVERIFY(!shown->isVisible());
}

void TestXCsvSelectionPage::slowReadCancelled()
{
    // A workbook reader that never answers: the wizard keeps painting, a
    // progress dialog offers Cancel after a second, and Cancel leaves the
    // page as it was.
    const QString reader = path("stalled-reader");
    QVERIFY(writeText(reader, "#!/bin/sh\nexec sleep 600\n"));
    QVERIFY(QFile::setPermissions(reader, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(reader));
    XWorkbookReader::setReadingLimitMs(8000);
    QVERIFY(writeText(path("slow.xls"), "x"));
    answerOpenDialog(path("slow.xls"));
    QString label;
    whenDialogOpens<QProgressDialog>([&label](QProgressDialog* progress) {
        label = progress->labelText();
        QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton);
    });
    clickButton(named<QPushButton>("inputBrowse"));
    QCOMPARE(label, QStringLiteral("Reading slow.xls..."));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(named<QLineEdit>("inputFile")->text().isEmpty());
    QVERIFY(!m_page->isComplete());
    // Cancel ended the reader program, and with it the read.
    QTRY_COMPARE_WITH_TIMEOUT(TableReading::running(), 0, 5000);
    qunsetenv("VIREON_WORKBOOK_READER");
    XWorkbookReader::setReadingLimitMs(30000);
}

void TestXCsvSelectionPage::cancelClickEndsTheReader()
{
    // A mouse click on Cancel, delivered to the dialog's window as the
    // window system delivers it, ends the reader program at once rather
    // than at the reading limit.
    const QString pidFile = path("reader.pid");
    const QString reader = path("stalled-reader");
    QVERIFY(writeText(reader, "#!/bin/sh\necho $$ > '" + QFile::encodeName(pidFile) +
                                  "'\nexec sleep 600\n"));
    QVERIFY(QFile::setPermissions(reader, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("VIREON_WORKBOOK_READER", QFile::encodeName(reader));
    XWorkbookReader::setReadingLimitMs(20000);
    QVERIFY(writeText(path("slow.xls"), "x"));
    answerOpenDialog(path("slow.xls"));
    qint64 pid = 0;
    QElapsedTimer sinceClick;
    whenDialogOpens<QProgressDialog>([&](QProgressDialog* progress) {
        QFile file(pidFile);
        if (file.open(QIODevice::ReadOnly))
            pid = file.readAll().trimmed().toLongLong();
        auto* cancel = progress->findChild<QPushButton*>();
        const QPoint at = cancel->mapTo(progress, cancel->rect().center());
        sinceClick.start();
        QTest::mouseClick(progress->windowHandle(), Qt::LeftButton, {}, at);
        // Should the click be lost, the read fails at its limit: its
        // message must not hold the test.
        whenDialogOpens<QMessageBox>([](QMessageBox* box) { box->close(); }, 30000);
    });
    clickButton(named<QPushButton>("inputBrowse"));
    QVERIFY2(pid > 0, "the reader program never started");
    QVERIFY(sinceClick.isValid());
    // Gone, and reaped: no process of that number is left.
    auto gone = [pid] { return ::kill(pid_t(pid), 0) != 0 && errno == ESRCH; };
    while (!gone() && sinceClick.elapsed() < 5000)
        QTest::qWait(1);
    QVERIFY2(gone(), "the reader program outlived Cancel");
    qInfo("reader ended %lld ms after the click", sinceClick.elapsed());
    QTRY_COMPARE_WITH_TIMEOUT(TableReading::running(), 0, 5000);
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(named<QLineEdit>("inputFile")->text().isEmpty());
    qunsetenv("VIREON_WORKBOOK_READER");
    XWorkbookReader::setReadingLimitMs(30000);
}

QTEST_MAIN(TestXCsvSelectionPage)
#include "tst_xcsvselectionpage.moc"

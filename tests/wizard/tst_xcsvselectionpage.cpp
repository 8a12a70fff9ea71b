#include "CellText.h"
#include "WizardTesting.h"
#include "XCsv.h"
#include "XCsvSelectionPage.h"
#include "XSpreadsheet.h"
#include "XWizard.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

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
    void invalidCellsThenRepair();
    void loadXls();
    void startingCollection();
    void uncheckThrowsStartAway();
    void secondInputClearsStart();
    void startWithErrorsBlocks();
    void checkedWithoutStartIsIncomplete();
    void reenteringStartsAfresh();

private:
    QLabel* label(int row) { return qobject_cast<QLabel*>(gridWidget(m_page, row, 0)); }
    QPushButton* button(int row) { return qobject_cast<QPushButton*>(gridWidget(m_page, row, 1)); }
    QLineEdit* lineEdit(int row) { return qobject_cast<QLineEdit*>(gridWidget(m_page, row, 0)); }
    QCheckBox* checkBox() { return qobject_cast<QCheckBox*>(gridWidget(m_page, 2, 0)); }
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
    QVERIFY(lineEdit(0)->isReadOnly());
    QCOMPARE(button(0)->text(), QStringLiteral("Browse..."));
    QCOMPARE(button(1)->text(), QStringLiteral("Edit"));
    QCOMPARE(checkBox()->text(), QStringLiteral("Start from an existing core collection"));
    QVERIFY(lineEdit(3)->isReadOnly());
    QCOMPARE(button(3)->text(), QStringLiteral("Browse..."));
    QCOMPARE(button(4)->text(), QStringLiteral("Edit"));
    QCOMPARE(m_page->nextId(), 3);
}

void TestXCsvSelectionPage::enteringHidesEverything()
{
    for (int row : {1, 3, 4}) {
        QVERIFY(!label(row) || !label(row)->isVisible());
        QVERIFY(!button(row)->isVisible());
    }
    QVERIFY(!checkBox()->isVisible());
    QVERIFY(!lineEdit(3)->isVisible());
    QVERIFY(button(0)->isVisible());
    QVERIFY(!m_page->isComplete());
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::loadValidCsv()
{
    answerOpenDialog(QStringLiteral("  ") + m_microbov + QStringLiteral(" "));
    clickButton(button(0));
    QVERIFY(m_page->csv());
    QCOMPARE(m_page->csv()->rows(), 705);
    QCOMPARE(m_page->csv()->columns(), 61);
    QCOMPARE(m_page->csv()->parent(), nullptr);
    QCOMPARE(lineEdit(0)->text(), m_microbov);
    QCOMPARE(label(1)->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QVERIFY(label(1)->isVisible());
    QCOMPARE(label(1)->palette().color(QPalette::WindowText),
             QPalette().color(QPalette::WindowText));
    QVERIFY(button(1)->isVisible());
    QVERIFY(checkBox()->isVisible());
    QVERIFY(!checkBox()->isChecked());
    QVERIFY(m_page->isComplete());
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXCsvSelectionPage::browseFilterAndCancel()
{
    QString filter;
    answerOpenDialog(QString(), &filter);
    clickButton(button(0));
    QCOMPARE(filter, QStringLiteral("Spreadsheets (*.csv *.xls)"));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(!checkBox()->isVisible());
    answerOpenDialog(QStringLiteral("   "));
    clickButton(button(0));
    QCOMPARE(m_page->csv(), nullptr);
}

void TestXCsvSelectionPage::wrongSuffix_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("upper-case XLS") << "input.XLS";
    QTest::newRow("mixed-case Csv") << "data.Csv";
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
    clickButton(button(0));
    QCOMPARE(title, QStringLiteral("Error"));
    QCOMPARE(text, QStringLiteral("The file you selected is not a .csv or a .xls file."));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(lineEdit(0)->text().isEmpty());
}

void TestXCsvSelectionPage::failedReadKeepsTable()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    QPointer<XCsv> first = m_page->csv();
    QVERIFY(writeText(path("x.doc"), "x"));
    answerOpenDialog(path("x.doc"));
    QString title, text;
    whenModalOpens(messageBoxSeen(&title, &text));
    clickButton(button(0));
    QCOMPARE(title, QStringLiteral("Error"));
    QVERIFY(!first.isNull());
    QCOMPARE(m_page->csv(), first.data());
    QCOMPARE(lineEdit(0)->text(), m_microbov);
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::invalidCellsThenRepair()
{
    QVERIFY(writeText(path("bad.csv"), "Name,M1,M1\nA,1,2\nB,x,3\nC,4,-1\n"));
    answerOpenDialog(path("bad.csv"));
    clickButton(button(0));
    QVERIFY(m_page->csv());
    QCOMPARE(label(1)->text(), QStringLiteral("There are errors in the table. Click on the Edit "
                                              "button to fix them."));
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(label(1)->palette().color(group, QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_page->isComplete());
    QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());

    // Fix one of two errors: still incomplete.
    bool seen = false;
    whenModalOpens(editorEdits({{1, 0, "5"}}, &seen));
    clickButton(button(1));
    QVERIFY(seen);
    QVERIFY(!m_page->isComplete());
    QCOMPARE(cellText(m_page->csv()->at(2, 1)), QStringLiteral("s:5"));

    whenModalOpens(editorEdits({{2, 1, "7"}}, &seen));
    clickButton(button(1));
    QVERIFY(m_page->isComplete());
    QCOMPARE(label(1)->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QCOMPARE(label(1)->palette().color(QPalette::WindowText),
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
    clickButton(button(0));
    if (!m_page->csv())
        QSKIP(qPrintable(QStringLiteral("this build cannot read workbooks: ") + text));
    QCOMPARE(gridText(*m_page->csv()),
             QStringList({"s:Name|s:M1|s:M1", "s:A|i:1|i:2", "s:B|i:3|s:*"}));
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::startingCollection()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    checkBox()->setChecked(true);
    QVERIFY(lineEdit(3)->isVisible());
    QVERIFY(button(3)->isVisible());
    QVERIFY(!button(4)->isVisible());
    QVERIFY(!m_page->isComplete());

    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(button(3));
    QVERIFY(m_page->src());
    QCOMPARE(m_page->src()->rows(), 6);
    QCOMPARE(lineEdit(3)->text(), QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    QCOMPARE(label(4)->text(),
             QStringLiteral("Click on the Edit button to make changes to the table."));
    QVERIFY(button(4)->isVisible());
    QVERIFY(checkBox()->isChecked());
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::uncheckThrowsStartAway()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    checkBox()->setChecked(true);
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(button(3));
    QPointer<XCsv> src = m_page->src();
    QVERIFY(src);
    checkBox()->setChecked(false);
    QVERIFY(src.isNull());
    QCOMPARE(m_page->src(), nullptr);
    QVERIFY(!lineEdit(3)->isVisible());
    QVERIFY(m_page->isComplete());
    // Checking again needs a new Browse.
    checkBox()->setChecked(true);
    QCOMPARE(m_page->src(), nullptr);
    QVERIFY(lineEdit(3)->text().isEmpty());
    QVERIFY(!m_page->isComplete());
}

void TestXCsvSelectionPage::secondInputClearsStart()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    QPointer<XCsv> first = m_page->csv();
    checkBox()->setChecked(true);
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(button(3));
    QPointer<XCsv> src = m_page->src();

    QVERIFY(writeText(path("second.csv"), "Name,M\nA,1\n"));
    answerOpenDialog(path("second.csv"));
    clickButton(button(0));
    QVERIFY(first.isNull());
    QVERIFY(src.isNull());
    QCOMPARE(m_page->csv()->rows(), 2);
    QVERIFY(!checkBox()->isChecked());
    QVERIFY(checkBox()->isVisible());
    QVERIFY(!lineEdit(3)->isVisible());
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::startWithErrorsBlocks()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    checkBox()->setChecked(true);
    QVERIFY(writeText(path("start.csv"), "Name,M\nS,abc\n"));
    answerOpenDialog(path("start.csv"));
    clickButton(button(3));
    QCOMPARE(label(4)->palette().color(QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_page->isComplete());
    bool seen = false;
    whenModalOpens(editorEdits({{0, 0, "12"}}, &seen));
    clickButton(button(4));
    QVERIFY(seen);
    QCOMPARE(cellText(m_page->src()->at(1, 1)), QStringLiteral("s:12"));
    QVERIFY(m_page->isComplete());
}

void TestXCsvSelectionPage::checkedWithoutStartIsIncomplete()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    QSignalSpy changed(m_page, &QWizardPage::completeChanged);
    checkBox()->setChecked(true);
    QCOMPARE(changed.count(), 1);
    QVERIFY(!m_page->isComplete());
}

void TestXCsvSelectionPage::reenteringStartsAfresh()
{
    answerOpenDialog(m_microbov);
    clickButton(button(0));
    QPointer<XCsv> csv = m_page->csv();
    m_wizard->back();
    QCOMPARE(m_wizard->currentId(), 0);
    // Going back keeps the table; entering the page again going forward drops it.
    QVERIFY(!csv.isNull());
    m_wizard->next();
    QVERIFY(csv.isNull());
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(lineEdit(0)->text().isEmpty());
    QVERIFY(!checkBox()->isVisible());
    QVERIFY(!m_page->isComplete());
}

QTEST_MAIN(TestXCsvSelectionPage)
#include "tst_xcsvselectionpage.moc"

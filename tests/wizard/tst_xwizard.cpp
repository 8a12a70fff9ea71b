#include "CellText.h"
#include "WidgetLookup.h"
#include "WizardTesting.h"
#include "XCsv.h"
#include "XCsvSelectionPage.h"
#include "XManualEditingPage.h"
#include "XWizard.h"

#include <QCheckBox>
#include <QPointer>
#include <QRadioButton>
#include <QSpinBox>
#include <QtTest>

namespace {

struct Received
{
    int calls = 0;
    XCsv* csv = nullptr;
    XCsv* src = nullptr;
    int iterations = -1;
    int seed = -1;
    bool exact = false;
    int budget = -1;
};

} // namespace

class TestXWizard : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pages_data();
    void pages();
    void firstPage();
    void pageOrder();
    void settingsPage();
    void searchChoice();
    void finishWithExactSearch();
    void backResetsSettings();
    void finishDisabledAtZeroIterations();
    void finishFromFile();
    void finishFromFileWithStart();
    void finishManual();
    void finishFileDropsManualTable();
    void cancelDeletesTables();
    void rejectAfterManualDeletesTable();
    void enterAfterEditorGoesForward_data();
    void enterAfterEditorGoesForward();
    void cancelAsksBeforeDiscarding();
    void cancelWithoutTablesClosesAtOnce();
    void manualSizeLockedAfterCreate();

private:
    // A click on the radio button's indicator: the middle of a wide button
    // may lie beyond its text and not count as a hit.
    void chooseManual();
    void connectReceiver();
    void loadInput(QString const& fileName);
    QSpinBox* iterations();
    QSpinBox* seed();

    XWizard* m_wizard = nullptr;
    Received m_received;
};

void TestXWizard::init()
{
    m_wizard = new XWizard;
    m_received = Received();
    connectReceiver();
    m_wizard->show();
    QApplication::setActiveWindow(m_wizard);
    QVERIFY(QTest::qWaitForWindowActive(m_wizard));
}

void TestXWizard::cleanup()
{
    stopWatchingModals();
    XFileDialog::setOpenHook({});
    delete m_wizard;
    m_wizard = nullptr;
    // The receiver owns what it was given.
    delete m_received.csv;
    delete m_received.src;
}

void TestXWizard::chooseManual()
{
    auto* radio =
        m_wizard->page(XWizard::FirstPage)->findChild<QRadioButton*>(QStringLiteral("manually"));
    QApplication::processEvents();
    QTest::mouseClick(radio, Qt::LeftButton, Qt::NoModifier,
                      QPoint(radio->height() / 2, radio->height() / 2));
    QVERIFY(radio->isChecked());
}

void TestXWizard::connectReceiver()
{
    connect(m_wizard, qOverload<XAnalysisRequest&>(&XWizard::finished), this,
            [this](XAnalysisRequest& request) {
                ++m_received.calls;
                m_received.csv = request.input.release();
                m_received.src = request.start.release();
                m_received.iterations = request.settings.iterations;
                m_received.seed = request.settings.seed;
                m_received.exact = request.settings.kind == XSearchKind::Exact;
                m_received.budget = request.settings.budgetSeconds;
            });
}

void TestXWizard::searchChoice()
{
    QWizardPage* page = m_wizard->page(XWizard::SettingsPage);
    auto* reproducible = page->findChild<QRadioButton*>(QStringLiteral("reproducibleSearch"));
    auto* exact = page->findChild<QRadioButton*>(QStringLiteral("exactSearch"));
    auto* budget = page->findChild<QSpinBox*>(QStringLiteral("budget"));
    QVERIFY(reproducible && exact && budget);
    QCOMPARE(reproducible->text(), QStringLiteral("Reproducible (randomised, repeatable by seed)"));
    QCOMPARE(exact->text(), QStringLiteral("Smallest cores (exact)"));
    QVERIFY(reproducible->isChecked());
    QVERIFY(!exact->isChecked());
    QCOMPARE(budget->minimum(), 1);
    QCOMPARE(budget->maximum(), 3600);
    QCOMPARE(budget->value(), 60);
    QStringList texts;
    for (QLabel* label : page->findChildren<QLabel*>())
        texts << label->text();
    QVERIFY(texts.contains(QStringLiteral("Search")));
    QVERIFY(texts.contains(QStringLiteral("Time budget (s)")));
    QVERIFY(iterations()->isEnabled() && seed()->isEnabled() && !budget->isEnabled());
    exact->setChecked(true);
    QVERIFY(!reproducible->isChecked());
    QVERIFY(!iterations()->isEnabled() && !seed()->isEnabled() && budget->isEnabled());
    reproducible->setChecked(true);
    QVERIFY(iterations()->isEnabled() && seed()->isEnabled() && !budget->isEnabled());
}

void TestXWizard::finishWithExactSearch()
{
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    m_wizard->next();
    QWizardPage* page = m_wizard->page(XWizard::SettingsPage);
    page->findChild<QRadioButton*>(QStringLiteral("exactSearch"))->setChecked(true);
    page->findChild<QSpinBox*>(QStringLiteral("budget"))->setValue(5);
    clickButton(m_wizard->button(QWizard::FinishButton));
    QCOMPARE(m_received.calls, 1);
    QVERIFY(m_received.exact);
    QCOMPARE(m_received.budget, 5);
    QCOMPARE(m_received.csv->rows(), 705);
}

void TestXWizard::loadInput(QString const& fileName)
{
    if (m_wizard->currentId() == XWizard::FirstPage)
        m_wizard->next();
    answerOpenDialog(fileName);
    auto* page = m_wizard->page(XWizard::SelectionPage);
    clickButton(page->findChild<QPushButton*>(QStringLiteral("inputBrowse")));
}

QSpinBox* TestXWizard::iterations()
{
    return m_wizard->page(XWizard::SettingsPage)
        ->findChild<QSpinBox*>(QStringLiteral("iterations"));
}

QSpinBox* TestXWizard::seed()
{
    return m_wizard->page(XWizard::SettingsPage)->findChild<QSpinBox*>(QStringLiteral("seed"));
}

void TestXWizard::pages_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("subTitle");
    QTest::newRow("0") << 0 << "XFirstPage"
                       << "Start"
                       << "Select the action you want to perform";
    QTest::newRow("1") << 1 << "XCsvSelectionPage"
                       << "Select file"
                       << "Preview and edit the input spreadsheet";
    QTest::newRow("2") << 2 << "XManualEditingPage"
                       << "Manual editing"
                       << "Create and edit a new table";
    QTest::newRow("3") << 3 << "XSettingsPage"
                       << "Algorithm Settings"
                       << "Adjust the algorithm's parameters";
}

void TestXWizard::pages()
{
    QFETCH(int, id);
    QFETCH(QString, className);
    QFETCH(QString, title);
    QFETCH(QString, subTitle);
    QCOMPARE(m_wizard->pageIds(), QList<int>({0, 1, 2, 3}));
    QWizardPage* page = m_wizard->page(id);
    QCOMPARE(QString::fromLatin1(page->metaObject()->className()), className);
    QCOMPARE(page->title(), title);
    QCOMPARE(page->subTitle(), subTitle);
}

void TestXWizard::firstPage()
{
    const QList<QRadioButton*> radios = {
        m_wizard->page(0)->findChild<QRadioButton*>(QStringLiteral("fromFile")),
        m_wizard->page(0)->findChild<QRadioButton*>(QStringLiteral("manually"))};
    QCOMPARE(m_wizard->page(0)->findChildren<QRadioButton*>().size(), 2);
    QCOMPARE(radios.at(0)->text(), QStringLiteral("Input from an existing file"));
    QCOMPARE(radios.at(1)->text(), QStringLiteral("Input data manually"));
    QVERIFY(radios.at(0)->isChecked());
    QCOMPARE(m_wizard->field("file").toBool(), true);
    QCOMPARE(m_wizard->field("manual").toBool(), false);
    QCOMPARE(m_wizard->page(0)->nextId(), int(XWizard::SelectionPage));
    radios.at(1)->setChecked(true);
    QCOMPARE(m_wizard->page(0)->nextId(), int(XWizard::ManualPage));
    QCOMPARE(m_wizard->field("file").toBool(), false);
    // Neither checked: the page leads nowhere.
    radios.at(1)->setAutoExclusive(false);
    radios.at(1)->setChecked(false);
    QCOMPARE(m_wizard->page(0)->nextId(), int(XWizard::FirstPage));
}

void TestXWizard::pageOrder()
{
    QCOMPARE(m_wizard->currentId(), 0);
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), 1);
    QCOMPARE(m_wizard->page(1)->nextId(), int(XWizard::SettingsPage));
    QCOMPARE(m_wizard->page(2)->nextId(), int(XWizard::SettingsPage));
    QCOMPARE(m_wizard->page(3)->nextId(), -1);
    m_wizard->back();
    m_wizard->setField("manual", true);
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), 2);
}

void TestXWizard::settingsPage()
{
    QCOMPARE(iterations()->minimum(), 0);
    QCOMPARE(iterations()->maximum(), 99);
    iterations()->setValue(150);
    QCOMPARE(iterations()->value(), 99);
    QCOMPARE(seed()->minimum(), 0);
    QCOMPARE(seed()->maximum(), 2147483646);
    QCOMPARE(seed()->value(), 0);
    auto* page = m_wizard->page(3);
    QVERIFY(page->findChildren<QLabel*>().size() >= 2);
    QStringList texts;
    for (QLabel* label : page->findChildren<QLabel*>())
        texts << label->text();
    QVERIFY(texts.contains("Iterations"));
    QVERIFY(texts.contains("Rand seed (0 = autogenerated)"));
}

void TestXWizard::backResetsSettings()
{
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), 3);
    QCOMPARE(iterations()->value(), 1);
    iterations()->setValue(7);
    seed()->setValue(42);
    m_wizard->back();
    QCOMPARE(m_wizard->currentId(), 1);
    QCOMPARE(m_wizard->field("iterations").toInt(), 0);
    QCOMPARE(m_wizard->field("seed").toInt(), 0);
    m_wizard->next();
    QCOMPARE(iterations()->value(), 1);
    QCOMPARE(seed()->value(), 0);
}

void TestXWizard::finishDisabledAtZeroIterations()
{
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    m_wizard->next();
    QVERIFY(m_wizard->button(QWizard::FinishButton)->isEnabled());
    iterations()->setValue(0);
    QVERIFY(!m_wizard->button(QWizard::FinishButton)->isEnabled());
    iterations()->setValue(3);
    QVERIFY(m_wizard->button(QWizard::FinishButton)->isEnabled());
}

void TestXWizard::finishFromFile()
{
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    QPointer<XCsv> csv = qobject_cast<XCsvSelectionPage*>(m_wizard->page(1))->csv();
    m_wizard->next();
    iterations()->setValue(12);
    seed()->setValue(2147483646);
    clickButton(m_wizard->button(QWizard::FinishButton));
    QCOMPARE(m_received.calls, 1);
    QCOMPARE(m_received.csv, csv.data());
    QCOMPARE(m_received.src, nullptr);
    QCOMPARE(m_received.iterations, 12);
    QCOMPARE(m_received.seed, 2147483646);
    // The wizard no longer owns the table: deleting the wizard keeps it.
    delete m_wizard;
    m_wizard = nullptr;
    QVERIFY(!csv.isNull());
    QCOMPARE(m_received.csv->rows(), 705);
}

void TestXWizard::finishFromFileWithStart()
{
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    auto* page = qobject_cast<XCsvSelectionPage*>(m_wizard->page(1));
    page->findChild<QCheckBox*>(QStringLiteral("startCheck"))->setChecked(true);
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(page->findChild<QPushButton*>(QStringLiteral("startBrowse")));
    QPointer<XCsv> src = page->src();
    QVERIFY(src);
    m_wizard->next();
    m_wizard->accept();
    QCOMPARE(m_received.calls, 1);
    QCOMPARE(m_received.src, src.data());
    QCOMPARE(m_received.iterations, 1);
    QCOMPARE(m_received.seed, 0);
    delete m_wizard;
    m_wizard = nullptr;
    QVERIFY(!src.isNull());
}

void TestXWizard::finishManual()
{
    m_wizard->setField("manual", true);
    m_wizard->next();
    auto* page = qobject_cast<XManualEditingPage*>(m_wizard->page(2));
    page->findChild<QSpinBox*>(QStringLiteral("rows"))->setValue(3);
    page->findChild<QSpinBox*>(QStringLiteral("columns"))->setValue(2);
    whenModalOpens(editorEdits({{0, 0, "5"}}));
    clickButton(findButton(page, QStringLiteral("Create")));
    QPointer<XCsv> csv = page->csv();
    QVERIFY(csv);
    m_wizard->next();
    seed()->setValue(9);
    clickButton(m_wizard->button(QWizard::FinishButton));
    QCOMPARE(m_received.calls, 1);
    QCOMPARE(m_received.csv, csv.data());
    QCOMPARE(m_received.src, nullptr);
    QCOMPARE(m_received.iterations, 1);
    QCOMPARE(m_received.seed, 9);
    QCOMPARE(gridText(*m_received.csv),
             QStringList({"s:Name|s:Column 1|s:Column 2", "s:Row 1|s:5|s:*", "s:Row 2|s:*|s:*",
                          "s:Row 3|s:*|s:*"}));
}

void TestXWizard::finishFileDropsManualTable()
{
    // A table built by hand, then the file route chosen: only the file's table survives.
    m_wizard->setField("manual", true);
    m_wizard->next();
    auto* manual = qobject_cast<XManualEditingPage*>(m_wizard->page(2));
    whenModalOpens(editorEdits({}));
    clickButton(findButton(manual, QStringLiteral("Create")));
    QPointer<XCsv> handMade = manual->csv();
    QVERIFY(handMade);
    m_wizard->back();
    m_wizard->setField("file", true);
    m_wizard->next();
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    m_wizard->next();
    m_wizard->accept();
    QCOMPARE(m_received.calls, 1);
    QVERIFY(handMade.isNull());
    QCOMPARE(m_received.csv->rows(), 705);
}

void TestXWizard::cancelDeletesTables()
{
    loadInput(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    auto* page = qobject_cast<XCsvSelectionPage*>(m_wizard->page(1));
    page->findChild<QCheckBox*>(QStringLiteral("startCheck"))->setChecked(true);
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov_start.csv"));
    clickButton(page->findChild<QPushButton*>(QStringLiteral("startBrowse")));
    QPointer<XCsv> csv = page->csv();
    QPointer<XCsv> src = page->src();
    QVERIFY(csv && src);
    QString question;
    whenModalOpens(messageBoxAnswer(QStringLiteral("Discard"), &question));
    clickButton(m_wizard->button(QWizard::CancelButton));
    QCOMPARE(question, QStringLiteral("Discard the tables of this analysis?"));
    QVERIFY(csv.isNull());
    QVERIFY(src.isNull());
    QCOMPARE(m_received.calls, 0);
}

void TestXWizard::rejectAfterManualDeletesTable()
{
    m_wizard->setField("manual", true);
    m_wizard->next();
    auto* manual = qobject_cast<XManualEditingPage*>(m_wizard->page(2));
    whenModalOpens(editorEdits({}));
    clickButton(findButton(manual, QStringLiteral("Create")));
    QPointer<XCsv> csv = manual->csv();
    QVERIFY(csv);
    QString question;
    whenModalOpens(messageBoxAnswer(QStringLiteral("Discard"), &question));
    m_wizard->reject();
    QCOMPARE(question, QStringLiteral("Discard the tables of this analysis?"));
    QVERIFY(csv.isNull());
    QCOMPARE(m_received.calls, 0);
}

void TestXWizard::enterAfterEditorGoesForward_data()
{
    QTest::addColumn<bool>("manual");
    QTest::newRow("file") << false;
    QTest::newRow("by hand") << true;
}

void TestXWizard::enterAfterEditorGoesForward()
{
    // Enter after the editor closes must never go back and lose the table.
    QFETCH(bool, manual);
    if (manual)
        chooseManual();
    clickButton(m_wizard->button(QWizard::NextButton));
    QWizardPage* page = m_wizard->currentPage();
    whenModalOpens(closeEditorByClick());
    if (manual) {
        clickButton(page->findChild<QPushButton*>(QStringLiteral("create")));
    } else {
        answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
        clickButton(page->findChild<QPushButton*>(QStringLiteral("inputBrowse")));
        clickButton(page->findChild<QPushButton*>(QStringLiteral("inputEdit")));
    }
    QPointer<XCsv> table = manual ? qobject_cast<XManualEditingPage*>(page)->csv()
                                  : qobject_cast<XCsvSelectionPage*>(page)->csv();
    QVERIFY(table);
    // The window manager gives the wizard back its activation.
    QApplication::setActiveWindow(m_wizard);
    QTRY_VERIFY(m_wizard->isActiveWindow());
    QWidget* focus = m_wizard->focusWidget();
    QCOMPARE(focus, m_wizard->button(QWizard::NextButton));
    QTest::keyClick(focus, Qt::Key_Return);
    QCOMPARE(m_wizard->currentId(), int(XWizard::SettingsPage));
    QVERIFY(table);
    // Even with the focus on Back, Enter presses the default button: Finish.
    QAbstractButton* back = m_wizard->button(QWizard::BackButton);
    back->setFocus();
    QTest::keyClick(back, Qt::Key_Return);
    QCOMPARE(m_received.calls, 1);
    QCOMPARE(m_received.csv, table.data());
}

void TestXWizard::cancelAsksBeforeDiscarding()
{
    clickButton(m_wizard->button(QWizard::NextButton));
    auto* page = qobject_cast<XCsvSelectionPage*>(m_wizard->currentPage());
    answerOpenDialog(QStringLiteral(VIREON_EXAMPLES_DIR "/microbov.csv"));
    clickButton(page->findChild<QPushButton*>(QStringLiteral("inputBrowse")));
    QPointer<XCsv> csv = page->csv();
    QVERIFY(csv);

    // Cancel, then "Cancel" in the question: everything stays.
    QString question;
    QStringList buttons;
    whenModalOpens(messageBoxAnswer(QStringLiteral("Cancel"), &question, &buttons));
    clickButton(m_wizard->button(QWizard::CancelButton));
    QCOMPARE(question, QStringLiteral("Discard the tables of this analysis?"));
    QCOMPARE(buttons.size(), 2);
    QVERIFY(buttons.contains(QStringLiteral("Discard")));
    QVERIFY(buttons.contains(QStringLiteral("Cancel")));
    QVERIFY(m_wizard->isVisible());
    QVERIFY(csv);

    // Escape asks too; Discard closes the wizard and deletes the table.
    question.clear();
    whenModalOpens(messageBoxAnswer(QStringLiteral("Discard"), &question));
    QTest::keyClick(m_wizard, Qt::Key_Escape);
    QCOMPARE(question, QStringLiteral("Discard the tables of this analysis?"));
    QVERIFY(!m_wizard->isVisible());
    QVERIFY(csv.isNull());
    QCOMPARE(m_received.calls, 0);
}

void TestXWizard::cancelWithoutTablesClosesAtOnce()
{
    bool asked = false;
    whenModalOpens(
        [&asked](QWidget* modal) {
            asked = true;
            modal->close();
        },
        500);
    clickButton(m_wizard->button(QWizard::NextButton));
    clickButton(m_wizard->button(QWizard::CancelButton));
    QVERIFY(!m_wizard->isVisible());
    QTest::qWait(600);
    QVERIFY(!asked);
}

void TestXWizard::manualSizeLockedAfterCreate()
{
    chooseManual();
    clickButton(m_wizard->button(QWizard::NextButton));
    QWizardPage* page = m_wizard->currentPage();
    auto* rows = page->findChild<QSpinBox*>(QStringLiteral("rows"));
    auto* columns = page->findChild<QSpinBox*>(QStringLiteral("columns"));
    QVERIFY(rows->isEnabled() && columns->isEnabled());
    rows->setFocus();
    QTest::keyClick(rows, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(rows, QStringLiteral("3"));
    whenModalOpens(closeEditorByClick());
    clickButton(page->findChild<QPushButton*>(QStringLiteral("create")));
    QCOMPARE(qobject_cast<XManualEditingPage*>(page)->csv()->rows(), 4);
    QVERIFY(!rows->isEnabled());
    QVERIFY(!columns->isEnabled());
    // Entering the page again starts afresh, with the boxes usable.
    clickButton(m_wizard->button(QWizard::BackButton));
    clickButton(m_wizard->button(QWizard::NextButton));
    QVERIFY(rows->isEnabled());
    QVERIFY(columns->isEnabled());
}

QTEST_MAIN(TestXWizard)
#include "tst_xwizard.moc"

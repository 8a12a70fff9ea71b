#include "CellText.h"
#include "WidgetLookup.h"
#include "WizardTesting.h"
#include "XCsv.h"
#include "XManualEditingPage.h"
#include "XWizard.h"

#include <QLineEdit>
#include <QPointer>
#include <QSpinBox>
#include <QtTest>

class TestXManualEditingPage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void titlesAndDefaults();
    void spinRanges();
    void createStarTable();
    void invalidFill_data();
    void invalidFill();
    void fillKeptAsTyped();
    void recreateReplacesTable();
    void reenteringStartsAfresh();

private:
    QSpinBox* rows() { return m_page->findChild<QSpinBox*>(QStringLiteral("rows")); }
    QSpinBox* columns() { return m_page->findChild<QSpinBox*>(QStringLiteral("columns")); }
    QLineEdit* fill() { return m_page->findChild<QLineEdit*>(QStringLiteral("fill")); }
    QAbstractButton* buttonNamed(QString const& text) { return findButton(m_page, text); }
    QLabel* labelNamed(QString const& text) { return findLabel(m_page, text); }
    void create(QList<CellEdit> edits = {});

    XWizard* m_wizard = nullptr;
    XManualEditingPage* m_page = nullptr;
};

void TestXManualEditingPage::init()
{
    m_wizard = new XWizard;
    m_wizard->show();
    m_wizard->setField(QStringLiteral("manual"), true);
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), 2);
    m_page = qobject_cast<XManualEditingPage*>(m_wizard->currentPage());
    QVERIFY(m_page);
}

void TestXManualEditingPage::cleanup()
{
    stopWatchingModals();
    delete m_wizard;
    m_wizard = nullptr;
    m_page = nullptr;
}

void TestXManualEditingPage::create(QList<CellEdit> edits)
{
    bool seen = false;
    whenModalOpens(editorEdits(edits, &seen));
    clickButton(buttonNamed(QStringLiteral("Create")));
    QVERIFY(seen);
}

void TestXManualEditingPage::titlesAndDefaults()
{
    QCOMPARE(m_page->title(), QStringLiteral("Manual editing"));
    QCOMPARE(m_page->subTitle(), QStringLiteral("Create and edit a new table"));
    QVERIFY(labelNamed(QStringLiteral("Rows")));
    QVERIFY(labelNamed(QStringLiteral("Columns")));
    QVERIFY(labelNamed(QStringLiteral("Fill character")));
    QLabel* hint =
        labelNamed(QStringLiteral("Click on the button to create a table using the values above."));
    QVERIFY(hint && hint->isVisible());
    QVERIFY(buttonNamed(QStringLiteral("Create"))->isVisible());
    QVERIFY(!buttonNamed(QStringLiteral("Edit"))->isVisible());
    QCOMPARE(rows()->value(), 10);
    QCOMPARE(columns()->value(), 10);
    QCOMPARE(fill()->text(), QStringLiteral("*"));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(!m_page->isComplete());
    QCOMPARE(m_page->nextId(), 3);
}

void TestXManualEditingPage::spinRanges()
{
    for (QSpinBox* box : {rows(), columns()}) {
        QCOMPARE(box->minimum(), 1);
        QCOMPARE(box->maximum(), 99);
        box->setValue(500);
        QCOMPARE(box->value(), 99);
    }
}

void TestXManualEditingPage::createStarTable()
{
    rows()->setValue(3);
    columns()->setValue(2);
    fill()->setText(QStringLiteral("*"));
    create();
    QVERIFY(m_page->csv());
    QCOMPARE(m_page->csv()->columns(), 3);
    QCOMPARE(gridText(*m_page->csv()),
             QStringList({"s:Name|s:Column 1|s:Column 2", "s:Row 1|s:*|s:*", "s:Row 2|s:*|s:*",
                          "s:Row 3|s:*|s:*"}));
    QVERIFY(!buttonNamed(QStringLiteral("Create"))->isVisible());
    QVERIFY(buttonNamed(QStringLiteral("Edit"))->isVisible());
    QVERIFY(labelNamed(QStringLiteral("Click on the Edit button to make changes to the table.")));
    QVERIFY(m_page->isComplete());
    QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
}

void TestXManualEditingPage::invalidFill_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("x") << "x";
}

void TestXManualEditingPage::invalidFill()
{
    QFETCH(QString, text);
    rows()->setValue(2);
    columns()->setValue(2);
    fill()->setText(text);
    create();
    QCOMPARE(cellText(m_page->csv()->at(1, 1)), QStringLiteral("s:") + text);
    QLabel* status = labelNamed(
        QStringLiteral("There are errors in the table. Click on the Edit button to fix them."));
    QVERIFY(status && status->isVisible());
    QCOMPARE(status->palette().color(QPalette::WindowText), QColor(Qt::red));
    QVERIFY(!m_page->isComplete());

    // Three of four cells fixed: still incomplete; the fourth completes it.
    whenModalOpens(editorEdits({{0, 0, "1"}, {0, 1, "*"}, {1, 0, "0"}}));
    clickButton(buttonNamed(QStringLiteral("Edit")));
    QVERIFY(!m_page->isComplete());
    whenModalOpens(editorEdits({{1, 1, "17"}}));
    clickButton(buttonNamed(QStringLiteral("Edit")));
    QVERIFY(m_page->isComplete());
    QVERIFY(labelNamed(QStringLiteral("Click on the Edit button to make changes to the table.")));
}

void TestXManualEditingPage::fillKeptAsTyped()
{
    rows()->setValue(1);
    columns()->setValue(1);
    fill()->setText(QStringLiteral(" 12 "));
    create();
    QCOMPARE(cellText(m_page->csv()->at(1, 1)), QStringLiteral("s: 12 "));
    QVERIFY(!m_page->isComplete());
}

void TestXManualEditingPage::recreateReplacesTable()
{
    rows()->setValue(1);
    columns()->setValue(1);
    create();
    QPointer<XCsv> first = m_page->csv();
    // Create is hidden after the first table; entering again brings it back.
    m_wizard->back();
    m_wizard->next();
    QVERIFY(first.isNull());
    QVERIFY(buttonNamed(QStringLiteral("Create"))->isVisible());
    create();
    QVERIFY(m_page->csv());
    QCOMPARE(m_page->csv()->rows(), 11);
}

void TestXManualEditingPage::reenteringStartsAfresh()
{
    rows()->setValue(4);
    fill()->setText(QStringLiteral("x"));
    create();
    m_wizard->back();
    m_wizard->next();
    QCOMPARE(rows()->value(), 10);
    QCOMPARE(fill()->text(), QStringLiteral("*"));
    QCOMPARE(m_page->csv(), nullptr);
    QVERIFY(!buttonNamed(QStringLiteral("Edit"))->isVisible());
}

QTEST_MAIN(TestXManualEditingPage)
#include "tst_xmanualeditingpage.moc"

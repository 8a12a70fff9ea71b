#include "EditedTable.h"
#include "ModalDialogs.h"
#include "XCsv.h"
#include "XCsvEditor.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

class TestEditedTable : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void emptyHoldsNothing();
    void validTableIsReady();
    void invalidCellIsNotReady();
    void resetReplacesTable();
    void dropDeletesTable();
    void destructorDeletesTable();
    void takeHandsTableOver();
    void editChecksTableAgain();
    void editWithoutTableOpensNothing();
    void statusTexts_data();
    void statusTexts();

private:
    static XCsv* table(QString const& cell)
    {
        return new XCsv(
            XCsv::Grid{{QStringLiteral("Name"), QStringLiteral("M1")}, {QStringLiteral("a"), cell}},
            nullptr);
    }
};

void TestEditedTable::cleanup()
{
    stopWatchingModals();
}

void TestEditedTable::emptyHoldsNothing()
{
    EditedTable edited;
    QCOMPARE(edited.table(), nullptr);
    QVERIFY(!edited.isReady());
    QVERIFY(!edited.hasErrors());
    QCOMPARE(edited.take(), nullptr);
    edited.drop();
    QCOMPARE(edited.table(), nullptr);
}

void TestEditedTable::validTableIsReady()
{
    EditedTable edited;
    XCsv* csv = table(QStringLiteral("12"));
    edited.reset(csv);
    QCOMPARE(edited.table(), csv);
    QVERIFY(edited.isReady());
    QVERIFY(!edited.hasErrors());
}

void TestEditedTable::invalidCellIsNotReady()
{
    EditedTable edited;
    edited.reset(table(QStringLiteral("x")));
    QVERIFY(edited.table());
    QVERIFY(!edited.isReady());
    QVERIFY(edited.hasErrors());
}

void TestEditedTable::resetReplacesTable()
{
    EditedTable edited;
    QPointer<XCsv> first = table(QStringLiteral("x"));
    edited.reset(first);
    QPointer<XCsv> second = table(QStringLiteral("*"));
    edited.reset(second);
    QVERIFY(first.isNull());
    QCOMPARE(edited.table(), second.data());
    QVERIFY(edited.isReady());
    edited.reset(nullptr);
    QVERIFY(second.isNull());
    QCOMPARE(edited.table(), nullptr);
    QVERIFY(!edited.isReady());
}

void TestEditedTable::dropDeletesTable()
{
    EditedTable edited;
    QPointer<XCsv> csv = table(QStringLiteral("1"));
    edited.reset(csv);
    edited.drop();
    QVERIFY(csv.isNull());
    QCOMPARE(edited.table(), nullptr);
    QVERIFY(!edited.isReady());
}

void TestEditedTable::destructorDeletesTable()
{
    QPointer<XCsv> csv = table(QStringLiteral("1"));
    {
        EditedTable edited;
        edited.reset(csv);
    }
    QVERIFY(csv.isNull());
}

void TestEditedTable::takeHandsTableOver()
{
    XCsv* taken = nullptr;
    {
        EditedTable edited;
        XCsv* csv = table(QStringLiteral("7"));
        edited.reset(csv);
        taken = edited.take();
        QCOMPARE(taken, csv);
        QCOMPARE(edited.table(), nullptr);
        QVERIFY(!edited.isReady());
        QVERIFY(!edited.hasErrors());
    }
    // The table outlives the holder it left; the sanitizer build would
    // report a use after free here.
    QCOMPARE(taken->at(1, 1).toInt(), 7);
    delete taken;
}

void TestEditedTable::editChecksTableAgain()
{
    EditedTable edited;
    edited.reset(table(QStringLiteral("x")));
    QVERIFY(edited.hasErrors());
    bool opened = false;
    whenDialogOpens<XCsvEditor>(
        [&edited, &opened](XCsvEditor* editor) {
            opened = editor != nullptr;
            // Repaired behind the editor's back: only a fresh check sees it.
            edited.table()->setCell(1, 1, 5);
            if (editor)
                editor->close();
        },
        5000);
    edited.edit();
    QVERIFY(opened);
    QVERIFY(!edited.hasErrors());
    QVERIFY(edited.isReady());
}

void TestEditedTable::editWithoutTableOpensNothing()
{
    EditedTable edited;
    edited.edit();
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

void TestEditedTable::statusTexts_data()
{
    QTest::addColumn<bool>("hasErrors");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("red");
    QTest::newRow("errors")
        << true
        << QStringLiteral("There are errors in the table. Click on the Edit button to fix them.")
        << true;
    QTest::newRow("clean") << false
                           << QStringLiteral(
                                  "Click on the Edit button to make changes to the table.")
                           << false;
}

void TestEditedTable::statusTexts()
{
    QFETCH(bool, hasErrors);
    QFETCH(QString, text);
    QFETCH(bool, red);
    QWidget window;
    auto* label = new QLabel(&window);
    auto* button = new QPushButton(&window);
    label->hide();
    button->hide();
    window.show();
    EditedTable::showStatus(label, button, hasErrors);
    QCOMPARE(label->text(), text);
    QVERIFY(label->isVisible());
    QVERIFY(button->isVisible());
    QCOMPARE(label->palette().color(QPalette::WindowText) == QColor(Qt::red), red);
}

QTEST_MAIN(TestEditedTable)
#include "tst_editedtable.moc"

#include "CellText.h"
#include "InputDialogAnswer.h"
#include "XCsv.h"
#include "XCsvEditor.h"
#include "XCsvTableModel.h"
#include "XCsvTableWidget.h"

#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

namespace {

// Eight accessions by three markers, all valid.
XCsv::Grid cleanGrid()
{
    XCsv::Grid grid{{"Name", "M1", "M2", "M3"}};
    for (int r = 0; r < 8; ++r)
        grid << XCsv::Row{QStringLiteral("A%1").arg(r), QString::number(r), "*", "3"};
    return grid;
}

QStringList rowLabels(XCsv const& csv)
{
    QStringList labels;
    for (int r = 1; r < csv.rows(); ++r)
        labels << csv.at(r, 0).toString();
    return labels;
}

QStringList columnHeaders(XCsv const& csv)
{
    QStringList headers;
    for (int c = 1; c < csv.columns(); ++c)
        headers << csv.at(0, c).toString();
    return headers;
}

} // namespace

class TestXCsvEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void cleanTableHidesFind();
    void openWithErrorsShowsFind();
    void typingShowsAndHidesFind();
    void editorStartsEmpty();
    void findGoesToOldestError();
    void noteIsRed();
    void toolButtons();
    void toolsHiddenWhenNotEditable();
    void layoutOrder();
    void windowFlags();
    void closeButtonEndsDialog();
    void insertRows_data();
    void insertRows();
    void insertColumns_data();
    void insertColumns();
    void insertedLinesAreValid();
    void insertedNamesAreUnique();
    void removeRowsFromHighest();
    void removeEveryRowKeepsTopmost();
    void removeColumnsFromHighest();
    void removeWithoutSelection();
    void removingErrorRowHidesFind();
    void renameColumnHeader();
    void renameRowHeaderEmptyAnswer();
    void imagesAreCompiledIn();

private:
    XCsvTableWidget* view() const { return m_editor->findChild<XCsvTableWidget*>(); }
    XCsvTableModel* model() const { return qobject_cast<XCsvTableModel*>(view()->model()); }
    QPushButton* button(QString const& text) const;
    QLabel* note() const;
    QToolButton* tool(QString const& tip) const;
    void open(XCsv::Grid const& grid, bool editable = true);
    void type(int row, int column, QString const& text);
    void select(QList<QPair<int, int>> const& cells);

    XCsv* m_csv = nullptr;
    XCsvEditor* m_editor = nullptr;
};

void TestXCsvEditor::init()
{
    m_csv = nullptr;
    m_editor = nullptr;
}

void TestXCsvEditor::cleanup()
{
    delete m_editor;
    m_editor = nullptr;
    delete m_csv;
    m_csv = nullptr;
}

void TestXCsvEditor::open(XCsv::Grid const& grid, bool editable)
{
    m_csv = new XCsv(grid);
    m_editor = new XCsvEditor(m_csv, editable, nullptr);
    m_editor->resize(700, 500);
    m_editor->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_editor));
}

QPushButton* TestXCsvEditor::button(QString const& text) const
{
    for (QPushButton* b : m_editor->findChildren<QPushButton*>()) {
        if (b->text() == text)
            return b;
    }
    return nullptr;
}

QLabel* TestXCsvEditor::note() const
{
    for (QLabel* label : m_editor->findChildren<QLabel*>()) {
        if (label->text() == QStringLiteral("Click on the button to find and correct errors."))
            return label;
    }
    return nullptr;
}

QToolButton* TestXCsvEditor::tool(QString const& tip) const
{
    for (QToolButton* b : m_editor->findChildren<QToolButton*>()) {
        if (b->toolTip() == tip)
            return b;
    }
    return nullptr;
}

// Types into a cell the way a user does: a key on the current cell opens
// the editor, Return commits.
void TestXCsvEditor::type(int row, int column, QString const& text)
{
    XCsvTableWidget* v = view();
    v->setCurrentIndex(model()->index(row, column));
    QTest::keyClick(v, Qt::Key_F2);
    QPointer<QLineEdit> line = v->viewport()->findChild<QLineEdit*>();
    QVERIFY(line);
    QCOMPARE(line->text(), QString());
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
    // The delegate commits and closes its editor from the event loop.
    QTRY_VERIFY(line.isNull());
}

void TestXCsvEditor::select(QList<QPair<int, int>> const& cells)
{
    QItemSelectionModel* selection = view()->selectionModel();
    selection->clearSelection();
    for (auto const& cell : cells)
        selection->select(model()->index(cell.first, cell.second), QItemSelectionModel::Select);
}

void TestXCsvEditor::cleanTableHidesFind()
{
    open(cleanGrid());
    QVERIFY(button("Find"));
    QVERIFY(note());
    QVERIFY(!button("Find")->isVisible());
    QVERIFY(!note()->isVisible());
}

void TestXCsvEditor::openWithErrorsShowsFind()
{
    XCsv::Grid grid = cleanGrid();
    grid[3][2] = QStringLiteral("bad");
    open(grid);
    QVERIFY(button("Find")->isVisible());
    QVERIFY(note()->isVisible());
}

void TestXCsvEditor::typingShowsAndHidesFind()
{
    open(cleanGrid());
    type(2, 1, QStringLiteral("x"));
    QCOMPARE(cellText(m_csv->at(3, 2)), QStringLiteral("s:x"));
    QVERIFY(button("Find")->isVisible());
    QVERIFY(note()->isVisible());
    type(2, 1, QStringLiteral("12"));
    QCOMPARE(cellText(m_csv->at(3, 2)), QStringLiteral("s:12"));
    QVERIFY(!button("Find")->isVisible());
    QVERIFY(!note()->isVisible());
}

void TestXCsvEditor::editorStartsEmpty()
{
    open(cleanGrid());
    XCsvTableWidget* v = view();
    const QModelIndex index = model()->index(4, 0);
    QCOMPARE(model()->data(index).toString(), QStringLiteral("4"));
    v->setCurrentIndex(index);
    QTest::keyClick(v, Qt::Key_F2);
    auto* line = v->viewport()->findChild<QLineEdit*>();
    QVERIFY(line);
    QCOMPARE(line->text(), QString());
    // Leaving with Escape keeps the old value.
    QTest::keyClick(line, Qt::Key_Escape);
    QTRY_VERIFY(!line->isVisible());
    QCOMPARE(cellText(m_csv->at(5, 1)), QStringLiteral("s:4"));
}

void TestXCsvEditor::findGoesToOldestError()
{
    open(cleanGrid());
    type(4, 2, QStringLiteral("x"));
    type(0, 0, QStringLiteral("y"));
    type(2, 1, QStringLiteral("-3"));
    QCOMPARE(model()->errors(), QList<XCsvTableModel::Cell>({{4, 2}, {0, 0}, {2, 1}}));
    m_editor->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_editor));
    button("Find")->setFocus();
    QTest::mouseClick(button("Find"), Qt::LeftButton);
    QCOMPARE(view()->currentIndex(), model()->index(4, 2));
    QVERIFY(view()->hasFocus());
    QTest::mouseClick(button("Find"), Qt::LeftButton);
    QCOMPARE(view()->currentIndex(), model()->index(4, 2));
    type(4, 2, QStringLiteral("7"));
    view()->setCurrentIndex(model()->index(5, 0));
    QTest::mouseClick(button("Find"), Qt::LeftButton);
    QCOMPARE(view()->currentIndex(), model()->index(0, 0));
}

void TestXCsvEditor::noteIsRed()
{
    open(cleanGrid());
    const QPalette palette = note()->palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(palette.brush(group, QPalette::WindowText).color(), QColor(Qt::red));
        QCOMPARE(palette.brush(group, QPalette::WindowText).style(), Qt::SolidPattern);
    }
}

void TestXCsvEditor::toolButtons()
{
    open(cleanGrid());
    const QList<QToolButton*> tools = m_editor->findChildren<QToolButton*>();
    const QStringList tips = {"Insert row before selection",   "Insert row after selection",
                              "Remove selected row(s).",       "Insert column before selection",
                              "Insert column after selection", "Remove selected column(s)"};
    QCOMPARE(tools.size(), 6);
    int previousX = -1;
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(tools.at(i)->toolTip(), tips.at(i));
        QCOMPARE(tools.at(i)->iconSize(), QSize(33, 33));
        QVERIFY(!tools.at(i)->icon().isNull());
        QVERIFY(!tools.at(i)->icon().pixmap(33, 33).isNull());
        QVERIFY(tools.at(i)->isVisible());
        QVERIFY(tools.at(i)->x() > previousX);
        previousX = tools.at(i)->x();
    }
}

void TestXCsvEditor::toolsHiddenWhenNotEditable()
{
    open(cleanGrid(), false);
    QCOMPARE(m_editor->findChildren<QToolButton*>().size(), 0);
    // Cells and headers stay editable.
    QVERIFY(model()->flags(model()->index(0, 0)) & Qt::ItemIsEditable);
    type(0, 0, QStringLiteral("x"));
    QVERIFY(button("Find")->isVisible());
}

void TestXCsvEditor::layoutOrder()
{
    XCsv::Grid grid = cleanGrid();
    grid[1][1] = QStringLiteral("bad");
    open(grid);
    QToolButton* first = tool("Insert row before selection");
    QPushButton* find = button("Find");
    QPushButton* close = button("Close");
    QVERIFY(first && find && close);
    auto top = [this](QWidget* w) { return w->mapTo(m_editor, QPoint(0, 0)); };
    QVERIFY(top(first).y() + first->height() <= top(view()).y());
    QVERIFY(top(view()).y() + view()->height() <= top(find).y());
    QVERIFY(top(find).x() + find->width() <= top(note()).x());
    QVERIFY(top(note()).x() + note()->width() <= top(close).x());
}

void TestXCsvEditor::windowFlags()
{
    open(cleanGrid());
    // The maximize hint alone was asked for; the toolkit adds the title and
    // system menu that every decorated window has. No close, help or
    // minimize hints.
    const Qt::WindowFlags hints = m_editor->windowFlags() & ~Qt::WindowType_Mask;
    QCOMPARE(hints, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint);
    QVERIFY(m_editor->isWindow());
}

void TestXCsvEditor::closeButtonEndsDialog()
{
    m_csv = new XCsv(cleanGrid());
    m_editor = new XCsvEditor(m_csv, true, nullptr);
    QTimer::singleShot(0, m_editor, [this]() {
        type(0, 0, QStringLiteral("9"));
        QTest::mouseClick(button("Close"), Qt::LeftButton);
    });
    m_editor->exec();
    QVERIFY(!m_editor->isVisible());
    // Edits go straight into the table and survive closing.
    QCOMPARE(cellText(m_csv->at(1, 1)), QStringLiteral("s:9"));
}

void TestXCsvEditor::insertRows_data()
{
    QTest::addColumn<QString>("tip");
    QTest::addColumn<bool>("selection");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("before selection")
        << "Insert row before selection" << true
        << QStringList({"A0", "A1", "Row 9", "A2", "A3", "A4", "A5", "A6", "A7"});
    QTest::newRow("after selection")
        << "Insert row after selection" << true
        << QStringList({"A0", "A1", "A2", "A3", "A4", "A5", "Row 9", "A6", "A7"});
    QTest::newRow("before nothing")
        << "Insert row before selection" << false
        << QStringList({"Row 9", "A0", "A1", "A2", "A3", "A4", "A5", "A6", "A7"});
    QTest::newRow("after nothing")
        << "Insert row after selection" << false
        << QStringList({"A0", "A1", "A2", "A3", "A4", "A5", "A6", "A7", "Row 9"});
}

void TestXCsvEditor::insertRows()
{
    QFETCH(QString, tip);
    QFETCH(bool, selection);
    QFETCH(QStringList, labels);
    open(cleanGrid());
    if (selection)
        select({{5, 2}, {2, 0}});
    QTest::mouseClick(tool(tip), Qt::LeftButton);
    QCOMPARE(rowLabels(*m_csv), labels);
    const int inserted = labels.indexOf(QStringLiteral("Row 9")) + 1;
    QCOMPARE(rowText(m_csv->at(inserted)), QStringLiteral("s:Row 9|s:*|s:*|s:*"));
}

void TestXCsvEditor::insertColumns_data()
{
    QTest::addColumn<QString>("tip");
    QTest::addColumn<bool>("selection");
    QTest::addColumn<QStringList>("headers");
    QTest::newRow("before selection")
        << "Insert column before selection" << true << QStringList({"M1", "Column 4", "M2", "M3"});
    QTest::newRow("after selection")
        << "Insert column after selection" << true << QStringList({"M1", "M2", "Column 4", "M3"});
    QTest::newRow("before nothing")
        << "Insert column before selection" << false << QStringList({"Column 4", "M1", "M2", "M3"});
    QTest::newRow("after nothing")
        << "Insert column after selection" << false << QStringList({"M1", "M2", "M3", "Column 4"});
}

void TestXCsvEditor::insertColumns()
{
    QFETCH(QString, tip);
    QFETCH(bool, selection);
    QFETCH(QStringList, headers);
    open(cleanGrid());
    if (selection)
        select({{0, 1}, {3, 1}});
    QTest::mouseClick(tool(tip), Qt::LeftButton);
    QCOMPARE(columnHeaders(*m_csv), headers);
    const int inserted = headers.indexOf(QStringLiteral("Column 4")) + 1;
    for (int r = 1; r < m_csv->rows(); ++r)
        QCOMPARE(cellText(m_csv->at(r, inserted)), QStringLiteral("s:*"));
}

void TestXCsvEditor::insertedLinesAreValid()
{
    XCsv::Grid grid = cleanGrid();
    grid[4][3] = QStringLiteral("bad");
    open(grid);
    select({{1, 0}});
    QTest::mouseClick(tool("Insert row before selection"), Qt::LeftButton);
    QTest::mouseClick(tool("Insert column before selection"), Qt::LeftButton);
    // The error at (3, 2) moved down and right; the new cells are valid.
    QCOMPARE(model()->errors(), QList<XCsvTableModel::Cell>({{4, 3}}));
    QVERIFY(button("Find")->isVisible());
}

void TestXCsvEditor::insertedNamesAreUnique()
{
    // Numbered from the new count, skipping names in use: never one name twice.
    open(XCsv::Grid{{"Name", "Column 1", "Column 3"}, {"Row 1", "1", "2"}, {"Row 3", "3", "4"}});
    QTest::mouseClick(tool("Insert row after selection"), Qt::LeftButton);
    QTest::mouseClick(tool("Insert row after selection"), Qt::LeftButton);
    QTest::mouseClick(tool("Insert column after selection"), Qt::LeftButton);
    QTest::mouseClick(tool("Insert column after selection"), Qt::LeftButton);
    QCOMPARE(rowLabels(*m_csv), QStringList({"Row 1", "Row 3", "Row 4", "Row 5"}));
    QCOMPARE(columnHeaders(*m_csv), QStringList({"Column 1", "Column 3", "Column 4", "Column 5"}));
    select({{0, 0}});
    QTest::mouseClick(tool("Insert row before selection"), Qt::LeftButton);
    QCOMPARE(rowLabels(*m_csv), QStringList({"Row 6", "Row 1", "Row 3", "Row 4", "Row 5"}));
}

void TestXCsvEditor::removeRowsFromHighest()
{
    open(cleanGrid());
    QSignalSpy removed(model(), &XCsvTableModel::rowsRemoved);
    select({{1, 0}, {3, 0}, {3, 2}});
    QTest::mouseClick(tool("Remove selected row(s)."), Qt::LeftButton);
    QCOMPARE(removed.count(), 2);
    QCOMPARE(removed.at(0).at(1).toInt(), 3);
    QCOMPARE(removed.at(1).at(1).toInt(), 1);
    QCOMPARE(rowLabels(*m_csv), QStringList({"A0", "A2", "A4", "A5", "A6", "A7"}));
}

void TestXCsvEditor::removeEveryRowKeepsTopmost()
{
    open(cleanGrid());
    view()->selectAll();
    QTest::mouseClick(tool("Remove selected row(s)."), Qt::LeftButton);
    QCOMPARE(rowLabels(*m_csv), QStringList({"A0"}));
    view()->selectAll();
    QTest::mouseClick(tool("Remove selected column(s)"), Qt::LeftButton);
    QCOMPARE(columnHeaders(*m_csv), QStringList({"M1"}));
    QCOMPARE(gridText(*m_csv), QStringList({"s:Name|s:M1", "s:A0|s:0"}));
}

void TestXCsvEditor::removeColumnsFromHighest()
{
    open(cleanGrid());
    QSignalSpy removed(model(), &XCsvTableModel::columnsRemoved);
    select({{0, 0}, {4, 2}, {2, 0}});
    QTest::mouseClick(tool("Remove selected column(s)"), Qt::LeftButton);
    QCOMPARE(removed.count(), 2);
    QCOMPARE(removed.at(0).at(1).toInt(), 2);
    QCOMPARE(removed.at(1).at(1).toInt(), 0);
    QCOMPARE(columnHeaders(*m_csv), QStringList({"M2"}));
}

void TestXCsvEditor::removeWithoutSelection()
{
    open(cleanGrid());
    view()->setCurrentIndex(QModelIndex());
    view()->clearSelection();
    QTest::mouseClick(tool("Remove selected row(s)."), Qt::LeftButton);
    QTest::mouseClick(tool("Remove selected column(s)"), Qt::LeftButton);
    QCOMPARE(gridText(*m_csv), gridText(XCsv(cleanGrid())));
}

void TestXCsvEditor::removingErrorRowHidesFind()
{
    XCsv::Grid grid = cleanGrid();
    grid[3][1] = QStringLiteral("bad");
    open(grid);
    QVERIFY(button("Find")->isVisible());
    select({{2, 1}});
    QTest::mouseClick(tool("Remove selected row(s)."), Qt::LeftButton);
    QVERIFY(!button("Find")->isVisible());
    QVERIFY(!note()->isVisible());
}

void TestXCsvEditor::renameColumnHeader()
{
    open(cleanGrid());
    QHeaderView* header = view()->horizontalHeader();
    InputDialogAnswer dialog;
    dialog.arm(QStringLiteral("Locus B"), true);
    const QPoint at(header->sectionViewportPosition(1) + header->sectionSize(1) / 2,
                    header->height() / 2);
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QVERIFY(dialog.seen);
    QCOMPARE(dialog.title, QStringLiteral("Rename column header"));
    QCOMPARE(dialog.label, QStringLiteral("Select a new text for header"));
    QCOMPARE(dialog.initial, QStringLiteral("M2"));
    QCOMPARE(columnHeaders(*m_csv), QStringList({"M1", "Locus B", "M3"}));
}

void TestXCsvEditor::renameRowHeaderEmptyAnswer()
{
    open(cleanGrid());
    QHeaderView* header = view()->verticalHeader();
    InputDialogAnswer dialog;
    dialog.arm(QString(), true);
    const QPoint at(header->width() / 2,
                    header->sectionViewportPosition(2) + header->sectionSize(2) / 2);
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QVERIFY(dialog.seen);
    QCOMPARE(dialog.title, QStringLiteral("Rename row header"));
    QCOMPARE(dialog.initial, QStringLiteral("A2"));
    QCOMPARE(rowLabels(*m_csv), QStringList({"A0", "A1", "A2", "A3", "A4", "A5", "A6", "A7"}));
}

void TestXCsvEditor::imagesAreCompiledIn()
{
    open(cleanGrid());
    for (const char* name :
         {":/img/prepend_row", ":/img/append_row", ":/img/remove_row", ":/img/prepend_column",
          ":/img/append_column", ":/img/remove_column", ":/img/dna"}) {
        const QImage image(QString::fromLatin1(name));
        QVERIFY2(!image.isNull(), name);
    }
    QCOMPARE(QImage(":/img/append_row").size(), QSize(33, 33));
}

QTEST_MAIN(TestXCsvEditor)
#include "tst_xcsveditor.moc"

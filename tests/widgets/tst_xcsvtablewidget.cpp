#include "CellText.h"
#include "InputDialogAnswer.h"
#include "XCsv.h"
#include "XCsvTableModel.h"
#include "XCsvTableWidget.h"

#include <QHeaderView>
#include <QPointer>
#include <QtTest>

namespace {

XCsv::Grid sampleGrid()
{
    return XCsv::Grid{{"Name", "M1", "M2"}, {"A1", "1", "*"}, {"A2", "x", "4"}};
}

QPoint sectionCentre(QHeaderView* header, int section)
{
    const int middle = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
    return header->orientation() == Qt::Horizontal ? QPoint(middle, header->height() / 2)
                                                   : QPoint(header->width() / 2, middle);
}

} // namespace

class TestXCsvTableWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void headersSizeToContents();
    void sizesMatchToolkit();
    void setCsvGivesReadOnlyModel();
    void setCsvNullEmptiesView();
    void setCsvDeletesOnlyItsOwnModels();
    void renameHeader_data();
    void renameHeader();
    void readOnlyHeadersNotRenamed();
    void cellColours();

private:
    XCsv* m_csv = nullptr;
    XCsvTableModel* m_model = nullptr;
    XCsvTableWidget* m_view = nullptr;
};

void TestXCsvTableWidget::init()
{
    m_csv = new XCsv(sampleGrid());
    m_model = new XCsvTableModel(m_csv, false, nullptr);
    m_view = new XCsvTableWidget(false, nullptr);
    m_view->setModel(m_model);
    m_view->resize(400, 300);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view));
}

void TestXCsvTableWidget::cleanup()
{
    delete m_view;
    m_view = nullptr;
    delete m_model;
    m_model = nullptr;
    delete m_csv;
    m_csv = nullptr;
}

void TestXCsvTableWidget::headersSizeToContents()
{
    const QString longHeader = QStringLiteral("A rather long marker name");
    const QString longLabel = QStringLiteral("An accession with a long label");
    const QString longValue = QStringLiteral("123456789012345678901234567890");
    QVERIFY(m_model->setHeaderData(0, Qt::Horizontal, longHeader));
    QVERIFY(m_model->setHeaderData(1, Qt::Vertical, longLabel));
    QVERIFY(m_model->setData(m_model->index(0, 1), longValue));
    QTRY_VERIFY(m_view->horizontalHeader()->sectionSize(0) >
                m_view->horizontalHeader()->fontMetrics().horizontalAdvance(longHeader));
    QTRY_VERIFY(m_view->verticalHeader()->width() >
                m_view->verticalHeader()->fontMetrics().horizontalAdvance(longLabel));
    QTRY_VERIFY(m_view->horizontalHeader()->sectionSize(1) >
                m_view->fontMetrics().horizontalAdvance(longValue));
}

// The sections look as the toolkit's own resize-to-contents mode would
// size them, through edits, insertions and removals.
void TestXCsvTableWidget::sizesMatchToolkit()
{
    XCsv::Grid grid{{"Name", "M1", "Marker two", "M3", "M"}};
    for (int r = 0; r < 30; ++r)
        grid << XCsv::Row{QStringLiteral("Acc%1").arg(r), QString::number(r * 37), "*",
                          r == 7 ? "a wide value" : "1", QString::number(r % 3)};
    XCsv csv(grid);
    XCsvTableModel model(&csv, false, nullptr);
    XCsvTableWidget ours(false, nullptr);
    ours.setModel(&model);
    QTableView reference;
    reference.horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    reference.verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    reference.horizontalHeader()->setResizeContentsPrecision(-1);
    reference.verticalHeader()->setResizeContentsPrecision(-1);
    reference.setModel(&model);
    for (QTableView* view : {static_cast<QTableView*>(&ours), &reference}) {
        view->resize(500, 300);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view));
    }
    auto sizes = [](QHeaderView* header) {
        QList<int> out;
        for (int s = 0; s < header->count(); ++s)
            out << header->sectionSize(s);
        return out;
    };
    auto compare = [&]() {
        QTRY_COMPARE(sizes(ours.horizontalHeader()), sizes(reference.horizontalHeader()));
        QTRY_COMPARE(sizes(ours.verticalHeader()), sizes(reference.verticalHeader()));
    };
    compare();
    QVERIFY(model.setData(model.index(3, 0), QStringLiteral("1234567890123")));
    compare();
    QVERIFY(model.setData(model.index(7, 2), QStringLiteral("1")));
    compare();
    QVERIFY(model.setHeaderData(3, Qt::Horizontal, QStringLiteral("A long header")));
    compare();
    QVERIFY(model.insertRows(2, 1));
    QVERIFY(model.insertColumns(1, 1));
    compare();
    QVERIFY(model.removeRows(4, 1));
    QVERIFY(model.removeColumns(0, 1));
    compare();
}

void TestXCsvTableWidget::setCsvGivesReadOnlyModel()
{
    XCsvTableWidget view(true, nullptr);
    view.setCsv(m_csv);
    auto* model = qobject_cast<XCsvTableModel*>(view.model());
    QVERIFY(model);
    QCOMPARE(model->flags(model->index(0, 0)), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->columnCount(), 2);
    QCOMPARE(cellText(model->data(model->index(1, 0))), QStringLiteral("s:x"));
    QCOMPARE(model->errors(), QList<XCsvTableModel::Cell>({{1, 0}}));
}

void TestXCsvTableWidget::setCsvNullEmptiesView()
{
    XCsvTableWidget view(true, nullptr);
    view.setCsv(m_csv);
    QVERIFY(view.model());
    view.setCsv(nullptr);
    QVERIFY(!view.model());
}

void TestXCsvTableWidget::setCsvDeletesOnlyItsOwnModels()
{
    QPointer<QAbstractItemModel> first, second;
    {
        XCsvTableWidget view(true, nullptr);
        view.setCsv(m_csv);
        first = view.model();
        view.setCsv(m_csv);
        second = view.model();
        QVERIFY(!first);
        QVERIFY(second);
        view.setModel(m_model);
        QVERIFY(!second);
        view.setCsv(nullptr);
        view.setCsv(m_csv);
        second = view.model();
    }
    QVERIFY(!second);
    // A model handed in with setModel() stays its giver's.
    QVERIFY(m_model->rowCount() == 2);
    m_view->setCsv(nullptr);
    QCOMPARE(m_model->rowCount(), 2);
}

void TestXCsvTableWidget::renameHeader_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("accept");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<QStringList>("grid");
    const QString column = QStringLiteral("Rename column header");
    const QString row = QStringLiteral("Rename row header");
    QTest::newRow("column renamed")
        << int(Qt::Horizontal) << 1 << "Locus 7" << true << column << "M2"
        << QStringList({"s:Name|s:M1|s:Locus 7", "s:A1|s:1|s:*", "s:A2|s:x|s:4"});
    QTest::newRow("column empty answer")
        << int(Qt::Horizontal) << 0 << "" << true << column << "M1"
        << QStringList({"s:Name|s:M1|s:M2", "s:A1|s:1|s:*", "s:A2|s:x|s:4"});
    QTest::newRow("column cancelled")
        << int(Qt::Horizontal) << 0 << "Other" << false << column << "M1"
        << QStringList({"s:Name|s:M1|s:M2", "s:A1|s:1|s:*", "s:A2|s:x|s:4"});
    QTest::newRow("row renamed not validated")
        << int(Qt::Vertical) << 1 << "-1" << true << row << "A2"
        << QStringList({"s:Name|s:M1|s:M2", "s:A1|s:1|s:*", "s:-1|s:x|s:4"});
    QTest::newRow("row empty answer")
        << int(Qt::Vertical) << 0 << "" << true << row << "A1"
        << QStringList({"s:Name|s:M1|s:M2", "s:A1|s:1|s:*", "s:A2|s:x|s:4"});
}

void TestXCsvTableWidget::renameHeader()
{
    QFETCH(int, orientation);
    QFETCH(int, section);
    QFETCH(QString, answer);
    QFETCH(bool, accept);
    QFETCH(QString, title);
    QFETCH(QString, initial);
    QFETCH(QStringList, grid);
    QHeaderView* header =
        orientation == Qt::Horizontal ? m_view->horizontalHeader() : m_view->verticalHeader();
    InputDialogAnswer dialog;
    dialog.arm(answer, accept);
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                       sectionCentre(header, section));
    QVERIFY(dialog.seen);
    QCOMPARE(dialog.title, title);
    QCOMPARE(dialog.label, QStringLiteral("Select a new text for header"));
    QCOMPARE(dialog.initial, initial);
    QCOMPARE(dialog.echo, QLineEdit::Normal);
    QCOMPARE(dialog.parent.data(), static_cast<QWidget*>(m_view));
    QCOMPARE(gridText(*m_csv), grid);
    QCOMPARE(m_view->model()->headerData(section, Qt::Orientation(orientation)).toString(),
             grid.at(orientation == Qt::Horizontal ? 0 : section + 1)
                 .split(QLatin1Char('|'))
                 .at(orientation == Qt::Horizontal ? section + 1 : 0)
                 .mid(2));
}

void TestXCsvTableWidget::readOnlyHeadersNotRenamed()
{
    XCsvTableWidget view(true, nullptr);
    view.setModel(m_model);
    view.resize(300, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    InputDialogAnswer dialog;
    dialog.arm(QStringLiteral("New"), true, 20);
    QTest::mouseDClick(view.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       sectionCentre(view.horizontalHeader(), 0));
    QTest::mouseDClick(view.verticalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       sectionCentre(view.verticalHeader(), 0));
    QTest::qWait(200);
    QVERIFY(!dialog.seen);
    QCOMPARE(gridText(*m_csv), gridText(XCsv(sampleGrid())));
}

void TestXCsvTableWidget::cellColours()
{
    // What the user sees: "*" light grey, invalid red, valid on the base.
    m_view->setCurrentIndex(QModelIndex());
    m_view->clearSelection();
    const QImage image = m_view->viewport()->grab().toImage();
    auto colourAt = [&](int r, int c) {
        const QRect rect = m_view->visualRect(m_model->index(r, c));
        return QColor(image.pixel(rect.topLeft() + QPoint(3, 3)));
    };
    QCOMPARE(colourAt(0, 1), QColor(Qt::lightGray));
    QCOMPARE(colourAt(1, 0), QColor(Qt::red));
    QCOMPARE(colourAt(0, 0), m_view->palette().color(QPalette::Base));
    QCOMPARE(colourAt(1, 1), m_view->palette().color(QPalette::Base));
}

QTEST_MAIN(TestXCsvTableWidget)
#include "tst_xcsvtablewidget.moc"

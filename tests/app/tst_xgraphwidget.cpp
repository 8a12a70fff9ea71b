#include "XCsv.h"
#include "XGraphWidget.h"
#include "XResult.h"

#include <QTemporaryDir>
#include <QtTest>
#include <cmath>
#include <qwt_legend.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_div.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

namespace {

XCsv* inputTable(int dataRows)
{
    XCsv::Grid grid{{QStringLiteral("Name"), QStringLiteral("M")}};
    for (int r = 1; r <= dataRows; ++r)
        grid << XCsv::Row{QStringLiteral("A%1").arg(r), r};
    return new XCsv(grid);
}

// Percentage p gets a core of sizeOf(p) rows 1..size and count countOf(p).
template <typename Size, typename Count> XResult::Entries entries(Size sizeOf, Count countOf)
{
    XResult::Entries list;
    for (int p = 1; p <= 100; ++p) {
        QList<int> rows;
        for (int r = 1; r <= sizeOf(p); ++r)
            rows << r;
        list << XResult::Entry(countOf(p), rows);
    }
    return list;
}

QList<QwtPlotMarker*> markers(XGraphWidget const& graph, QwtPlotMarker::LineStyle style)
{
    QList<QwtPlotMarker*> found;
    for (QwtPlotItem* item : graph.itemList(QwtPlotItem::Rtti_PlotMarker)) {
        auto* marker = static_cast<QwtPlotMarker*>(item);
        if (marker->lineStyle() == style)
            found << marker;
    }
    return found;
}

QList<QwtPlotCurve*> curves(XGraphWidget const& graph)
{
    QList<QwtPlotCurve*> found;
    for (QwtPlotItem* item : graph.itemList(QwtPlotItem::Rtti_PlotCurve))
        found << static_cast<QwtPlotCurve*>(item);
    return found;
}

QwtPlotCurve* curveWithStyle(XGraphWidget const& graph, QwtPlotCurve::CurveStyle style,
                             QColor color)
{
    for (QwtPlotCurve* curve : curves(graph)) {
        if (curve->style() == style && curve->pen().color() == color)
            return curve;
    }
    return nullptr;
}

} // namespace

class TestXGraphWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startState();
    void oneCoreForAll();
    void pointsPerDistinctCore();
    void pens();
    void percentageLines();
    void allCountsZero();
    void labels();
    void repeatedResults();
    void nullResult();
    void labelsNeverOverlap();
    void wholeNumberTicks_data();
    void wholeNumberTicks();
    void heldCurveBesideReported();
    void exactBoundsDashed();
    void savedPictureSizes_data();
    void savedPictureSizes();

private:
    XCsv* m_input = nullptr;
    XGraphWidget* m_graph = nullptr;
};

void TestXGraphWidget::init()
{
    m_input = inputTable(30);
    m_graph = new XGraphWidget;
}

void TestXGraphWidget::cleanup()
{
    delete m_graph;
    m_graph = nullptr;
    delete m_input;
    m_input = nullptr;
}

void TestXGraphWidget::startState()
{
    QCOMPARE(m_graph->axisTitle(QwtPlot::xBottom).text(),
             QStringLiteral("Size of the core (no. of accessions)"));
    QCOMPARE(m_graph->axisTitle(QwtPlot::yLeft).text(),
             QStringLiteral("Number of alleles/variants"));
    QCOMPARE(m_graph->canvasBackground().color(), QColor(Qt::white));
    QVERIFY(m_graph->itemList().isEmpty());
}

void TestXGraphWidget::oneCoreForAll()
{
    XResult result(entries([](int) { return 4; }, [](int) { return 12; }), m_input, nullptr);
    m_graph->setResult(&result);
    QwtPlotCurve* line = curveWithStyle(*m_graph, QwtPlotCurve::Lines, Qt::blue);
    QVERIFY(line);
    QCOMPARE(int(line->dataSize()), 1);
    QCOMPARE(line->sample(0), QPointF(4, 12));
    QCOMPARE(markers(*m_graph, QwtPlotMarker::VLine).size(), 1);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::HLine).size(), 10);
    QCOMPARE(curves(*m_graph).size(), 3);
}

void TestXGraphWidget::pointsPerDistinctCore()
{
    // Sizes 1..10, each held by ten percentages.
    XResult result(entries([](int p) { return (p + 9) / 10; }, [](int p) { return p; }), m_input,
                   nullptr);
    m_graph->setResult(&result);
    QwtPlotCurve* line = curveWithStyle(*m_graph, QwtPlotCurve::Lines, Qt::blue);
    QwtPlotCurve* points = curveWithStyle(*m_graph, QwtPlotCurve::Dots, Qt::blue);
    QVERIFY(line && points);
    QCOMPARE(int(line->dataSize()), 10);
    QCOMPARE(int(points->dataSize()), 10);
    for (int i = 0; i < 10; ++i) {
        // The first percentage of each core gives its count.
        QCOMPARE(line->sample(i), QPointF(i + 1, 10 * i + 1));
        QCOMPARE(points->sample(i), line->sample(i));
    }
    const QList<QwtPlotMarker*> sizes = markers(*m_graph, QwtPlotMarker::VLine);
    QCOMPARE(sizes.size(), 10);
    QCOMPARE(sizes.at(3)->xValue(), 4.0);
}

void TestXGraphWidget::pens()
{
    XResult result(entries([](int) { return 2; }, [](int) { return 5; }), m_input, nullptr);
    m_graph->setResult(&result);
    QwtPlotCurve* line = curveWithStyle(*m_graph, QwtPlotCurve::Lines, Qt::blue);
    QCOMPARE(line->pen().widthF(), 0.0);
    QCOMPARE(line->pen().style(), Qt::SolidLine);
    QCOMPARE(line->pen().capStyle(), Qt::SquareCap);
    QCOMPARE(line->pen().joinStyle(), Qt::BevelJoin);
    QVERIFY(line->testRenderHint(QwtPlotItem::RenderAntialiased));
    QwtPlotCurve* points = curveWithStyle(*m_graph, QwtPlotCurve::Dots, Qt::blue);
    QCOMPARE(points->pen().widthF(), 5.0);
    QCOMPARE(points->pen().capStyle(), Qt::RoundCap);
    QVERIFY(points->testRenderHint(QwtPlotItem::RenderAntialiased));
    QwtPlotCurve* origin = curveWithStyle(*m_graph, QwtPlotCurve::Dots, Qt::white);
    QVERIFY(origin);
    QCOMPARE(int(origin->dataSize()), 1);
    QCOMPARE(origin->sample(0), QPointF(0, 0));
    const QPen percent = markers(*m_graph, QwtPlotMarker::HLine).first()->linePen();
    QCOMPARE(percent.color(), QColor(Qt::red));
    QCOMPARE(percent.widthF(), 1.0);
    QCOMPARE(percent.style(), Qt::DotLine);
    const QPen size = markers(*m_graph, QwtPlotMarker::VLine).first()->linePen();
    QCOMPARE(size.color(), QColor(Qt::darkGreen));
    QCOMPARE(size.style(), Qt::DotLine);
    QCOMPARE(size.joinStyle(), Qt::BevelJoin);
}

void TestXGraphWidget::percentageLines()
{
    XResult result(entries([](int p) { return p / 20 + 1; }, [](int p) { return 3 * p; }), m_input,
                   nullptr);
    m_graph->setResult(&result);
    // Cores of sizes 1..6; the last one (size 6) is held by 100 % alone, and
    // its count is the largest on the curve.
    const double largest = 3 * 100;
    const QList<QwtPlotMarker*> lines = markers(*m_graph, QwtPlotMarker::HLine);
    QCOMPARE(lines.size(), 10);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(lines.at(i)->yValue(), (i + 1) * 10 * (largest / 100.0));
        QCOMPARE(lines.at(i)->label().text(), QStringLiteral("%1%").arg((i + 1) * 10));
        QCOMPARE(lines.at(i)->labelAlignment(), Qt::AlignRight | Qt::AlignBottom);
    }
}

void TestXGraphWidget::allCountsZero()
{
    XResult result(entries([](int p) { return p / 30 + 1; }, [](int) { return 0; }), m_input,
                   nullptr);
    m_graph->setResult(&result);
    for (QwtPlotMarker* line : markers(*m_graph, QwtPlotMarker::HLine))
        QCOMPARE(line->yValue(), 0.0);
}

void TestXGraphWidget::labels()
{
    XResult result(entries([](int) { return 10; }, [](int) { return 7; }), m_input, nullptr);
    QCOMPARE(result.csv(1)->rows(), 11);
    m_graph->setResult(&result);
    QwtPlotMarker* size = markers(*m_graph, QwtPlotMarker::VLine).first();
    QCOMPARE(size->label().text(), QStringLiteral("10"));
    QCOMPARE(size->labelAlignment(), Qt::AlignRight | Qt::AlignBottom);
    QCOMPARE(size->xValue(), 10.0);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::HLine).last()->label().text(),
             QStringLiteral("100%"));
}

void TestXGraphWidget::repeatedResults()
{
    XResult first(entries([](int p) { return p / 10 + 1; }, [](int p) { return p; }), m_input,
                  nullptr);
    XResult second(entries([](int p) { return p / 50 + 1; }, [](int p) { return p; }), m_input,
                   nullptr);
    m_graph->setResult(&first);
    m_graph->setResult(&second);
    m_graph->setResult(&second);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::VLine).size(), 3);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::HLine).size(), 10);
    // One line and one point curve, and one invisible origin point per call.
    QCOMPARE(curves(*m_graph).size(), 2 + 3);
    QCOMPARE(int(curveWithStyle(*m_graph, QwtPlotCurve::Lines, Qt::blue)->dataSize()), 3);
}

void TestXGraphWidget::nullResult()
{
    m_graph->setResult(nullptr);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::VLine).size(), 0);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::HLine).size(), 10);
    QCOMPARE(markers(*m_graph, QwtPlotMarker::HLine).last()->yValue(), 0.0);
}

void TestXGraphWidget::labelsNeverOverlap()
{
    // Thirty cores, one accession apart: labels crowd at every width.
    XResult result(entries([](int p) { return (p * 30 + 99) / 100; }, [](int p) { return p; }),
                   m_input, nullptr);
    m_graph->setResult(&result);
    m_graph->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_graph));
    for (int width : {300, 450, 640, 800, 1000, 1400, 700, 350}) {
        m_graph->resize(width, 400);
        QApplication::processEvents();
        m_graph->replot();
        const QRectF canvas = m_graph->canvas()->contentsRect();
        const QList<QRectF> labels = m_graph->coreSizeLabelRects();
        QVERIFY(!labels.isEmpty());
        for (int i = 0; i < labels.size(); ++i) {
            QVERIFY2(canvas.contains(labels.at(i)), qPrintable(QString::number(width)));
            if (i > 0)
                QVERIFY2(labels.at(i).left() > labels.at(i - 1).right(),
                         qPrintable(QString::number(width)));
        }
        // The largest core's label is always there, left of its line at the edge.
        const double x = m_graph->canvasMap(QwtPlot::xBottom).transform(30);
        QVERIFY(labels.last().right() <= x || labels.last().left() >= x);
        QVERIFY(qAbs(labels.last().center().x() - x) < labels.last().width());
        for (double tick : m_graph->axisScaleDiv(QwtPlot::xBottom).ticks(QwtScaleDiv::MajorTick))
            QCOMPARE(tick, std::round(tick));
    }
}

void TestXGraphWidget::wholeNumberTicks_data()
{
    QTest::addColumn<int>("largestCore");
    QTest::addColumn<int>("largestCount");
    QTest::newRow("one accession") << 1 << 1;
    QTest::newRow("two accessions") << 2 << 3;
    QTest::newRow("three") << 3 << 7;
    QTest::newRow("thirty") << 30 << 373;
}

void TestXGraphWidget::wholeNumberTicks()
{
    QFETCH(int, largestCore);
    QFETCH(int, largestCount);
    XResult result(
        entries([largestCore](int p) { return qMax(1, (p * largestCore + 99) / 100); },
                [largestCount](int p) { return qMax(1, (p * largestCount + 99) / 100); }),
        m_input, nullptr);
    m_graph->setResult(&result);
    m_graph->resize(640, 400);
    m_graph->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_graph));
    // Every point stays inside the whole-number ranges.
    QwtPlotCurve* line = curveWithStyle(*m_graph, QwtPlotCurve::Lines, Qt::blue);
    const QRectF points = line->boundingRect();
    QCOMPARE(points.right(), double(largestCore));
    for (int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        QwtScaleDiv const& div = m_graph->axisScaleDiv(axis);
        const QList<double> ticks = div.ticks(QwtScaleDiv::MajorTick);
        QVERIFY(ticks.size() >= 2);
        for (double tick : ticks)
            QCOMPARE(tick, std::round(tick));
        QCOMPARE(div.lowerBound(), 0.0);
        QVERIFY(div.upperBound() >= (axis == QwtPlot::xBottom ? points.right() : points.bottom()));
    }
}

QwtPlotCurve* titled(XGraphWidget const& graph, QString const& title)
{
    for (QwtPlotCurve* curve : curves(graph)) {
        if (curve->title().text() == title)
            return curve;
    }
    return nullptr;
}

void TestXGraphWidget::heldCurveBesideReported()
{
    // Sizes 2 (percentages 1-50) and 4 (51-100); the second core's cells
    // could not be counted.
    XResult result(
        entries([](int p) { return p <= 50 ? 2 : 4; }, [](int p) { return p <= 50 ? 7 : 11; }),
        m_input, nullptr);
    QVector<int> held(100, 5);
    for (int p = 51; p <= 100; ++p)
        held[p - 1] = -1;
    m_graph->showResult(&result, held);
    QVERIFY(qobject_cast<QwtLegend*>(m_graph->legend()));
    QwtPlotCurve* reported = titled(*m_graph, QStringLiteral("reported by the search"));
    QwtPlotCurve* holds = titled(*m_graph, QStringLiteral("held by the core"));
    QVERIFY(reported && holds);
    QCOMPARE(int(reported->dataSize()), 2);
    QCOMPARE(reported->sample(1), QPointF(4, 11));
    QCOMPARE(int(holds->dataSize()), 1);
    QCOMPARE(holds->sample(0), QPointF(2, 5));
    QVERIFY(holds->pen().color() != reported->pen().color());
    QVERIFY(holds->testItemAttribute(QwtPlotItem::Legend));
    // Only the two named curves stand in the legend.
    int named = 0;
    for (QwtPlotItem* item : m_graph->itemList())
        named += item->testItemAttribute(QwtPlotItem::Legend);
    QCOMPARE(named, 2);
    // A plain result again: the held curve goes.
    m_graph->setResult(&result);
    QVERIFY(!titled(*m_graph, QStringLiteral("held by the core")));
}

void TestXGraphWidget::exactBoundsDashed()
{
    XResult result(
        entries([](int p) { return p <= 50 ? 2 : 4; }, [](int p) { return p <= 50 ? 7 : 11; }),
        m_input, nullptr);
    QList<int> bounds;
    for (int p = 1; p <= 100; ++p)
        bounds << (p <= 50 ? 2 : 3);
    result.setLowerBounds(bounds);
    QVector<int> held(100, 0);
    for (int p = 1; p <= 100; ++p)
        held[p - 1] = p <= 50 ? 7 : 11;
    m_graph->showResult(&result, held);
    QVERIFY(!titled(*m_graph, QStringLiteral("held by the core")));
    QVERIFY(!titled(*m_graph, QStringLiteral("reported by the search")));
    QwtPlotCurve* smallest = titled(*m_graph, QStringLiteral("held by the core (smallest)"));
    QVERIFY(smallest);
    QCOMPARE(smallest->sample(0), QPointF(2, 7));
    QCOMPARE(smallest->sample(1), QPointF(4, 11));
    QwtPlotCurve* dashed = titled(*m_graph, QStringLiteral("at least this many accessions"));
    QVERIFY(dashed);
    QCOMPARE(dashed->pen().style(), Qt::DashLine);
    // Only the unproven core has a bound below its size.
    QCOMPARE(int(dashed->dataSize()), 1);
    QCOMPARE(dashed->sample(0), QPointF(3, 11));
}

void TestXGraphWidget::savedPictureSizes_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("size");
    // 160 x 100 mm: 1890 x 1181 dots at 300 dpi; in PDF whole points.
    QTest::newRow("png") << QStringLiteral("png") << QByteArray("IHDR");
    QTest::newRow("svg") << QStringLiteral("svg") << QByteArray("width=\"160mm\" height=\"100mm\"");
    QTest::newRow("pdf") << QStringLiteral("pdf")
                         << QByteArray("/MediaBox [0 0 454.000000 283.000000]");
}

void TestXGraphWidget::savedPictureSizes()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, size);
    XResult result(entries([](int p) { return 1 + p / 10; }, [](int p) { return p; }), m_input,
                   nullptr);
    m_graph->showResult(&result, QVector<int>(100, 3));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("graph.") + suffix);
    QString error;
    QVERIFY2(m_graph->saveImage(path, &error), qPrintable(error));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY2(bytes.contains(size), bytes.left(400).constData());
    if (suffix == QLatin1String("png")) {
        QCOMPARE(QImage(path).size(), QSize(1890, 1181));
    }
    QVERIFY(!m_graph->saveImage(dir.filePath(QStringLiteral("graph.jpg")), &error));
    QCOMPARE(error, QStringLiteral("the name must end in .png, .svg or .pdf"));
}

QTEST_MAIN(TestXGraphWidget)
#include "tst_xgraphwidget.moc"

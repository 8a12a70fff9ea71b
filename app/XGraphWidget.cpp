#include "XGraphWidget.h"

#include "XCsv.h"
#include "XResult.h"

#include <QPainter>
#include <QVector>

#include <memory>
#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

namespace {

// A core-size line whose label steps aside when it would run into the label
// of a smaller core: neighbouring cores often differ by one accession, and
// their numbers would print on top of each other. The line is always drawn.
class CoreSizeMarker : public QwtPlotMarker
{
public:
    CoreSizeMarker(std::shared_ptr<QVector<double>> sizes, int index)
        : m_sizes(std::move(sizes)), m_index(index)
    {
    }

protected:
    void drawLabel(QPainter* painter, QRectF const& canvasRect,
                   QPointF const& position) const override
    {
        // Left to right, a label is drawn when it clears the last one drawn.
        const QwtScaleMap map = plot()->canvasMap(xAxis());
        const double width = label().textSize(painter->font()).width() + 6;
        double lastDrawn = -1e9;
        for (int i = 0; i <= m_index; ++i) {
            const double x = map.transform(m_sizes->at(i));
            if (x - lastDrawn >= width) {
                if (i == m_index)
                    QwtPlotMarker::drawLabel(painter, canvasRect, position);
                lastDrawn = x;
            }
        }
    }

private:
    std::shared_ptr<QVector<double>> m_sizes;
    int m_index;
};

QPen makePen(QBrush const& brush, qreal width, Qt::PenStyle style, Qt::PenCapStyle cap)
{
    return QPen(brush, width, style, cap, Qt::BevelJoin);
}

template <typename Item> void deleteAll(QList<Item*>& items)
{
    for (Item* item : qAsConst(items)) {
        item->detach();
        delete item;
    }
    items.clear();
}

} // namespace

XGraphWidget::XGraphWidget(QWidget* parent)
    : QwtPlot(parent), m_linePen(makePen(QColor(Qt::blue), 0, Qt::SolidLine, Qt::SquareCap)),
      m_pointPen(makePen(QBrush(Qt::blue, Qt::SolidPattern), 5.0, Qt::SolidLine, Qt::RoundCap)),
      m_originPen(makePen(QBrush(Qt::white, Qt::SolidPattern), 0, Qt::SolidLine, Qt::SquareCap)),
      m_percentPen(makePen(QBrush(Qt::red, Qt::SolidPattern), 1.0, Qt::DotLine, Qt::SquareCap)),
      m_sizePen(makePen(QBrush(Qt::darkGreen, Qt::SolidPattern), 1.0, Qt::DotLine, Qt::SquareCap))
{
    setAxisTitle(QwtPlot::xBottom, QStringLiteral("Size of the core (no. of accessions)"));
    setAxisTitle(QwtPlot::yLeft, QStringLiteral("Number of alleles/variants"));
    setCanvasBackground(QBrush(Qt::white));
}

XGraphWidget::~XGraphWidget()
{
    delete m_line;
    delete m_points;
    delete m_origin;
    qDeleteAll(m_percentMarkers);
    qDeleteAll(m_sizeMarkers);
}

void XGraphWidget::setResult(XResult* result)
{
    for (QwtPlotCurve** curve : {&m_line, &m_points}) {
        if (*curve) {
            (*curve)->detach();
            delete *curve;
            *curve = nullptr;
        }
    }
    deleteAll(m_percentMarkers);
    deleteAll(m_sizeMarkers);

    auto x = std::make_shared<QVector<double>>();
    QVector<double> y;
    XCsv const* previous = nullptr;
    for (int v = 1; result && v <= 100; ++v) {
        XCsv const* table = result->csv(v);
        if (table == previous)
            continue;
        previous = table;
        const int size = table->rows() - 1;
        auto* marker = new CoreSizeMarker(x, x->size());
        marker->setLabel(QwtText(QString::number(size)));
        marker->setLabelAlignment(Qt::AlignRight | Qt::AlignBottom);
        marker->setLineStyle(QwtPlotMarker::VLine);
        marker->setLinePen(m_sizePen);
        marker->setXValue(size);
        marker->attach(this);
        m_sizeMarkers << marker;
        *x << size;
        y << result->count(v);
    }

    m_line = new QwtPlotCurve;
    m_line->setStyle(QwtPlotCurve::Lines);
    m_line->setRenderHint(QwtPlotItem::RenderAntialiased);
    m_line->setPen(m_linePen);
    m_line->setSamples(*x, y);
    m_line->attach(this);

    m_points = new QwtPlotCurve;
    m_points->setStyle(QwtPlotCurve::Dots);
    m_points->setRenderHint(QwtPlotItem::RenderAntialiased);
    m_points->setPen(m_pointPen);
    m_points->setSamples(*x, y);
    m_points->attach(this);

    // An invisible point keeps the origin inside the autoscaled axes. Earlier
    // ones stay attached and go with the plot.
    m_origin = new QwtPlotCurve;
    m_origin->setStyle(QwtPlotCurve::Dots);
    m_origin->setPen(m_originPen);
    m_origin->setSamples(QVector<double>{0.0}, QVector<double>{0.0});
    m_origin->attach(this);

    const QRectF bounds = m_line->boundingRect();
    const double largest = m_line->dataSize() > 0 ? bounds.top() + bounds.height() : 0.0;
    const double step = largest / 100.0;
    for (int p = 10; p <= 100; p += 10) {
        auto* marker = new QwtPlotMarker;
        marker->setLabel(QwtText(QString::number(p) + QLatin1Char('%')));
        marker->setLabelAlignment(Qt::AlignRight | Qt::AlignBottom);
        marker->setLineStyle(QwtPlotMarker::HLine);
        marker->setLinePen(m_percentPen);
        marker->setYValue(p * step);
        marker->attach(this);
        m_percentMarkers << marker;
    }
    replot();
}

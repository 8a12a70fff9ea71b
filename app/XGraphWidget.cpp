#include "XGraphWidget.h"

#include "XCsv.h"
#include "XFileDialog.h"
#include "XResult.h"
#include "XSaveFile.h"

#include <QAction>
#include <QBuffer>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPdfWriter>
#include <QShowEvent>
#include <QSvgGenerator>
#include <QVector>

#include <cmath>
#include <memory>
#include <qwt_legend.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

// The core sizes and their label texts, shared by the markers: whether a
// label is drawn, and on which side of its line, depends on its neighbours.
class XGraphWidget::SizeLabels
{
public:
    QVector<double> sizes;
    QVector<QString> texts;

    // A label stands right of its line, or left of it where it would run
    // past the canvas. The largest core's label is always drawn; the others,
    // left to right, when they clear the last label drawn and that one.
    // Rects are in canvas coordinates; null where not drawn. Every marker
    // asks during one repaint, so the answer is kept until the scale, the
    // canvas or the font changes.
    QVector<QRectF> const& layout(QwtScaleMap const& map, QRectF const& canvas,
                                  QFont const& font) const
    {
        const Key key{map.s1(), map.s2(), map.p1(), map.p2(), canvas, font};
        if (m_key && *m_key == key)
            return m_rects;
        m_key = std::make_unique<Key>(key);
        m_rects = QVector<QRectF>(sizes.size());
        if (sizes.isEmpty())
            return m_rects;
        auto place = [&](int i) {
            const QSizeF size = QwtText(texts.at(i)).textSize(font);
            const double x = map.transform(sizes.at(i));
            double left = x + spacing;
            if (left + size.width() > canvas.right())
                left = x - spacing - size.width();
            left = qMax(left, canvas.left());
            return QRectF(QPointF(left, canvas.bottom() - spacing - size.height()), size);
        };
        const int last = sizes.size() - 1;
        m_rects[last] = place(last);
        double lastRight = -1e9;
        for (int i = 0; i < last; ++i) {
            const QRectF rect = place(i);
            if (rect.left() < lastRight + gap || rect.right() + gap > m_rects.at(last).left())
                continue;
            m_rects[i] = rect;
            lastRight = rect.right();
        }
        return m_rects;
    }

    static constexpr double spacing = 2.0;
    static constexpr double gap = 4.0;

private:
    struct Key
    {
        double s1, s2, p1, p2;
        QRectF canvas;
        QFont font;
        bool operator==(Key const& other) const
        {
            return s1 == other.s1 && s2 == other.s2 && p1 == other.p1 && p2 == other.p2 &&
                   canvas == other.canvas && font == other.font;
        }
    };
    mutable std::unique_ptr<Key> m_key;
    mutable QVector<QRectF> m_rects;
};

namespace {

// A core-size line with its label placed by the shared layout: neighbouring
// cores often differ by one accession, and their numbers would print on top
// of each other. The line is always drawn.
class CoreSizeMarker : public QwtPlotMarker
{
public:
    CoreSizeMarker(std::shared_ptr<XGraphWidget::SizeLabels> labels, int index)
        : m_labels(std::move(labels)), m_index(index)
    {
    }

    // Keeps the map of this drawing for the label: a picture rendered for
    // paper has maps of its own, unlike the canvas on screen.
    void draw(QPainter* painter, QwtScaleMap const& xMap, QwtScaleMap const& yMap,
              QRectF const& canvasRect) const override
    {
        m_map = xMap;
        QwtPlotMarker::draw(painter, xMap, yMap, canvasRect);
    }

protected:
    void drawLabel(QPainter* painter, QRectF const& canvasRect, QPointF const&) const override
    {
        QwtScaleMap const& map = m_map;
        QVector<QRectF> const& rects = m_labels->layout(map, canvasRect, painter->font());
        QRectF const& rect = rects.at(m_index);
        if (rect.isNull())
            return;
        QwtText text = label();
        text.draw(painter, rect);
    }

private:
    std::shared_ptr<XGraphWidget::SizeLabels> m_labels;
    int m_index;
    mutable QwtScaleMap m_map;
};

// Whole numbers only: a core holds whole accessions and counts whole
// alleles, so steps below one, and ticks between whole numbers, mean nothing.
class WholeNumberScaleEngine : public QwtLinearScaleEngine
{
public:
    void autoScale(int maxNumSteps, double& x1, double& x2, double& stepSize) const override
    {
        QwtLinearScaleEngine::autoScale(maxNumSteps, x1, x2, stepSize);
        stepSize = qMax(1.0, std::ceil(stepSize));
        x1 = std::floor(x1 / stepSize) * stepSize;
        x2 = std::ceil(x2 / stepSize) * stepSize;
        if (x2 <= x1)
            x2 = x1 + stepSize;
    }

    QwtScaleDiv divideScale(double x1, double x2, int maxMajorSteps, int maxMinorSteps,
                            double stepSize = 0.0) const override
    {
        if (stepSize == 0.0) {
            stepSize =
                QwtScaleArithmetic::divideInterval(qAbs(x2 - x1), qMax(maxMajorSteps, 1), base());
        }
        stepSize = qMax(1.0, std::ceil(qAbs(stepSize)));
        QwtScaleDiv div =
            QwtLinearScaleEngine::divideScale(x1, x2, maxMajorSteps, maxMinorSteps, stepSize);
        for (int type = QwtScaleDiv::MinorTick; type < QwtScaleDiv::NTickTypes; ++type) {
            QList<double> ticks;
            for (double tick : div.ticks(type)) {
                if (tick == std::round(tick))
                    ticks << tick;
            }
            div.setTicks(type, ticks);
        }
        return div;
    }
};

QPen makePen(QBrush const& brush, qreal width, Qt::PenStyle style, Qt::PenCapStyle cap)
{
    return QPen(brush, width, style, cap, Qt::BevelJoin);
}

// The curve of what the cores hold, apart from the search's blue one.
const QColor heldColor(230, 120, 0);
// Wide enough for a legend entry to show its line's style.
const QSize legendIcon(24, 10);

void deleteCurve(QwtPlotCurve*& curve)
{
    if (curve) {
        curve->detach();
        delete curve;
        curve = nullptr;
    }
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
      m_sizePen(makePen(QBrush(Qt::darkGreen, Qt::SolidPattern), 1.0, Qt::DotLine, Qt::SquareCap)),
      m_menu(new QMenu(this)), m_saveAction(new QAction(tr("Save Graph As..."), this))
{
    m_menu->setObjectName(QStringLiteral("graphMenu"));
    m_saveAction->setObjectName(QStringLiteral("saveGraphAs"));
    m_menu->addAction(m_saveAction);
    connect(m_saveAction, &QAction::triggered, this, &XGraphWidget::saveGraphAs);
    setAxisTitle(QwtPlot::xBottom, QStringLiteral("Size of the core (no. of accessions)"));
    setAxisTitle(QwtPlot::yLeft, QStringLiteral("Number of alleles/variants"));
    setCanvasBackground(QBrush(Qt::white));
    setAxisScaleEngine(QwtPlot::xBottom, new WholeNumberScaleEngine);
    setAxisScaleEngine(QwtPlot::yLeft, new WholeNumberScaleEngine);
}

QList<QRectF> XGraphWidget::coreSizeLabelRects() const
{
    QList<QRectF> found;
    if (!m_sizeLabels)
        return found;
    const QRectF canvasRect(canvas()->contentsRect());
    for (QRectF const& rect :
         m_sizeLabels->layout(canvasMap(QwtPlot::xBottom), canvasRect, canvas()->font())) {
        if (!rect.isNull())
            found << rect;
    }
    return found;
}

void XGraphWidget::showEvent(QShowEvent* event)
{
    // Scales changed while the graph was hidden have not been laid out.
    updateLayout();
    QwtPlot::showEvent(event);
}

XGraphWidget::~XGraphWidget()
{
    delete m_line;
    delete m_points;
    delete m_origin;
    delete m_held;
    delete m_bounds;
    qDeleteAll(m_percentMarkers);
    qDeleteAll(m_sizeMarkers);
}

void XGraphWidget::setResult(XResult* result)
{
    for (QwtPlotCurve** curve : {&m_line, &m_points, &m_held, &m_bounds})
        deleteCurve(*curve);
    deleteAll(m_percentMarkers);
    deleteAll(m_sizeMarkers);

    m_sizeLabels = std::make_shared<SizeLabels>();
    QVector<double>& x = m_sizeLabels->sizes;
    QVector<double> y;
    XCsv const* previous = nullptr;
    for (int v = 1; result && v <= 100; ++v) {
        XCsv const* table = result->csv(v);
        if (table == previous)
            continue;
        previous = table;
        const int size = table->rows() - 1;
        auto* marker = new CoreSizeMarker(m_sizeLabels, x.size());
        marker->setLabel(QwtText(QString::number(size)));
        m_sizeLabels->texts << QString::number(size);
        marker->setLabelAlignment(Qt::AlignRight | Qt::AlignBottom);
        marker->setLineStyle(QwtPlotMarker::VLine);
        marker->setLinePen(m_sizePen);
        marker->setXValue(size);
        marker->attach(this);
        m_sizeMarkers << marker;
        x << size;
        y << result->count(v);
    }

    m_line = new QwtPlotCurve;
    m_line->setStyle(QwtPlotCurve::Lines);
    m_line->setRenderHint(QwtPlotItem::RenderAntialiased);
    m_line->setPen(m_linePen);
    m_line->setSamples(x, y);
    m_line->setTitle(tr("reported by the search"));
    m_line->attach(this);

    m_points = new QwtPlotCurve;
    m_points->setStyle(QwtPlotCurve::Dots);
    m_points->setRenderHint(QwtPlotItem::RenderAntialiased);
    m_points->setPen(m_pointPen);
    m_points->setSamples(x, y);
    m_points->setItemAttribute(QwtPlotItem::Legend, false);
    m_points->attach(this);

    // An invisible point keeps the origin inside the autoscaled axes. Earlier
    // ones stay attached and go with the plot.
    m_origin = new QwtPlotCurve;
    m_origin->setStyle(QwtPlotCurve::Dots);
    m_origin->setPen(m_originPen);
    m_origin->setSamples(QVector<double>{0.0}, QVector<double>{0.0});
    m_origin->setItemAttribute(QwtPlotItem::Legend, false);
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
    // Label widths change with the new ranges: lay the axes out again now,
    // since a hidden graph gets no layout request of its own.
    updateAxes();
    updateLayout();
    replot();
}

void XGraphWidget::showResult(XResult* result, QVector<int> const& held)
{
    setResult(result);
    if (!result)
        return;
    if (!legend())
        insertLegend(new QwtLegend(this), QwtPlot::BottomLegend);
    m_line->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    m_line->setLegendIconSize(legendIcon);

    // The same distinct cores as the blue curve, in the same order.
    const int start = result->source() ? result->source()->rows() - 1 : 0;
    QList<int> const& bounds = result->lowerBounds();
    QVector<double> x, y, heldX, heldY, boundX, boundY;
    XCsv const* previous = nullptr;
    for (int v = 1; v <= 100; ++v) {
        XCsv const* table = result->csv(v);
        if (table == previous)
            continue;
        previous = table;
        const int size = table->rows() - 1;
        // A core whose cells could not be counted has no held point; on the
        // exact search's one curve it keeps the search's count.
        const int holds = held.value(v - 1, -1);
        x << size;
        y << (holds >= 0 ? holds : result->count(v));
        if (holds >= 0) {
            heldX << size;
            heldY << holds;
        }
        const int bound = bounds.value(v - 1, -1);
        if (bound >= 0 && start + bound < size) {
            boundX << start + bound;
            boundY << result->count(v);
        }
    }

    if (!bounds.isEmpty()) {
        // The exact search counts what its cores hold: one curve says both.
        m_line->setTitle(tr("held by the core (smallest)"));
        m_line->setSamples(x, y);
        m_points->setSamples(x, y);
        if (!boundX.isEmpty()) {
            m_bounds = new QwtPlotCurve(tr("at least this many accessions"));
            m_bounds->setStyle(QwtPlotCurve::Lines);
            m_bounds->setRenderHint(QwtPlotItem::RenderAntialiased);
            m_bounds->setPen(QPen(QColor(Qt::darkGray), 1.5, Qt::DashLine));
            m_bounds->setLegendAttribute(QwtPlotCurve::LegendShowLine);
            m_bounds->setLegendIconSize(legendIcon);
            m_bounds->setSamples(boundX, boundY);
            m_bounds->attach(this);
        }
    } else {
        m_held = new QwtPlotCurve(tr("held by the core"));
        m_held->setStyle(QwtPlotCurve::Lines);
        m_held->setRenderHint(QwtPlotItem::RenderAntialiased);
        m_held->setPen(QPen(heldColor, 0));
        m_held->setSymbol(
            new QwtSymbol(QwtSymbol::Ellipse, QBrush(heldColor), QPen(heldColor), QSize(5, 5)));
        m_held->setLegendAttribute(QwtPlotCurve::LegendShowLine);
        m_held->setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
        m_held->setLegendIconSize(legendIcon);
        m_held->setSamples(heldX, heldY);
        m_held->attach(this);
    }
    updateAxes();
    updateLayout();
    replot();
}

bool XGraphWidget::saveImage(QString const& fileName, QString* error)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    const QSizeF sizeMm(pictureWidthMm, pictureHeightMm);
    // Vector formats are laid out at 127 dpi, five dots to the millimetre,
    // so that whole dots give their exact size on paper.
    const int dpi = suffix == QLatin1String("png") ? pngDpi : 127;
    const QSizeF size = sizeMm / 25.4 * dpi;
    const QRectF rect(QPointF(0, 0), size);
    QwtPlotRenderer renderer;
    // The window's grey and frames have no place on paper.
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardCanvasFrame);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (suffix == QLatin1String("png")) {
        QImage image(size.toSize(), QImage::Format_ARGB32);
        const int dotsPerMeter = qRound(dpi / 0.0254);
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        image.fill(Qt::white);
        QPainter painter(&image);
        renderer.render(this, &painter, rect);
        painter.end();
        image.save(&buffer, "PNG");
    } else if (suffix == QLatin1String("svg")) {
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setTitle(tr("Alleles against core size"));
        generator.setResolution(dpi);
        generator.setSize(size.toSize());
        generator.setViewBox(rect);
        QPainter painter(&generator);
        renderer.render(this, &painter, rect);
    } else if (suffix == QLatin1String("pdf")) {
        QPdfWriter writer(&buffer);
        writer.setTitle(tr("Alleles against core size"));
        writer.setPageSize(QPageSize(sizeMm, QPageSize::Millimeter));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(dpi);
        QPainter painter(&writer);
        renderer.render(this, &painter, rect);
    } else {
        if (error)
            *error = tr("the name must end in .png, .svg or .pdf");
        return false;
    }
    buffer.close();
    if (bytes.isEmpty()) {
        if (error)
            *error = tr("the picture could not be drawn");
        return false;
    }
    return XSaveFile::write(fileName, bytes, error);
}

void XGraphWidget::saveGraphAs()
{
    const QString filters =
        tr("PNG images %1").arg(QStringLiteral("(*.png)")) + QStringLiteral(";;") +
        tr("SVG drawings %1").arg(QStringLiteral("(*.svg)")) + QStringLiteral(";;") +
        tr("PDF documents %1").arg(QStringLiteral("(*.pdf)"));
    const QString name = XFileDialog::saveFileName(this, filters, tr("Save Graph As"));
    if (name.isEmpty())
        return;
    QString reason;
    const bool written = saveImage(name, &reason);
    emit imageSaved(written, name, reason);
}

void XGraphWidget::contextMenuEvent(QContextMenuEvent* event)
{
    m_menu->popup(event->globalPos());
    event->accept();
}

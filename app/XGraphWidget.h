#pragma once

#include <QList>
#include <QPen>
#include <QRectF>
#include <qwt_plot.h>

#include <memory>

class QwtPlotCurve;
class QwtPlotMarker;
class XResult;

// Alleles covered against core size: one point and one labelled vertical
// line per distinct core, and horizontal lines at 10 %, 20 %, ... 100 % of
// the largest count. Qwt stays inside this class.
class XGraphWidget : public QwtPlot
{
    Q_OBJECT

public:
    explicit XGraphWidget(QWidget* parent = nullptr);
    ~XGraphWidget() override;

    // Where the core-size labels stand for the canvas' present size, in
    // canvas coordinates, left to right; labels that would overlap a
    // neighbour are left out. The drawing uses exactly these places.
    QList<QRectF> coreSizeLabelRects() const;

    class SizeLabels;

public slots:
    void setResult(XResult* result);

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::shared_ptr<SizeLabels> m_sizeLabels;
    QPen m_linePen;
    QPen m_pointPen;
    QPen m_originPen;
    QPen m_percentPen;
    QPen m_sizePen;
    QwtPlotCurve* m_line = nullptr;
    QwtPlotCurve* m_points = nullptr;
    QwtPlotCurve* m_origin = nullptr;
    QList<QwtPlotMarker*> m_percentMarkers;
    QList<QwtPlotMarker*> m_sizeMarkers;
};

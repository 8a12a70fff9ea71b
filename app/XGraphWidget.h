#pragma once

#include <QList>
#include <QPen>
#include <qwt_plot.h>

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

public slots:
    void setResult(XResult* result);

private:
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

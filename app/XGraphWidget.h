#pragma once

#include <QList>
#include <QPen>
#include <QRectF>
#include <QVector>
#include <qwt_plot.h>

#include <memory>

class QAction;
class QMenu;
class QwtPlotCurve;
class QwtPlotMarker;
class XResult;

// Alleles covered against core size: one point and one labelled vertical
// line per distinct core, and horizontal lines at 10 %, 20 %, ... 100 % of
// the largest count. Beside the search's own counts, what the cores really
// hold; and for the exact search the lower bounds where a core is not proven
// smallest. Saves itself as a picture. Qwt stays inside this class.
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

    // The picture's size on paper, and the resolution of a PNG.
    static constexpr double pictureWidthMm = 160.0;
    static constexpr double pictureHeightMm = 100.0;
    static constexpr int pngDpi = 300;

    // setResult() with the alleles each core holds (one count per slider
    // value 1..100) and a legend. A result with lower bounds comes from the
    // exact search: its one curve is what the cores hold, and the bounds of
    // the cores not proven smallest form a dashed line.
    void showResult(XResult* result, QVector<int> const& held);
    // Writes the graph as PNG, SVG or PDF, chosen by the name's suffix.
    bool saveImage(QString const& fileName, QString* error = nullptr);

signals:
    // After "Save Graph As...": whether the file was written, or why not.
    void imageSaved(bool written, QString const& fileName, QString const& reason);

public slots:
    void setResult(XResult* result);
    // Asks for a file name and saves the graph there.
    void saveGraphAs();

protected:
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

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
    QwtPlotCurve* m_held = nullptr;
    QwtPlotCurve* m_bounds = nullptr;
    QMenu* m_menu;
    QAction* m_saveAction;
    QList<QwtPlotMarker*> m_percentMarkers;
    QList<QwtPlotMarker*> m_sizeMarkers;
};

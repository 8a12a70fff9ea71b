// Renders the editor's tool icons and the program icon into PNG files.
// Usage: render_icons <output folder>. The committed images under img/ come
// from this program; rerun it after changing a drawing.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>

#include <cmath>

namespace {

const int kSize = 33;

const QColor kGridLine(70, 70, 70);
const QColor kCell(255, 255, 255);
const QColor kInsert(46, 160, 67);
const QColor kRemove(215, 38, 38);

enum class Kind { Insert, Remove };
enum class Axis { Row, Column };

// A table of three by three cells; the marked line (a row or a column) is
// filled with the action colour: green for insertion, red for removal.
// Insertion marks the first or the last line, removal the middle one, so the
// place of the colour tells before from after.
void drawTable(QPainter& p, QRect const& area, Axis axis, int marked, QColor const& colour)
{
    const int n = 3;
    const int cw = area.width() / n;
    const int ch = area.height() / n;
    for (int r = 0; r < n; ++r) {
        for (int c = 0; c < n; ++c) {
            const QRect cell(area.left() + c * cw, area.top() + r * ch, cw, ch);
            const bool inLine = axis == Axis::Row ? r == marked : c == marked;
            p.fillRect(cell, inLine ? colour : kCell);
        }
    }
    p.setPen(QPen(kGridLine, 1));
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i <= n; ++i) {
        p.drawLine(area.left() + i * cw, area.top(), area.left() + i * cw, area.top() + n * ch);
        p.drawLine(area.left(), area.top() + i * ch, area.left() + n * cw, area.top() + i * ch);
    }
}

// A round badge with a plus (insert) or a cross (remove), white on colour.
void drawBadge(QPainter& p, QPointF const& centre, Kind kind, QColor const& colour)
{
    const qreal radius = 6.5;
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(Qt::white, 1.5));
    p.setBrush(colour);
    p.drawEllipse(centre, radius, radius);
    p.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap));
    const qreal arm = 3.4;
    if (kind == Kind::Insert) {
        p.drawLine(QPointF(centre.x() - arm, centre.y()), QPointF(centre.x() + arm, centre.y()));
        p.drawLine(QPointF(centre.x(), centre.y() - arm), QPointF(centre.x(), centre.y() + arm));
    } else {
        const qreal d = arm * 0.8;
        p.drawLine(QPointF(centre.x() - d, centre.y() - d),
                   QPointF(centre.x() + d, centre.y() + d));
        p.drawLine(QPointF(centre.x() - d, centre.y() + d),
                   QPointF(centre.x() + d, centre.y() - d));
    }
    p.setRenderHint(QPainter::Antialiasing, false);
}

QImage toolIcon(Axis axis, Kind kind, bool before)
{
    QImage image(kSize, kSize, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    const QColor colour = kind == Kind::Insert ? kInsert : kRemove;
    const int marked = kind == Kind::Remove ? 1 : (before ? 0 : 2);
    // The table takes the upper left; the badge sits in the free corner on
    // the side of the marked line so it points at it.
    const QRect table(2, 2, 24, 24);
    drawTable(p, table, axis, marked, colour);
    QPointF badge(25.5, 25.5);
    if (kind == Kind::Insert && before)
        badge = axis == Axis::Row ? QPointF(25.5, 7.5) : QPointF(7.5, 25.5);
    drawBadge(p, badge, kind, colour);
    return image;
}

// The program icon: a double helix with its base pairs.
QImage dnaIcon()
{
    const int size = 64;
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    const qreal top = 4, bottom = size - 4, mid = size / 2.0, amp = 18;
    const int steps = 120;
    auto strand = [&](qreal phase) {
        QPainterPath path;
        for (int i = 0; i <= steps; ++i) {
            const qreal y = top + (bottom - top) * i / steps;
            const qreal x =
                mid + amp * std::sin((y - top) / (bottom - top) * 2 * M_PI * 1.5 + phase);
            if (i == 0)
                path.moveTo(x, y);
            else
                path.lineTo(x, y);
        }
        return path;
    };
    const QColor pairColours[] = {QColor(46, 160, 67), QColor(230, 160, 20), QColor(215, 38, 38),
                                  QColor(40, 110, 200)};
    for (int i = 0; i < 10; ++i) {
        const qreal y = top + 3 + (bottom - top - 6) * i / 9.0;
        const qreal t = (y - top) / (bottom - top) * 2 * M_PI * 1.5;
        const qreal x1 = mid + amp * std::sin(t), x2 = mid + amp * std::sin(t + M_PI);
        p.setPen(QPen(pairColours[i % 4], 3, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(x1, y), QPointF(x2, y));
    }
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(30, 60, 120), 4.5, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(strand(0));
    p.setPen(QPen(QColor(30, 120, 170), 4.5, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(strand(M_PI));
    return image;
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc != 2) {
        err << "usage: render_icons <output folder>\n";
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    struct Icon
    {
        const char* name;
        QImage image;
    };
    const Icon icons[] = {
        {"prepend_row.png", toolIcon(Axis::Row, Kind::Insert, true)},
        {"append_row.png", toolIcon(Axis::Row, Kind::Insert, false)},
        {"remove_row.png", toolIcon(Axis::Row, Kind::Remove, false)},
        {"prepend_column.png", toolIcon(Axis::Column, Kind::Insert, true)},
        {"append_column.png", toolIcon(Axis::Column, Kind::Insert, false)},
        {"remove_column.png", toolIcon(Axis::Column, Kind::Remove, false)},
        {"dna.png", dnaIcon()},
    };
    for (Icon const& icon : icons) {
        const QString path = out.filePath(QString::fromLatin1(icon.name));
        if (!icon.image.save(path, "PNG")) {
            err << "cannot write " << path << "\n";
            return 1;
        }
    }
    return 0;
}

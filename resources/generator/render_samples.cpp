// Renders the two pictures of the sample dialog from the first rows of a
// real input table: the file as a text editor shows it, and the same table
// as a spreadsheet program shows it.
// Usage: render_samples INPUT.csv OUTPUT_DIR
#include <QFile>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QTextStream>

namespace {

const int firstRows = 6;     // header row and five accessions
const int sampleColumns = 7; // label column and three markers

// The first rows, then the first accession with a missing value among the
// columns shown, so that the pictures show "*" too.
QList<QStringList> readSample(QString const& path)
{
    QList<QStringList> rows;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QStringList row = in.readLine().split(QLatin1Char(',')).mid(0, sampleColumns);
        if (rows.size() < firstRows) {
            rows << row;
        } else if (row.mid(1).contains(QStringLiteral("*"))) {
            rows << row;
            break;
        }
    }
    return rows;
}

QImage textEditor(QList<QStringList> const& rows)
{
    QFont mono(QStringLiteral("DejaVu Sans Mono"), 10);
    QFontMetrics metrics(mono);
    QStringList lines;
    for (QStringList const& row : rows)
        lines << row.join(QLatin1Char(',')) + QStringLiteral(",...");
    const int lineHeight = metrics.height() + 2;
    const int gutter = metrics.horizontalAdvance(QStringLiteral("00")) + 14;
    int textWidth = 0;
    for (QString const& line : lines)
        textWidth = qMax(textWidth, metrics.horizontalAdvance(line));
    const int titleHeight = 24;
    QImage image(gutter + textWidth + 40, titleHeight + lineHeight * lines.size() + 16,
                 QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.fillRect(0, 0, image.width(), titleHeight, QColor(0xe8, 0xe8, 0xe8));
    p.setPen(QColor(0x40, 0x40, 0x40));
    p.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    p.drawText(QRect(8, 0, image.width() - 16, titleHeight), Qt::AlignVCenter,
               QStringLiteral("accessions.csv"));
    p.fillRect(0, titleHeight, gutter, image.height() - titleHeight, QColor(0xf3, 0xf3, 0xf3));
    p.setFont(mono);
    for (int i = 0; i < lines.size(); ++i) {
        const int y = titleHeight + 8 + i * lineHeight;
        p.setPen(QColor(0x99, 0x99, 0x99));
        p.drawText(QRect(0, y, gutter - 6, lineHeight), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(i + 1));
        p.setPen(Qt::black);
        p.drawText(QRect(gutter + 6, y, textWidth + 20, lineHeight), Qt::AlignVCenter, lines.at(i));
    }
    p.setPen(QColor(0xb0, 0xb0, 0xb0));
    p.drawRect(image.rect().adjusted(0, 0, -1, -1));
    return image;
}

QImage spreadsheet(QList<QStringList> const& rows)
{
    QFont font(QStringLiteral("DejaVu Sans"), 9);
    QFontMetrics metrics(font);
    const int rowHeight = metrics.height() + 8;
    const int headerWidth = 34;
    QList<int> widths;
    for (int c = 0; c < sampleColumns; ++c) {
        int width = 56;
        for (QStringList const& row : rows)
            width = qMax(width, metrics.horizontalAdvance(row.value(c)) + 16);
        widths << width;
    }
    int total = headerWidth;
    for (int w : widths)
        total += w;
    QImage image(total + 1, rowHeight * (rows.size() + 1) + 1, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setFont(font);
    const QColor headerFill(0xee, 0xee, 0xee);
    const QColor grid(0xc8, 0xc8, 0xc8);
    p.fillRect(0, 0, image.width(), rowHeight, headerFill);
    p.fillRect(0, 0, headerWidth, image.height(), headerFill);
    int x = headerWidth;
    for (int c = 0; c < sampleColumns; ++c) {
        p.setPen(QColor(0x50, 0x50, 0x50));
        p.drawText(QRect(x, 0, widths.at(c), rowHeight), Qt::AlignCenter, QString(QChar('A' + c)));
        for (int r = 0; r < rows.size(); ++r) {
            const QString text = rows.at(r).value(c);
            bool number = false;
            text.toInt(&number);
            const QRect cell(x + 6, (r + 1) * rowHeight, widths.at(c) - 12, rowHeight);
            p.setPen(Qt::black);
            p.drawText(cell, Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft), text);
        }
        x += widths.at(c);
    }
    for (int r = 0; r < rows.size(); ++r) {
        p.setPen(QColor(0x50, 0x50, 0x50));
        p.drawText(QRect(0, (r + 1) * rowHeight, headerWidth, rowHeight), Qt::AlignCenter,
                   QString::number(r + 1));
    }
    p.setPen(grid);
    for (int r = 0; r <= rows.size() + 1; ++r)
        p.drawLine(0, r * rowHeight, image.width(), r * rowHeight);
    x = 0;
    p.drawLine(0, 0, 0, image.height());
    x = headerWidth;
    p.drawLine(x, 0, x, image.height());
    for (int w : widths) {
        x += w;
        p.drawLine(x, 0, x, image.height());
    }
    return image;
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    if (argc != 3)
        return 2;
    const QList<QStringList> rows = readSample(QString::fromLocal8Bit(argv[1]));
    if (rows.isEmpty())
        return 1;
    const QString dir = QString::fromLocal8Bit(argv[2]);
    const bool ok = textEditor(rows).save(dir + QStringLiteral("/csv_example.png")) &&
                    spreadsheet(rows).save(dir + QStringLiteral("/excel_example.png"));
    return ok ? 0 : 1;
}

// Scales the program icon to the sizes of the hicolor icon theme.
// Usage: render_hicolor SOURCE.png OUTPUT_FOLDER NAME SIZE...
// writes OUTPUT_FOLDER/hicolor/SIZExSIZE/apps/NAME.png for each size.

#include <QDir>
#include <QImage>
#include <QTextStream>

int main(int argc, char** argv)
{
    QTextStream err(stderr);
    if (argc < 5) {
        err << "usage: render_hicolor SOURCE.png OUTPUT_FOLDER NAME SIZE...\n";
        return 2;
    }
    const QImage source(QString::fromLocal8Bit(argv[1]));
    if (source.isNull()) {
        err << "cannot read " << argv[1] << '\n';
        return 1;
    }
    const QString output = QString::fromLocal8Bit(argv[2]);
    const QString name = QString::fromLocal8Bit(argv[3]);
    for (int i = 4; i < argc; ++i) {
        const int size = QString::fromLatin1(argv[i]).toInt();
        if (size < 1) {
            err << "bad size " << argv[i] << '\n';
            return 2;
        }
        const QString folder = QStringLiteral("%1/hicolor/%2x%2/apps").arg(output).arg(size);
        // Smooth scaling keeps the small sizes legible; the source is square.
        const QImage scaled =
            source.convertToFormat(QImage::Format_ARGB32)
                .scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        if (!QDir().mkpath(folder) || !scaled.save(folder + QLatin1Char('/') + name + ".png")) {
            err << "cannot write " << folder << '\n';
            return 1;
        }
    }
    return 0;
}

// Test helper: lets scripts drive the spreadsheet layer.
//   xlstool dump FILE        prints the table read from FILE as JSON rows of
//                            ["i", n] and ["s", text] cells, or the message
//                            with exit status 1
//   xlstool convert IN OUT   reads IN and writes OUT (status 1 when reading
//                            fails, 2 when writing fails)
#include "XCsv.h"
#include "XSpreadsheet.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdio>
#include <memory>

namespace {

QJsonValue cellJson(QVariant const& v)
{
    if (v.userType() == QMetaType::Int)
        return QJsonArray{QStringLiteral("i"), v.toInt()};
    if (v.userType() == QMetaType::QString)
        return QJsonArray{QStringLiteral("s"), v.toString()};
    return QJsonArray{QString::fromLatin1(v.typeName()), v.toString()};
}

// UTF-8 whatever the locale.
void printJson(QJsonDocument const& document)
{
    const QByteArray bytes = document.toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

int usage()
{
    QTextStream(stderr) << "usage: xlstool dump FILE | xlstool convert IN OUT\n";
    return 64;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3)
        return usage();
    const QString command = args.at(1);
    if (!(command == QLatin1String("dump") && args.size() == 3) &&
        !(command == QLatin1String("convert") && args.size() == 4))
        return usage();

    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(args.at(2), &error));
    if (!table) {
        QJsonObject failure{{QStringLiteral("error"), error}};
        printJson(QJsonDocument(failure));
        return 1;
    }
    if (command == QLatin1String("convert"))
        return XSpreadsheet::write(*table, args.at(3)) ? 0 : 2;

    QJsonArray rows;
    for (XCsv::Row const& row : table->data()) {
        QJsonArray cells;
        for (QVariant const& v : row)
            cells << cellJson(v);
        rows << cells;
    }
    QJsonObject result{{QStringLiteral("columns"), table->columns()},
                       {QStringLiteral("rows"), rows}};
    printJson(QJsonDocument(result));
    return 0;
}

// Writes the oracle's result text for one table, so that slow runs can be
// kept as fixtures. Usage: make_engine_fixtures INPUT START|- ITERATIONS SEED OUTPUT
#include "ReferenceCore.h"
#include "XCsv.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 6) {
        QTextStream(stderr) << "usage: make_engine_fixtures INPUT START|- ITERATIONS SEED OUTPUT\n";
        return 2;
    }
    XCsv input(args.at(1));
    XCsv::Grid start;
    const bool hasStart = args.at(2) != QLatin1String("-");
    if (hasStart)
        start = XCsv(args.at(2)).data();
    ReferenceCore core(input.data(), hasStart ? &start : nullptr, args.at(3).toInt(),
                       args.at(4).toInt());
    const QString text = core.resultText();
    QFile out(args.at(5));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Text))
        return 1;
    QTextStream(&out) << text;
    return 0;
}

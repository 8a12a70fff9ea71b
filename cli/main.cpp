// vireon-cli: selects the core collections of one table from the command
// line, prints a summary or the result, and writes the workspace or a core.
#include "StrictInt.h"
#include "TextFile.h"
#include "XAlleles.h"
#include "XCore.h"
#include "XCoreSummary.h"
#include "XCsv.h"
#include "XExactCommand.h"
#include "XExactCore.h"
#include "XProgressBar.h"
#include "XResult.h"
#include "XSaveFile.h"
#include "XSpreadsheet.h"
#include "XWorkspace.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTextStream>

#include <csignal>
#include <ctime>
#include <memory>
#include <unistd.h>

namespace {

enum ExitCode { Success = 0, EngineFailure = 1, UsageError = 2 };

int usageError(QString const& message)
{
    QTextStream(stderr) << "vireon-cli: " << message << '\n'
                        << "Try 'vireon-cli --help' for more information.\n";
    return UsageError;
}

bool readNumber(QString const& text, int* value)
{
    bool ok = false;
    *value = strictToInt(text, &ok);
    return ok;
}

// Reads a table the user named; says why not on stderr, and what the reader
// noted about a table it read (an encoding, a separator). Only regular files
// are read, so a FIFO or a device never blocks the run.
bool readTable(QString const& fileName, std::unique_ptr<XCsv>& table)
{
    QTextStream err(stderr);
    const QString problem =
        XSpreadsheet::isKnownSuffix(fileName) ? TextFile::problem(fileName) : QString();
    QString message;
    QStringList notes;
    if (problem.isEmpty())
        table.reset(XSpreadsheet::read(fileName, &message, &notes));
    for (QString const& note : notes)
        err << fileName << ": " << note << '\n';
    if (!table) {
        err << fileName << ": " << (problem.isEmpty() ? message : problem) << '\n';
        return false;
    }
    if (table->rows() == 1 && !table->leftOutLines().isEmpty()) {
        err << fileName << ": " << XSpreadsheet::noMatchingLinesMessage(table->columns()) << '\n';
        return false;
    }
    if (table->rows() > 1 && table->columns() < 2) {
        err << fileName << ": " << XSpreadsheet::noAlleleColumnsMessage() << '\n';
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    // A file-size limit then fails the write with its reason, which the
    // writer reports, instead of killing the program mid-write.
    std::signal(SIGXFSZ, SIG_IGN);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vireon-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VIREON_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Selects core collections: for each percentage 1 to 100 of the alleles of "
                       "INPUT, the smallest set of accessions found that holds that share."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption start({"s", "start"}, "starting collection", "FILE");
    const QCommandLineOption iterations(
        {"i", "iterations"}, "attempts per core size (default 10, at least 1)", "N", "10");
    const QCommandLineOption seed({"r", "seed"},
                                  "random seed; 0 takes it from the clock (default 0)", "N", "0");
    const QCommandLineOption workspace({"w", "workspace"},
                                       "write the whole analysis as a workspace file, slider at "
                                       "--percent",
                                       "FILE");
    const QCommandLineOption output({"o", "output"},
                                    "write the core of --percent (a name ending in .xls or "
                                    ".xlsx as a workbook, any other as comma-separated text)",
                                    "FILE");
    const QCommandLineOption percent(
        {"p", "percent"}, "the core that --output writes (1..100, default 100)", "P", "100");
    const QCommandLineOption result(
        "result", "print the result's text form (the 100 lines of a workspace's result section) "
                  "instead of the summary");
    const QCommandLineOption quiet({"q", "quiet"}, "no progress on stderr");
    const QCommandLineOption threads(
        {"t", "threads"},
        "threads that search (default 0: one per core); any count gives the "
        "same result",
        "N", "0");
    const QCommandLineOption search(
        "search",
        "reproducible (default): the randomised search, repeatable from its seed; exact: the "
        "fewest accessions for each percentage, proven minimal or with a lower bound",
        "MODE", "reproducible");
    const QCommandLineOption budget("budget",
                                    "seconds the exact search may spend on its proofs (default 60)",
                                    "SECONDS", QString::number(XExactCore::defaultBudget));
    parser.addOptions({start, iterations, seed, workspace, output, percent, result, quiet, threads,
                       search, budget});
    parser.addPositionalArgument("INPUT", "the table of accessions (.csv, .xls, .xlsx or .ods)");

    if (!parser.parse(app.arguments()))
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(Success);

    const QStringList inputs = parser.positionalArguments();
    if (inputs.size() != 1)
        return usageError(inputs.isEmpty() ? QStringLiteral("no INPUT given.")
                                           : QStringLiteral("only one INPUT may be given."));
    int iterationCount = 0;
    if (!readNumber(parser.value(iterations), &iterationCount) || iterationCount < 1)
        return usageError(QStringLiteral("--iterations needs a whole number of at least 1."));
    int seedValue = 0;
    if (!readNumber(parser.value(seed), &seedValue))
        return usageError(QStringLiteral("--seed needs a whole number."));
    int threadCount = 0;
    if (!readNumber(parser.value(threads), &threadCount) || threadCount < 0)
        return usageError(QStringLiteral("--threads needs a whole number of at least 0."));
    int percentValue = 0;
    if (!readNumber(parser.value(percent), &percentValue) || percentValue < 1 || percentValue > 100)
        return usageError(QStringLiteral("--percent needs a whole number from 1 to 100."));

    const QString mode = parser.value(search);
    if (mode != QLatin1String("reproducible") && mode != QLatin1String("exact"))
        return usageError(QStringLiteral("--search is reproducible or exact."));
    int budgetValue = 0;
    if (!readNumber(parser.value(budget), &budgetValue) || budgetValue < 0)
        return usageError(QStringLiteral("--budget needs a whole number of seconds, 0 or more."));

    QTextStream err(stderr);
    std::unique_ptr<XCsv> input;
    if (!readTable(inputs.first(), input))
        return UsageError;
    std::unique_ptr<XCsv> source;
    if (parser.isSet(start) && !readTable(parser.value(start), source))
        return UsageError;
    if (mode == QLatin1String("exact")) {
        XExactCommand::Options exact;
        exact.budget = budgetValue;
        exact.percent = percentValue;
        exact.printResult = parser.isSet(result);
        exact.progress = !parser.isSet(quiet) && isatty(STDERR_FILENO);
        exact.output = parser.isSet(output) ? parser.value(output) : QString();
        exact.workspace = parser.isSet(workspace) ? parser.value(workspace) : QString();
        return XExactCommand::run(std::move(input), std::move(source), exact);
    }
    // Resolve a clock seed here so that the summary can name it.
    if (seedValue == 0)
        seedValue = int(time(nullptr));

    XCore core(input.get(), source.get(), iterationCount, seedValue);
    core.setThreadCount(threadCount);
    std::unique_ptr<XProgressBar> progress;
    if (!parser.isSet(quiet) && isatty(STDERR_FILENO)) {
        progress = std::make_unique<XProgressBar>(stderr);
        QObject::connect(&core, &XCore::percentChanged, progress.get(), &XProgressBar::setPercent);
        QObject::connect(&core, &XCore::searching, progress.get(), &XProgressBar::setSearching);
    }
    std::unique_ptr<XResult> outcome;
    QString failure;
    QEventLoop loop;
    QObject::connect(&core, &XCore::completed, &loop, [&outcome](XResult* r) { outcome.reset(r); });
    QObject::connect(&core, &XCore::error, &loop,
                     [&failure](QString const& text) { failure = text; });
    QObject::connect(&core, &QThread::finished, &loop, &QEventLoop::quit);
    core.start();
    loop.exec();
    core.wait();
    progress.reset();

    if (!outcome) {
        err << (failure.isEmpty() ? QStringLiteral("The run ended without a result.") : failure)
            << '\n';
        if (failure == XCore::tr("Invalid value in csv."))
            err << XCoreSummary::invalidCells(source.get(), input.get());
        return EngineFailure;
    }

    const int total = XAlleles::held({source.get(), input.get()}, input->headers());

    QTextStream out(stdout);
    if (parser.isSet(result))
        out << outcome->toString();
    else
        out << XCoreSummary::text(*outcome, total, seedValue);
    out.flush();

    int status = Success;
    QString reason;
    if (parser.isSet(output) &&
        !XSpreadsheet::write(*outcome->csv(percentValue), parser.value(output), &reason)) {
        err << parser.value(output) << ": could not be written: " << reason << '\n';
        status = EngineFailure;
    }
    // The workspace owns the tables and the result from here on.
    XWorkspace analysis(input.release(), source.release(), outcome.release());
    analysis.setSlider(percentValue);
    analysis.setReproducibleRun(iterationCount, seedValue);
    if (parser.isSet(workspace) &&
        !XSaveFile::writeText(parser.value(workspace), analysis.toString(), &reason)) {
        err << parser.value(workspace) << ": could not be written: " << reason << '\n';
        status = EngineFailure;
    }
    return status;
}

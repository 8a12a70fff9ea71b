// vireon-cli: selects the core collections of one table from the command
// line, prints a summary or the result, and writes the workspace or a core.
#include "AnalysisInputs.h"
#include "StrictInt.h"
#include "TableNotes.h"
#include "TerminalText.h"
#include "TextFile.h"
#include "Translations.h"
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
#include "XWorkspaceCommand.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QTextStream>

#include <csignal>
#include <ctime>
#include <memory>
#include <unistd.h>

namespace {

// The command line's texts, translated in the context of XCli.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XCli)
};

enum ExitCode { Success = 0, EngineFailure = 1, UsageError = 2 };

// Two lines of the toolkit's own help that its translations leave out;
// listed here so that Vireon's translations carry them.
[[maybe_unused]] const char* const toolkitHelp[] = {
    QT_TRANSLATE_NOOP("QCommandLineParser", "Displays help on commandline options."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Displays help including Qt specific options.")};

int usageError(QString const& message)
{
    printError(Msg::tr("vireon-cli: %1").arg(message));
    printError(Msg::tr("Try 'vireon-cli --help' for more information."));
    return UsageError;
}

bool readNumber(QString const& text, int* value)
{
    bool ok = false;
    *value = strictToInt(text, &ok);
    return ok;
}

// "FILE: message", the file named once: the readers name it themselves in
// some messages.
void complainAbout(QString const& fileName, QString const& message)
{
    const QString prefix = fileName + QStringLiteral(": ");
    printError(message.startsWith(prefix) ? message : prefix + message);
}

// Reads a table the user named; says why not on stderr, and what the reader
// noted about a table it read (an encoding, a separator, lines left out,
// names that return), as the wizard shows it. Only regular files are read,
// so a FIFO or a device never blocks the run. A table that lost more than
// half of its lines is refused unless allowLeftOut: what is left is seldom
// what the file meant.
bool readTable(QString const& fileName, bool allowLeftOut, std::unique_ptr<XCsv>& table)
{
    const QString problem =
        XSpreadsheet::isKnownSuffix(fileName) ? TextFile::problem(fileName) : QString();
    QString message;
    QStringList notes;
    if (problem.isEmpty())
        table.reset(XSpreadsheet::read(fileName, &message, &notes));
    for (QString const& note : notes)
        complainAbout(fileName, note);
    if (!table) {
        complainAbout(fileName, problem.isEmpty() ? message : problem);
        return false;
    }
    const QString unusable = XSpreadsheet::tableProblem(*table);
    if (!unusable.isEmpty()) {
        complainAbout(fileName, unusable);
        return false;
    }
    for (QString const& note : TableNotes::notes(*table))
        complainAbout(fileName, note);
    const int leftOut = table->leftOutLines().size();
    const int kept = table->rows() - 1;
    if (!allowLeftOut && leftOut > kept) {
        complainAbout(fileName, Msg::tr("%1 of the %2 lines below the header row were left out, "
                                        "more than half, so the table is refused; "
                                        "--allow-left-out searches the %3 that were read.")
                                    .arg(leftOut)
                                    .arg(leftOut + kept)
                                    .arg(kept));
        return false;
    }
    return true;
}

// Why an output named on the command line cannot be written, found before
// any work is done: it would replace a file the analysis reads, or its
// folder is missing or closed to writing. Every output goes through here,
// against every input.
QString outputProblem(QString const& target, AnalysisInputs const& inputs)
{
    const QString replaced = inputs.replacedBy(target);
    if (!replaced.isEmpty())
        return replaced;
    const QString problem = XSaveFile::targetProblem(target);
    return problem.isEmpty() ? QString()
                             : Msg::tr("%1: cannot be written: %2").arg(target, problem);
}

// Whether two names are one file: the same path, or, when both exist, the
// same device and inode.
bool sameTarget(QString const& a, QString const& b)
{
    if (QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath())
        return true;
    AnalysisInputs one;
    one.add(AnalysisInputs::InputTable, a);
    return !one.replacedBy(b).isEmpty();
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
    installTranslators(app);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        Msg::tr("Selects core collections: for each percentage 1 to 100 of the alleles of "
                "INPUT, the smallest set of accessions found that holds that share."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption start({"s", "start"}, Msg::tr("starting collection"), Msg::tr("FILE"));
    const QCommandLineOption iterations({"i", "iterations"},
                                        Msg::tr("attempts per core size (default 10, at least 1)"),
                                        Msg::tr("N"), "10");
    const QCommandLineOption seed({"r", "seed"},
                                  Msg::tr("random seed; 0 takes it from the clock (default 0)"),
                                  Msg::tr("N"), "0");
    const QCommandLineOption workspace(
        {"w", "workspace"},
        Msg::tr("write the whole analysis as a workspace file, slider at --percent"),
        Msg::tr("FILE"));
    const QCommandLineOption output({"o", "output"},
                                    Msg::tr("write the core of --percent (a name ending in .xls "
                                            "or .xlsx as a workbook, any other as comma-separated "
                                            "text)"),
                                    Msg::tr("FILE"));
    const QCommandLineOption percent({"p", "percent"},
                                     Msg::tr("the core that --output writes (1..100, default 100)"),
                                     Msg::tr("P"), "100");
    const QCommandLineOption result("result",
                                    Msg::tr("print the result's text form (the 100 lines of a "
                                            "workspace's result section) instead of the summary"));
    const QCommandLineOption quiet({"q", "quiet"}, Msg::tr("no progress on stderr"));
    const QCommandLineOption threads(
        {"t", "threads"},
        Msg::tr("threads that search (default 0: one per core); any count gives the same result"),
        Msg::tr("N"), "0");
    // The values of --search are words of the command line, not texts.
    const QCommandLineOption search(
        "search",
        Msg::tr("reproducible (default): the randomised search, repeatable from its seed; exact: "
                "the fewest accessions for each percentage, proven minimal or with a lower bound"),
        Msg::tr("MODE"), "reproducible");
    const QCommandLineOption budget(
        "budget", Msg::tr("seconds the exact search may spend on its proofs (default 60)"),
        Msg::tr("SECONDS"), QString::number(XExactCore::defaultBudget));
    const QCommandLineOption allowLeftOut(
        "allow-left-out", Msg::tr("search a .csv table even when more than half of its lines were "
                                  "left out (their number of fields differs from the header "
                                  "row's)"));
    parser.addOptions({start, iterations, seed, workspace, output, percent, result, quiet, threads,
                       search, budget, allowLeftOut});
    parser.addPositionalArgument(Msg::tr("INPUT"),
                                 Msg::tr("the table of accessions (.csv, .xls, .xlsx or .ods), or "
                                         "a workspace file (.ccw) to print and write from without "
                                         "a search"));

    if (!parser.parse(app.arguments()))
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(Success);

    const QStringList inputs = parser.positionalArguments();
    if (inputs.size() != 1)
        return usageError(inputs.isEmpty() ? Msg::tr("no INPUT given.")
                                           : Msg::tr("only one INPUT may be given."));
    int iterationCount = 0;
    if (!readNumber(parser.value(iterations), &iterationCount) || iterationCount < 1)
        return usageError(Msg::tr("--iterations needs a whole number of at least 1."));
    int seedValue = 0;
    if (!readNumber(parser.value(seed), &seedValue))
        return usageError(Msg::tr("--seed needs a whole number."));
    int threadCount = 0;
    if (!readNumber(parser.value(threads), &threadCount) || threadCount < 0)
        return usageError(Msg::tr("--threads needs a whole number of at least 0."));
    int percentValue = 0;
    if (!readNumber(parser.value(percent), &percentValue) || percentValue < 1 || percentValue > 100)
        return usageError(Msg::tr("--percent needs a whole number from 1 to 100."));

    const QString mode = parser.value(search);
    if (mode != QLatin1String("reproducible") && mode != QLatin1String("exact"))
        return usageError(Msg::tr("--search is reproducible or exact."));
    int budgetValue = 0;
    if (!readNumber(parser.value(budget), &budgetValue) || budgetValue < 0)
        return usageError(Msg::tr("--budget needs a whole number of seconds, 0 or more."));

    // Outputs are checked before anything is read or searched, so that a
    // long search never ends in a file that cannot be written, and no output
    // ever replaces an input.
    const QString inputName = inputs.first();
    const bool fromWorkspace = XWorkspaceCommand::isWorkspaceFile(inputName);
    AnalysisInputs analysisInputs;
    analysisInputs.add(fromWorkspace ? AnalysisInputs::Workspace : AnalysisInputs::InputTable,
                       inputName);
    if (parser.isSet(start))
        analysisInputs.add(AnalysisInputs::StartingCollection, parser.value(start));
    QStringList outputs;
    for (QCommandLineOption const& option : {output, workspace}) {
        if (parser.isSet(option))
            outputs << parser.value(option);
    }
    if (outputs.size() == 2 && sameTarget(outputs.at(0), outputs.at(1)))
        return usageError(
            Msg::tr("--output and --workspace name the same file, %1.").arg(outputs.at(0)));
    for (QString const& target : outputs) {
        const QString problem = outputProblem(target, analysisInputs);
        if (!problem.isEmpty()) {
            printError(problem);
            return UsageError;
        }
    }

    if (fromWorkspace) {
        QStringList searchOptions;
        for (QCommandLineOption const& option :
             {start, iterations, seed, threads, search, budget, workspace, allowLeftOut}) {
            if (parser.isSet(option))
                searchOptions << QStringLiteral("--") + option.names().constLast();
        }
        if (!searchOptions.isEmpty())
            return usageError(Msg::tr("%1 cannot be given with a workspace file: it holds "
                                      "its analysis already.")
                                  .arg(searchOptions.join(QStringLiteral(", "))));
        XWorkspaceCommand::Options shown;
        shown.percent = percentValue;
        shown.printResult = parser.isSet(result);
        shown.output = parser.isSet(output) ? parser.value(output) : QString();
        return XWorkspaceCommand::run(inputName, shown);
    }

    std::unique_ptr<XCsv> input;
    if (!readTable(inputName, parser.isSet(allowLeftOut), input))
        return UsageError;
    std::unique_ptr<XCsv> source;
    if (parser.isSet(start) && !readTable(parser.value(start), parser.isSet(allowLeftOut), source))
        return UsageError;
    if (parser.isSet(output)) {
        // The core's rows are known only after the search; its columns now.
        const int startRows = source ? source->rows() - 1 : 0;
        const QString tooLarge =
            XSpreadsheet::fitProblem(parser.value(output), 1 + startRows, input->columns());
        if (!tooLarge.isEmpty()) {
            printError(Msg::tr("%1: cannot be written: %2").arg(parser.value(output), tooLarge));
            return UsageError;
        }
    }
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
        printError(failure.isEmpty() ? Msg::tr("The run ended without a result.") : failure);
        if (failure == XCore::tr("Invalid value in csv."))
            printError(XCoreSummary::invalidCells(source.get(), input.get()));
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
        printError(Msg::tr("%1: could not be written: %2").arg(parser.value(output), reason));
        status = EngineFailure;
    }
    // The workspace owns the tables and the result from here on.
    XWorkspace analysis(input.release(), source.release(), outcome.release());
    analysis.setSlider(percentValue);
    analysis.setReproducibleRun(iterationCount, seedValue);
    if (parser.isSet(workspace) &&
        !XSaveFile::writeText(parser.value(workspace), analysis.toString(), &reason)) {
        printError(Msg::tr("%1: could not be written: %2").arg(parser.value(workspace), reason));
        status = EngineFailure;
    }
    return status;
}

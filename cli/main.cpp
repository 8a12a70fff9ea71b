// vireon-cli: selects the core collections of one table from the command
// line, prints a summary or the result, and writes the workspace or a core.
#include "AnalysisInputs.h"
#include "StrictInt.h"
#include "TableNotes.h"
#include "TableRules.h"
#include "TerminalText.h"
#include "TextFile.h"
#include "Translations.h"
#include "XAnalysisRequest.h"
#include "XCsv.h"
#include "XSaveFile.h"
#include "XSearchCommand.h"
#include "XSpreadsheet.h"
#include "XWorkspaceCommand.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <csignal>
#include <memory>
#include <unistd.h>

namespace {

// The command line's texts, translated in the context of XCli.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XCli)
};

// Two lines of the toolkit's own help that its translations leave out;
// listed here so that Vireon's translations carry them.
[[maybe_unused]] const char* const toolkitHelp[] = {
    QT_TRANSLATE_NOOP("QCommandLineParser", "Displays help on commandline options."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Displays help including Qt specific options.")};

enum ExitCode { Success = 0, EngineFailure = 1, UsageError = 2 };

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
    const QString unusable = TableRules::problem(*table);
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

// The command line's options, in the order --help lists them.
struct Options
{
    QCommandLineOption start{{"s", "start"}, Msg::tr("starting collection"), Msg::tr("FILE")};
    QCommandLineOption iterations{{"i", "iterations"},
                                  Msg::tr("attempts per core size (default 10, at least 1)"),
                                  Msg::tr("N"),
                                  "10"};
    QCommandLineOption seed{{"r", "seed"},
                            Msg::tr("random seed; 0 takes it from the clock (default 0)"),
                            Msg::tr("N"),
                            "0"};
    QCommandLineOption workspace{
        {"w", "workspace"},
        Msg::tr("write the whole analysis as a workspace file, slider at --percent"),
        Msg::tr("FILE")};
    QCommandLineOption output{{"o", "output"},
                              Msg::tr("write the core of --percent (a name ending in .xls or "
                                      ".xlsx as a workbook, any other as comma-separated text)"),
                              Msg::tr("FILE")};
    QCommandLineOption percent{{"p", "percent"},
                               Msg::tr("the core that --output writes (1..100, default 100)"),
                               Msg::tr("P"),
                               "100"};
    QCommandLineOption result{"result",
                              Msg::tr("print the result's text form (the 100 lines of a "
                                      "workspace's result section) instead of the summary")};
    QCommandLineOption quiet{{"q", "quiet"}, Msg::tr("no progress on stderr")};
    QCommandLineOption threads{
        {"t", "threads"},
        Msg::tr("threads that search (default 0: one per core); any count gives the same result"),
        Msg::tr("N"),
        "0"};
    // The values of --search are words of the command line, not texts.
    QCommandLineOption search{
        "search",
        Msg::tr("reproducible (default): the randomised search, repeatable from its seed; exact: "
                "the fewest accessions for each percentage, proven minimal or with a lower bound"),
        Msg::tr("MODE"), "reproducible"};
    QCommandLineOption budget{
        "budget", Msg::tr("seconds the exact search may spend on its proofs (default 60)"),
        Msg::tr("SECONDS"), QString::number(XSearchSettings::defaultBudget)};
    QCommandLineOption allowLeftOut{
        "allow-left-out", Msg::tr("search a .csv table even when more than half of its lines were "
                                  "left out (their number of fields differs from the header "
                                  "row's)")};

    void addTo(QCommandLineParser& parser) const
    {
        parser.addOptions({start, iterations, seed, workspace, output, percent, result, quiet,
                           threads, search, budget, allowLeftOut});
        parser.addPositionalArgument(Msg::tr("INPUT"),
                                     Msg::tr("the table of accessions (.csv, .xls, .xlsx or .ods), "
                                             "or a workspace file (.ccw) to print and write from "
                                             "without a search"));
    }
};

// The search's settings from the options; empty when they are all usable,
// else the usage error to give.
QString readSettings(QCommandLineParser const& parser, Options const& options,
                     XSearchSettings& settings, int& percent)
{
    int iterations = 0;
    if (!readNumber(parser.value(options.iterations), &iterations) || iterations < 1)
        return Msg::tr("--iterations needs a whole number of at least 1.");
    int seed = 0;
    if (!readNumber(parser.value(options.seed), &seed))
        return Msg::tr("--seed needs a whole number.");
    int threads = 0;
    if (!readNumber(parser.value(options.threads), &threads) || threads < 0)
        return Msg::tr("--threads needs a whole number of at least 0.");
    if (!readNumber(parser.value(options.percent), &percent) || percent < 1 || percent > 100)
        return Msg::tr("--percent needs a whole number from 1 to 100.");
    const QString mode = parser.value(options.search);
    if (mode != QLatin1String("reproducible") && mode != QLatin1String("exact"))
        return Msg::tr("--search is reproducible or exact.");
    int budget = 0;
    if (!readNumber(parser.value(options.budget), &budget) || budget < 0)
        return Msg::tr("--budget needs a whole number of seconds, 0 or more.");
    if (mode == QLatin1String("exact")) {
        settings = XSearchSettings::exact(budget);
    } else {
        settings = XSearchSettings::reproducible(iterations, seed);
        settings.threads = threads;
    }
    return QString();
}

// Outputs are checked before anything is read or searched, so that a long
// search never ends in a file that cannot be written, and no output ever
// replaces an input. Returns the exit status to end with, or -1 to go on.
int checkOutputs(QCommandLineParser const& parser, Options const& options,
                 AnalysisInputs const& inputs)
{
    QStringList outputs;
    for (QCommandLineOption const& option : {options.output, options.workspace}) {
        if (parser.isSet(option))
            outputs << parser.value(option);
    }
    if (outputs.size() == 2 && sameTarget(outputs.at(0), outputs.at(1)))
        return usageError(
            Msg::tr("--output and --workspace name the same file, %1.").arg(outputs.at(0)));
    for (QString const& target : outputs) {
        const QString problem = outputProblem(target, inputs);
        if (!problem.isEmpty()) {
            printError(problem);
            return UsageError;
        }
    }
    return -1;
}

// vireon-cli with a workspace file: it holds its analysis, so no option of
// a search may be given.
int showWorkspace(QCommandLineParser const& parser, Options const& options, QString const& fileName,
                  int percent)
{
    QStringList searchOptions;
    for (QCommandLineOption const& option :
         {options.start, options.iterations, options.seed, options.threads, options.search,
          options.budget, options.workspace, options.allowLeftOut}) {
        if (parser.isSet(option))
            searchOptions << QStringLiteral("--") + option.names().constLast();
    }
    if (!searchOptions.isEmpty())
        return usageError(Msg::tr("%1 cannot be given with a workspace file: it holds "
                                  "its analysis already.")
                              .arg(searchOptions.join(QStringLiteral(", "))));
    XWorkspaceCommand::Options shown;
    shown.percent = percent;
    shown.printResult = parser.isSet(options.result);
    shown.output = parser.isSet(options.output) ? parser.value(options.output) : QString();
    return XWorkspaceCommand::run(fileName, shown);
}

// Reads the tables of a search; false after saying why not.
bool readTables(QCommandLineParser const& parser, Options const& options, XAnalysisRequest& request)
{
    const bool allow = parser.isSet(options.allowLeftOut);
    if (!readTable(parser.positionalArguments().constFirst(), allow, request.input))
        return false;
    if (parser.isSet(options.start) &&
        !readTable(parser.value(options.start), allow, request.start))
        return false;
    if (parser.isSet(options.output)) {
        // The core's rows are known only after the search; its columns now.
        const int startRows = request.start ? request.start->rows() - 1 : 0;
        const QString tooLarge = XSpreadsheet::fitProblem(parser.value(options.output),
                                                          1 + startRows, request.input->columns());
        if (!tooLarge.isEmpty()) {
            printError(
                Msg::tr("%1: cannot be written: %2").arg(parser.value(options.output), tooLarge));
            return false;
        }
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
    installTranslators(app);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        Msg::tr("Selects core collections: for each percentage 1 to 100 of the alleles of "
                "INPUT, the smallest set of accessions found that holds that share."));
    parser.addHelpOption();
    parser.addVersionOption();
    const Options options;
    options.addTo(parser);
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
    XAnalysisRequest request;
    int percent = 100;
    const QString unusable = readSettings(parser, options, request.settings, percent);
    if (!unusable.isEmpty())
        return usageError(unusable);

    const QString inputName = inputs.first();
    const bool fromWorkspace = XWorkspaceCommand::isWorkspaceFile(inputName);
    request.files.add(fromWorkspace ? AnalysisInputs::Workspace : AnalysisInputs::InputTable,
                      inputName);
    if (parser.isSet(options.start))
        request.files.add(AnalysisInputs::StartingCollection, parser.value(options.start));
    const int refused = checkOutputs(parser, options, request.files);
    if (refused >= 0)
        return refused;
    if (fromWorkspace)
        return showWorkspace(parser, options, inputName, percent);
    if (!readTables(parser, options, request))
        return UsageError;

    XSearchCommand::Options run;
    run.percent = percent;
    run.printResult = parser.isSet(options.result);
    run.progress = !parser.isSet(options.quiet) && isatty(STDERR_FILENO);
    run.output = parser.isSet(options.output) ? parser.value(options.output) : QString();
    run.workspace = parser.isSet(options.workspace) ? parser.value(options.workspace) : QString();
    return XSearchCommand::run(std::move(request), run);
}

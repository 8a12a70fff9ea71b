#include "XSearchCommand.h"

#include "TerminalText.h"
#include "XAlleles.h"
#include "XCoreSummary.h"
#include "XCsv.h"
#include "XProgressBar.h"
#include "XResult.h"
#include "XSaveFile.h"
#include "XSearchRunner.h"
#include "XSpreadsheet.h"
#include "XWorkspace.h"

#include <QElapsedTimer>
#include <QTextStream>

namespace {

// The summary of a result, as each search tells it.
void printSummary(XResult& result, XAnalysisRequest const& request, double seconds)
{
    const QList<XCsv const*> tables{request.start.get(), request.input.get()};
    const QStringList headers = request.input->headers();
    QTextStream out(stdout);
    switch (request.settings.kind) {
    case XSearchKind::Reproducible:
        out << XCoreSummary::text(result,
                                  XAlleles::total(tables, headers, XAlleles::ZeroPairs::Counted),
                                  request.settings.seed);
        break;
    case XSearchKind::Exact:
        out.setCodec("UTF-8");
        out << XCoreSummary::exactText(
            result, XAlleles::total(tables, headers, XAlleles::ZeroPairs::LeftOut),
            XAlleles::zeroPairs(tables, headers), seconds);
        break;
    }
}

} // namespace

int XSearchCommand::run(XAnalysisRequest request, Options const& options)
{
    QElapsedTimer timer;
    timer.start();
    XSearchRunner runner(request.input.get(), request.start.get(), request.settings);
    // A clock seed as the number it became, for the summary and the workspace.
    request.settings = runner.search().settings();
    std::unique_ptr<XProgressBar> progress;
    if (options.progress) {
        progress = std::make_unique<XProgressBar>(stderr);
        QObject::connect(&runner, &XSearchRunner::percentChanged, progress.get(),
                         &XProgressBar::setPercent);
        QObject::connect(&runner, &XSearchRunner::searching, progress.get(),
                         &XProgressBar::setSearching);
    }
    XSearch::Outcome outcome = runner.exec();
    progress.reset();
    const double seconds = timer.nsecsElapsed() / 1e9;

    if (!outcome.result) {
        printError(outcome.error.isEmpty() ? tr("The run ended without a result.") : outcome.error);
        if (outcome.error == XSearch::invalidValueMessage())
            printError(XCoreSummary::invalidCells(request.start.get(), request.input.get()));
        return 1;
    }
    if (options.printResult) {
        QTextStream out(stdout);
        out.setCodec("UTF-8");
        out << outcome.result->toString();
    } else {
        printSummary(*outcome.result, request, seconds);
    }

    int status = 0;
    QString reason;
    if (!options.output.isEmpty() &&
        !XSpreadsheet::write(*outcome.result->csv(options.percent), options.output, &reason)) {
        printError(tr("%1: could not be written: %2").arg(options.output, reason));
        status = 1;
    }
    // The workspace owns the tables and the result from here on.
    XWorkspace analysis(request.input.release(), request.start.release(), outcome.result.release());
    analysis.setSlider(options.percent);
    analysis.setRun(request.settings, seconds);
    if (!options.workspace.isEmpty() &&
        !XSaveFile::writeText(options.workspace, analysis.toString(), &reason)) {
        printError(tr("%1: could not be written: %2").arg(options.workspace, reason));
        status = 1;
    }
    return status;
}

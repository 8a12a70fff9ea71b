#include "XExactCommand.h"

#include "TerminalText.h"
#include "XCoreSummary.h"
#include "XCsv.h"
#include "XExactCore.h"
#include "XProgressBar.h"
#include "XResult.h"
#include "XSaveFile.h"
#include "XSpreadsheet.h"
#include "XWorkspace.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTextStream>

QString XExactCommand::summary(XResult& result, int const& total, int const& zeroPairs,
                               double const& seconds)
{
    QString text;
    QTextStream out(&text);
    out << tr("percent\taccessions\talleles\tsize") << '\n';
    XResult::Entries const& entries = result.entries();
    QList<int> const& bounds = result.lowerBounds();
    const int startRows = result.source() ? result.source()->rows() - 1 : 0;
    int proven = 0;
    int first = 0;
    for (int i = 0; i < entries.size(); ++i) {
        const int size = entries.at(i).second.size();
        proven += bounds.value(i) == size;
        if (i + 1 < entries.size() && entries.at(i + 1) == entries.at(first) &&
            bounds.value(i + 1) == bounds.value(first))
            continue;
        const QString percents = first == i ? QString::number(first + 1)
                                            : QStringLiteral("%1-%2").arg(first + 1).arg(i + 1);
        const int firstSize = entries.at(first).second.size();
        const QString proof = bounds.value(first) == firstSize
                                  ? tr("minimal")
                                  : QStringLiteral("≥ %1").arg(startRows + bounds.value(first));
        out << percents << '\t' << startRows + firstSize << '\t' << entries.at(first).first << '\t'
            << proof << '\n';
        first = i + 1;
    }
    out << tr("Total alleles: %1; (marker, 0) pairs left out: %2").arg(total).arg(zeroPairs)
        << '\n';
    const QString time =
        seconds >= 0 ? tr("%1 s").arg(QString::number(seconds, 'f', 1)) : tr("not recorded");
    out << tr("Proven minimal: %1 of %n entries; time: %2", nullptr, entries.size())
               .arg(proven)
               .arg(time)
        << '\n';
    return text;
}

int XExactCommand::run(std::unique_ptr<XCsv> input, std::unique_ptr<XCsv> source,
                       Options const& options)
{
    QElapsedTimer timer;
    timer.start();
    XExactCore core(input.get(), source.get(), options.budget);
    std::unique_ptr<XProgressBar> progress;
    if (options.progress) {
        progress = std::make_unique<XProgressBar>(stderr);
        QObject::connect(&core, &XExactCore::percentChanged, progress.get(),
                         &XProgressBar::setPercent);
    }
    std::unique_ptr<XResult> outcome;
    QString failure;
    QEventLoop loop;
    QObject::connect(&core, &XExactCore::completed, &loop,
                     [&outcome](XResult* r) { outcome.reset(r); });
    QObject::connect(&core, &XExactCore::error, &loop,
                     [&failure](QString const& text) { failure = text; });
    QObject::connect(&core, &QThread::finished, &loop, &QEventLoop::quit);
    core.start();
    loop.exec();
    core.wait();
    progress.reset();
    const double seconds = timer.nsecsElapsed() / 1e9;

    if (!outcome) {
        printError(failure.isEmpty() ? tr("The run ended without a result.") : failure);
        if (failure == XExactCore::tr("Invalid value in csv."))
            printError(XCoreSummary::invalidCells(source.get(), input.get()));
        return 1;
    }
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    if (options.printResult)
        out << outcome->toString();
    else
        out << summary(*outcome, core.totalAlleles(), core.zeroPairs(), seconds);
    out.flush();

    int status = 0;
    QString reason;
    if (!options.output.isEmpty() &&
        !XSpreadsheet::write(*outcome->csv(options.percent), options.output, &reason)) {
        printError(tr("%1: could not be written: %2").arg(options.output, reason));
        status = 1;
    }
    // The workspace owns the tables and the result from here on.
    XWorkspace analysis(input.release(), source.release(), outcome.release());
    analysis.setSlider(options.percent);
    analysis.setExactRun(options.budget, seconds);
    if (!options.workspace.isEmpty() &&
        !XSaveFile::writeText(options.workspace, analysis.toString(), &reason)) {
        printError(tr("%1: could not be written: %2").arg(options.workspace, reason));
        status = 1;
    }
    return status;
}

#include "XWorkspaceCommand.h"

#include "TerminalText.h"
#include "XAlleles.h"
#include "XCoreSummary.h"
#include "XCsv.h"
#include "XResult.h"
#include "XSpreadsheet.h"
#include "XWorkspace.h"
#include "XWorkspaceCheck.h"

#include <QTextStream>

bool XWorkspaceCommand::isWorkspaceFile(QString const& fileName)
{
    // Compared as the table suffixes are, case-sensitively.
    return fileName.endsWith(QLatin1String(".ccw"));
}

int XWorkspaceCommand::run(QString const& fileName, Options const& options)
{
    XWorkspaceCheck::Reading reading = XWorkspaceCheck::read(fileName);
    if (!reading.unreadable.isEmpty()) {
        printError(fileName + QStringLiteral(": ") + reading.unreadable);
        return 2;
    }
    if (!reading.workspace) {
        printError(tr("%1: not a valid workspace file: %2").arg(fileName, reading.invalid));
        return 2;
    }
    XWorkspace& workspace = *reading.workspace;
    XResult& result = *workspace.result();
    const QStringList headers = workspace.csv()->headers();
    const QList<XCsv const*> tables{workspace.src(), workspace.csv()};
    const int held = XAlleles::held(tables, headers);

    QTextStream out(stdout);
    out.setCodec("UTF-8");
    if (options.printResult) {
        out << result.toString();
    } else if (workspace.searchKind() == XSearchKind::Exact) {
        const int zeros = XAlleles::zeroPairs(tables, headers);
        out << XCoreSummary::exactText(result, held - zeros, zeros, workspace.seconds());
    } else {
        const int seed = workspace.seed();
        const bool recorded = workspace.settings().contains(QStringLiteral("Seed"));
        out << XCoreSummary::text(result, held,
                                  recorded ? QString::number(seed) : tr("not recorded"));
    }
    out.flush();

    QString reason;
    if (!options.output.isEmpty() &&
        !XSpreadsheet::write(*result.csv(options.percent), options.output, &reason)) {
        printError(tr("%1: could not be written: %2").arg(options.output, reason));
        return 1;
    }
    return 0;
}

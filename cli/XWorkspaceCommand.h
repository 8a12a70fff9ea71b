#pragma once

#include <QCoreApplication>
#include <QString>

// vireon-cli with a workspace file (.ccw) as INPUT: no search runs. The file
// is read and checked as the window's Import checks it, so a damaged or
// forged file is refused with the line that fails; then its summary, or with
// --result its result lines, is printed, and --output writes its core of
// --percent.
class XWorkspaceCommand
{
    Q_DECLARE_TR_FUNCTIONS(XWorkspaceCommand)

public:
    struct Options
    {
        int percent = 100;
        bool printResult = false;
        QString output;
    };

    static bool isWorkspaceFile(QString const& fileName);
    // Exit status as vireon-cli's: 0, 1 when the core could not be written,
    // 2 for a file that cannot be read or is no valid workspace.
    static int run(QString const& fileName, Options const& options);
};

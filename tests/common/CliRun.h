#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// What one run of vireon-cli gave: exit status (-1: it did not end within
// the limit and was killed, -2: it crashed) and both streams.
struct CliOutcome
{
    int status = -1;
    QString out;
    QString err;
};

// Runs the command-line program built with the tests. A file-size limit in
// bytes, when given, stands for a nearly full disk.
inline CliOutcome runCli(QStringList const& arguments, qint64 fileSizeLimit = -1,
                         int timeoutMs = 120000)
{
    QProcess process;
    if (fileSizeLimit >= 0)
        process.start(QStringLiteral("prlimit"),
                      QStringList{QStringLiteral("--fsize=%1").arg(fileSizeLimit),
                                  QStringLiteral(VIREON_CLI)} +
                          arguments);
    else
        process.start(QStringLiteral(VIREON_CLI), arguments);
    CliOutcome outcome;
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    outcome.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    outcome.out = QString::fromUtf8(process.readAllStandardOutput());
    outcome.err = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

#pragma once

#include <QByteArray>
#include <QString>

// Writes whole files atomically: beside the target first, then renamed over
// it, so a failed write never leaves a half-written file in place of a good
// one, and no temporary file stays behind.
class XSaveFile
{
public:
    // Returns whether the file was written; if not, sets *error to the
    // reason the system gave ("Permission denied", "No space left on
    // device", ...). A target that exists and is not a regular file is
    // refused and left as it is.
    static bool write(QString const& fileName, QByteArray const& bytes, QString* error = nullptr);
    // Why fileName cannot be written, found without writing anything, so
    // that work is not done for an output that would then fail: the folder
    // is missing, is not a folder or cannot be written to, or the target is a
    // folder or not a regular file. Empty when a write may succeed (a full
    // disk shows only when writing).
    static QString targetProblem(QString const& fileName);
    // The text as UTF-8.
    static bool writeText(QString const& fileName, QString const& text, QString* error = nullptr);
};

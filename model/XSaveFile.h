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
    // The text as UTF-8.
    static bool writeText(QString const& fileName, QString const& text, QString* error = nullptr);
};

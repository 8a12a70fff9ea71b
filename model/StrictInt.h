#pragma once

#include <QStringView>

// Converts text to an int only when it is an optional sign followed by
// decimal digits within the int range. Unlike QString::toInt it rejects
// surrounding blanks, so " 12" is not a number. On failure returns 0 and
// sets *ok to false.
int strictToInt(QStringView text, bool* ok = nullptr);

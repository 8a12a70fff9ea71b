#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

// The fuzz input as the text the readers take. A short one-line string that
// names an existing file would be read as that file, so every input gets a
// final line feed: the readers then always see the text itself.
inline QString fuzzText(uint8_t const* data, size_t size)
{
    QString text = QString::fromUtf8(reinterpret_cast<char const*>(data), int(size));
    if (!text.contains(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return text;
}

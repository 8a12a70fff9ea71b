#include "StrictInt.h"

#include <limits>

int strictToInt(QStringView text, bool* ok)
{
    if (ok)
        *ok = false;
    qsizetype i = 0;
    const qsizetype n = text.size();
    bool negative = false;
    if (i < n && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) {
        negative = text[i] == QLatin1Char('-');
        ++i;
    }
    if (i == n)
        return 0;
    // Accumulate as a negative number so that INT_MIN fits.
    const long long limit = negative ? -static_cast<long long>(std::numeric_limits<int>::min())
                                     : std::numeric_limits<int>::max();
    long long value = 0;
    for (; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c < u'0' || c > u'9')
            return 0;
        value = value * 10 + (c - u'0');
        if (value > limit)
            return 0;
    }
    if (ok)
        *ok = true;
    return static_cast<int>(negative ? -value : value);
}

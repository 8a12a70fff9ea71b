#include "XRandom.h"

XRandom::XRandom(unsigned seed)
{
    // Seed 0 would make the whole table zero.
    if (seed == 0)
        seed = 1;
    int32_t word = int32_t(seed);
    m_state[0] = uint32_t(word);
    for (int i = 1; i < Degree; ++i) {
        // 16807 * word mod (2^31 - 1) without overflow (Schrage's method).
        const int32_t hi = word / 127773;
        const int32_t lo = word % 127773;
        word = 16807 * lo - 2836 * hi;
        if (word < 0)
            word += 2147483647;
        m_state[i] = uint32_t(word);
    }
    // The first ten rounds of the table are discarded.
    for (int i = 0; i < 10 * Degree; ++i)
        next();
    m_position = 0;
}

void XRandom::advance(uint64_t count)
{
    for (uint64_t i = 0; i < count; ++i)
        next();
}

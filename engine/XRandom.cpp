#include "XRandom.h"

#include <array>
#include <cstddef>

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

namespace {

constexpr int RingDegree = 31;
constexpr int RingTap = 3;
using Poly = std::array<uint32_t, RingDegree>;

// a * b in the ring of the recurrence: polynomials over the 32-bit words
// modulo x^31 - x^28 - 1, since s[i + 31] = s[i + 28] + s[i].
Poly multiply(Poly const& a, Poly const& b)
{
    uint32_t product[2 * RingDegree - 1] = {};
    for (int i = 0; i < RingDegree; ++i) {
        if (a[std::size_t(i)] == 0)
            continue;
        for (int j = 0; j < RingDegree; ++j)
            product[i + j] += a[std::size_t(i)] * b[std::size_t(j)];
    }
    for (int d = 2 * RingDegree - 2; d >= RingDegree; --d) {
        product[d - RingTap] += product[d];
        product[d - RingDegree] += product[d];
    }
    Poly result;
    for (int i = 0; i < RingDegree; ++i)
        result[std::size_t(i)] = product[i];
    return result;
}

// a * x in the same ring.
Poly timesX(Poly const& a)
{
    Poly result;
    const uint32_t top = a[RingDegree - 1];
    for (int i = RingDegree - 1; i > 0; --i)
        result[std::size_t(i)] = a[std::size_t(i) - 1];
    result[0] = top;
    result[RingDegree - RingTap] += top;
    return result;
}

} // namespace

// Short skips step; long ones jump: the sequence is linear, so the value
// `count` places on is a fixed combination of the 31 held now, whose
// weights are x^count in the ring above, found by repeated squaring.
void XRandom::advance(uint64_t count)
{
    if (count < 4096) {
        for (uint64_t i = 0; i < count; ++i)
            next();
        return;
    }
    Poly power{};
    power[0] = 1;
    Poly base{};
    base[1] = 1;
    for (uint64_t n = count; n > 0; n >>= 1) {
        if (n & 1)
            power = multiply(power, base);
        if (n > 1)
            base = multiply(base, base);
    }
    // The window held now, oldest first: the slot the next value overwrites.
    uint32_t window[Degree];
    for (int i = 0; i < Degree; ++i)
        window[i] = m_state[(m_front + i) % Degree];
    for (int t = 0; t < Degree; ++t) {
        uint32_t value = 0;
        for (int j = 0; j < Degree; ++j)
            value += power[std::size_t(j)] * window[j];
        m_state[t] = value;
        power = timesX(power);
    }
    m_front = 0;
    m_rear = Degree - Separation;
    m_position += count;
}

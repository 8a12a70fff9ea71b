#pragma once

#include <cstdint>

// The engine's random sequence: the C library's rand() after srand(seed)
// (the additive feedback generator of degree 31, separation 3), value for
// value. A copy carries its position, so each search can start at the draw
// it would have reached in a single sequential run.
class XRandom
{
public:
    explicit XRandom(unsigned seed = 1);

    // The next value, 0 .. 2^31 - 1.
    int next()
    {
        const uint32_t value = m_state[m_front] += m_state[m_rear];
        m_front = m_front == Degree - 1 ? 0 : m_front + 1;
        m_rear = m_rear == Degree - 1 ? 0 : m_rear + 1;
        ++m_position;
        return int(value >> 1);
    }
    // Skips `count` values, in time that grows with the logarithm of
    // `count`: the searches of large cores start trillions of values in.
    void advance(uint64_t count);
    // Values drawn since seeding.
    uint64_t position() const { return m_position; }

private:
    static constexpr int Degree = 31;
    static constexpr int Separation = 3;

    uint32_t m_state[Degree];
    int m_front = Separation;
    int m_rear = 0;
    uint64_t m_position = 0;
};

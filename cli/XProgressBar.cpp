#include "XProgressBar.h"

XProgressBar::XProgressBar(FILE* stream, QObject* parent) : QObject(parent), m_stream(stream) {}

XProgressBar::~XProgressBar()
{
    if (m_drawn)
        std::fputc('\n', m_stream);
}

void XProgressBar::setPercent(int percent)
{
    // Out-of-range values would make printf print the whole bar for a
    // negative count, or pad the wrong way past 100.
    percent = qBound(0, percent, 100);
    const int width = 40;
    const int filled = percent * width / 100;
    std::fprintf(m_stream, "\r[%.*s%*s] %3d%%", filled, "########################################",
                 width - filled, "", percent);
    std::fflush(m_stream);
    m_drawn = true;
}

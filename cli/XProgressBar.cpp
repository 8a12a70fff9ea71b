#include "XProgressBar.h"

XProgressBar::XProgressBar(FILE* stream, QObject* parent) : QObject(parent), m_stream(stream) {}

XProgressBar::~XProgressBar()
{
    if (m_drawn)
        std::fputc('\n', m_stream);
}

void XProgressBar::setPercent(int percent)
{
    const int width = 40;
    const int filled = percent * width / 100;
    std::fprintf(m_stream, "\r[%.*s%*s] %3d%%", filled, "########################################",
                 width - filled, "", percent);
    std::fflush(m_stream);
    m_drawn = true;
}

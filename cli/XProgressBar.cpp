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
    m_percent = qBound(0, percent, 100);
    draw();
}

void XProgressBar::setSearching(int size, int accessions)
{
    const QByteArray status =
        (QLatin1Char(' ') +
         tr("Searching cores of %1 of %n accessions", nullptr, accessions).arg(size))
            .toUtf8();
    // A shorter text must blank what is left of a longer one.
    const int previous = m_status.size();
    m_status = status;
    if (status.size() < previous)
        m_status.append(QByteArray(previous - status.size(), ' '));
    draw();
    m_status = status;
}

void XProgressBar::draw()
{
    const int width = 40;
    const int filled = m_percent * width / 100;
    std::fprintf(m_stream, "\r[%.*s%*s] %3d%%%s", filled,
                 "########################################", width - filled, "", m_percent,
                 m_status.constData());
    std::fflush(m_stream);
    m_drawn = true;
}

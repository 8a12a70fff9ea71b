#include "CenterResize.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

void centerResize(QWidget& widget, int const& percent)
{
    if (percent <= 0)
        return;
    QScreen const* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect available = screen->availableGeometry();
    widget.resize(int(available.width() / 100.0 * percent),
                  int(available.height() / 100.0 * percent));
}

// The program's entry: the window opens at the toolkit's size (never below
// 640 x 480), dialogs are titled with the program's display name, and the
// exit status is 0 even when the event loop ends with another code.
#include "RunVireon.h"
#include "XMainWindow.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char* argv[])
{
    bool shown = false;
    QSize size;
    QString displayName, title;
    const int status = runVireon(argc, argv, [&](XMainWindow& window) {
        shown = window.isVisible();
        size = window.size();
        displayName = QGuiApplication::applicationDisplayName();
        title = window.windowTitle();
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
    });
    const bool sized = size.width() >= 640 && size.height() >= 480;
    std::printf("window shown: %s, size %dx%d, exit status %d, display name %s, title %s\n",
                shown ? "yes" : "no", size.width(), size.height(), status, qPrintable(displayName),
                qPrintable(title));
    const bool named = displayName == QStringLiteral("Vireon") && title == displayName;
    const bool ok = shown && sized && status == 0 && named;
    std::printf("%d passed, %d failed\n", ok ? 1 : 0, ok ? 0 : 1);
    return ok ? 0 : 1;
}

#include "CenterResize.h"
#include "VireonResources.h"
#include "XMainWindow.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    auto* app = new QApplication(argc, argv);
    initVireonResources();
    auto* window = new XMainWindow(nullptr);
    centerResize(*window, 0);
    window->show();
    app->exec();
    delete window;
    delete app;
    // The exit status does not depend on how the event loop ended.
    return 0;
}

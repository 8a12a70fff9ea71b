#include "RunVireon.h"

#include "CenterResize.h"
#include "Translations.h"
#include "VireonResources.h"
#include "XMainWindow.h"

#include <QApplication>

#include <csignal>

int runVireon(int& argc, char** argv, std::function<void(XMainWindow&)> const& started)
{
    // A file-size limit then fails the write with its reason, which the
    // window reports, instead of killing the program and the analysis.
    std::signal(SIGXFSZ, SIG_IGN);
    auto* app = new QApplication(argc, argv);
    // Dialogs without a title of their own show this, not the file name.
    QApplication::setApplicationDisplayName(QStringLiteral("Vireon"));
    initVireonResources();
    installTranslators(*app);
    auto* window = new XMainWindow(nullptr);
    centerResize(*window, 0);
    window->show();
    if (started)
        started(*window);
    app->exec();
    delete window;
    delete app;
    // The exit status does not depend on how the event loop ended.
    return 0;
}

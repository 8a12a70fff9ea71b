#include "VireonResources.h"

#include <QtGlobal>

// Q_INIT_RESOURCE must be used outside any namespace.
static void registerImages()
{
    Q_INIT_RESOURCE(vireon);
}

void initVireonResources()
{
    static const bool done = (registerImages(), true);
    Q_UNUSED(done);
}

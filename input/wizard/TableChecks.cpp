#include "TableChecks.h"

QColor TableChecks::problemColor()
{
    return QColor(Qt::red);
}

QColor TableChecks::warningColor()
{
    return QColor(176, 96, 0);
}

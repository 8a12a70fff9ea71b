#include "WorkbookKind.h"

#include <QStringList>

QString workbookSuffix(WorkbookKind kind)
{
    switch (kind) {
    case WorkbookKind::Text:
        return QStringLiteral(".csv");
    case WorkbookKind::Xls:
        return QStringLiteral(".xls");
    case WorkbookKind::Xlsx:
        return QStringLiteral(".xlsx");
    case WorkbookKind::Ods:
        return QStringLiteral(".ods");
    case WorkbookKind::None:
        break;
    }
    return QString();
}

namespace {

const WorkbookKind readable[] = {WorkbookKind::Text, WorkbookKind::Xls, WorkbookKind::Xlsx,
                                 WorkbookKind::Ods};

} // namespace

WorkbookKind workbookKind(QString const& fileName)
{
    for (WorkbookKind kind : readable) {
        if (fileName.endsWith(workbookSuffix(kind)))
            return kind;
    }
    return WorkbookKind::None;
}

QString readablePatterns()
{
    QStringList patterns;
    for (WorkbookKind kind : readable)
        patterns << QLatin1Char('*') + workbookSuffix(kind);
    return patterns.join(QLatin1Char(' '));
}

bool isWorkbook(WorkbookKind kind)
{
    return kind == WorkbookKind::Xls || kind == WorkbookKind::Xlsx || kind == WorkbookKind::Ods;
}

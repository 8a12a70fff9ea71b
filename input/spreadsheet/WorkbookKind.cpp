#include "WorkbookKind.h"

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

WorkbookKind workbookKind(QString const& fileName)
{
    for (WorkbookKind kind :
         {WorkbookKind::Text, WorkbookKind::Xls, WorkbookKind::Xlsx, WorkbookKind::Ods}) {
        if (fileName.endsWith(workbookSuffix(kind)))
            return kind;
    }
    return WorkbookKind::None;
}

bool isWorkbook(WorkbookKind kind)
{
    return kind == WorkbookKind::Xls || kind == WorkbookKind::Xlsx || kind == WorkbookKind::Ods;
}

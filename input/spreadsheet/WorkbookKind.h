#pragma once

#include <QString>

// The kinds of table file, told by the end of the file name (compared
// case-sensitively, so DATA.XLS is none of them).
enum class WorkbookKind { None, Text, Xls, Xlsx, Ods };

WorkbookKind workbookKind(QString const& fileName);
// ".csv", ".xls", ".xlsx" or ".ods"; empty for None.
QString workbookSuffix(WorkbookKind kind);
// Whether the kind is a workbook, read by the workbook reader program.
bool isWorkbook(WorkbookKind kind);
// Every kind as a file dialog's patterns: "*.csv *.xls *.xlsx *.ods".
QString readablePatterns();

#pragma once

#include <QString>
#include <QStringList>

class QWidget;
class XCsv;

// Reads a table file on a thread of its own, so that the window keeps
// painting while a large file or a slow workbook is read: after a second a
// progress dialog offers Cancel. Until the read ends, the user's input
// elsewhere is held back, so nothing changes under it.
class TableReading
{
public:
    enum Outcome { Read, Failed, Cancelled };

    // Read: *table holds the table (the caller owns it) and *notes what the
    // user should know about it. Failed: *error says why. Cancelled: a
    // workbook's reader program is ended at once; a text file's read goes
    // on in the background and its table is dropped.
    static Outcome read(QWidget* parent, QString const& fileName, XCsv** table, QString* error,
                        QStringList* notes);
    // Reads still under way, cancelled ones included.
    static int running();
    // How long a read may take before the progress dialog shows.
    static constexpr int dialogDelayMs = 1000;
};

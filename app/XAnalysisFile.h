#pragma once

#include <QString>

class QWidget;

// Which workspace file the shown analysis was last imported from or
// exported to, and whether it has been since it was made: the window's title
// names that file, and quitting asks before an analysis is lost unexported.
class XAnalysisFile
{
public:
    enum QuitChoice { ExportFirst, Discard, StayOpen };

    // A new analysis from the wizard: nowhere on disk yet.
    void made();
    void imported(QString const& path);
    void exported(QString const& path);

    bool isUnexported() const { return m_unexported; }
    // "microbov.ccw — Vireon", or "Vireon" while no file belongs to the analysis.
    QString windowTitle() const;

    // "Export the analysis before quitting?" with Export..., Discard and Cancel.
    static QuitChoice askBeforeQuit(QWidget* parent);

private:
    QString m_path;
    bool m_unexported = false;
};

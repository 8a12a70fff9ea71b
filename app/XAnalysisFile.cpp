#include "XAnalysisFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace {

// The texts of this file, translated in the context of XAnalysisFile.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XAnalysisFile)
};

} // namespace

void XAnalysisFile::made()
{
    m_path.clear();
    m_unexported = true;
}

void XAnalysisFile::imported(QString const& path)
{
    m_path = path;
    m_unexported = false;
}

void XAnalysisFile::exported(QString const& path)
{
    m_path = path;
    m_unexported = false;
}

QString XAnalysisFile::windowTitle() const
{
    const QString name = QStringLiteral("Vireon");
    if (m_path.isEmpty())
        return name;
    return QFileInfo(m_path).fileName() + QStringLiteral(" \u2014 ") + name;
}

XAnalysisFile::QuitChoice XAnalysisFile::askBeforeQuit(QWidget* parent)
{
    QMessageBox box(QMessageBox::Question, Msg::tr("Quit"),
                    Msg::tr("Export the analysis before quitting?"), QMessageBox::NoButton, parent);
    box.setObjectName(QStringLiteral("quitQuestion"));
    QPushButton* exportButton = box.addButton(Msg::tr("Export..."), QMessageBox::AcceptRole);
    QPushButton* discard = box.addButton(Msg::tr("Discard"), QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(Msg::tr("Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(exportButton);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == exportButton)
        return ExportFirst;
    return box.clickedButton() == discard ? Discard : StayOpen;
}

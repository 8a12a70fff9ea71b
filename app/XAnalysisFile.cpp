#include "XAnalysisFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString tr(char const* text)
{
    return QCoreApplication::translate("XAnalysisFile", text);
}

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
    QMessageBox box(QMessageBox::Question, tr("Quit"), tr("Export the analysis before quitting?"),
                    QMessageBox::NoButton, parent);
    box.setObjectName(QStringLiteral("quitQuestion"));
    QPushButton* exportButton = box.addButton(tr("Export..."), QMessageBox::AcceptRole);
    QPushButton* discard = box.addButton(tr("Discard"), QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(tr("Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(exportButton);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == exportButton)
        return ExportFirst;
    return box.clickedButton() == discard ? Discard : StayOpen;
}

#include "AnalysisInputs.h"

#include <QCoreApplication>
#include <QFile>

#include <sys/stat.h>

namespace {

// stat() follows symbolic links, so a link and its target give one identity.
bool identify(QString const& path, dev_t* device, ino_t* inode)
{
    struct stat info;
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &info) != 0)
        return false;
    *device = info.st_dev;
    *inode = info.st_ino;
    return true;
}

QString roleName(AnalysisInputs::Role role)
{
    switch (role) {
    case AnalysisInputs::InputTable:
        return QCoreApplication::translate("AnalysisInputs", "the input table");
    case AnalysisInputs::StartingCollection:
        return QCoreApplication::translate("AnalysisInputs", "the starting collection");
    case AnalysisInputs::Workspace:
        return QCoreApplication::translate("AnalysisInputs", "the workspace file");
    }
    return QString();
}

} // namespace

void AnalysisInputs::add(Role role, QString const& path)
{
    if (!path.isEmpty())
        m_inputs << Input{role, path};
}

QString AnalysisInputs::replacedBy(QString const& target) const
{
    dev_t device = 0;
    ino_t inode = 0;
    if (!identify(target, &device, &inode))
        return QString();
    for (Input const& input : m_inputs) {
        dev_t inputDevice = 0;
        ino_t inputInode = 0;
        if (!identify(input.path, &inputDevice, &inputInode) || inputDevice != device ||
            inputInode != inode)
            continue;
        // Another name of the same file is named too, so the user sees why.
        if (input.path == target)
            return QCoreApplication::translate("AnalysisInputs",
                                               "%1 is %2 of this analysis, and an output never "
                                               "replaces a file the analysis reads.")
                .arg(target, roleName(input.role));
        return QCoreApplication::translate("AnalysisInputs",
                                           "%1 is the same file as %2, %3 of this analysis, and "
                                           "an output never replaces a file the analysis reads.")
            .arg(target, input.path, roleName(input.role));
    }
    return QString();
}

#pragma once

#include <QList>
#include <QString>

// The files an analysis reads: the input table and the starting collection
// (an exclusion list would join them), or the workspace file it was read
// from. No output of the analysis may replace
// one of them, since a core or a workspace written over the input table
// would lose the table for good. Files are told apart by device and inode,
// so a symbolic link, a hard link or another spelling of the path is the
// same file.
class AnalysisInputs
{
public:
    enum Role { InputTable, StartingCollection, Workspace };

    void add(Role role, QString const& path);
    bool isEmpty() const { return m_inputs.isEmpty(); }

    // When target is the same file as one of the inputs, the message that
    // says so, naming both paths; empty otherwise (a target that does not
    // exist is no input).
    QString replacedBy(QString const& target) const;

private:
    struct Input
    {
        Role role;
        QString path;
    };
    QList<Input> m_inputs;
};

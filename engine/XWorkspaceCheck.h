#pragma once

#include <QString>

#include <memory>

class XWorkspace;

// Whether a workspace read from a file holds what a search could have
// written, so that a damaged or forged file is refused rather than shown as
// an analysis. XWorkspace::problem() checks the form (whole sections, rows
// that exist); this adds what the two searches guarantee:
// - settings of their type (iterations, seed, budget, running time, slider,
//   lower bounds) and a search Vireon knows; other settings are kept unread;
// - every cell of both tables an allele or the missing mark;
// - no count above the search's total (the reproducible search counts the
//   (marker, 0) pairs, the exact one leaves them out), none below the share
//   it stands for unless the reproducible search could not reach it (its
//   core holds every row, or the share needs (marker, 0) pairs), none below
//   the one before it;
// - an empty reproducible core counts what the starting collection holds;
// - cores that never shrink, and for the reproducible search one core for
//   each size (it raises the size one at a time and keeps what it found);
// - the exact search: every row once, each count what its rows hold with
//   the starting collection, 100 lower bounds between 0 and the core's size.
// A reproducible core may list a row more than once (swaps can bring a row
// back), and how often is bounded by nothing a file can be checked against
// short of running the search again, so repeats are not counted.
class XWorkspaceCheck
{
public:
    // Empty when the workspace passes; otherwise what fails, for the user,
    // with the line of the workspace text ("line 105: ...").
    static QString problem(XWorkspace const& workspace);

    // A workspace file the user named, read (TextFile's rules: a regular
    // file of bounded size, any line ends, the encodings it knows) and
    // checked. Either a workspace, or why not: `unreadable` says why the
    // file could not be read, `invalid` what the check found in it.
    struct Reading
    {
        std::unique_ptr<XWorkspace> workspace;
        QString unreadable;
        QString invalid;
    };
    static Reading read(QString const& path);
};

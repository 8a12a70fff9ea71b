// Workspace files: reading, the completeness check and the check against
// what a search could write that the import relies on, and, for a complete
// workspace, writing and reading back without loss.

#include "FuzzText.h"
#include "XCsv.h"
#include "XResult.h"
#include "XWorkspace.h"
#include "XWorkspaceCheck.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    const QString text = fuzzText(data, size);

    XWorkspace workspace(text);
    (void)workspace.hasSource();
    (void)workspace.slider();
    const QString written = workspace.toString();
    if (!workspace.isComplete())
        return 0;
    // A workspace whose form is whole passes the rest or is refused by it;
    // either way the check must come back.
    (void)XWorkspaceCheck::problem(workspace);

    // What the main window does with an imported workspace.
    const int slider = qBound(1, workspace.slider(), 100);
    XCsv const* core = workspace.result()->csv(slider);
    if (!core || core->rows() < 1)
        abort();

    XWorkspace reread(written);
    if (!reread.isComplete() || reread.toString() != written)
        abort();
    return 0;
}

#pragma once

#include <QString>

// Tables, results and workspaces accept either a file name or their text.
// A string shorter than 512 characters, without a line feed, that names an
// existing file is a file name: the file's whole content is returned (empty
// when it cannot be opened). Anything else is returned as it is.
QString readTextSource(QString const& source);

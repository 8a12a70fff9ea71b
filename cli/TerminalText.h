#pragma once

#include <QString>

// What vireon-cli prints about tables and files comes from them: a cell, an
// accession or marker name, a file name may hold control characters, and an
// escape sequence printed as it is could retitle the terminal, hide text or
// worse. Every such text goes through here: line feeds stay, tabs and
// carriage returns become \t and \r, every other control character (C0,
// DEL, C1) \xHH or \u00HH. Everything else, other scripts included, is
// printed as it is.
QString terminalText(QString const& text);

// Writes the text to standard error as terminalText() shows it, with a line
// feed after it unless it ends in one; nothing for an empty text.
void printError(QString const& text);

#pragma once

class QXmlStreamReader;

// Moves to the root element of one XML part of a workbook. False on an
// error and on a document type declaration: that is the only way to
// entities that expand to gigabytes or name other files, and no workbook
// part has one. (The reader resolves no external entity in any case.)
// Past the root element a declaration cannot occur.
bool readXmlRoot(QXmlStreamReader& xml);

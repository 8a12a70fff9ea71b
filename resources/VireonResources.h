#pragma once

// Registers the compiled-in images (":/img/..."). A resource file inside a
// static library is only linked when something refers to it, so every user
// of the images calls this first; calling it again does nothing.
void initVireonResources();

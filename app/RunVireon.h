#pragma once

#include <functional>

class XMainWindow;

// The whole program: the application, the one main window, the event loop.
// started, when given, runs once the window is shown (tests use it to end
// the loop). Returns 0 whatever the event loop returned.
int runVireon(int& argc, char** argv, std::function<void(XMainWindow&)> const& started = {});

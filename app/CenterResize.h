#pragma once

class QWidget;

// Resizes a widget to percent of the primary screen's available width and
// height; 0 or less leaves it alone. It never moves the widget.
void centerResize(QWidget& widget, int const& percent);

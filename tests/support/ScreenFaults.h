#pragma once

#include <QStringList>

class QWidget;

/// What a person would see wrong on a window, each as a line that names the widget: a text that is cut off
/// and has no tool tip, a widget outside its parent, two siblings that overlap. The window must be visible.
QStringList LayoutFaults(QWidget &window);

/// The texts whose contrast to what is behind them is below 4.5:1, each as a line with the widget and the
/// contrast. The colours are those of the painted window. Disabled widgets are left out.
QStringList ContrastFaults(QWidget &window);

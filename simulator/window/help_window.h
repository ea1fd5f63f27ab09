#pragma once

class QWidget;

namespace simulator {

/// The guide's page about the simulated panel, in a window of its own.
void ShowHelp(QWidget* parent);
void ShowAbout(QWidget* parent);

}  // namespace simulator

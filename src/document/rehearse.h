#pragma once

#include <QString>

/// Shows the project in the simulated panel's window, which runs it: beside this program and after
/// its end. A window that is on show already takes the project over and keeps its clock. Gives a
/// sentence of what came of it; throws RunTimeFailure when the project cannot be handed over.
QString Rehearse();

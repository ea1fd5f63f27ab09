#pragma once

#include <vector>

#include "shell/shell.h"

/// How far the project in memory is, in the order in which one is made.
std::vector<WorkStep> WorkStepsOfProgram();

/// Lists what the check finds on Document, with the focus on the list.
void ListFindings();

#pragma once

#include "panel/project.h"

/// Puts a project into the state of a new panel. Spare elements (element 48 of the item arrays but
/// the three communications settings, row 48 of the tables, element 8 of device inputs) keep what
/// they held.
void LoadDefaults(Project& project);

/// A new panel's project, spare elements empty.
Project NewProject();

/// The program's own: LoadDefaults of the live project, all sections of the document on and its
/// usual file. Touches neither CurrentFileName nor DataChanged.
void LoadDefaults();

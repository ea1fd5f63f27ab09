#pragma once

#include "panel/project_document.h"

/// Puts the document into the state of a new panel. Spare elements (element 48 of the item arrays
/// but the three communications settings, row 48 of the tables, element 8 of device inputs) keep
/// what they held. Touches neither CurrentFileName nor DataChanged.
void LoadDefaults();

/// A new panel's project apart from the live one, with spare elements 0.
ProjectDocument NewPanel();

#pragma once

#include <QString>
#include <vector>

#include "panel/items.h"
#include "project/panel_at.h"

/// What an item of a panel is doing, in the words of the screens.
struct StateRow {
  Item Where;
  QString Code;  ///< "RELAY 05", "FL 1A INPUT 2", "FL 1A LEVEL".
  QString State;

  /// Whether it tells of a bus device as a whole.
  bool IsDevice() const { return Where.Kind == ItemKind::Device && Code == ItemCode(Where); }
};

/// The row of a bus device that no longer answers.
StateRow NoResponse(StateRow row);

/// What of a project states are told by: names, and the types of bus devices.
struct StateNames {
  Project Names;
  bool AllDevices = false;  ///< Devices that do not answer are told too, where they have a type.
};

/// By a project, as a place tells it.
StateNames NamesOfProject(const QString& place);

/// By the panel's own memory, of which only the names are read.
StateNames NamesOfPanel(const PanelAt& panel);

/// A row for each installed relay and input, each group, and each bus device that answers or has
/// to. Throws RunTimeFailure when the panel does not answer.
std::vector<StateRow> ReadStates(const PanelAt& panel, const StateNames& names);

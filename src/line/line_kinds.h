#pragma once

#include <array>

#include "line/transport.h"

/// A kind of line that leads to a panel.
struct LineKind {
  enum Field { Port = 1, PhoneNumber = 2, Host = 4 };

  const char* Caption;
  int Fields;            ///< What of LineSettings it asks for.
  Transport& (*Line)();  ///< What commands travel by.
  /// Brings the line up. Throws TransportFailure.
  void (*Open)(const LineSettings& settings);
  /// What to say where a line that is up leads to no panel.
  QString (*NoPanel)(const LineSettings& settings);
  int TimeOutFactor;  ///< How much longer a reply may take.
};

/// A row for each connection type, in the order of their numbers.
extern const std::array<LineKind, 3> LineKinds;

/// The row of a connection type. Of a damaged project's codes those above are TCP, those below a
/// modem.
const LineKind& LineKindOf(Int16 connectionType);

// What the rows are made of.
void OpenDirect(const LineSettings& settings);
QString NoPanelAtPort(const LineSettings& settings);
void OpenModem(const LineSettings& settings);
QString NoPanelByModem(const LineSettings& settings);
void OpenTcp(const LineSettings& settings);
QString NoPanelAtHost(const LineSettings& settings);

#include "line/line_kinds.h"

#include <algorithm>

#include "panel/panel_record.h"

const std::array<LineKind, 3> LineKinds = {
    {{"USB", LineKind::Port, comQZ, OpenDirect, NoPanelAtPort, 1},
     {"Modem", LineKind::Port | LineKind::PhoneNumber, comQZ, OpenModem, NoPanelByModem, 3},
     {"TCP-IP", LineKind::Host, WinSockQZ, OpenTcp, NoPanelAtHost, 1}}};

const LineKind& LineKindOf(Int16 connectionType) {
  const int last = static_cast<int>(LineKinds.size()) - 1;
  const int row = connectionType < 0 ? ConnectionModem : std::min<int>(connectionType, last);
  return LineKinds[static_cast<std::size_t>(row)];
}

void OpenTcp(const LineSettings& settings) {
  WinSockQZ().Open(settings);
}

QString NoPanelAtHost(const LineSettings& settings) {
  return QStringLiteral("%1 accepts the connection, but does not answer like a panel.")
      .arg(settings.Host);
}

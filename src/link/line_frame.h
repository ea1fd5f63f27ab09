#pragma once

#include <QLabel>

#include "line/com_port.h"
#include "line/line_hooks.h"
#include "panel/fixed_array.h"
#include "shell/controls/controls.h"

/// Where the panel is: the kind of line, its port, number or address, what connects to it, and what
/// became of that. Shows the project's settings; their handlers are the connection screen's.
class LineFrame : public QWidget {
 public:
  LineFrame();

  /// The box of the connection type, and what its kind of line asks for.
  void ShowConnectionType();
  /// A damaged project's port is none of the sixteen.
  void SelectComPort();
  /// Filling the boxes runs their change handlers.
  void ShowAddresses();
  /// The settings as they are after LoadDefaults; the ports, if they were hidden, only on request.
  void ShowDefaults(bool showPorts);
  /// Whether the settings can be changed; of the ports those that `present` tells.
  void ShowEnabled(bool enabled, const FixedArray<Int16, ComPortCount + 1>& present);
  /// The banner of the modem's stages; "Modem Connected" waits for the user.
  void ShowStage(LineStage stage);

  /// What led to a panel is offered from now on.
  void RememberWhere();

  ControlArray<CheckBox> chkConnectionType;
  ControlArray<OptionButton> optComPort;
  TextBox* txtPhoneNumber = nullptr;
  TextBox* txtTCPIP = nullptr;
  Button* cmdConnect = nullptr;
  Button* cmdSaveLog = nullptr;
  Label* lblModem = nullptr;
  QLabel* lblTrouble = nullptr;
  QLabel* lblLeft = nullptr;       ///< In what state a panel was left, until the next session ends.
  QLabel* lblForbidden = nullptr;  ///< Below the ports: why one that is there is off.

 private:
  void ShowModemBanner(const QString& text, QRgb color);
  void ShowRecent();

  QWidget* comPorts = nullptr;
  Label* lblPhoneNumber = nullptr;
  Label* lblTCPIP = nullptr;
  class RecentList* lastNumbers = nullptr;
  class RecentList* lastAddresses = nullptr;
};

/// A quiet text that may take several lines.
QLabel* WrappedLine(const char* name);

#pragma once

#include <QGroupBox>
#include <functional>
#include <optional>

#include "line/panel_replies.h"
#include "link/password_frame.h"
#include "link/transfer_progress.h"
#include "panel/stopwatch.h"
#include "shell/controls/accessible_controls.h"

/// How many errors the check finds in the project, told before a download and forbidding nothing.
/// Empty where no check is known.
extern std::function<int()> ErrorsOfProject;

/// What the connected panel tells of itself, and all that can be done with it.
class OnLineFrame : public QGroupBox {
 public:
  OnLineFrame();

  void ShowStatus(const PanelStatus& status);
  /// Tells what came of setting the clock; without a reading of its own, as over TCP, at once.
  void TellClockSet(bool answered, bool isReadByItself);
  /// What was told of the last time that it was set is not of this one.
  void BeginSettingClock();
  /// The next reading tells the seconds that the clocks are apart, however few are new.
  void TellClockAnew() { apart_.reset(); }
  /// Another panel's clock may be another.
  void ForgetClockSet() { clockSet_ = false; }
  void ShowErrorsOfProject();
  /// The functions, off while the password or a transfer is under way.
  void EnableFunctions(bool enabled);

  DescribedWidget* display = nullptr;
  ControlArray<Label> lblT2FirmwareRevision;
  Button* cmdRefresh = nullptr;
  Label* lblReadAt = nullptr;
  Button* cmdSetQZClock = nullptr;
  Button* cmdVirtualKeypad = nullptr;
  Button* cmdNetworkDiagnostics = nullptr;
  Button* cmdDownLoadToT2 = nullptr;
  Button* cmdSendChanges = nullptr;
  Button* cmdUpLoadFromT2 = nullptr;
  PassWordFrame* fraPassWord = nullptr;
  std::unique_ptr<TransferProgress> Progress;

 private:
  void AddFacts(QBoxLayout* lines);
  void AddFunctions(QBoxLayout* lines);

  Label* lblPanelTime = nullptr;
  Label* lblPanelDate = nullptr;
  QString weekday_;           ///< In front of the panel's date; a weekday that is none leaves it.
  Label* lblClock = nullptr;  ///< How far the panel's clock is from this computer's.
  bool clockSet_ = false;     ///< Still told by the readings.
  std::optional<Stopwatch> setRead_;  ///< Since the first reading behind that.
  std::optional<qint64> apart_;       ///< Seconds, as they are told.
  Label* lblIOInstalled = nullptr;
  Label* lblAddOnCardTypeRev = nullptr;
  Label* lblErrors = nullptr;
};

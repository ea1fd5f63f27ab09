#pragma once

#include "simulator/watch/log_lines.h"
#include "simulator/window/panel_view.h"

class QPlainTextEdit;

namespace simulator {

/// As in "16:45:00  TIMER 03 DUSK (at sunset) turned PARKING on".
QString LineText(const LogLines::Line& line, const char* timeForm);

/// A log of what happened and why. It follows its end unless somebody has scrolled away from it.
class LogView : public PanelView {
 public:
  explicit LogView(Panel& panel);
  void ShowSettings(const Configuration&) override { MarkSettings(); }
  void ShowStates() override;

  void Take(const Row& row);

 private:
  void Append(const LogLines::Line& line);
  /// A line where new settings begin to hold.
  void MarkSettings();

  QPlainTextEdit* Log;
  Engine& Runner;  // without bringing it up to the present
  std::shared_ptr<const Configuration> Settings;
  LogLines Lines{LogLines::When::Past};
  std::vector<LogLines::Line> Ready;
  std::int64_t LoggedDay = -1;
  bool Follows = true;
};

}  // namespace simulator

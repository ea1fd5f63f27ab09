#pragma once

#include "line/scripted_transport.h"
#include "panel/live_project.h"
#include "screen_test.h"
#include "simulator/line/commands.h"
#include "simulator/line/frame.h"

/// The main window connected to a simulated panel without a network: a frame is answered as soon as
/// the program waits, and silence costs no time.
class LivePanelTest : public ScreenTest {
  ScriptedTransports lines_;

 protected:
  LivePanelTest() {
    lines_.Socket.Answer = [this](const std::string& frame) {
      commands.push_back(frame.substr(3, frame.size() - 6));
      return answer(frame);
    };
    window->ShowForm(Screen::Connect);  // It ends the session when the link is lost.
    Connected = -1;
    ConnectionType() = 2;
    PanelRecord.IOCount(0) = 4;
  }

  ChildForm* Open(Screen screen) {
    window->UnloadAllForms();
    ChildForm* form = window->ShowForm(screen);
    // It ticks when the test says so.
    if (auto* timer = form->findChild<Timer*>(QStringLiteral("Timer1"))) {
      timer->setInterval(1'000'000);
    }
    QApplication::processEvents();
    commands.clear();
    return form;
  }

  void Press(const QString& button) { Click(Find<Button>(button)); }
  bool MenusOn() { return Find<QAction>("mnuEdit").isEnabled(); }

  static void Tick(ChildForm* form) {
    RunHandler(form->findChild<Timer*>(QStringLiteral("Timer1"))->Tick);
  }

  /// From now on every reply to a frame of the right command is this data, such as it is.
  void AnswerWith(const std::string& data) {
    answer = [data](const std::string&) { return simulator::FrameReply(data); };
  }

  simulator::Panel panel;
  std::function<std::optional<std::string>(const std::string&)> answer =
      [this](const std::string& frame) { return simulator::Answer(panel, frame); };
  std::vector<std::string> commands;
  std::function<void()>& whileWaiting = lines_.Socket.WhileWaiting;
};

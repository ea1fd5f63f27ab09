#pragma once

#include "link/scripted_transport.h"
#include "screen_test.h"
#include "simulator/frame.h"
#include "simulator/panel.h"

/// The main window connected to a simulated panel without a network: a frame is answered as soon as
/// the program waits, and silence costs no time.
class LivePanelTest : public ScreenTest {
 protected:
  LivePanelTest() {
    ReplaceTransports(nullptr, std::make_unique<PanelSocket>(*this));
    window->ShowForm("frmT3Connect");  // It ends the session when the link is lost.
    Connected = -1;
    ConnectionType() = 2;
    PanelRecord.IOCount(0) = 4;
  }
  ~LivePanelTest() override {
    Connected = 0;
    ReplaceTransports(nullptr, nullptr);
  }

  ChildForm* Open(const char* screen) {
    window->UnloadAllForms();
    ChildForm* form = window->ShowForm(screen);
    QApplication::processEvents();
    commands.clear();
    return form;
  }

  void Press(const QString& button) { Click(Find<Button>(button)); }
  QString Text(const char* label) { return Find<Label>(QString::fromLatin1(label)).Caption(); }
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
      [this](const std::string& frame) { return panel.Answer(frame); };
  std::vector<std::string> commands;
  std::function<void()> whileWaiting;  ///< What happens during the next wait.

 private:
  class PanelSocket : public SocketControl {
   public:
    explicit PanelSocket(LivePanelTest& test) : test_(test) {}
    void SetLocalPort(quint16) override {}
    void SetRemoteHost(const QString&) override {}
    void SetRemotePort(quint16) override {}
    void Connect() override {}
    int State() const override { return Up; }
    void Close() override {}
    void SendData(const std::string& frame) override {
      test_.commands.push_back(frame.substr(3, frame.size() - 6));
      reply_ = test_.answer(frame).value_or("");
    }
    std::string GetData() override { return std::exchange(buffer_, {}); }
    int BytesReceived() override { return static_cast<int>(buffer_.size()); }
    void Wait(int, qint64 ms) override {
      if (test_.whileWaiting) std::exchange(test_.whileWaiting, nullptr)();
      if (reply_.empty()) test_.clock_.NowMs += ms;
      buffer_ += std::exchange(reply_, {});
    }

   private:
    LivePanelTest& test_;
    std::string reply_;
    std::string buffer_;
  };

  HandClock clock_;
};

#pragma once

#include <unistd.h>

#include "line/panel_transact.h"
#include "line/scripted_transport.h"
#include "panel/live_project.h"
#include "panel/panel_image.h"
#include "screen_test.h"
#include "simulator/program/panel_thread.h"

/// A clock that runs faster than the real one, with the real transports waiting accordingly less.
class FastClock : ClockSeams {
 public:
  explicit FastClock(int factor) {
    MonotonicMsSeam = [this, factor] { return RealClock() * factor; };
    PauseSeam = [this, factor](qint64 ms) { RealPause(ms / factor); };
    ReplaceTransports(std::make_unique<Faster>(factor, NewSerialTransport()),
                      std::make_unique<Faster>(factor, NewTcpTransport()));
  }
  ~FastClock() { ReplaceTransports(nullptr, nullptr); }

 private:
  struct Faster : Transport {
    Faster(int factor, std::unique_ptr<Transport> real) : Factor(factor), Real(std::move(real)) {}
    void Open(const LineSettings& settings) override { Real->Open(settings); }
    bool IsOpen() const override { return Real->IsOpen(); }
    void Close() override { Real->Close(); }
    void SetRTSEnable(bool on) override { Real->SetRTSEnable(on); }
    void SetDTREnable(bool on) override { Real->SetDTREnable(on); }
    void Send(const std::string& text) override { Real->Send(text); }
    std::string Take() override { return Real->Take(); }
    int Waiting() override { return Real->Waiting(); }
    void Wait(int count, qint64 ms) override {
      Real->LongWait = LongWait;
      Real->Wait(count, ms / Factor + 1);
    }
    int Factor;
    std::unique_ptr<Transport> Real;
  };
};

/// A clock that stands while anything of a conversation with the panel is on its way, and goes to
/// the end of a wait for what will never come.
class PanelClock : HandClock {
 public:
  explicit PanelClock(std::optional<simulator::PanelThread>& panel) {
    ReplaceTransports(nullptr, std::make_unique<Socket>(static_cast<HandClock&>(*this), panel));
  }
  ~PanelClock() { ReplaceTransports(nullptr, nullptr); }

 private:
  struct Socket : Transport {
    Socket(HandClock& clock, std::optional<simulator::PanelThread>& panel)
        : Clock(clock), Panel(panel), Real(NewTcpTransport()) {}
    void Open(const LineSettings& settings) override {
      Panel->With([](simulator::Simulator& s) { s.Log().Forget(); });
      Sent = Taken = 0;
      Real->Open(settings);
    }
    bool IsOpen() const override { return Real->IsOpen(); }
    void Close() override { Real->Close(); }
    void Send(const std::string& text) override {
      ++Sent;
      Real->Send(text);
    }
    std::string Take() override {
      const std::string data = Real->Take();
      Taken += data.size();
      return data;
    }
    int Waiting() override { return Real->Waiting(); }
    void Wait(int count, qint64 ms) override {
      Real->LongWait = LongWait;
      const auto waiting = [&] { return Waiting() < count && IsOpen(); };
      constexpr qint64 lookMs = 20;
      do {
        Real->Wait(count, lookMs);
      } while (waiting() && SomethingComes(ms));
      if (waiting()) Clock.NowMs += ms;
    }

    /// Whether the panel has still to answer, or its answer to arrive within the wait.
    bool SomethingComes(qint64 ms) {
      using Way = simulator::FrameLog::Direction;
      std::size_t asked = 0;
      std::size_t told = 0;
      Panel->With([&](simulator::Simulator& s) {
        std::size_t last = 0;
        for (const auto& entry : s.Log().Entries()) {
          if (entry.Way == Way::FromHost) ++asked;
          if (entry.Way == Way::ToHost) told += last = entry.Text.size();
          const QString note = QString::fromStdString(entry.Text);
          const bool held = entry.Way == Way::Note && note.startsWith(u"held back");
          if (held && note.section(u' ', 2, 2).toLongLong() >= ms) told -= last;
        }
      });
      return asked < Sent || Taken + static_cast<std::size_t>(Waiting()) < told;
    }

    HandClock& Clock;
    std::optional<simulator::PanelThread>& Panel;
    std::unique_ptr<Transport> Real;
    std::size_t Sent = 0;
    std::size_t Taken = 0;
  };
};

/// The main window with the connection screen, and simulated panels for it to reach.
class PanelHostTest : public ScreenTest {
 protected:
  ~PanelHostTest() override {
    if (Link.DisconnectQZ) Link.DisconnectQZ();
  }

  /// A loopback address of this test's own: the port is the panel's and cannot be chosen.
  static QString OwnAddress() {
    static int count = 0;
    const int own = static_cast<int>(getpid()) * 16 + ++count;
    return QStringLiteral("127.%1.%2.%3")
        .arg(own / 62500 % 200 + 1)
        .arg(own / 250 % 250)
        .arg(own % 250 + 1);
  }

  static simulator::Options TcpPanel(const QString& address) {
    simulator::Options options;
    options.Host = address;
    options.TcpPort = 10001;
    return options;
  }

  /// A panel on a pseudo-terminal that is COM7.
  simulator::Options PtyPanel(std::optional<simulator::Modem::Options> modem = {}) const {
    simulator::PtyServer::Options pty;
    pty.Link = DataPath(QStringLiteral("Ports/COM7"));
    pty.WithModem = modem;
    return simulator::PanelThread::PtyOptions(pty);
  }

  void OpenConnect(Int16 type) {
    ConnectionType() = type;
    PanelRecord.ComPort = 7;
    Menu("mnuConnect");
  }

  /// Connects over TCP; the document then has the panel's hardware.
  void ConnectTo(const QString& address) {
    TcpAddress() = address.toStdString();
    OpenConnect(2);
    Press("cmdConnect");
    ASSERT_EQ(Connected, -1) << Find<QLabel>("lblTrouble").text().toStdString();
    messages.clear();
  }

  void TypePassWord(const char* name, const char* digits) {
    for (int i = 0; i < 6; ++i) QTest::keyClick(&Find<TextBox>(name, i), digits[i]);
  }

  void Download(const char* password = "000000") {
    Press("cmdDownLoadToT2");
    TypePassWord("txtPassWord", password);
    Press("cmdPassWordContinue");
  }

  QString LastMessage() const { return messages.empty() ? QString() : messages.back().Text; }

  /// That nothing is left locked by a transfer: menus, buttons, progress.
  void ExpectUsable() {
    EXPECT_TRUE(Find<QAction>("mnuEdit").isEnabled());
    for (const char* button :
         {"cmdConnect", "cmdSetQZClock", "cmdDownLoadToT2", "cmdUpLoadFromT2"}) {
      EXPECT_TRUE(Find<Button>(button).isEnabled() && !Find<Button>(button).isHidden()) << button;
    }
    for (const char* hidden : {"cmdCancelUpDownLoad", "fraPassWord", "lblActivityProgress"}) {
      EXPECT_TRUE(Find<QWidget>(hidden).isHidden()) << hidden;
    }
    EXPECT_EQ(Find<Button>("cmdConnect").Caption(),
              Connected != 0 ? "Disconnect From Tamberloom 3" : "Connect To Tamberloom 3");
    EXPECT_EQ(Find<QGroupBox>("fraOnLineFunctions").isHidden(), Connected == 0);
  }
};

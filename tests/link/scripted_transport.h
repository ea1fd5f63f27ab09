#pragma once

#include <QCoreApplication>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "link/transport.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"

/// Puts the real clock back when it goes.
struct ClockSeams {
  ~ClockSeams() {
    MonotonicMsSeam = RealClock;
    PauseSeam = RealPause;
  }
  std::function<qint64()> RealClock = MonotonicMsSeam;
  std::function<void(qint64)> RealPause = PauseSeam;
};

/// A clock that only moves when it is told to.
struct HandClock : ClockSeams {
  HandClock() {
    MonotonicMsSeam = [this] { return NowMs; };
    PauseSeam = [this](qint64 ms) { NowMs += ms; };
  }
  qint64 NowMs = 1000;
};

/// The far end of a conversation: what it answers to each text sent, in order, and how late. All
/// that happens on the line stands in Steps.
struct ScriptedLine {
  explicit ScriptedLine(HandClock& clock) : Clock(clock) {}

  struct Reply {
    std::string Text;
    qint64 AfterMs = 10;
    bool Breaks = false;  ///< The line is gone after this one.
  };
  std::deque<Reply> Replies;  ///< Nothing more: silence.
  /// Where there is one, it answers in their place; none is silence.
  std::function<std::optional<std::string>(const std::string&)> Answer;
  std::function<void()> WhileWaiting;  ///< What the user does meanwhile, once.

  HandClock& Clock;
  std::vector<std::string> Steps;
  std::string Buffer;
  bool Up = true;
  std::string Refusal;  ///< The line cannot be opened.
  std::vector<std::pair<qint64, Reply>> OnTheWay;

  void Send(const std::string& text) {
    Steps.push_back("send " + text);
    if (Answer) {
      if (const auto reply = Answer(text)) Replies.push_back({*reply});
    }
    if (Replies.empty()) return;
    OnTheWay.emplace_back(Clock.NowMs + Replies.front().AfterMs, Replies.front());
    Replies.pop_front();
  }
  std::string Take() {
    Steps.emplace_back("read");
    Arrive();
    return std::exchange(Buffer, {});
  }
  int Count() {
    Arrive();
    return static_cast<int>(Buffer.size());
  }
  void Wait(int count, qint64 ms) {
    Steps.push_back("wait " + std::to_string(count) + " " + std::to_string(ms));
    if (WhileWaiting) std::exchange(WhileWaiting, nullptr)();
    const qint64 end = Clock.NowMs + ms;
    while (Count() < count && Up && Clock.NowMs < end) ++Clock.NowMs;
  }

 private:
  void Arrive() {
    while (!OnTheWay.empty() && OnTheWay.front().first <= Clock.NowMs) {
      Buffer += OnTheWay.front().second.Text;
      if (OnTheWay.front().second.Breaks) Up = false;
      OnTheWay.erase(OnTheWay.begin());
    }
  }
};

class ScriptedSerial : public SerialControl {
 public:
  explicit ScriptedSerial(ScriptedLine& line) : line_(line) {}
  void SetCommPort(int port) override { Note("port " + std::to_string(port)); }
  void SetSettings(const std::string& settings) override { Note("settings " + settings); }
  void SetPortOpen(bool open) override {
    Note(open ? "open" : "close");
    if (open && !line_.Refusal.empty()) {
      throw TransportFailure(QString::fromStdString(line_.Refusal));
    }
    open_ = open;
  }
  bool PortOpen() const override { return open_ && line_.Up; }
  void SetRTSEnable(bool on) override { Note(on ? "RTS on" : "RTS off"); }
  void SetDTREnable(bool on) override { Note(on ? "DTR on" : "DTR off"); }
  void Output(const std::string& text) override { line_.Send(text); }
  std::string Input() override { return line_.Take(); }
  int InBufferCount() override { return line_.Count(); }
  void Wait(int count, qint64 ms) override { line_.Wait(count, ms); }

 private:
  void Note(const std::string& step) { line_.Steps.push_back(step); }
  ScriptedLine& line_;
  bool open_ = true;
};

class ScriptedSocket : public SocketControl {
 public:
  explicit ScriptedSocket(ScriptedLine& line) : line_(line) {}
  void SetLocalPort(quint16 port) override { Note("local " + std::to_string(port)); }
  void SetRemoteHost(const QString& host) override { Note("host " + host.toStdString()); }
  void SetRemotePort(quint16 port) override { Note("port " + std::to_string(port)); }
  void Connect() override {
    Note("connect");
    state_ = line_.Refusal.empty() ? Up : Connecting;
  }
  int State() const override { return line_.Up ? state_ : Closed; }
  void Close() override {
    Note("close");
    state_ = Closed;
  }
  void SendData(const std::string& text) override { line_.Send(text); }
  std::string GetData() override { return line_.Take(); }
  int BytesReceived() override { return line_.Count(); }
  void Wait(int count, qint64 ms) override { line_.Wait(count, ms); }

 private:
  void Note(const std::string& step) { line_.Steps.push_back(step); }
  ScriptedLine& line_;
  int state_ = Up;
};

/// Puts scripted transports in place of the real ones while it lives.
class ScriptedTransports {
 public:
  ScriptedTransports() {
    ReplaceTransports(std::make_unique<ScriptedSerial>(Serial),
                      std::make_unique<ScriptedSocket>(Socket));
  }
  ~ScriptedTransports() {
    ReplaceTransports(nullptr, nullptr);
    Connected = 0;
  }

  HandClock Clock;
  ScriptedLine Serial{Clock};
  ScriptedLine Socket{Clock};
};

#pragma once

#include <QCoreApplication>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "line/transport.h"
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

class ScriptedTransport : public Transport {
 public:
  explicit ScriptedTransport(ScriptedLine& line) : line_(line) {}
  void Open(const LineSettings& settings) override {
    if (!settings.Port.isEmpty()) Note("port " + settings.Port.toStdString());
    if (settings.Baud != 0) Note("settings " + std::to_string(settings.Baud) + ",n,8,1");
    Note("open");
    if (!line_.Refusal.empty()) throw TransportFailure(QString::fromStdString(line_.Refusal));
    open_ = true;
  }
  bool IsOpen() const override { return open_ && line_.Up; }
  void Close() override {
    Note("close");
    open_ = false;
  }
  void SetRTSEnable(bool on) override { Note(on ? "RTS on" : "RTS off"); }
  void SetDTREnable(bool on) override { Note(on ? "DTR on" : "DTR off"); }
  void Send(const std::string& text) override { line_.Send(text); }
  std::string Take() override { return line_.Take(); }
  int Waiting() override { return line_.Count(); }
  void Wait(int count, qint64 ms) override { line_.Wait(count, ms); }

 private:
  void Note(const std::string& step) { line_.Steps.push_back(step); }
  ScriptedLine& line_;
  bool open_ = true;
};

/// Puts scripted transports in place of the real ones while it lives.
class ScriptedTransports {
 public:
  ScriptedTransports() {
    ReplaceTransports(std::make_unique<ScriptedTransport>(Serial),
                      std::make_unique<ScriptedTransport>(Socket));
  }
  ~ScriptedTransports() {
    ReplaceTransports(nullptr, nullptr);
    Connected = 0;
  }

  HandClock Clock;
  ScriptedLine Serial{Clock};
  ScriptedLine Socket{Clock};
};

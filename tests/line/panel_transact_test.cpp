#include "line/panel_transact.h"

#include <tuple>

#include "line/frame_log.h"
#include "line/scripted_transport.h"
#include "link/panel_link.h"
#include "panel/live_project.h"
#include "screen_test.h"

namespace {

class TransactTest : public ScreenTest {
 protected:
  void Connect(Int16 type) {
    ConnectionType() = type;
    Connected = -1;
  }

  ScriptedTransports lines;
};

using Steps = std::vector<std::string>;

Steps Reads(int count, const Steps& then) {
  Steps steps(static_cast<std::size_t>(count), "read");
  steps.insert(steps.end(), then.begin(), then.end());
  return steps;
}

TEST_F(TransactTest, ARefusedCommandLeavesTheLineAndTheLastReplyAlone) {
  ReplyText = "[old]";
  EXPECT_EQ(PanelTransact("05", 44, 3), 0);
  EXPECT_FALSE(ModemTransact("ATZ\r", 20, 5));
  EXPECT_TRUE(lines.Serial.Steps.empty());
  EXPECT_EQ(ReplyText, "[old]");
  EXPECT_THROW(std::ignore = PanelTransact("05", 44, 2147484), RunTimeFailure);
}

TEST_F(TransactTest, DrainsSendsAndWaitsInTheToldOrderOnBothLines) {
  for (const Int16 type : {Int16{0}, Int16{2}}) {
    Connect(type);
    ScriptedLine& line = type == 0 ? lines.Serial : lines.Socket;
    line.Buffer = "stale";
    line.Replies = {{"[00]"}};
    EXPECT_EQ(PanelTransact("10FF0", 4, 4), -1);
    EXPECT_EQ(ReplyText, "[00]");
    EXPECT_EQ(ReplyLength, 4);
    EXPECT_EQ(LinkStatus(), "Connected");
    EXPECT_EQ(line.Steps, Reads(8, {"send [0010FF07A]", "wait 4 4000", "read"}));
  }
}

TEST_F(TransactTest, ThreeAttemptsThenFailureAndTheStatusBarStays) {
  Connect(1);
  const qint64 start = lines.Clock.NowMs;
  EXPECT_EQ(PanelTransact("10FF0", 4, 4), 0);
  EXPECT_EQ(lines.Clock.NowMs - start, 36000) << "each attempt takes three times as long by modem";
  EXPECT_EQ(LinkStatus(), "Error - Retry: 2");
  Steps expected = Reads(8, {"send [0010FF07A]", "wait 4 12000"});
  for (int retry = 0; retry < 2; ++retry) {
    const Steps again = Reads(4, {"send [0010FF07A]", "wait 4 12000"});
    expected.insert(expected.end(), again.begin(), again.end());
  }
  EXPECT_EQ(lines.Serial.Steps, expected);
  EXPECT_TRUE(messages.empty());
}

TEST_F(TransactTest, RepliesAreJudgedByTheirOwnEnd) {
  // The sum of "0" is 30.
  const std::tuple<const char*, qint64, Int16> cases[] = {
      {"[030]", 10, -1}, {"[030?", 10, -1},   {"x030]", 10, -1},
      {"[031]", 10, 0},  {"[0zz]", 10, 0},    {"~[030]", 10, 0},
      {"[03", 10, 0},    {"[030]", 3999, -1}, {"[030]", 4000, 0}};
  Connect(2);
  for (const auto& [reply, afterMs, result] : cases) {
    lines.Socket.OnTheWay.clear();
    lines.Socket.Replies = {{reply, afterMs}};
    EXPECT_EQ(PanelTransact("05", 5, 4), result) << reply;
  }
  // Shorter than a checksum: nothing outside the text may be read.
  lines.Socket.Replies = {{"]"}, {""}, {"0]"}};
  EXPECT_EQ(PanelTransact("05", 0, 4), 0);
  ReplyText = "[ZZ12";
  EXPECT_EQ(ReplyByte(2), 0);
  EXPECT_EQ(ReplyByte(5), 2);
  EXPECT_EQ(ReplyByte(6), 0);
  EXPECT_EQ(ReplyMid(4, 20), "12");
}

TEST_F(TransactTest, ABrokenLineEndsTheCommandAtOnce) {
  Connect(2);
  lines.Socket.Replies = {{"[0", 10, true}};
  const qint64 start = lines.Clock.NowMs;
  EXPECT_EQ(PanelTransact("23FF", 52, 5), 0);
  EXPECT_LT(lines.Clock.NowMs - start, 100);
}

TEST_F(TransactTest, ModemTextsGoUnframedAndKeepWhatCame) {
  Connect(1);
  ReplyLength = 77;
  lines.Serial.Replies = {{"ATZ\r\r\nOK\r\n"}, {std::string(30, 'x'), 39999}};
  const qint64 start = lines.Clock.NowMs;
  EXPECT_FALSE(ModemTransact("ATZ\r", 20, 5));
  EXPECT_EQ(lines.Clock.NowMs - start, 5000);
  EXPECT_EQ(ReplyText, "ATZ\r\r\nOK\r\n");
  EXPECT_EQ(ReplyLength, 77);
  EXPECT_TRUE(ModemTransact("ATDT 5551234\r", 30, 40));
  EXPECT_EQ(ReplyLength, 30);
  EXPECT_EQ(lines.Serial.Steps[4], "send ATZ\r");
}

TEST_F(TransactTest, ACommandInsideAnotherHarmsNeither) {
  Connect(2);
  lines.Socket.Replies = {{"[030]", 10}, {"[00]", 20}, {"[030]", 10}};
  Int16 inner = 0;
  lines.Socket.WhileWaiting = [&] { inner = PanelTransact("10FF0", 4, 4); };
  EXPECT_EQ(PanelTransact("05", 5, 4), -1);
  EXPECT_EQ(inner, -1);
  EXPECT_EQ(ReplyText, "[030]");
}

TEST_F(TransactTest, ASessionThatEndsWhileACommandWaitsIsToldOnce) {
  int disconnects = 0;
  Link.DisconnectQZ = [&] {
    ++disconnects;
    Connected = 0;
    lines.Socket.Up = false;
  };
  Connect(2);
  lines.Socket.WhileWaiting = [] {
    if (PanelTransact("10FF0", 4, 1) == 0) PanelConnectionLost();
  };
  if (PanelTransact("05", 44, 3) == 0) PanelConnectionLost();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text, "Connection To Tamberloom 3 Panel Lost");
  EXPECT_EQ(LinkStatus(), "Disconnected");
  EXPECT_EQ(disconnects, 1);
  Link = {};
}

TEST_F(TransactTest, TheLogOfASessionHoldsAllButThePassWord) {
  ClearFrameLog();
  Connect(2);
  lines.Socket.Replies = {{"[030]", 10}};
  std::ignore = PanelTransact("05", 5, 4);
  const auto frame = PanelFrame("05");
  EXPECT_TRUE(FrameLogText().contains((" > " + frame + "\n").c_str()));
  EXPECT_TRUE(FrameLogText().endsWith(" < [030]\n"));
  lines.Socket.Replies = {};
  std::ignore = PanelTransact("05", 5, 4);
  EXPECT_TRUE(FrameLogText().endsWith(" < (nothing)\n"));

  LogSent("301F7A05010203040506", PanelFrame("301F7A05010203040506"));
  EXPECT_TRUE(FrameLogText().endsWith(" > [00301F7A05**************]\n"));
  // The block that holds the password, and the one before it.
  const std::string block(128, '7');
  LogReply("311F403F", '[' + block + "AB]");
  EXPECT_TRUE(
      FrameLogText().endsWith((" < [" + std::string(116, '7') + "**************]\n").c_str()));
  LogReply("311F003F", '[' + block + "AB]");
  EXPECT_TRUE(FrameLogText().endsWith((" < [" + block + "AB]\n").c_str()));
  LogReply("01", "[\x01\xff]");
  EXPECT_TRUE(FrameLogText().endsWith(" < [<01><FF>]\n"));
}

}  // namespace

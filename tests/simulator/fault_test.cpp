#include "simulator/line/fault.h"

#include <gtest/gtest.h>

#include "simulator/line/frame.h"
#include "simulator/program/panel_thread.h"

namespace simulator {
namespace {

/// What arrives of one reply, pieces joined by "|", a delay in front of each as "ms:".
std::string Arrives(const Delivery& delivery) {
  std::string text = delivery.Drop ? "dropped" : "";
  for (const TimedBytes& piece : delivery.Pieces) {
    if (&piece != &delivery.Pieces.front()) text += "|";
    if (piece.After.count() > 0) text += std::to_string(piece.After.count()) + ":";
    text += piece.Bytes;
  }
  return text;
}

TEST(SimulatorFault, SpoilsTheReplyAsItSays) {
  const std::string reply = FrameReply("0102");
  const std::pair<const char*, std::string> cases[]{
      {"lost", ""},
      {"late:2500", "2500:" + reply},
      {"short:3", reply.substr(0, 5)},
      {"short:99", ""},
      {"long:3", FrameReply("0102000")},
      {"junk:2", "~\x11" + reply},
      {"split:3:40", "[0|40:102|80:" + reply.substr(5)},
      {"split:99:0", "[|0|1|0|2|" + reply.substr(5, 1) + "|" + reply.substr(6, 1) + "|]"},
      {"nonhex", FrameReply("ZZ02")},
      {"drop", "dropped"},
  };
  for (const auto& [text, arrives] : cases) {
    FaultInjector faults;
    faults.Add(ParseFault(text));
    EXPECT_EQ(Arrives(faults.Deliver("[0005D7]", reply)), arrives) << text;
    EXPECT_EQ(Arrives(faults.Deliver("[0005D7]", reply)), reply) << text << " acts once";
  }
  FaultInjector faults;
  faults.Add(ParseFault("checksum"));
  const std::string spoilt = Arrives(faults.Deliver("[0005D7]", reply));
  EXPECT_EQ(spoilt.substr(0, 5), reply.substr(0, 5));
  EXPECT_NE(spoilt, reply);
  EXPECT_EQ(spoilt.size(), reply.size());
}

TEST(SimulatorFault, ActsOnTheRepliesItWasMeantFor) {
  FaultInjector faults;
  faults.Add(ParseFault("lost@2x2"));
  faults.Add(ParseFault("late:5@4x*"));
  faults.Add(ParseFault("sum"));
  std::string course;
  for (int i = 0; i < 6; ++i) course += Arrives(faults.Deliver("[0005D7]", "[00]")) + ",";
  EXPECT_EQ(course, "[00],,,5:[00],5:[00],5:[00],");
  EXPECT_EQ(FaultText(faults.Pending()[0]), "late:5@1x*");
  const std::string sum = FrameCommand("3400009FFF");
  EXPECT_EQ(Arrives(faults.Deliver(sum, FrameReply("12AB"))), "5:" + FrameReply("12A0"));
  EXPECT_EQ(Arrives(faults.Deliver(sum, FrameReply("12AB"))), "5:" + FrameReply("12AB"));
  for (const char* bad : {"", "slow", "lost:", "late:-1", "lost@", "lost x3", "late:60001",
                          "lost@9999999999", "lost@0", "lostx0"}) {
    EXPECT_THROW(ParseFault(bad), std::invalid_argument) << bad;
  }
}

}  // namespace
}  // namespace simulator

#include <gtest/gtest.h>

#include <random>

#include "rehearsed.h"
#include "simulator/line/commands.h"
#include "simulator/line/frame.h"

namespace simulator {
namespace {

/// A panel with a blank memory whose clock stands until it is moved.
class SimulatorPanel : public testing::Test {
 protected:
  QDateTime Present{QDate(2025, 11, 24), QTime(13, 5, 9)};
  Panel Blank{PanelMemory(), [this] { return Present; }};

  /// The data of the reply; "none" for no reply.
  std::string Ask(const std::string& command) {
    const auto reply = Answer(Blank, FrameCommand(command));
    if (!reply) return "none";
    const std::string data = reply->substr(1, reply->size() - 4);
    EXPECT_EQ(*reply, FrameReply(data));
    return data;
  }

  std::string Items48(std::initializer_list<int> ones, char other = '0') {
    std::string text(48, other);
    for (const int i : ones) text[static_cast<std::size_t>(i)] = '1';
    return text;
  }
};

TEST_F(SimulatorPanel, KeepsSilentAboutWhatItDoesNotUnderstand) {
  for (const char* command :
       {"", "0", "06", "10", "10052", "10300", "11300", "13301", "20FE", "050", "319FFF01",
        "31A00000", "30000001AA", "30000000AABB", "3400019FFFF", "3600100000", "0018000B18191",
        "00080D0D18191", "10ff0"}) {
    EXPECT_EQ(Ask(command), "none") << command;
  }
  std::mt19937 random(7);
  FrameSplitter splitter;
  for (int i = 0; i < 200'000; ++i) {
    const auto event = splitter.Push("[]%0123456789ABCDEF\x00\xFF"[random() % 21]);
    if (event) Answer(Blank, event->Text);
  }
  // It goes on, and its replies have the lengths that the host expects.
  EXPECT_EQ(Ask("05").size(), 40U);
  EXPECT_EQ(Ask("02").size(), 76U);
  EXPECT_EQ(Ask("0700").size(), 82U);
}

TEST_F(SimulatorPanel, StatusTellsClockHardwareAndCard) {
  Blank.Memory.SetByte(0x1FF0, 2);
  Blank.Memory.SetByte(0x1FFB, 2);
  Blank.AddOnType = 7;
  Blank.AddOnRevision = 3;
  // 13:05:09 on Monday 11/24/25, 16 points.
  EXPECT_EQ(Ask("01"), QString("0D0509 0B1819 10 10 0 73 00000000000").remove(' ').toStdString());
  // 20:59 on 02/28/24, a Wednesday; the leap day and the weekday follow.
  EXPECT_EQ(Ask("00143B021C183"), "");
  EXPECT_EQ(Ask("01").substr(0, 13), "143B00021C183");
  Present = Present.addSecs(4 * 3600);
  EXPECT_EQ(Ask("01").substr(0, 13), "003B00021D184");
  // A host's wrong weekday stands.
  EXPECT_EQ(Ask("00000001011A0"), "");
  EXPECT_EQ(Ask("01").substr(6, 7), "01011A0");
  Blank.Memory.SetByte(0x1FF1, 255);
  EXPECT_EQ(Blank.Points(), 48);
}

TEST_F(SimulatorPanel, MemoryIsWrittenReadSummedAndCleared) {
  EXPECT_EQ(Ask("3400009FFF"), "0000");
  EXPECT_EQ(Ask("301F7A05010203040509"), "");
  EXPECT_EQ(Ask("311F7A05"), "010203040509");
  // The last byte is only rotated once: 0x81 becomes 0x0102. The one before it twice.
  for (const auto& [command, reply] : {std::pair{"309FFF0081", ""},
                                       {"349FFF9FFF", "0102"},
                                       {"309FFE0001", ""},
                                       {"349FFE9FFF", "0106"}}) {
    EXPECT_EQ(Ask(command), reply);
  }
  // A carry comes in below: 0xFF rotated left nine times is 0xFE01.
  PanelMemory memory;
  memory.SetByte(0, 0xFF);
  EXPECT_EQ(memory.Sum(0, 8), 0xFE01);
  EXPECT_EQ(Ask("361F7A1F7F"), "");
  EXPECT_EQ(Ask("311F7907"), "0000000000000000");
  EXPECT_THROW(memory.SetByte(0xA000, 1), std::out_of_range);
  EXPECT_THROW(memory.SetContent(std::string(40'959, 'x')), std::invalid_argument);
}

TEST_F(SimulatorPanel, GroupsPresetsAndTimersFollowTheMemoryMap) {
  // Relay 9 (row 9, six bytes a row) belongs to group 2: bit 2 of 0x07E0 + 54. Relay 10 too.
  for (const char* write : {"3008160004", "30081C0004"}) Ask(write);
  EXPECT_EQ(Ask("11021"), "");
  EXPECT_EQ(Ask("23FF"), Items48({9, 10}));
  EXPECT_EQ(Ask("24FF"), Items48({2}));
  EXPECT_EQ(Ask("100A0"), "");
  EXPECT_EQ(Ask("24FF"), Items48({})) << "one of its relays is off";

  // Preset 47 puts relay 0 on (plane 0, byte 5 bit 7) and relay 1 off (plane 1, row 1).
  for (const char* write : {"300ED50080", "300FFB0080", "10011"}) Ask(write);
  EXPECT_EQ(Ask("25FF"), std::string(47, '2') + "0");
  EXPECT_EQ(Ask("402F0"), "");
  EXPECT_EQ(Ask("25FF"), std::string(47, '2') + "1");
  EXPECT_EQ(Ask("23FF"), Items48({0, 9}));

  // Timer 8 switches relay 0 off, group 2 on, and sets preset 1, which puts relay 20 on.
  for (const char* write : {"300A510001", "300B7D0001", "300DB70001", "300F480002"}) Ask(write);
  EXPECT_EQ(Ask("13080"), "");
  EXPECT_EQ(Ask("23FF"), Items48({9, 10, 20}));
}

TEST_F(SimulatorPanel, CaptureWritesTheInstalledRelaysIntoThePlanes) {
  Ask("301FF00001");  // four relays
  for (const char* on : {"10021", "10041"}) Ask(on);
  EXPECT_EQ(Ask("41090"), "");
  // Preset 9 is byte 1 bit 1 of each relay's row: on in 0x0ED0.., off in 0x0FF0...
  const std::string in = "000200000000";
  const std::string out(12, '0');
  EXPECT_EQ(Ask("310ED01D"), out + out + in + out + out);
  EXPECT_EQ(Ask("310FF01D"), in + in + out + in + out);
  EXPECT_EQ(Ask("25FF").substr(8, 3), "212");
}

TEST_F(SimulatorPanel, InputsReachGroupsPresetsTimersAndBlinkAlerts) {
  constexpr PlaneSet inputRelays{0x0000, 3};
  constexpr PlaneSet groupRelays{0x07E0, 1};
  constexpr PlaneSet presetRelays{0x0ED0, 2};
  // Input 0 switches group 3 (relays 1 and 2) on and off, but relay 2 of its own only on.
  Set(Blank.Memory, Code(groupRelays, 1, 3, 1), Code(groupRelays, 2, 3, 1),
      Code({0x0360, 3}, 3, 0, 3), Code(inputRelays, 2, 0, 1));
  Blank.SetContact(0, Contact::On, true);
  EXPECT_EQ(Ask("24FF"), Items48({3}));
  EXPECT_EQ(Ask("20FF"), Items48({0}));
  Blank.SetContact(0, Contact::Off, true);
  EXPECT_EQ(Ask("23FF"), Items48({2}));
  EXPECT_EQ(Ask("20FF")[0], '3') << "both its contacts";
  // Input 1 sets preset 5, which puts relay 2 off and relay 30 on.
  Set(Blank.Memory, Byte(0x0751, 4), Byte(0x06C1, 5), Code(presetRelays, 2, 5, 2),
      Code(presetRelays, 30, 5, 1));
  Blank.SetContact(1, Contact::On, true);
  EXPECT_EQ(Ask("23FF"), Items48({30}));
  // Input 2 forces timer 47, row 47 of its table; that puts relay 30 off.
  Set(Blank.Memory, Byte(0x0752, 12), Code(inputRelays, 47, 2, 1), Code({0x0930, 2}, 30, 47, 2));
  Blank.SetContact(2, Contact::On, true);
  EXPECT_EQ(Ask("23FF"), Items48({}));
  // Input 3 is maintained and warns ten minutes before relay 8 goes off.
  Set(Blank.Memory, Byte(0x0753, 2), Byte(0x1F50, 10), Code(inputRelays, 8, 3, 4));
  for (const bool closed : {true, false}) Blank.SetContact(3, Contact::On, closed);
  Present = Present.addSecs(599);
  EXPECT_EQ(Ask("23FF"), Items48({8}));
  Present = Present.addSecs(1);
  EXPECT_EQ(Ask("23FF"), Items48({}));
  EXPECT_THROW(Blank.SetContact(48, Contact::On, true), std::out_of_range);
}

TEST_F(SimulatorPanel, TimedOnEndsByTheClockWhateverThePanelsTimeIsSetTo) {
  Set(Blank.Memory, Byte(0x0750, 5), Word(0x0780, 300), Code({0x0000, 3}, 4, 0, 1));
  Blank.SetContact(0, Contact::On, true);
  Present = Present.addDays(1);
  EXPECT_TRUE(Blank.Relay(4)) << "the time begins when the input opens";
  Blank.SetContact(0, Contact::On, false);
  Ask("00000001011A0");
  Present = Present.addSecs(300 * 60 - 1);
  EXPECT_EQ(Ask("23FF"), Items48({4}));
  Present = Present.addSecs(1);
  EXPECT_EQ(Ask("23FF"), Items48({}));
}

TEST_F(SimulatorPanel, DevicesAnswerByMemoryUnlessToldOtherwise) {
  Ask("3030000003");  // not a device
  Ask("3030400000");  // device 0x41 does not exist either
  // Device 2 is a 4 Input whose second input is maintained, device 64 a photocell.
  Set(Blank.Memory, Byte(0x2080, 7), Byte(0x2080 + 0x0B + 1, 2), Byte(0x3000, 9));
  // Device 2's relay rows begin at 0x3480: input 1, relay 12 on and off.
  Ask("3034870010");
  Ask("3034B70010");
  Blank.SetDeviceLevel(64, 0xA5);
  Blank.SetDeviceInput(2, 1, true);
  EXPECT_EQ(Ask("23FF"), Items48({12}));
  const auto bytes = [](std::initializer_list<std::pair<std::size_t, const char*>> some) {
    std::string text(130, '0');
    for (const auto& [device, value] : some) text.replace(2 * device, 2, value);
    return text;
  };
  EXPECT_EQ(Ask("46"), bytes({{2, "02"}}));
  EXPECT_EQ(Ask("47"), bytes({{2, "01"}, {64, "01"}}));
  EXPECT_EQ(Ask("48"), bytes({{64, "A5"}}));
  Blank.SetPresence(64, Panel::Presence::Dropped);
  Blank.SetPresence(1, Panel::Presence::Present);
  EXPECT_EQ(Ask("47"), bytes({{1, "01"}, {2, "01"}}));
  EXPECT_EQ(Ask("48"), bytes({}));
  Blank.SetDeviceInput(2, 1, false);
  EXPECT_EQ(Ask("23FF"), Items48({}));
}

TEST_F(SimulatorPanel, DimmerLevelsFollowTheirRelays) {
  // Device 11 output 3 begins at 0x8400 + 47 * 128 = 0x9B80; relay 8 is bit 0 of element 115.
  Ask("309B8100C8");
  EXPECT_EQ(Ask("49").substr(94), "C8") << "no relay mapped: power on level";
  Ask("309BF0010A0B");  // RelayOnLevel 10, RelayOffLevel 11
  Ask("309BF30001");
  EXPECT_EQ(Ask("49").substr(94), "0B");
  Ask("10081");
  EXPECT_EQ(Ask("49"), std::string(94, '0') + "0A");
}

TEST_F(SimulatorPanel, FrontShowsTheClockAndItsMenuSwitchesRelays) {
  Blank.Memory = SmallInstallation();
  const auto display = [this](const char* keys) { return Ask(std::string("07") + keys); };
  const std::string home = display("00");
  EXPECT_EQ(home.substr(0, 20), "SIMULATED PANEL     ");
  EXPECT_EQ(home.substr(20, 40), "Mon 11/24/25         1:05:09 PM         ");
  EXPECT_EQ(home.substr(80), "00");
  display("04");                              // Enter: the relays
  display("02");                              // Down: the second one
  EXPECT_EQ(display("04").substr(80), "02");  // Enter: on, LED 1
  EXPECT_EQ(Ask("23FF"), Items48({1}));
  EXPECT_EQ(Blank.Front.Display().substr(40, 20),
            "\x01"
            "02 HALL NORTH \x02    ");
  display("20");  // Next: the groups
  display("04");
  EXPECT_EQ(Ask("24FF").substr(0, 4), "1000");
  EXPECT_EQ(display("30").substr(0, 18), "ORV TAMBERLOOM 3  ");
  EXPECT_EQ(display("08").substr(20, 40), home.substr(20, 40)) << "Exit";
  EXPECT_EQ(display("00").substr(20, 40), home.substr(20, 40));
}

}  // namespace
}  // namespace simulator

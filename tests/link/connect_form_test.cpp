#include "link/on_line_frame.h"
#include "link/panel_host.h"
#include "panel/live_project.h"
#include "panel/remembered.h"
#include "simulator/line/frame.h"

using simulator::FrameReply;

namespace {

using Steps = std::vector<std::string>;

/// The connection screen over scripted lines.
class ConnectTest : public PanelHostTest {
 protected:
  ~ConnectTest() override { Connected = 0; }

  /// What happened on the line apart from reads and waits.
  static Steps Told(const ScriptedLine& line) {
    Steps steps;
    for (const std::string& step : line.Steps) {
      if (step != "read" && !step.starts_with("wait")) steps.push_back(step);
    }
    return steps;
  }

  bool Waited(const char* step) const {
    const Steps& steps = lines.Serial.Steps;
    return std::find(steps.begin(), steps.end(), step) != steps.end();
  }

  ScriptedTransports lines;
};

const std::string Firmware = FrameReply("TAMBERLOOM 3 V2.10  DEMO PANEL          ");
// 13:05:09, 24 November 26, Tuesday, 16 points, add-on card 2 of revision 7.
const std::string Status = FrameReply("0D05090B181A201002700000000000");

TEST_F(ConnectTest, SettingsAreShownAndStored) {
  PhoneNumber() = "555";
  OpenConnect(1);
  EXPECT_TRUE(Find<OptionButton>("optComPort(6)").Value());
  EXPECT_EQ(Find<TextBox>("txtPhoneNumber").Text(), "555");
  EXPECT_EQ(DataChanged, -1) << "filling the boxes counts as a change";

  DataChanged = 0;
  auto& tcp = Find<CheckBox>("chkConnectionType(2)");
  for (int i = 0; i < 2; ++i) {
    Click(tcp);
    EXPECT_TRUE(tcp.isChecked());
    EXPECT_FALSE(Find<CheckBox>("chkConnectionType(1)").isChecked());
    EXPECT_EQ(ConnectionType(), 2);
  }
  EXPECT_EQ(DataChanged, 0);
  EXPECT_FALSE(Shown(Find<TextBox>("txtPhoneNumber")));
  QTest::keyClicks(&Find<TextBox>("txtTCPIP"), "1a0-.0");
  EXPECT_TRUE(QString::fromStdString(TcpAddress()).endsWith("10.0"));
  EXPECT_EQ(DataChanged, -1);

  Click(Find<CheckBox>("chkConnectionType(1)"));
  QTest::keyClicks(&Find<TextBox>("txtPhoneNumber"), "1-2, 3x.");
  EXPECT_EQ(PhoneNumber(), "5551-2, 3");
  Find<OptionButton>("optComPort(2)").click();
  EXPECT_EQ(PanelRecord.ComPort, 3);

  OpenConnect(99);
  PanelRecord.ComPort = 99;
  Menu("mnuConnect");
  for (int i = 0; i < 16; ++i) EXPECT_FALSE(Find<OptionButton>("optComPort", i).Value());
  EXPECT_EQ(PanelRecord.ComPort, 99);
  EXPECT_TRUE(messages.empty());
}

TEST_F(ConnectTest, ASerialSessionOpensPollsAndCloses) {
  OpenConnect(0);
  lines.Serial.Steps.clear();
  lines.Serial.Replies = {{Firmware}};
  Press("cmdConnect");
  EXPECT_EQ(Told(lines.Serial), (Steps{"port COM7", "settings 115200,n,8,1", "open", "RTS on",
                                       "DTR on", "send [0005D7]"}));
  EXPECT_TRUE(Waited("wait 44 3000"));
  EXPECT_TRUE(Find<Button>("cmdRefresh").isHidden());
  EXPECT_EQ(Text("lblT2FirmwareRevision(11)"), "3");
  ExpectUsable();

  // The first tick also compares the hardware; the answer No is kept for the session.
  auto& timer = Find<Timer>("Timer1");
  ASSERT_TRUE(timer.Enabled());
  const std::string counts = FrameReply("040000000000000000000000");
  lines.Serial.Replies = {{Status}, {counts}, {Status}};
  answers = {MsgAnswer::No};
  timer.Tick();
  timer.Tick();
  EXPECT_EQ(Text("lblPanelTime"), "01:05:09 PM");
  EXPECT_EQ(Text("lblPanelDate"), "Tue 11/24/26");
  EXPECT_EQ(Text("lblIOInstalled"), "16 Inputs/Relays");
  EXPECT_EQ(Text("lblAddOnCardTypeRev"), "MODBUS  Rev 7");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text,
            "Host I/O Configuration Does Not Match Panel Hardware.\n"
            "Change Host Configuration To Match Panel?");
  EXPECT_NE(PanelRecord.IOCount(0), 4);

  Press("cmdUpLoadFromT2");
  EXPECT_TRUE(Waited("wait 132 10000")) << "a block of an upload has ten seconds";
  Press("cmdConnect");
  lines.Serial.Replies = {{Firmware}};
  Press("cmdConnect");
  lines.Serial.Steps.clear();
  Press("cmdConnect");
  EXPECT_EQ(Told(lines.Serial), (Steps{"RTS off", "close"}));
  EXPECT_EQ(Connected, 0);
  EXPECT_FALSE(timer.Enabled());
  EXPECT_EQ(LinkStatus(), "Disconnected");
  ExpectUsable();
}

TEST_F(ConnectTest, ThePanelsHardwareIsAdoptedOnYesAndItsClockSet) {
  PanelRecord.AddOnModuleType = 1;
  OpenConnect(2);
  lines.Socket.Replies = {{Firmware}, {Status}, {FrameReply("040000000000000000000001")}};
  DataChanged = 0;
  Press("cmdConnect");
  EXPECT_EQ(PanelRecord.IOCount(0), 4);
  EXPECT_EQ(PanelRecord.IOCount(11), 1);
  EXPECT_EQ(PanelRecord.AddOnModuleType, 2);
  EXPECT_EQ(DataChanged, -1);

  // Midnight, no weekday: the last one stays; a card beyond the table.
  lines.Socket.Replies = {{FrameReply("000509010100900009200000000000")}};
  Press("cmdRefresh");
  EXPECT_EQ(Text("lblPanelTime"), "12:05:09 AM");
  EXPECT_EQ(Text("lblPanelDate"), "Tue 01/01/00");
  EXPECT_EQ(Text("lblAddOnCardTypeRev"), "Unknown Type");
  EXPECT_EQ(messages.size(), 1U);

  lines.Socket.Steps.clear();
  const auto realNow = std::exchange(NowSeam, [] {
    return QDateTime(QDate(2026, 11, 22), QTime(23, 7, 45));  // a Sunday
  });
  lines.Socket.Replies = {{"[00]"}};
  Press("cmdSetQZClock");
  EXPECT_EQ(Told(lines.Socket)[0], "send " + simulator::FrameCommand("0017070B161A0"));
  EXPECT_EQ(Text("lblClock"), "Sent; Refresh reads it");
  lines.Socket.Replies = {{FrameReply("1707000B161A000009200000000000")}};
  Press("cmdRefresh");
  EXPECT_EQ(Text("lblClock"), "Set; the panel is 45 s behind, as only hours and minutes are sent");
  // Of readings by itself a second more or less is no news.
  const auto read = [this](int second) {
    PanelStatus status{};
    std::tie(status.Hour, status.Minute, status.Second) = std::tuple(23, 7, second);
    std::tie(status.Month, status.Day, status.Year) = std::tuple(11, 22, 26);
    static_cast<OnLineFrame&>(Find<QGroupBox>("fraOnLineFunctions")).ShowStatus(status);
  };
  for (const int second : {1, 0, 1}) {
    read(second);
    EXPECT_TRUE(Text("lblClock").contains("45 s behind")) << second;
  }
  lines.Socket.Replies = {{FrameReply("1707010B161A000009200000000000")}};
  Press("cmdRefresh");
  EXPECT_TRUE(Text("lblClock").contains("44 s behind"));
  read(3);
  EXPECT_EQ(Text("lblClock"), "Set; the panel is 42 s behind, as only hours and minutes are sent");
  lines.Socket.Replies = {{FrameReply("1705000B161A000009200000000000")}};
  Press("cmdRefresh");
  EXPECT_EQ(Text("lblClock"), "The panel is 2 min 45 s behind") << "for another reason";
  lines.Clock.NowMs += 10'000;
  lines.Socket.Replies = {{FrameReply("1709320B161A000009200000000000")}};
  Press("cmdRefresh");
  EXPECT_EQ(Text("lblClock"), "The panel is 2 min 5 s ahead");
  NowSeam = realNow;
  lines.Socket.Replies = {};
  Press("cmdSetQZClock");
  EXPECT_EQ(Text("lblClock"), "The clock may not be set: no answer came");

  lines.Socket.Replies = {{"[00]"}};
  Press("cmdSetQZClock");
  Press("cmdConnect");
  lines.Socket.Replies = {{Firmware}, {FrameReply("1709320B161A000009200000000000")}};
  Press("cmdConnect");
  EXPECT_TRUE(Text("lblClock").startsWith("The panel is ")) << "another panel's was not set";
}

TEST_F(ConnectTest, AModemCallTakesItsFixedTimes) {
  PhoneNumber() = "555123";
  OpenConnect(1);
  Press("cmdConnect");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text, "A Valid Phone Number Must Entered");

  QTest::keyClicks(&Find<TextBox>("txtPhoneNumber"), "4");
  messages.clear();
  lines.Serial.Steps.clear();
  lines.Serial.Replies = {
      {"ATZ\r\r\nOK\r\n"}, {"ATDT 5551234\r\r\nCONNECT 9600/ARQ\r\n"}, {Firmware}};
  qint64 start = lines.Clock.NowMs;
  Press("cmdConnect");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text, "Modem Connected");
  EXPECT_EQ(lines.Clock.NowMs - start, 1000 + 5000 + 10 + 3000 + 10);
  EXPECT_EQ(Told(lines.Serial),
            (Steps{"port COM7", "settings 9600,n,8,1", "open", "RTS on", "DTR off", "DTR on",
                   "send ATZ\r", "send ATDT 5551234\r", "send [0005D7]"}));

  // The hang-up runs even when the type has changed since.
  ConnectionType() = 0;
  lines.Serial.Steps.clear();
  start = lines.Clock.NowMs;
  Press("cmdConnect");
  EXPECT_EQ(lines.Clock.NowMs - start, 3000 + 3000 + 1000);
  EXPECT_EQ(Told(lines.Serial),
            (Steps{"send [%%%%%", "send ATZ", "DTR off", "DTR on", "RTS off", "close"}));
}

TEST_F(ConnectTest, AFailedConnectionSaysWhatToDo) {
  const struct {
    Int16 Type;
    const char *Refusal, *Advice;
  } cases[] = {{0, "COM7 is not there", "COM7 is not there"},
               {0, "", "No panel answers at COM7"},
               {1, "", "reached nobody"},
               {2, "Nobody answers at 10.0.0.9", "Nobody answers at 10.0.0.9"},
               {2, "", "does not answer like a panel"}};
  PhoneNumber() = "5551234";
  TcpAddress() = "10.0.0.9";
  for (const auto& [type, refusal, advice] : cases) {
    lines.Serial.Refusal = lines.Socket.Refusal = {};
    OpenConnect(type);
    lines.Serial.Refusal = lines.Socket.Refusal = refusal;
    messages.clear();
    Press("cmdConnect");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].Text, "Connection Failed.");
    EXPECT_EQ(Connected, 0);
    EXPECT_TRUE(Find<QLabel>("lblTrouble").text().contains(advice)) << advice;
    EXPECT_TRUE(Find<Label>("lblModem").isHidden());
    EXPECT_EQ(LinkStatus(), "Disconnected");
    ExpectUsable();
  }
  Click(Find<CheckBox>("chkConnectionType(0)"));
  EXPECT_EQ(Find<QLabel>("lblTrouble").text(), "") << "it was said of another line";
}

TEST_F(ConnectTest, WhatLedToAPanelIsOfferedBelowItsBox) {
  RememberTyped(Typed::TcpAddress, "10.0.0.7");
  RememberTyped(Typed::TcpAddress, "10.0.0.8");
  OpenConnect(2);
  EXPECT_EQ(Captions("lblLastAddress", {0, 1}), "10.0.0.8|10.0.0.7");
  EXPECT_FALSE(Shows("lblLastAddress", 2) || Shows("lblLastNumber", 0));
  DataChanged = 0;
  Click(Cell("lblLastAddress", 1));
  EXPECT_EQ(TcpAddress(), "10.0.0.7");
  EXPECT_NE(DataChanged, 0);
}

TEST_F(ConnectTest, ALostLinkBringsTheScreenBackFromWhereverTheUserIs) {
  OpenConnect(0);
  lines.Serial.Replies = {{Firmware}};
  Press("cmdConnect");
  Menu("mnuSetup");
  EXPECT_FALSE(Find<Timer>("Timer1").Enabled());
  EXPECT_EQ(Connected, -1) << "another screen does not end the session";
  Menu("mnuConnect");
  Find<Timer>("Timer1").Tick();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text, "Connection To Tamberloom 3 Panel Lost");
  EXPECT_EQ(Connected, 0);
  ExpectUsable();
}

TEST_F(ConnectTest, PassWordBoxesHoldOneDigitEach) {
  OpenConnect(0);
  lines.Serial.Replies = {{Firmware}};
  Press("cmdConnect");
  Press("cmdDownLoadToT2");
  const auto type = [](const char* keys) {
    for (; *keys; ++keys) QTest::keyClick(QApplication::focusWidget(), *keys);
  };
  type("7x");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
  type("81234");
  EXPECT_EQ(Find<TextBox>("txtPassWord(0)").Text(), "7");
  EXPECT_EQ(Find<TextBox>("txtPassWord(1)").Text(), "8");
  EXPECT_TRUE(Find<TextBox>("txtPassWord(0)").hasFocus()) << "the sixth digit wraps round";
  Press("cmdPassWordCancel");
  EXPECT_TRUE(Find<Timer>("Timer1").Enabled());
  ExpectUsable();

  // Leaving the password for a new project must leave nothing locked.
  Press("cmdDownLoadToT2");
  Menu("mnuNew");
  Menu("mnuConnect");
  ExpectUsable();
  EXPECT_EQ(Find<TextBox>("txtPassWord(1)").Text(), "0");
}

}  // namespace

#include <QProgressBar>
#include <QTimer>

#include "line/line_hooks.h"
#include "link/transfer_fixture.h"
#include "panel/live_project.h"
#include "shell/window/history.h"

using simulator::Panel;
using simulator::PanelThread;

namespace {

const QString HalfNew = QStringLiteral(
    "\nTamberloom 3 Controller May Not Function\nProperly Until A Download Is Complete.");

TEST_F(TransferTest, DownloadedSettingsComeBackAsTheyWere) {
  ConnectToPanel("123456");
  PanelRecord.RelayName(3) = "FOYER";
  PanelRecord.RelayTimerType(3) = 6;
  PanelRecord.InputRelayControl(2, 5) = 5;
  FennlinkRecords(64).DeviceName = "LAST";
  Download("123456");
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage();
  ExpectUsable();

  const Project sent = LiveProject;
  PanelRecord.RelayName(3) = "changed";
  PanelRecord.InputRelayControl(2, 5) = 0;
  FennlinkRecords(64).DeviceName = "changed";
  DataChanged = 0;
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Upload Complete");
  EXPECT_EQ(PanelRecord.RelayName(3), "FOYER     ");
  EXPECT_EQ(FennlinkRecords(64).DeviceName, "LAST      ");
  EXPECT_EQ(PanelRecord.InputRelayControl, sent.Panel.InputRelayControl);
  EXPECT_EQ(DataChanged, -1);
  ExpectUsable();

  // Without the names, and with the answers that stop it.
  PanelRecord.RelayName(3) = "LONG NAME OF THE HOST";
  answers = {MsgAnswer::Yes, MsgAnswer::No};
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(PanelRecord.RelayName(3), "LONG NAME OF THE HOST");
  for (const auto& stop :
       {std::vector{MsgAnswer::No}, std::vector{MsgAnswer::Yes, MsgAnswer::Cancel}}) {
    answers = stop;
    PanelRecord.RelayTimerType(3) = 1;
    Press("cmdUpLoadFromT2");
    EXPECT_EQ(LastMessage(), "Upload Cancelled");
    EXPECT_EQ(PanelRecord.RelayTimerType(3), 1);
    ExpectUsable();
  }
}

TEST_F(TransferTest, ThePassWordIsComparedHereAndChangedOnRequest) {
  ConnectToPanel("123456");
  const std::size_t before = panel->FramesFromHost().size();
  Download("123457");
  EXPECT_EQ(LastMessage(), "Password Invalid.\nDownload Denied.");
  EXPECT_EQ(panel->FramesFromHost().size(), before + 1);
  ExpectUsable();

  Press("cmdDownLoadToT2");
  TypePassWord("txtPassWord", "123456");
  Click(Find<CheckBox>("chkChangePanelPassWord"));
  EXPECT_TRUE(Find<TextBox>("txtNewPassWord(0)").hasFocus());
  TypePassWord("txtNewPassWord", "908070");
  Press("cmdPassWordContinue");
  EXPECT_EQ(LastMessage(), "Download Complete");
  EXPECT_EQ(
      panel->With([](Panel& p) { return p.Memory.Byte(0x1F7A) * 10 + p.Memory.Byte(0x1F7E); }), 97);
  Press("cmdConnect");
  EXPECT_EQ(Find<TextBox>("txtPassWord(0)").Text(), "0");
}

TEST_F(TransferTest, EveryFaultOfADownloadIsToldAndLeavesTheScreenUsable) {
  // Replies are counted from the password's, which is the first; block 300 is the 301st.
  const QString complete = QStringLiteral("Download Complete");
  const QString lost = QStringLiteral("Connection To Tamberloom 3 Panel Lost");
  const auto error = [](char code) { return QStringLiteral("Download Error: ") + code + HalfNew; };
  const std::pair<const char*, QString> cases[] = {
      {"lost@301x3", error('1')},      {"lost@301x2", complete},
      {"late:5000@301x3", error('1')}, {"short:1@301x3", error('1')},
      {"junk:3@301x3", error('1')},    {"checksum@301x3", error('1')},
      {"checksum@301x2", complete},    {"split:4:20@301x20", complete},
      {"drop@301", error('1')},        {"sum", error('2')},
      {"lost@642x3", error('3')},      {"lost@1x3", lost}};
  for (const auto& [fault, told] : cases) {
    ExpectTold(fault, told, told != lost, 0, [this] { Download(); });
  }
}

TEST_F(TransferTest, EveryFaultOfAnUploadIsToldAndClearsTheDocument) {
  const QString complete = QStringLiteral("Upload Complete");
  const auto error = [](const char* code) {
    return QStringLiteral("Upload Error: %1\nAll Host Data Cleared.").arg(code);
  };
  const std::pair<const char*, QString> cases[] = {
      {"lost@300x3", error("19")}, {"drop@300", error("19")}, {"short:1@300x3", error("19")},
      {"nonhex:8@82", error("2")}, {"sum", error("2")},       {"lost@641x3", error("3")},
      {"junk:3@300x2", complete},  {"long:4@300", complete}};
  for (const auto& [fault, told] : cases) {
    std::string before;
    ExpectTold(fault, told, told == complete, 2, [&] {
      PanelRecord.RelayTimerType(7) = 4;
      window->Steps().Record();
      before = Bytes();
      Press("cmdUpLoadFromT2");
    });
    EXPECT_EQ(PanelRecord.RelayTimerType(7), 0) << fault;
    EXPECT_EQ(ConnectionType(), told == complete ? 2 : 0) << "the defaults are a direct line";
    EXPECT_FALSE(Shown(Find<OptionButton>("optComPort(0)"))) << "only a cancel shows the ports";
    if (told == complete) continue;
    EXPECT_TRUE(Find<QLabel>("lblTrouble").text().contains("again"));
    CurrentFileName = folder.filePath(QStringLiteral("Hall.T3"));
    fileRequests.clear();
    Menu("mnuSave");
    EXPECT_EQ(fileRequests.size(), 1U) << "defaults do not go over the file that was open";
    window->Steps().Undo();
    EXPECT_TRUE(Bytes() == before) << "one step back brings all of it";
  }
}

TEST_F(TransferTest, AnUploadThatFitsNoDocumentNamesTheSettingAndLeavesTheOneInMemory) {
  ConnectToPanel();
  const std::pair<int, const char*> words[] = {{0x1F51, "override time"},
                                               {0x1F84, "DMX channel of relay 3,"}};
  for (const auto& [address, setting] : words) {
    panel->With([a = address](Panel& p) { p.Memory.SetByte(a, 0xF0); });
    DataChanged = static_cast<Int16>(address == 0x1F51 ? -1 : 0);
    const Int16 changed = DataChanged;
    PanelRecord.RelayTimerType(7) = 4;
    Press("cmdUpLoadFromT2");
    EXPECT_TRUE(LastMessage().startsWith("The upload could not be taken over") &&
                LastMessage().contains(setting))
        << LastMessage().toStdString();
    EXPECT_EQ(DataChanged, changed);
    EXPECT_EQ(PanelRecord.RelayTimerType(7), 4);
    ExpectUsable();
    panel->With([a = address](Panel& p) { p.Memory.SetByte(a, 0); });
  }
}

TEST_F(TransferTest, TheScreenHoldsTheBlockUnderWayAtEveryBlock) {
  ConnectToPanel();
  for (const bool down : {true, false}) {
    int answered = 0;
    const auto usual = std::exchange(Line.LinkStatus, [&](const QString&) {
      // The password goes before a download, which shows a block before it is sent; an upload shows
      // it once it has been read.
      const int block = answered++;
      if (block < 1 || block > ImageBlockCount - (down ? 0 : 1)) return;
      EXPECT_EQ(
          Text("lblActivityProgress"),
          QStringLiteral("%1 Block %2 Of 640").arg(down ? "Downloading" : "Uploading").arg(block));
      EXPECT_EQ(Find<QProgressBar>("pbActivityProgress").value(), block);
    });
    down ? Download() : Press("cmdUpLoadFromT2");
    Line.LinkStatus = usual;
    EXPECT_GE(answered, ImageBlockCount);
  }
}

TEST_F(TransferTest, TheFocusIsWhereTheWorkGoesOn) {
  ConnectToPanel();
  const auto focus = [this] {
    QWidget* control = Find<QWidget>("frmT3Connect").focusWidget();
    return control ? control->objectName() : QString();
  };
  EXPECT_EQ(focus(), "cmdRefresh");
  for (const char* transfer : {"cmdDownLoadToT2", "cmdUpLoadFromT2"}) {
    Find<Button>(transfer).setFocus();
    transfer == std::string("cmdDownLoadToT2") ? Download("999999") : Press(transfer);
    EXPECT_EQ(focus(), transfer);
  }
  Find<Button>("cmdDownLoadToT2").setFocus();
  Press("cmdDownLoadToT2");
  TypePassWord("txtPassWord", "000000");
  QTest::keyClick(&Find<TextBox>("txtPassWord", 5), Qt::Key_Return);
  EXPECT_EQ(LastMessage(), "Download Complete") << "Enter continues";
  EXPECT_EQ(focus(), "cmdDownLoadToT2");
  Menu("mnuRelayStatus");
  Menu("mnuConnect");
  EXPECT_EQ(focus(), "cmdRefresh");
  Menu("mnuRelayStatus");
  Link.DisconnectQZ();
  const PanelClock clock(panel);
  ConnectTo(QString::fromStdString(TcpAddress()));
  Menu("mnuRelayStatus");
  panel->AddFault("lost@1x*");
  Press("cmdUpdateStatus");
  EXPECT_EQ(LastMessage(), "Connection To Tamberloom 3 Panel Lost");
  EXPECT_EQ(focus(), "cmdConnect");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(Link.MayLeave) << "the screen before goes without the hooks of this one";
}

TEST_F(TransferTest, CancelEndsATransferBetweenTwoBlocks) {
  ConnectToPanel();
  AtBlock(5, [this] { Press("cmdCancelUpDownLoad"); });
  Download();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text, "Manual Download Cancel." + HalfNew);
  EXPECT_EQ(Connected, -1);
  ExpectUsable();

  PanelRecord.RelayTimerType(7) = 4;
  AtBlock(5, [this] { Press("cmdCancelUpDownLoad"); });
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Manual Upload Cancel.\nAll Host Data Cleared.");
  EXPECT_EQ(PanelRecord.RelayTimerType(7), 0);
  EXPECT_EQ(Connected, 0);
  ExpectUsable();
}

TEST_F(TransferTest, ADocumentThatFitsNoImageIsToldAndNothingIsLocked) {
  ConnectToPanel();
  PanelRecord.DMXOnLevel = 32767;
  Download();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.contains("Overflow"));
  EXPECT_EQ(Connected, -1);
  ExpectUsable();
}

TEST_F(TransferTest, WhatTheUserDoesDuringAWaitIsDoneInOrderAndTheWindowMayClose) {
  ConnectToPanel();
  const std::size_t before = panel->FramesFromHost().size();
  WhileRefreshWaits([this] {
    for (int i = 0; i < 3; ++i) Press("cmdRefresh");
    Press("cmdSetQZClock");
    Find<Timer>("Timer1").Tick();
  });
  EXPECT_EQ(panel->FramesFromHost().size(), before + 5);
  EXPECT_EQ(LinkStatus(), "Connected");

  // Leaving forgets a transfer that has not begun, and locks nothing.
  WhileRefreshWaits([this] {
    Press("cmdUpLoadFromT2");
    Menu("mnuSetup");
  });
  Menu("mnuConnect");
  ExpectUsable();

  // Disconnecting does not wait, and is no lost connection.
  WhileRefreshWaits([this] { Press("cmdConnect"); });
  EXPECT_EQ(Connected, 0);
  EXPECT_TRUE(messages.empty());
  ExpectUsable();

  ConnectToPanel();
  DataChanged = 0;
  AtBlock(100, [this] {
    DataChanged = 0;
    window->close();
  });
  Download();
  EXPECT_TRUE(ProgramEnding());
  EXPECT_FALSE(window->isVisible());
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.endsWith("Close The Program?"));
  EXPECT_EQ(Connected, 0);
}

TEST_F(TransferTest, TheCloseBoxAsksBeforeItLeavesAPanelHalfNew) {
  for (const bool serial : {false, true}) {
    if (serial) {
      panel.emplace(PtyPanel());
      OpenConnect(0);
      Press("cmdConnect");
      ASSERT_EQ(Connected, -1) << Find<QLabel>("lblTrouble").text().toStdString();
    } else {
      ConnectToPanel();
    }
    panel->AddFault("late:60@100");
    MsgBoxSeam = [&, usual = MsgBoxSeam](const Message& message) {
      const auto last =
          panel->With([](simulator::Simulator& s) { return s.Log().Entries().back(); });
      EXPECT_EQ(last.Way, simulator::FrameLog::Direction::ToHost) << "not while an answer is due";
      return usual(message);
    };
    messages.clear();
    DataChanged = -1;
    answers = {MsgAnswer::Yes, MsgAnswer::No};
    AtBlock(100, [this] { window->close(); });
    Download();
    ASSERT_EQ(messages.size(), 3U) << messages[0].Text.toStdString();
    EXPECT_EQ(messages[0].Text, "Discard Any Changes?");
    EXPECT_EQ(messages[1].Text, "Manual Download Cancel." + HalfNew + "\nClose The Program?");
    EXPECT_EQ(messages[2].Text, "Download Complete");
    EXPECT_FALSE(ProgramEnding());
    ExpectMemoryIsImage();
    Link.DisconnectQZ();
  }
}

TEST_F(TransferTest, APseudoTerminalLinkedAsAPortCarriesATransfer) {
  panel.emplace(PtyPanel());
  OpenConnect(0);
  EXPECT_TRUE(Find<OptionButton>("optComPort(6)").isEnabled());
  Press("cmdConnect");
  ASSERT_EQ(Connected, -1) << Find<QLabel>("lblTrouble").text().toStdString();
  Download();
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage();

  // A pulled plug ends the wait at once.
  panel->AddFault("drop@100");
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Upload Error: 19\nAll Host Data Cleared.");
  ExpectUsable();
}

TEST_F(TransferTest, AModemCallCarriesATransferAndIsHungUp) {
  panel.emplace(PtyPanel(simulator::Modem::Options{false, std::chrono::milliseconds(20)}));
  const FastClock clock(20);
  PhoneNumber() = "555-1234";
  OpenConnect(1);
  Press("cmdConnect");
  ASSERT_EQ(LastMessage(), "Modem Connected");
  Download();
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage();
  Press("cmdConnect");
  EXPECT_EQ(panel->FramesFromHost().back(), "[%%%%%");
  ExpectUsable();
}

TEST_F(TransferTest, APortInUseOrMissingIsNamed) {
  panel.emplace(PtyPanel());
  const auto other = NewSerialTransport();
  other->Open({.Port = QStringLiteral("COM7")});
  OpenConnect(0);
  EXPECT_FALSE(Find<OptionButton>("optComPort(6)").isEnabled());
  Press("cmdConnect");
  EXPECT_EQ(LastMessage(), "Connection Failed.");
  EXPECT_TRUE(Find<QLabel>("lblTrouble").text().contains("in use by another program"));
  PanelRecord.ComPort = 12;
  Press("cmdConnect");
  EXPECT_TRUE(Find<QLabel>("lblTrouble").text().startsWith("COM12 is /dev/ttyUSB7, which is not"));
  ExpectUsable();
}

}  // namespace

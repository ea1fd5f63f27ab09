#include <QTimer>

#include "link/panel_host.h"
#include "panel/panel_record.h"
#include "panel/project_document.h"

using simulator::Panel;
using simulator::PanelThread;

namespace {

const QString HalfNew = QStringLiteral(
    "\nTamberloom 3 Controller May Not Function\nProperly Until A Download Is Complete.");

/// The connection screen and a simulated panel that answers in earnest.
class TransferTest : public PanelHostTest {
 protected:
  /// That the panel's memory is the image, byte by byte.
  static void ExpectMemoryIsImage(PanelThread& panel) {
    const std::string memory = panel.With([](Panel& p) { return p.Memory.Content(); });
    for (int i = 0; i < PanelImageSize; ++i) {
      ASSERT_EQ(static_cast<unsigned char>(memory[static_cast<std::size_t>(i)]),
                PanelImage(i) & 255)
          << i;
    }
  }

  /// Runs `action` once, when block `block` of a transfer shows.
  void AtBlock(int block, std::function<void()> action) {
    auto* watch = new QTimer(window.get());
    const QString shown = QStringLiteral(" %1 Of 640").arg(block);
    QObject::connect(watch, &QTimer::timeout, window.get(), [=, this] {
      auto* label = window->findChild<Label*>(QStringLiteral("lblActivityProgress"));
      const QString text = label ? label->Caption() : QString();
      const int at = text.section(u' ', 2, 2).toInt();
      if (at < block) return;
      watch->stop();
      action();
    });
    watch->start(0);
  }
};

}  // namespace

TEST_F(TransferTest, DownloadedSettingsComeBackAsTheyWere) {
  const QString address = OwnAddress();
  simulator::Options options = TcpPanel(address);
  options.Password = "123456";
  PanelThread panel(options);
  ConnectTo(address);
  PanelRecord.RelayName(3) = "FOYER";
  PanelRecord.RelayTimerType(3) = 6;
  PanelRecord.InputRelayControl(2, 5) = 5;
  FennlinkRecords(64).DeviceName = "LAST";
  Download("123456");
  EXPECT_EQ(LastMessage(), "Download Complete");
  EXPECT_EQ(messages.back().Title, "Download");
  ExpectMemoryIsImage(panel);
  ExpectUsable();

  const ProjectDocument sent{PanelRecord, FennlinkRecords, DimmerBlock};
  PanelRecord.RelayName(3) = "changed";
  PanelRecord.InputRelayControl(2, 5) = 0;
  FennlinkRecords(64).DeviceName = "changed";
  DataChanged = 0;
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Upload Complete");
  EXPECT_EQ(PanelRecord.RelayName(3), "FOYER     ");
  EXPECT_EQ(FennlinkRecords(64).DeviceName, "LAST      ");
  EXPECT_EQ(PanelRecord.InputRelayControl, sent.Panel.InputRelayControl);
  EXPECT_EQ(TcpAddress(), address.toStdString());
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
  const QString address = OwnAddress();
  simulator::Options options = TcpPanel(address);
  options.Password = "123456";
  PanelThread panel(options);
  ConnectTo(address);
  const std::size_t before = panel.FramesFromHost().size();
  Download("123457");
  EXPECT_EQ(LastMessage(), "Password Invalid.\nDownload Denied.");
  EXPECT_EQ(messages.back().Icon, MsgIcon::Critical);
  EXPECT_EQ(panel.FramesFromHost().size(), before + 1);
  ExpectUsable();

  Press("cmdDownLoadToT2");
  TypePassWord("txtPassWord", "123456");
  Click(Find<CheckBox>("chkChangePanelPassWord"));
  EXPECT_TRUE(Find<TextBox>("txtNewPassWord(0)").hasFocus());
  TypePassWord("txtNewPassWord", "908070");
  Press("cmdPassWordContinue");
  EXPECT_EQ(LastMessage(), "Download Complete");
  EXPECT_EQ(panel.With([](Panel& p) { return p.Memory.Byte(0x1F7A) * 10 + p.Memory.Byte(0x1F7E); }),
            97);
  Press("cmdConnect");
  EXPECT_EQ(Find<TextBox>("txtPassWord(0)").Text(), "0");
}

TEST_F(TransferTest, EveryFaultOfADownloadIsToldAndLeavesTheScreenUsable) {
  struct Case {
    const char* Fault;
    QString Told;
    bool StaysConnected;
  };
  // Replies are counted from the password's, which is the first; block 300 is the 301st.
  const QString error = QStringLiteral("Download Error: ");
  for (const Case& c : {
           Case{"lost@301x3", error + u'1' + HalfNew, true},
           Case{"lost@301x2", "Download Complete", true},
           Case{"late:5000@301x3", error + u'1' + HalfNew, true},
           Case{"short:1@301x3", error + u'1' + HalfNew, true},
           Case{"junk:3@301x3", error + u'1' + HalfNew, true},
           Case{"checksum@301x3", error + u'1' + HalfNew, true},
           Case{"checksum@301x2", "Download Complete", true},
           Case{"split:4:20@301x20", "Download Complete", true},
           Case{"drop@301", error + u'1' + HalfNew, true},
           Case{"sum", error + u'2' + HalfNew, true},
           Case{"lost@642x3", error + u'3' + HalfNew, true},
           Case{"lost@1x3", "Connection To Tamberloom 3 Panel Lost", false},
       }) {
    SCOPED_TRACE(c.Fault);
    const QString address = OwnAddress();
    PanelThread panel(TcpPanel(address));
    const FastClock clock(20);
    ConnectTo(address);
    panel.AddFault(c.Fault);
    Download();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].Text, c.Told);
    EXPECT_EQ(Connected != 0, c.StaysConnected);
    ExpectUsable();
    Link.DisconnectQZ();
  }
}

TEST_F(TransferTest, EveryFaultOfAnUploadIsToldAndClearsTheDocument) {
  struct Case {
    const char* Fault;
    const char* Told;
  };
  for (const Case& c :
       {Case{"lost@300x3", "Upload Error: 19\nAll Host Data Cleared."},
        Case{"drop@300", "Upload Error: 19\nAll Host Data Cleared."},
        Case{"short:1@300x3", "Upload Error: 19\nAll Host Data Cleared."},
        Case{"nonhex:8@82", "Upload Error: 2\nAll Host Data Cleared."},
        Case{"sum", "Upload Error: 2\nAll Host Data Cleared."},
        Case{"lost@641x3", "Upload Error: 3\nAll Host Data Cleared."},
        Case{"junk:3@300x2", "Upload Complete"}, Case{"long:4@300", "Upload Complete"}}) {
    SCOPED_TRACE(c.Fault);
    const QString address = OwnAddress();
    PanelThread panel(TcpPanel(address));
    const FastClock clock(20);
    ConnectTo(address);
    PanelRecord.RelayTimerType(7) = 4;
    panel.AddFault(c.Fault);
    Press("cmdUpLoadFromT2");
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(LastMessage(), c.Told);
    const bool complete = messages.back().Title == "Upload";
    EXPECT_EQ(Connected != 0, complete);
    EXPECT_EQ(PanelRecord.RelayTimerType(7), 0);
    EXPECT_EQ(ConnectionType(), complete ? 2 : 0) << "the defaults are a direct line";
    ExpectUsable();
    Link.DisconnectQZ();
  }
}

TEST_F(TransferTest, CancelEndsATransferBetweenTwoBlocks) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  AtBlock(5, [this] { Press("cmdCancelUpDownLoad"); });
  Download();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Text, "Manual Download Cancel." + HalfNew);
  EXPECT_EQ(messages[0].Icon, MsgIcon::Exclamation);
  EXPECT_EQ(Connected, -1);
  ExpectUsable();

  PanelRecord.RelayTimerType(7) = 4;
  AtBlock(5, [this] { Press("cmdCancelUpDownLoad"); });
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Manual Upload Cancel.\nAll Host Data Cleared.");
  EXPECT_EQ(PanelRecord.RelayTimerType(7), 0);
  EXPECT_EQ(Connected, 0);
  EXPECT_TRUE(Shown(Find<OptionButton>("optComPort(0)")));
  ExpectUsable();
}

TEST_F(TransferTest, ADocumentThatFitsNoImageIsToldAndNothingIsLocked) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  PanelRecord.DMXOnLevel = 32767;
  Download();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.contains("Overflow"));
  EXPECT_EQ(Connected, -1);
  ExpectUsable();
}

TEST_F(TransferTest, WhatTheUserDoesDuringAWaitIsDoneInOrderAndTheWindowMayClose) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  panel.AddFault("late:50x*");
  const std::size_t before = panel.FramesFromHost().size();
  QTimer::singleShot(10, window.get(), [this] {
    for (int i = 0; i < 3; ++i) Press("cmdRefresh");
    Press("cmdSetQZClock");
    Find<Timer>("Timer1").Tick();
  });
  Press("cmdRefresh");
  EXPECT_EQ(panel.FramesFromHost().size(), before + 5);
  EXPECT_EQ(LinkStatus(), "Connected");

  // Disconnecting does not wait, and is no lost connection.
  QTimer::singleShot(10, window.get(), [this] { Press("cmdConnect"); });
  Press("cmdRefresh");
  EXPECT_EQ(Connected, 0);
  EXPECT_TRUE(messages.empty());
  ExpectUsable();

  panel.ClearFaults();
  ConnectTo(address);
  DataChanged = 0;
  AtBlock(100, [this] {
    DataChanged = 0;
    window->close();
  });
  Download();
  EXPECT_TRUE(ProgramEnding());
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(Connected, 0);
}

TEST_F(TransferTest, APseudoTerminalLinkedAsAPortCarriesATransfer) {
  PanelThread panel(PtyPanel());
  OpenConnect(0);
  EXPECT_TRUE(Find<OptionButton>("optComPort(6)").isEnabled());
  EXPECT_TRUE(Find<OptionButton>("optComPort(6)").toolTip().startsWith("COM7: /dev/pts/"));
  EXPECT_TRUE(Find<OptionButton>("optComPort(7)").toolTip().endsWith("not there"));
  Press("cmdConnect");
  ASSERT_EQ(Connected, -1);
  Download();
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage(panel);

  // A pulled plug ends the wait at once.
  panel.AddFault("drop@100");
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Upload Error: 19\nAll Host Data Cleared.");
  ExpectUsable();
}

TEST_F(TransferTest, AModemCallCarriesATransferAndIsHungUp) {
  PanelThread panel(PtyPanel(simulator::Modem::Options{false, std::chrono::milliseconds(20)}));
  const FastClock clock(20);
  PhoneNumber() = "555-1234";
  OpenConnect(1);
  Press("cmdConnect");
  ASSERT_EQ(LastMessage(), "Modem Connected");
  Download();
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage(panel);
  Press("cmdConnect");
  EXPECT_EQ(panel.FramesFromHost().back(), "[%%%%%");
  ExpectUsable();
}

TEST_F(TransferTest, APortInUseOrMissingIsNamed) {
  PanelThread panel(PtyPanel());
  const auto other = NewSerialControl();
  other->SetCommPort(7);
  other->SetPortOpen(true);
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

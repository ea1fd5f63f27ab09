#include "link/transfer_fixture.h"
#include "panel/live_project.h"

using simulator::Panel;

TEST_F(TransferTest, OnlyWhatHasChangedIsSentToAPanelThatHoldsWhatIsKnown) {
  ConnectToPanel("123456");
  /// How many commands it takes, and what is told.
  const auto send = [this](const char* password, const char* newPassword = nullptr) {
    messages.clear();
    const std::size_t before = panel->FramesFromHost().size();
    Press("cmdSendChanges");
    EXPECT_FALSE(Shown(Find<Button>("cmdSendChanges")));
    TypePassWord("txtPassWord", password);
    if (newPassword) {
      Click(Find<CheckBox>("chkChangePanelPassWord"));
      TypePassWord("txtNewPassWord", newPassword);
    }
    Press("cmdPassWordContinue");
    ExpectUsable();
    return panel->FramesFromHost().size() - before;
  };
  answers = {MsgAnswer::Cancel};
  EXPECT_EQ(send("123456"), 1U);
  EXPECT_TRUE(LastMessage().startsWith("What This Panel Holds Is Not Known"));
  Download("123456");
  EXPECT_EQ(send("123456"), 2U);
  EXPECT_TRUE(LastMessage().startsWith("Nothing Has Changed"));
  PanelRecord.TimerTime(3) = 9;
  EXPECT_EQ(send("123456"), 4U);
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage();
  FennlinkRecords(9).DeviceName = "STAIRS";
  EXPECT_EQ(send("123456", "908070"), 5U);
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage();

  panel->With([](Panel& p) { p.Memory.SetByte(0x1E03, 4); });
  PanelRecord.TimerTime(3) = 10;
  answers = {MsgAnswer::Cancel};
  EXPECT_EQ(send("908070"), 2U);
  EXPECT_TRUE(LastMessage().startsWith("The Panel Holds Something Else"));
  answers = {MsgAnswer::Yes};
  EXPECT_GT(send("908070"), 640U);
  EXPECT_EQ(LastMessage(), "Download Complete");
  Menu("mnuCapturePresets");
  Press("cmdCapture(4)");
  Menu("mnuConnect");
  answers = {MsgAnswer::No};
  EXPECT_EQ(send("908070"), 1U) << "a captured preset is not known";
  EXPECT_NE(window->LoadedForm(Screen::Document), nullptr);
  Press("cmdComparePanel");
  Menu("mnuConnect");
  PanelRecord.TimerTime(3) = 11;
  EXPECT_LT(send("908070"), 10U) << "but it is once it has been read to compare";
  EXPECT_EQ(LastMessage(), "Download Complete");
  ExpectMemoryIsImage();
}

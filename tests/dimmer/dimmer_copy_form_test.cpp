#include "dimmer/dimmer_copy_form.h"

#include "panel/live_dimmers.h"
#include "screen_test.h"

class DimmerCopyTest : public ScreenTest {
 protected:
  /// Opens output 2 of device 0B, whose every element is a number of its own, and leaves it to
  /// `work` to end the dialog that the button opens.
  void Copy(const char* button, std::function<void()> work) {
    for (int element = 0; element < 128; ++element) {
      DimmerBlock(10 * 512 + 128 + element) = static_cast<Int16>(element + 100);
    }
    DimmerBlock(10 * 512 + 128) = 13;
    DimSetEnabled(10, 1);
    Menu("mnuConfigureDimmers");
    Choose("cboDDev", 10);
    Choose("cboDOut", 1);
    before = DimmerBlock;
    bool ran = false;
    QTimer::singleShot(0, window.get(), [&] {
      ran = true;
      work();
      if (auto* left = window->findChild<QDialog*>()) left->reject();
    });
    Press(button);
    EXPECT_TRUE(ran);
  }

  /// Which elements of an output differ from before.
  std::vector<int> Changed(int dev, int out) const {
    std::vector<int> elements;
    for (int element = 0; element < 128; ++element) {
      const int at = dev * 512 + out * 128 + element;
      if (DimmerBlock(at) != before(at)) elements.push_back(element);
    }
    return elements;
  }

  DimmerBlockType before;
};

TEST_F(DimmerCopyTest, TheConfigurationGoesToTheOutputsTickedAndEnablesThem) {
  Copy("cmdCopyConfig", [this] {
    QTest::keyClick(&Find<Button>("cmdAllDev(1)"), Qt::Key_Return);
    Click(Find<CheckBox>("chkDst(8)"));
    EXPECT_EQ(Find<CheckBox>("chkDst(47)").text(), "D:12.4");
    Press("cmsCopy");
  });
  EXPECT_EQ(OnlyMessage(), "Copy Complete");
  EXPECT_EQ(messages[0].Title, "Copy Settings");
  const std::vector<int> fields = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
  for (int out = 0; out < 4; ++out) EXPECT_EQ(Changed(1, out), fields) << out;
  EXPECT_EQ(Changed(2, 0), fields);
  EXPECT_EQ(Changed(2, 1), std::vector<int>());
  EXPECT_EQ(DimGetEnabled(1) + DimGetEnabled(2) + DimGetEnabled(3), 2);
  for (const int element : {0, 2, 5, 6, 7, 9, 11, 13, 14, 15}) {
    EXPECT_EQ(DimmerBlock(512 + element), DimmerBlock(10 * 512 + 128 + element)) << element;
  }
  EXPECT_EQ(DimmerBlock(512 + 1), 102) << "101 is 40 percent, which is stored as 102";
}

TEST_F(DimmerCopyTest, TheSlotsTickedGoToTheOutputsTicked) {
  Copy("cmdCopyControl", [this] {
    for (const char* slot : {"chkCNum(3)", "chkCNum(15)"}) Click(Find<CheckBox>(slot));
    for (const char* button : {"cmdAllOut(2)", "cmdCopy"}) Press(button);
  });
  EXPECT_EQ(messages.size(), 1U);
  for (int dev = 0; dev < 12; ++dev) {
    EXPECT_EQ(DimGetEnabled(static_cast<Int16>(dev)), 1);
    EXPECT_EQ(Changed(dev, 2), (std::vector<int>{19, 31, 51, 63, 67, 79, 83, 95, 99, 111}));
    EXPECT_EQ(Changed(dev, 3), std::vector<int>());
  }
}

TEST_F(DimmerCopyTest, UnloadingTheScreenClosesTheDialog) {
  Copy("cmdCopyConfig", [this] {
    ShowForm(Screen::About);
    UnloadAllForms();
    EXPECT_FALSE(Find<QDialog>("frmT3DimCopyCnf").isVisible());
  });
  EXPECT_TRUE(messages.empty());
}

#include "screen_test.h"

class FennlinkControlTest : public ScreenTest {
 protected:
  FennlinkRecord& Device() { return FennlinkRecords(7); }
  void Open(const char* entry, Int16 type, std::initializer_list<Int16> inputTypes = {}) {
    Device().DeviceType = type;
    int input = 0;
    for (const Int16 inputType : inputTypes) Device().DeviceInputType(input++) = inputType;
    Menu(entry);
    EXPECT_TRUE(messages.empty());
    Find<ComboBox>("cboFennlinkDevice").SetListIndex(7);
    DataChanged = 0;
  }
  QString Actions() {
    const auto& list = Find<InPlaceList>("cboControl");
    QStringList items;
    for (int i = 0; i < list.ListCount(); ++i) items << list.List(i);
    return items.join(u'/');
  }
  int Rows() {
    int shown = 0;
    for (int row = 0; row < ItemCount; ++row) shown += Shown(Cell("lblControl", row)) ? 1 : 0;
    return shown;
  }
  QString Text(const char* label) { return Find<Label>(QString::fromLatin1(label)).Caption(); }
};

TEST_F(FennlinkControlTest, TheDeviceTypeDecidesTheInputsAndTheirWords) {
  Device().DeviceName = "A%1%2";
  Open("mnuFennlinkInputToRelayControl", 6, {8});
  auto& inputs = Find<ComboBox>("cboInput");
  EXPECT_EQ(Text("lblDeviceType"), " 6/7/8 Button");
  EXPECT_EQ(inputs.count(), 8);
  EXPECT_EQ(inputs.List(7), "A%1%2.8");
  EXPECT_EQ(Text("lblInputType"), " 2 Step");
  EXPECT_EQ(Actions(), "");
  EXPECT_EQ(Rows(), 0);
  EXPECT_TRUE(Shown(Find<Label>("lblNoActions")));

  Choose("cboInput", 5);
  EXPECT_EQ(Rows(), 4);
  Find<ComboBox>("cboFennlinkDevice").SetListIndex(0);
  EXPECT_EQ(Text("lblDeviceType"), " None");
  EXPECT_FALSE(Shown(inputs));
  EXPECT_FALSE(Shown(Find<Label>("lblNoActions")));
  Find<ComboBox>("cboFennlinkDevice").SetListIndex(7);
  EXPECT_EQ(inputs.ListIndex(), 0);

  Open("mnuFennlinkInputToGroupControl", 8, {0});
  EXPECT_EQ(Text("lblInputType"), " Maint. On/Off");
  EXPECT_EQ(Actions(), "No Action/On Only/Off Only/On And Off");
  EXPECT_EQ(Rows(), 48);
  Open("mnuFennlinkInputToGroupControl", 9, {-1});
  EXPECT_EQ(Text("lblInputType"), " Maintained On/Off");
  EXPECT_EQ(Actions(), "No Action/On Only/Off Only/On And Off/Blink Alert");
  for (const Int16 type : std::initializer_list<Int16>{10, -5, 32767}) {
    Open("mnuFennlinkInputToRelayControl", type);
    EXPECT_EQ(Text("lblDeviceType"), " None");
    EXPECT_EQ(Rows(), 0);
  }
}

TEST_F(FennlinkControlTest, ATimerDisableInputHasTimersForRelaysAndNothingForGroups) {
  Device().DeviceRelayControl(0, 40) = 9;
  Device().DeviceGroupControl(0, 40) = 9;
  Open("mnuFennlinkInputToRelayControl", 7, {8});
  EXPECT_EQ(Actions(), "No Action/Disable");
  EXPECT_EQ(Rows(), 48);
  EXPECT_EQ(Caption("lblRelayName", 40), "TIMER 41");
  EXPECT_EQ(Device().DeviceRelayControl(0, 40), 1);
  Open("mnuFennlinkInputToGroupControl", 7);
  EXPECT_EQ(Actions(), ".");
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(Device().DeviceGroupControl(0, 40), 0);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(FennlinkControlTest, ChoicesGoToTheInputThatIsSelected) {
  Device().DevicePreset(1) = 12;
  Open("mnuFennlinkInputToRelayControl", 2, {2, 1});
  Click(Cell("lblControl", 3));
  EXPECT_EQ(DataChanged, -1);
  ChooseInPlace("cboControl", 1);
  EXPECT_EQ(Device().DeviceRelayControl(0, 3), 1);
  EXPECT_EQ(Caption("lblControl", 3), "Timed On ");

  Device().DeviceRelayControl(1, 5) = 4;
  Choose("cboInput", 1);
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(Device().DeviceRelayControl(1, 5), 0);
  EXPECT_TRUE(Shown(Find<ComboBox>("cboPreset")));
  EXPECT_EQ(Find<ComboBox>("cboPreset").ListIndex(), 12);
  Choose("cboPreset", 47);
  EXPECT_EQ(Device().DevicePreset(1), 47);
  EXPECT_EQ(Device().DevicePreset(0), 0);
}

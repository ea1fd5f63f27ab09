#include "screen_test.h"

class FennlinkControlTest : public ScreenTest {
 protected:
  void Open(const char* table, Int16 type, Int16 firstInputType = 0) {
    device.DeviceType = type;
    device.DeviceInputType(0) = firstInputType;
    Menu((QByteArray("mnuFennlinkInputTo") + table + "Control").constData());
    EXPECT_TRUE(messages.empty());
    Find<ComboBox>("cboFennlinkDevice").SetListIndex(7);
    DataChanged = 0;
  }
  /// The type of the input, and the list of its actions.
  QString Offer() {
    const auto& list = Find<InPlaceList>("cboControl");
    QString offer = Text("lblInputType") + u':';
    for (int i = 0; i < list.ListCount(); ++i) offer += list.List(i);
    return offer;
  }
  int Rows() {
    int rows = 0;
    while (rows < ItemCount && Shows("lblControl", rows)) ++rows;
    return rows;
  }

  FennlinkRecord& device = FennlinkRecords(7);
};

TEST_F(FennlinkControlTest, TheTypesOfDeviceAndInputDecideWhatThereIsToChoose) {
  device.DeviceRelayControl(0, 40) = 9;
  device.DeviceGroupControl(0, 40) = 9;
  // Table, types of device and input; the offer, the rows and the last cell.
  const std::tuple<const char*, Int16, Int16, QString, int, int> cases[] = {
      {"Group", 9, 10, " Maintained On/Off:No ActionOn OnlyOff OnlyOn And OffBlink Alert", 48, 4},
      {"Relay", 7, 8, " Timer Disable:No ActionDisable", 48, 1},
      {"Group", 7, 8, " Timer Disable:.", 0, 0},
      {"Relay", 6, 8, " 2 Step:", 0, 0},
  };
  for (const auto& [table, type, inputType, offer, rows, lastCell] : cases) {
    Open(table, type, inputType);
    EXPECT_EQ(Offer(), offer);
    EXPECT_EQ(Rows(), rows) << offer.toStdString();
    const bool relays = table == std::string("Relay");
    EXPECT_EQ((relays ? device.DeviceRelayControl : device.DeviceGroupControl)(0, 40), lastCell);
    EXPECT_EQ(Shows("lblNoActions"), rows == 0);
    EXPECT_EQ(DataChanged, 0);
  }
  for (const int type : {10, -5, 32767}) {
    Open("Relay", static_cast<Int16>(type));
    EXPECT_EQ(Text("lblDeviceType"), " None");
    EXPECT_FALSE(Shows("cboInput") || Rows() > 0);
  }
}

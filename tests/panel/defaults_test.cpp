#include "panel/document_fixture.h"

class DefaultsTest : public DocumentTest {
 protected:
  static std::vector<int> Values(auto... values) { return {values...}; }
};

TEST_F(DefaultsTest, NewClearsItemsAndConnectionButNotSpareElements) {
  PanelRecord.PanelName = PhoneNumber() = TcpAddress() = PanelRecord.RelayName(48) = "old";
  ConnectionType() = PanelRecord.ComPort = PanelRecord.TimerDays(48) = 2;
  PanelRecord.TimerRelayControl.elements.fill(2);
  PanelRecord.NormalCloseTime.elements.fill(9);
  PanelRecord.IOCount.elements.fill(9);
  auto& device = FennlinkRecords(10);
  device.DeviceReserved(23) = 77;
  device.DeviceTimedOnTime.elements.fill(500);
  device.DeviceGroupControl.elements.fill(4);
  DimmerBlock.elements.fill(5);
  DataChanged = -1;

  LoadDefaults();
  EXPECT_EQ(PanelRecord.PanelName + PhoneNumber() + TcpAddress(), "");
  EXPECT_EQ(PanelRecord.RelayName(8) + PanelRecord.PresetName(47), "RELAY 09PRESET 48");
  EXPECT_EQ(device.DeviceName + FennlinkRecords(64).DeviceName, "FLINK 0AFLINK 40");
  EXPECT_EQ(Values(ConnectionType(), PanelRecord.ComPort, PanelRecord.TimerRelayControl(47, 47),
                   PanelRecord.NormalCloseTime(6), PanelRecord.DateCloseTime(12, 31)),
            Values(0, 1, 0, 84, 100));
  EXPECT_EQ(Values(device.DeviceTimedOnTime(7), device.DeviceGroupControl(7, 47), DimmerBlock(33),
                   DimmerBlock(11 * 512 + 3 * 128 + 10), DataChanged),
            Values(10, 0, 0, 127, -1));

  EXPECT_EQ(PanelRecord.RelayName(48), "old");
  EXPECT_EQ(Values(PanelRecord.TimerDays(48), PanelRecord.TimerRelayControl(48, 47),
                   PanelRecord.TimerRelayControl(47, 48), PanelRecord.NormalCloseTime(7),
                   PanelRecord.IOCount(12), device.DeviceReserved(23), device.DeviceTimedOnTime(8),
                   device.DeviceGroupControl(7, 48)),
            Values(2, 2, 2, 9, 9, 77, 500, 4));
}

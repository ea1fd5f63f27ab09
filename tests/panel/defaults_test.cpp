#include "panel/document_fixture.h"

using DefaultsTest = DocumentTest;

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
  const int values[][2] = {{ConnectionType(), 0},
                           {PanelRecord.ComPort, 1},
                           {PanelRecord.LocalPilot(47), 47},
                           {PanelRecord.TimerRelayControl(47, 47), 0},
                           {PanelRecord.NormalCloseTime(6), 84},
                           {PanelRecord.DateCloseTime(12, 31), 100},
                           {PanelRecord.DSTEnabled, -1},
                           {PanelIOCount(), 4},
                           {device.DeviceTimedOnTime(7), 10},
                           {device.DeviceGroupControl(7, 47), 0},
                           {DimmerBlock(33), 0},
                           {DimmerBlock(11 * 512 + 3 * 128 + 10), 127},
                           {DataChanged, -1}};
  for (const auto& [value, expected] : values) EXPECT_EQ(value, expected);

  EXPECT_EQ(PanelRecord.RelayName(48), "old");
  const int spares[][2] = {{PanelRecord.TimerDays(48), 2},
                           {PanelRecord.TimerRelayControl(48, 47), 2},
                           {PanelRecord.TimerRelayControl(47, 48), 2},
                           {PanelRecord.NormalCloseTime(7), 9},
                           {PanelRecord.IOCount(12), 9},
                           {device.DeviceReserved(23), 77},
                           {device.DeviceTimedOnTime(8), 500},
                           {device.DeviceGroupControl(7, 48), 4}};
  for (const auto& [value, expected] : spares) EXPECT_EQ(value, expected);
}

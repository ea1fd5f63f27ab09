#include "link/panel_host.h"
#include "panel/panel_record.h"

using simulator::Panel;
using simulator::PanelThread;

class ConnectTest : public PanelHostTest {};

TEST_F(ConnectTest, ConnectsDownloadsUploadsAndDisconnectsOverTcp) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  EXPECT_EQ(Connected, -1);
  EXPECT_EQ(LinkStatus(), "Connected");
  Download();
  EXPECT_EQ(LastMessage(), "Download Complete");
  const std::string content = panel.With([](Panel& p) { return p.Memory.Content(); });
  for (int i = 0; i < PanelImageSize; ++i) {
    ASSERT_EQ(static_cast<unsigned char>(content[static_cast<std::size_t>(i)]), PanelImage(i) & 255)
        << i;
  }
  Press("cmdUpLoadFromT2");
  EXPECT_EQ(LastMessage(), "Upload Complete");
  Press("cmdConnect");
  EXPECT_EQ(Connected, 0);
}

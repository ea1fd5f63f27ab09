#include "dimmer/dimmer_output_form.h"

#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "screen_test.h"

class DimmerOutputTest : public ScreenTest {
 protected:
  void Open() {
    DimSetEnabled(0, 1);
    DataChanged = 0;
    Menu("mnuConfigureDimmers");
  }

  /// The names of `lists` that are shown, joined by blanks.
  QString ShownOf(const QStringList& lists) {
    QStringList shown;
    for (const QString& name : lists) {
      if (Shows(name)) shown << name;
    }
    return shown.join(u' ');
  }

  QPoint At(double x, double y) {
    auto& graph = Find<QWidget>("picScale");
    return QPointF(x * graph.width() / ResponseCurve::Width,
                   y * graph.height() / ResponseCurve::Height)
        .toPoint();
  }
};

TEST_F(DimmerOutputTest, LooksFirstAtTheFirstOutputAndChangesNothing) {
  const auto before = DimmerBlock;
  Open();
  EXPECT_EQ(ChosenText("cboMaxLevel"), "Max Output: 100%");
  EXPECT_EQ(Caption("lblSummary", 2), " 03-Unused");
  EXPECT_EQ(ShownOf({"frmConfig", "frmScale", "cboPCDev", "lblPCTSource", "cboTarget"}),
            "frmConfig");
  const std::pair<const char*, const char*> lastItems[] = {
      {"cboDDev", "Dimmer Output Device: 0C"},    {"cboPCDev", "Device: 40"},
      {"cboFadeRate", "Fade Rate: 300 Sec"},      {"cboDMX", "DMX Channel: 512"},
      {"cboTarget", "Target: 255/255 (1800 fc)"}, {"cboPCTrack", "PC Tracking: 2 point"}};
  for (const auto& [name, text] : lastItems) {
    const auto& list = Find<ComboBox>(name);
    EXPECT_EQ(list.List(list.count() - 1), text);
  }

  Choose("cboDDev", 11);
  EXPECT_EQ(ShownOf({"frmConfig", "lblNotEnabled"}), "lblNotEnabled");
  DimSetEnabled(0, 0);
  EXPECT_EQ(DimmerBlock, before);
  Click(Find<CheckBox>("chkEnabled"));
  EXPECT_EQ(DimGetEnabled(11), 1);
  EXPECT_TRUE(Shows("frmConfig"));
}

TEST_F(DimmerOutputTest, ChoicesAreStoredInTheOutputChosen) {
  Open();
  Choose("cboDOut", 3);
  Choose("cboPowerOnLevel", 50);
  for (const char* list : {"cboMaxLevel", "cboMinLevel"}) Choose(list, 0);
  EXPECT_EQ(DimGetMinPC(0, 3), -1);
  EXPECT_EQ(DimGetMaxPC(0, 3), -1);
  EXPECT_EQ(DimGetMax(0, 3), 100) << "the photocell leaves the level";
  Choose("cboMinLevel", 31);
  EXPECT_EQ(DimGetMinPC(0, 3), 0);
  Choose("cboPCTrack", 1);
  Choose("cboPCDev", 63);
  EXPECT_TRUE(Shows("frmScale"));
  EXPECT_EQ(DimGetPCDev(0, 3), 63);

  for (const auto& [output, level] : {std::pair{0, 100}, {3, 50}}) {
    Choose("cboDOut", output);
    EXPECT_EQ(Chosen("cboPowerOnLevel"), level);
  }
  EXPECT_EQ(Chosen("cboMinLevel"), 31);
}

TEST_F(DimmerOutputTest, TheOtherTrackingModesAreShownButNotOffered) {
  DimSetTrackMode(0, 0, TrackSetpoint);
  DimSetTrackMode(0, 1, Track3Point);
  Open();
  EXPECT_EQ(Chosen("cboPCTrack"), -1);
  const QStringList parts = {"frmScale", "cboPCDev", "lblPCTSource", "cboTarget"};
  EXPECT_EQ(ShownOf(parts), "cboPCDev lblPCTSource cboTarget");
  Choose("cboDOut", 1);
  EXPECT_EQ(ShownOf(parts), "frmScale cboPCDev lblPCTSource");
  EXPECT_TRUE(Find<frmScale>("frmScale").Curve().shpGrip(3).Visible);
  EXPECT_EQ(DimGetTrackMode(0, 0) * 10 + DimGetTrackMode(0, 1), 23);
}

TEST_F(DimmerOutputTest, ASlotOffersWhatItsTypeNeeds) {
  const QStringList lists = {"cboCODev", "cboCOInp",  "cboCOTmr",    "cboCOPrs",
                             "cboCOAct", "cboCOFade", "cboCORevert", "cboCONod"};
  Open();
  EXPECT_EQ(ShownOf(lists + QStringList{"lblSource", "lblAction"}), "") << "captions of nothing";
  Click(Cell("lblSummary", 15));
  EXPECT_EQ(Chosen("cboCONum"), 15);
  EXPECT_EQ(Cell("lblSummary", 15).BackColor(), Colors::LightGrey);
  Choose("cboCOTyp", ControlInvertInput);
  EXPECT_EQ(ShownOf(lists), "cboCODev cboCOInp cboCOAct cboCOFade cboCORevert");
  EXPECT_EQ(ShownOf({"lblSource", "lblAction"}), "lblSource lblAction");
  for (const int beyond : {20, 8}) {
    Choose("cboCODev", 0);
    Choose("cboCOInp", beyond);
    EXPECT_EQ(Caption("lblSummary", 15),
              QStringLiteral(" 16-HW:-I:%1-Revert To Photocell-Fade-Revert When Input Opens")
                  .arg(beyond + 1, 2, 10, QLatin1Char('0')));
    Choose("cboCODev", 64);
    EXPECT_EQ(DimGetCtlNumber(0, 0, 15), 0) << "a device has no such input";
  }
  EXPECT_EQ(Find<ComboBox>("cboCOInp").count(), 8);
  for (const auto& [list, item] :
       {std::pair{"cboCOInp", 7}, {"cboCOAct", 53}, {"cboCOFade", 1}, {"cboCORevert", 1}}) {
    Choose(list, item);
  }
  EXPECT_EQ(Caption("lblSummary", 15), " 16-D:40-I:08-Goto 50%-Instant-Never Revert");

  Choose("cboCOTyp", ControlTimer);
  EXPECT_EQ(ShownOf(lists), "cboCOTmr cboCOAct cboCOFade cboCORevert");
  Choose("cboCOTmr", 47);
  EXPECT_EQ(Caption("lblSummary", 15), " 16-T:48-Goto 50%-Instant-Never Revert");
  Choose("cboCOTyp", ControlPreset);
  EXPECT_EQ(ShownOf(lists), "cboCOPrs cboCOAct cboCOFade cboCORevert");
  Choose("cboCOTyp", ControlInput);
  EXPECT_EQ(DimGetCtlNumber(0, 0, 15), 0) << "showing a device's input limits the number";

  const auto before = DimmerBlock;
  for (const int slot : {0, 15}) Choose("cboCONum", slot);
  EXPECT_EQ(Chosen("cboCOTyp"), ControlInput);
  EXPECT_EQ(DimmerBlock, before);
}

TEST_F(DimmerOutputTest, TheCurveFollowsThePointerAndTheKeys) {
  DimSetTrackMode(0, 0, Track3Point);
  Open();
  auto& graph = Find<QWidget>("picScale");
  auto& scale = Find<frmScale>("frmScale");
  QTest::mouseMove(&graph, At(1000, 2500));
  EXPECT_EQ(DataChanged, -1) << "moving over the graph stores";
  EXPECT_FALSE(Shows("lblPercent"));

  QTest::mouseClick(&graph, Qt::LeftButton, {}, At(1000, 2500));
  QTest::keyClick(&graph, Qt::Key_Right);
  EXPECT_EQ(DimGetAIn(0, 0), 0) << "no grip is selected";

  QTest::mousePress(&graph, Qt::LeftButton, {}, At(45, 45));
  EXPECT_EQ(scale.SelectedGrip, 1);
  EXPECT_TRUE(Shows("lblFootCandle"));
  QTest::mouseMove(&graph, At(4200, 1440));
  EXPECT_EQ(scale.Curve().shpGrip(1).Left, 3825);
  EXPECT_EQ(scale.Curve().shpGrip(3).Left, 3825) << "B is taken along";
  QTest::mouseMove(&graph, At(3000, 1440));
  QTest::mouseRelease(&graph, Qt::LeftButton, {}, At(3000, 1440));
  EXPECT_FALSE(Shows("lblPercent"));
  const Int16 dragged = DimGetAIn(0, 0);
  EXPECT_NEAR(dragged, 200, 1);
  EXPECT_NEAR(DimGetAOut(0, 0), 50, 1);

  QTest::keyClick(&graph, Qt::Key_Right);
  EXPECT_EQ(DimGetAIn(0, 0), dragged + 1);
  EXPECT_EQ(Find<Label>("lblPercent").Caption(), QStringLiteral("%1/255").arg(dragged + 1));
  QTest::mouseClick(&graph, Qt::LeftButton, {}, {graph.width() - 1, graph.height() - 6});
  EXPECT_EQ(scale.SelectedGrip, 2) << "C is hit on the edge of its square";
  EXPECT_EQ(DimGetCIn(0, 0), 255);
  QTest::keyClick(&graph, Qt::Key_A);
  QTest::keyClick(&graph, Qt::Key_Left);
  EXPECT_EQ(DimGetAIn(0, 0), dragged);
}

TEST_F(DimmerOutputTest, KeysLeaveTheHiddenPointOfATwoPointCurveAlone) {
  DimSetTrackMode(0, 0, Track2Point);
  Open();
  auto& scale = Find<frmScale>("frmScale");
  scale.picScale_MouseDown(1, 0, 1920, 1440);
  EXPECT_EQ(scale.SelectedGrip, 3) << "a press where B lies hidden takes it";
  scale.picScale_MouseMove(1, 0, 1500, 288);
  scale.picScale_MouseUp(1, 0, 1500, 288);
  EXPECT_EQ(DimGetBIn(0, 0) * 1000 + DimGetBOut(0, 0), 100090);
  scale.picScale_KeyDown(37, 0);
  EXPECT_EQ(DimGetBIn(0, 0), 100);
  EXPECT_FALSE(Shows("lblPercent"));
}

TEST_F(DimmerOutputTest, NonsenseIsShownAsNothingAndKept) {
  for (int element = 0; element < 128; ++element) {
    DimmerBlock(element) = 200;
    DimmerBlock(128 + element) = -1;
  }
  DimmerBlock(13) = 9;  // DMX channel 2504.
  DimSetEnabled(0, 1);
  const auto before = DimmerBlock;
  Open();
  EXPECT_EQ(Chosen("cboDMX") + Chosen("cboFadeRate") + Chosen("cboPCDev"), -3);
  Choose("cboDOut", 1);
  EXPECT_EQ(Chosen("cboCOTyp"), -1);
  EXPECT_EQ(Caption("lblSummary", 0), " 01--Instant");
  for (int slot = 0; slot < 16; ++slot) Choose("cboCONum", slot);
  EXPECT_EQ(DimmerBlock, before);
  EXPECT_TRUE(messages.empty());
}

TEST_F(DimmerOutputTest, ALevelThatOverflowsIsToldOnceAndLeavesItsListEmpty) {
  DimSetTrackMode(0, 0, Track2Point);
  DimmerBlock(1) = 32767;
  DimmerBlock(8) = 328;
  DimSetFade(0, 0, 5);
  DimSetCtlType(0, 0, 0, ControlTimer);
  Open();
  EXPECT_TRUE(OnlyMessage().startsWith("Overflow"));
  EXPECT_EQ(Chosen("cboPowerOnLevel"), -1);
  EXPECT_EQ(Chosen("cboFadeRate"), 5);
  EXPECT_EQ(Chosen("cboCOTyp"), ControlTimer);
  EXPECT_FALSE(Shows("frmScale"));
  EXPECT_EQ(DimmerBlock(8), 328);

  Choose("cboDOut", 1);
  EXPECT_EQ(messages.size(), 1U);
  Choose("cboDOut", 0);
  EXPECT_EQ(messages.size(), 2U);
}

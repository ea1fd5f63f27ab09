#include <QRegularExpression>
#include <QScrollArea>
#include <set>

#include "link/panel_host.h"
#include "nonsense_panel.h"
#include "panel/dimmer_fields.h"
#include "panel/fields.h"

namespace {

/// What a screen reads at once in 16-bit arithmetic, which overflows on some damaged records.
enum class Reads { Nothing, Points, PointsOfPanel, Levels };

const std::map<Screen, Reads> ReadsOf = {
    {Screen::RelayStatus, Reads::PointsOfPanel},  {Screen::RelayOutputOptions, Reads::Points},
    {Screen::RelayGrouping, Reads::Points},       {Screen::InputStatus, Reads::PointsOfPanel},
    {Screen::InputOptions, Reads::Points},        {Screen::InputToRelayControl, Reads::Points},
    {Screen::InputToGroupControl, Reads::Points}, {Screen::LocalInputPilots, Reads::Points},
    {Screen::TimerToRelayControl, Reads::Points}, {Screen::OffHoursSweepRelays, Reads::Points},
    {Screen::InputActiveTimes, Reads::Points},    {Screen::EditPresets, Reads::Points},
    {Screen::DimmerOutput, Reads::Levels},        {Screen::DimmerRelayControl, Reads::Levels},
    {Screen::EditRelayNames, Reads::Points},      {Screen::EditInputNames, Reads::Points},
};

/// The screens that store what they show, or cut to it.
const std::set<Screen> StoreWhatTheyShow = {Screen::InputToRelayControl,
                                            Screen::InputToGroupControl,
                                            Screen::FennlinkInputToRelayControl,
                                            Screen::FennlinkInputToGroupControl,
                                            Screen::TimersConfigure,
                                            Screen::DaylightSavingTime,
                                            Screen::DimmerOutput,
                                            Screen::DimmerRelayControl};

class EveryScreenTest : public PanelHostTest {
 protected:
  static constexpr Int16 overflowing = 32767;

  static void FillFull() {
    const Int16 type = ConnectionType();
    LoadDefaults();
    ConnectionType() = type;
    PanelRecord.IOCount.elements.fill(1);
  }

  /// Opens every leaf of the menu but those that act on the file.
  void OpenAll(const std::string& panel, bool pointsOverflow = false, bool levelsOverflow = false) {
    for (const MenuEntry& entry : MenuTable()) {
      if (entry.Opens == Screen::None) continue;
      const QString name = QString::fromLatin1(entry.Name);
      const auto* action = window->findChild<QAction*>(name);
      EXPECT_EQ(action->isEnabled(), name != "mnuRelayDrive") << entry.Name;
      if (!action->isEnabled()) continue;
      messages.clear();
      const std::string before = Bytes();
      Menu(entry.Name);
      EXPECT_TRUE(Bytes() == before || StoreWhatTheyShow.contains(entry.Opens))
          << entry.Opens << " on " << panel;
      ChildForm* form = window->LoadedForm(entry.Opens);
      ASSERT_TRUE(form && form->isVisible()) << entry.Opens << " on " << panel;
      const auto found = ReadsOf.find(entry.Opens);
      const Reads reads = found == ReadsOf.end() ? Reads::Nothing : found->second;
      const bool points =
          reads == Reads::Points || (reads == Reads::PointsOfPanel && Connected != 0);
      const bool fails = (pointsOverflow && points) || (levelsOverflow && reads == Reads::Levels);
      EXPECT_EQ(messages.size(), fails ? 1U : 0U)
          << entry.Opens << " on " << panel << ": "
          << (messages.empty() ? "" : messages.front().Text.toStdString());
    }
    for (const Screen sheet : {Screen::AllTimers, Screen::AllDates}) {
      messages.clear();
      const std::string before = Bytes();
      window->UnloadAllForms();
      window->ShowForm(sheet);
      EXPECT_TRUE(Bytes() == before) << sheet << " on " << panel;
      EXPECT_TRUE(messages.empty()) << sheet << " on " << panel;
    }
    for (Int16 type = 0; type < 7; ++type) {
      PanelRecord.AddOnModuleType = type;
      messages.clear();
      const std::string before = Bytes();
      Menu("mnuAddOnModules");
      EXPECT_TRUE(Bytes() == before) << type << " on " << panel;
      EXPECT_EQ(messages.size(), pointsOverflow && type == 1 ? 1U : 0U) << type << " on " << panel;
    }
  }

  /// On panels new, full and of nonsense. The connection's type stays what it is.
  void OpenAllOnEveryPanel() {
    OpenAll("a new panel");
    FillFull();
    OpenAll("a full panel");
    for (const auto& [code, blocks] :
         {std::pair<Int16, Int16>{999, 13}, {-1, 0}, {-32768, 13}, {32767, overflowing}}) {
      const Int16 type = ConnectionType();
      FillWithNonsense(code, blocks);
      ConnectionType() = type;
      OpenAll("codes of " + std::to_string(code), blocks == overflowing, code != -1);
      ConnectionType() = type;
    }
  }
};

TEST_F(EveryScreenTest, OpensWithoutAPanel) {
  OpenAllOnEveryPanel();
}

TEST_F(EveryScreenTest, OpensConnectedToAPanel) {
  const QString address = OwnAddress();
  simulator::PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  OpenAllOnEveryPanel();
  EXPECT_EQ(Connected, -1);
}

TEST_F(EveryScreenTest, FitsTheWindowAtEverySizeOfText) {
  const QFont usual = QApplication::font();
  for (const int points : {9, 10, 11, 14}) {
    QFont font = usual;
    font.setPointSize(points);
    QApplication::setFont(font);
    StartAnew();
    window->showNormal();  // As where the screen has the room.
    QApplication::processEvents();
    window->MDIForm_Resize();
    FillFull();
    for (NameArray* names : {&PanelRecord.RelayName, &PanelRecord.GroupName, &PanelRecord.InputName,
                             &PanelRecord.TimerName, &PanelRecord.PresetName}) {
      for (int i = 0; i < ItemCount; ++i) (*names)(i) = "WWWWWWWWWW";
    }
    OnEveryScreen([&](Screen, ChildForm& form) {
      auto* page = qobject_cast<QScrollArea*>(form.parentWidget()->parentWidget());
      ASSERT_NE(page, nullptr);
      for (const auto* bar : {page->horizontalScrollBar(), page->verticalScrollBar()}) {
        EXPECT_EQ(bar->maximum(), 0) << "at " << points << " in " << window->width();
      }
      for (const auto* cell : form.findChildren<Label*>(
               QRegularExpression("^lbl(TimerType|PowerOnType|PilotSource)"))) {
        if (!cell->isVisible() || !cell->Click) continue;
        EXPECT_EQ(cell->CutText(), "") << "at " << points << " " << cell->Caption().toStdString();
      }
    });
  }
  QApplication::setFont(usual);
}

/// With all that they show of a panel, in what the window leaves of the 768 lines of a small
/// display.
TEST_F(EveryScreenTest, NeedsNoMoreThanASmallDisplayWhileConnected) {
  constexpr int room = 620;
  const QString address = OwnAddress();
  simulator::PanelThread panel(TcpPanel(address));
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSize(14);
  QApplication::setFont(large);
  StartAnew();
  ConnectTo(address);
  FillFull();
  OnEveryScreen([&](Screen, ChildForm& form) {
    EXPECT_LE(form.minimumSizeHint().height(), room);
    EXPECT_LE(form.heightForWidth(form.width()), room) << "a page scrolls by it";
  });
  EXPECT_EQ(Connected, -1);
  QApplication::setFont(usual);
}

/// The table of fields leads to controls that are there, whatever their screen shows at the moment.
TEST_F(EveryScreenTest, EveryFieldHasTheEditorThatItsRowTells) {
  FennlinkRecords(1).DeviceType = 1;
  const auto look = [&](const Editor& editor, const char* field) {
    if (editor.On == Screen::None) {
      EXPECT_STRNE(editor.WhyNone, "") << field;
      return;
    }
    window->UnloadAllForms();
    ChildForm* form = window->ShowForm(editor.On);
    ASSERT_NE(form, nullptr) << field;
    for (const QByteArray& control : QByteArray(editor.Control).split('|')) {
      const QRegularExpression name(QStringLiteral("^%1(\\(0\\))?$").arg(control));
      EXPECT_FALSE(form->findChildren<QWidget*>(name).isEmpty())
          << field << ": no " << control.constData() << " on " << editor.On;
    }
  };
  const auto lookAtRow = [&](const FieldFacts& facts, const auto&) {
    look(facts.Where.Value, facts.Name.Value);
    if (facts.Spare) look(facts.Spare->Where, facts.Spare->Phrase);
  };
  ForEachPanelField(PanelRecord, lookAtRow);
  ForEachDeviceField(FennlinkRecords(1), lookAtRow);
  for (const DimmerField* field : dim::Fields) look(field->Where, field->Name);
}

}  // namespace

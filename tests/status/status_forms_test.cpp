#include "panel/hex.h"
#include "panel/live_project.h"
#include "status/live_panel.h"

using Commands = std::vector<std::string>;

class StatusFormsTest : public LivePanelTest {
 protected:
  static constexpr std::array pollingScreens = {Screen::RelayStatus,    Screen::RelayGroupStatus,
                                                Screen::InputStatus,    Screen::FennlinkStatus,
                                                Screen::CapturePresets, Screen::VirtualKeypad};

  /// A device block of the panel with one device's value.
  static std::string Block(int device, int value) {
    std::string data(130, '0');
    return data.replace(static_cast<std::size_t>(2 * device), 2, HexByte(value));
  }
};

TEST_F(StatusFormsTest, WithoutAPanelOnlyTheTextSaysSoAndOffersTheWay) {
  Connected = 0;
  for (const Screen screen : pollingScreens) {
    ChildForm* form = Open(screen);
    for (QWidget* control : form->findChildren<QWidget*>()) {
      if (Shown(*control) && !control->objectName().isEmpty()) {
        EXPECT_TRUE(control->objectName() == "lblNoConnection" ||
                    control->objectName() == "cmdGoConnect")
            << ScreenName(screen);
      }
    }
  }
  EXPECT_TRUE(commands.empty());
  Press("cmdGoConnect");
  EXPECT_TRUE(Shown(Find<Button>("cmdConnect")));
}

TEST_F(StatusFormsTest, AutomaticUpdatesLockTheMenusAndALostLinkUnlocksThem) {
  for (const Screen screen : pollingScreens) {
    WinSockQZ().Open({});
    Connected = -1;
    ChildForm* form = Open(screen);
    Press("cmdAutoUpdate");
    EXPECT_EQ(Find<Button>("cmdAutoUpdate").Caption(), "Disable Auto Updates");
    EXPECT_EQ(Text("lblAutoUpdate"), "Updates Enabled");
    EXPECT_EQ(Find<Label>("lblAutoUpdate").BackColor(), Colors::LightGreen);
    EXPECT_FALSE(MenusOn() || Find<Button>("cmdUpdateStatus").isEnabled()) << ScreenName(screen);
    Press("cmdAutoUpdate");
    EXPECT_EQ(Text("lblAutoUpdate"), "Updates Disabled");
    EXPECT_TRUE(MenusOn() && Find<Button>("cmdUpdateStatus").isEnabled()) << ScreenName(screen);

    Press("cmdAutoUpdate");
    const auto panelAnswers = std::exchange(answer, [](const auto&) { return std::nullopt; });
    Tick(form);
    EXPECT_EQ(messages.back().Text, "Connection To Tamberloom 3 Panel Lost") << ScreenName(screen);
    EXPECT_EQ(Connected, 0);
    EXPECT_TRUE(MenusOn()) << ScreenName(screen);
    EXPECT_EQ(window->LoadedForm(screen), nullptr);
    EXPECT_TRUE(window->LoadedForm(Screen::Connect)->isVisible());
    answer = panelAnswers;
  }
}

TEST_F(StatusFormsTest, ATickInsideAWaitAsksNothing) {
  for (const Screen screen : pollingScreens) {
    ChildForm* form = Open(screen);
    Press("cmdUpdateStatus");
    const Commands once = std::exchange(commands, {});
    whileWaiting = [&] { Tick(form); };
    Press("cmdUpdateStatus");
    EXPECT_EQ(commands, once) << ScreenName(screen);
  }
}

TEST_F(StatusFormsTest, AnyBytesInARightReplyAreShownAndNeverFail) {
  for (const Screen screen : pollingScreens) {
    const bool keypad = screen == Screen::VirtualKeypad;
    const bool fennlink = screen == Screen::FennlinkStatus;
    FennlinkRecords(64).DeviceType = 9;
    AnswerWith(std::string(130, '0'));
    Open(screen);
    if (fennlink) Choose("cboFLinkDevice", 64);
    for (int byte = 0; byte < 256; ++byte) {
      AnswerWith(std::string(keypad ? 82 : fennlink ? 130 : 48, static_cast<char>(byte)));
      Press("cmdUpdateStatus");
      ASSERT_TRUE(messages.empty()) << screen << " " << byte;
      if (fennlink && byte == 'f') {
        EXPECT_EQ(Text("lblLightLevel"), "255/255 (100%)");
      }
      if (fennlink && byte == 'g') {
        EXPECT_EQ(Text("lblPresentF"), "No Response");
      }
    }
  }
}

TEST_F(StatusFormsTest, ADigitPaintsTheTwoLampsOfAnInput) {
  Open(Screen::InputStatus);
  EXPECT_TRUE(Shown(Cell("lblInputOnStatus", 15)));
  EXPECT_FALSE(Shown(Cell("lblInputOffStatus", 16)));
  std::string digits(48, '0');
  digits.replace(0, 5, "12303");
  AnswerWith(digits);
  Press("cmdUpdateStatus");
  digits.replace(1, 4, "4\xFF x");
  AnswerWith(digits);
  Press("cmdUpdateStatus");
  QString lamps;
  for (int i = 0; i < 5; ++i) {
    for (const char* lamp : {"lblInputOnStatus", "lblInputOffStatus"}) {
      lamps += Cell(lamp, i).BackColor() == Colors::White ? u'1' : u'0';
    }
  }
  EXPECT_EQ(lamps, "1001110011");
  EXPECT_EQ(Cell("lblInputOnStatus", 3).BackColor(), Colors::Grey);
}

TEST_F(StatusFormsTest, AFennlinkDeviceShowsInTheFrameOfItsFamily) {
  struct Device {
    Int16 Type;
    const char* TypeText;
    const char* Shown;  ///< The frame, and what stands in it.
  };
  const auto shown = [this] {
    QStringList texts;
    for (const char* family : {"16", "7", "8", "F"}) {
      auto& frame = Find<QGroupBox>(QStringLiteral("fraStatus%1").arg(QLatin1String(family)));
      if (!Shown(frame)) continue;
      texts << QString::fromLatin1(family);
      for (auto* label : frame.findChildren<Label*>()) {
        const bool named = label->objectName().contains("Number");
        if (Shown(*label) && !named && !label->Caption().isEmpty()) texts << label->Caption();
      }
    }
    return texts.join(u' ');
  };
  Open(Screen::FennlinkStatus);
  EXPECT_EQ(shown(), "");
  for (const Device& device :
       {Device{1, "1 Push Button", "16 Connected On"},
        Device{6, "6/7/8 Push Button", "16 Connected On Off Off Off Off Off Off On"},
        Device{7, "4 Input", "7 Connected On Off Off Off"},
        Device{8, "8 Input", "8 Connected On Off Off Off Off Off Off On"},
        Device{9, "PhotoCell", "F Connected 128/255 (50%) On Off Off Off Off Off Off On"},
        Device{0, "None", ""}, Device{999, "None", ""}, Device{-1, "None", ""}}) {
    FennlinkRecords(40).DeviceType = device.Type;
    answer = [](const std::string& frame) {
      const std::string command = frame.substr(3, 2);
      return simulator::FrameReply(Block(40, command == "46" ? 0x81 : command == "47" ? 1 : 128));
    };
    commands.clear();
    Choose("cboFLinkDevice", 40);
    EXPECT_EQ(commands, (Commands{"46", "47", "48"}));
    EXPECT_EQ(Text("lblFLinkDeviceType"), device.TypeText);
    EXPECT_EQ(shown(), device.Shown);
    AnswerWith(std::string(130, '0'));
    Press("cmdUpdateStatus");
    const QString family = QString::fromLatin1(device.Shown).section(u' ', 0, 0);
    EXPECT_EQ(shown(), family.isEmpty() ? family : family + " No Response");
  }
  QTest::keyClick(&Find<Button>("cmdUpdateStatus"), Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Find<ComboBox>("cboFLinkDevice").ListIndex(), 41);
}

TEST_F(StatusFormsTest, PresetsShowTheirStateAndCaptureTheInstalledRelays) {
  Open(Screen::CapturePresets);
  AnswerWith("210x" + std::string(44, '0'));
  Press("cmdUpdateStatus");
  EXPECT_EQ(Caption("lblPresetStatus", 0), "---");
  EXPECT_FALSE(Shown(Find<Button>("cmdSet(0)")));
  EXPECT_EQ(Caption("lblPresetStatus", 1), "Set");
  EXPECT_EQ(Cell("lblPresetStatus", 3).BackColor(), Colors::White);
  EXPECT_EQ(Caption("lblPresetStatus", 2), "Off");
  EXPECT_TRUE(Shown(Find<Button>("cmdSet(2)")));

  answer = [this](const std::string& frame) { return simulator::Answer(panel, frame); };
  panel.SetRelay(5, true);
  PanelRecord.PresetRelayControl(7, 16) = 1;
  DataChanged = 0;
  commands.clear();
  Press("cmdCapture(7)");
  Press("cmdSet(7)");
  EXPECT_EQ(commands, (Commands{"41070", "23FF", "40070"}));
  EXPECT_EQ(PanelRecord.PresetRelayControl(7, 5), 1);
  EXPECT_EQ(PanelRecord.PresetRelayControl(7, 15), 2);
  EXPECT_EQ(PanelRecord.PresetRelayControl(7, 16), 1);
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(StatusFormsTest, AForcedTimerIsWaitedForAndATimerThatIsNotAnsweredLosesTheLink) {
  PanelRecord.TimerName(47) = "Caf\xE9";
  Open(Screen::ForceTimers);
  EXPECT_EQ(Caption("lblTimerName", 47), QString::fromUtf8("Café"));
  auto& wait = Find<Label>("lblPleaseWait");
  EXPECT_FALSE(Shown(wait));
  bool seen = false;
  whileWaiting = [&] { seen = Shown(wait); };
  Press("cmdForce(47)");
  EXPECT_EQ(commands, (Commands{"132F0", "02"}));
  EXPECT_TRUE(seen && !Shown(wait) && messages.empty());

  // The command itself may go unanswered; the wait for its end may not.
  answer = [](const std::string& frame) {
    return frame.substr(3, 2) == "13" ? std::string() : simulator::FrameReply(std::string(76, 'x'));
  };
  Press("cmdForce(0)");
  EXPECT_TRUE(messages.empty());
  answer = [](const auto&) { return std::nullopt; };
  Press("cmdForce(0)");
  EXPECT_EQ(messages.back().Text, "Connection To Tamberloom 3 Panel Lost");

  Open(Screen::ForceTimers);
  EXPECT_TRUE(Shown(Find<Label>("lblNoConnection")) && !Shown(Cell("lblTimerName", 0)));
}

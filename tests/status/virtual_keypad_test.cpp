#include "status/display_glyph.h"
#include "status/live_panel.h"

class VirtualKeypadTest : public LivePanelTest {};

TEST_F(VirtualKeypadTest, EachPollCarriesTheLastKeyOnce) {
  Open(Screen::VirtualKeypad);
  const std::array sent = {"0701", "0702", "0704", "0708", "0710", "0720", "0730", "0780"};
  for (int key = 0; key < 8; ++key) {
    Press(QStringLiteral("cmdKey(%1)").arg(key));
    Press("cmdUpdateStatus");
    EXPECT_EQ(commands.back(), sent[static_cast<std::size_t>(key)]);
  }
  Press("cmdUpdateStatus");
  EXPECT_EQ(commands.back(), "0700");
  Press("cmdKey(0)");
  Press("cmdKey(5)");
  whileWaiting = [this] { Press("cmdKey(2)"); };
  Press("cmdUpdateStatus");
  EXPECT_EQ(commands.back(), "0720");
  Press("cmdUpdateStatus");
  EXPECT_EQ(commands.back(), "0704");

  auto& button = Find<Button>("cmdUpdateStatus");
  const std::pair<Qt::Key, const char*> keys[] = {
      {Qt::Key_Up, "0701"},    {Qt::Key_Down, "0702"}, {Qt::Key_Return, "0704"},
      {Qt::Key_Enter, "0704"}, {Qt::Key_Left, "0710"}, {Qt::Key_Right, "0720"}};
  for (const auto& [key, command] : keys) {
    button.setFocus();
    QTest::keyClick(&button, key);
    Press("cmdUpdateStatus");
    EXPECT_EQ(commands.back(), command);
  }
}

TEST_F(VirtualKeypadTest, TheDisplayShowsEveryCodeAndRedrawsOnlyWhatChanged) {
  Open(Screen::VirtualKeypad);
  for (int first = 0; first < 256; first += 64) {
    std::string data(82, ' ');
    for (int i = 0; i < 80; ++i) data[static_cast<std::size_t>(i)] = static_cast<char>(first + i);
    data.replace(80, 2, "2A");
    AnswerWith(data);
    Press("cmdUpdateStatus");
    for (int i = 0; i < 80; ++i) {
      const int code = (first + i) % 256;
      auto& glyph = Find<DisplayGlyph>(QStringLiteral("imgCustomChar(%1)").arg(i));
      ASSERT_EQ(Shown(glyph), code < 8) << code;
      ASSERT_EQ(Shown(Cell("lblLCD", i)), code >= 8) << code;
      if (code < 8) {
        const auto& source =
            Find<DisplayGlyph>(QStringLiteral("imgSourceChar(%1)").arg(code)).Picture();
        EXPECT_EQ(glyph.Picture(), source);
        EXPECT_FALSE(source == GlyphRows{});
      } else if (code < 128 || code > 159) {
        EXPECT_EQ(Caption("lblLCD", i), QString(QChar(code)));
      }
    }
  }
  EXPECT_EQ(Cell("lblLED", 1).BackColor(), Colors::LightGreen);
  EXPECT_EQ(Cell("lblLED", 2).BackColor(), Colors::Grey);

  struct PaintCounter : QObject {
    std::vector<QString> Painted;
    bool eventFilter(QObject* control, QEvent* event) override {
      if (event->type() == QEvent::Paint) Painted.push_back(control->objectName());
      return false;
    }
  } counter;
  std::string data(82, 'A');
  data[0] = '\x80';
  AnswerWith(data);
  auto* form = window->LoadedForm(Screen::VirtualKeypad);
  const auto poll = [&] {
    Tick(form);
    QTest::qWait(50);  // The platform gathers what is to be painted for some milliseconds.
  };
  poll();
  EXPECT_EQ(Caption("lblLCD", 0), QString::fromUtf8("€"));
  for (auto* control : form->findChildren<QWidget*>()) control->installEventFilter(&counter);
  poll();
  EXPECT_TRUE(counter.Painted.empty());
  data[41] = 'B';
  AnswerWith(data);
  poll();
  EXPECT_EQ(counter.Painted.front(), "fraDisplay");  // The ground below the cell.
  EXPECT_EQ(counter.Painted.size(), 2U);
  EXPECT_EQ(counter.Painted.back(), "lblLCD(41)");
}

#include "status/virtual_keypad_form.h"

#include <QGridLayout>
#include <QShortcut>

#include "line/panel_commands.h"
#include "link/panel_display.h"
#include "link/panel_link.h"
#include "panel/code_page.h"

namespace {

/// A key of the front: where it stands, and what on the keyboard presses it.
struct FrontKey {
  const char* Caption;
  int Row;
  int Column;
  QList<QKeySequence> Shortcuts;
};

const auto FrontKeys = std::to_array<FrontKey>({
    {"Up", 0, 1, {Qt::Key_Up}},
    {"Down", 1, 1, {Qt::Key_Down}},
    {"Enter", 0, 3, {Qt::Key_Return, Qt::Key_Enter}},
    {"Exit", 1, 3, {Qt::Key_Escape}},
    {"Previous", 0, 0, {Qt::Key_Left}},
    {"Next", 0, 2, {Qt::Key_Right}},
    {"Prev + Next", 1, 0, {}},
    {"Key 8", 1, 2, {}},
});

constexpr int ChordIndex = 6;
constexpr Int16 ChordBits = 0x30;  ///< Previous and Next at once.

Int16 KeyBits(int index) {
  return index == ChordIndex ? ChordBits : static_cast<Int16>(1 << index);
}

QString LedState(int index, bool lit) {
  return QStringLiteral("LED %1 %2")
      .arg(index + 1)
      .arg(lit ? QStringLiteral("lit") : QStringLiteral("dark"));
}

QString KeyCaption(int index) {
  return QString::fromLatin1(FrontKeys[static_cast<std::size_t>(index)].Caption);
}

}  // namespace

frmT3VirtualKeypad::frmT3VirtualKeypad()
    : StatusForm(Screen::VirtualKeypad, QStringLiteral("Virtual Keypad")) {
  ScreenCache.elements.fill(-1);
}

void frmT3VirtualKeypad::Form_Load() {
  AddUpdateControls();
  front = new QWidget;
  AddWidget(front);
  auto* column = new QVBoxLayout(front);
  column->setContentsMargins(0, 8, 0, 0);
  column->setSpacing(16);
  BuildDisplay(column);
  BuildLeds(column);
  BuildKeys(column);
  lblPendingKey = AddLabel(column, "lblPendingKey", {});
  lblPendingKey->SetAlignment(Qt::AlignCenter);
  AddHint(
      QStringLiteral("The last key pressed is sent to the panel by the next update. Arrow keys, "
                     "Enter and Escape press keys."));
}

void frmT3VirtualKeypad::BuildDisplay(QBoxLayout* layout) {
  display = Add<DescribedWidget>(nullptr, "fraDisplay", QAccessible::StaticText);
  layout->addWidget(display, 0, Qt::AlignHCenter);
  lblLCD = AddDisplayCells(display, CellCount / DisplayColumns, "lblLCD", 1.6);
  auto* cells = static_cast<QGridLayout*>(display->layout());
  for (int i = 0; i < CellCount; ++i) {
    lblLCD(i).SetWidthInChars(1);  // Another character needs no new layout.
    auto* glyph = new DisplayGlyph;
    glyph->setFixedSize(lblLCD(i).sizeHint());
    // Or the grid would drop its spacing there, and the display would grow as symbols come.
    KeepRoomWhileHidden(*glyph);
    cells->addWidget(glyph, i / DisplayColumns, i % DisplayColumns);
    glyph->setVisible(false);
    imgCustomChar.Add(glyph, QStringLiteral("imgCustomChar"));
  }
  for (const GlyphRows& picture : DisplayGlyphs) {
    auto* source = new DisplayGlyph;
    source->setParent(this);
    source->setVisible(false);
    source->SetPicture(picture);
    imgSourceChar.Add(source, QStringLiteral("imgSourceChar"));
  }
}

void frmT3VirtualKeypad::BuildLeds(QBoxLayout* layout) {
  auto* row = new QHBoxLayout;
  row->setAlignment(Qt::AlignHCenter);
  row->setSpacing(12);
  layout->addLayout(row);
  for (int i = 0; i < LedCount; ++i) {
    auto* led = new Label;
    led->SetCaption(QStringLiteral("LED %1").arg(i + 1));
    led->SetWidthInChars(8);
    led->SetAlignment(Qt::AlignCenter);
    led->SetBackColor(Colors::Grey);
    led->SetState(LedState(i, false));
    led->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row->addWidget(led);
    lblLED.Add(led, QStringLiteral("lblLED"));
  }
}

void frmT3VirtualKeypad::BuildKeys(QBoxLayout* layout) {
  auto* keys = new QWidget;
  layout->addWidget(keys, 0, Qt::AlignHCenter);
  auto* grid = new QGridLayout(keys);
  grid->setContentsMargins(0, 0, 0, 0);
  for (int i = 0; i < static_cast<int>(FrontKeys.size()); ++i) {
    const FrontKey& key = FrontKeys[static_cast<std::size_t>(i)];
    auto* button = new Button(KeyCaption(i));
    button->setMinimumSize(110, 32);
    grid->addWidget(button, key.Row, key.Column);
    cmdKey.Add(button, QStringLiteral("cmdKey"));
    for (const QKeySequence& sequence : key.Shortcuts) {
      auto* shortcut = new QShortcut(sequence, this);
      shortcut->setContext(Qt::WidgetWithChildrenShortcut);
      connect(shortcut, &QShortcut::activated, this,
              [this, i] { RunHandler([this, i] { cmdKey_Click(i); }); });
    }
  }
  cmdKey.OnEach(&Button::Click, this, &frmT3VirtualKeypad::cmdKey_Click);
}

void frmT3VirtualKeypad::ShowConnected(bool connected) {
  front->setVisible(connected);
}

void frmT3VirtualKeypad::cmdKey_Click(int index) {
  PendingKey = KeyBits(index);
  lblPendingKey->SetCaption(QStringLiteral("To be pressed: ") + KeyCaption(index));
}

void frmT3VirtualKeypad::ShowFromQZ() {
  // A key that is pressed while this poll waits belongs to the next one.
  const Int16 key = std::exchange(PendingKey, Int16{0});
  const std::optional<PanelFront> told = PressKeys(key);
  if (!told) {
    PanelConnectionLost();
    return;
  }
  if (PendingKey == 0) lblPendingKey->SetCaption({});
  for (int i = 0; i < CellCount; ++i) {
    const Int16 code = told->Cells(i);
    if (code != ScreenCache(i)) ShowCell(i, code);
  }
  display->TellChange();
  if (told->Leds == LedCache) return;
  LedCache = told->Leds;
  for (int i = 0; i < LedCount; ++i) {
    const bool lit = (LedCache >> i & 1) != 0;
    lblLED(i).SetBackColor(lit ? Colors::LightGreen : Colors::Grey);
    lblLED(i).SetState(LedState(i, lit));
  }
}

void frmT3VirtualKeypad::ShowCell(int cell, Int16 code) {
  ScreenCache(cell) = code;
  const bool character = code >= imgSourceChar.Count();
  if (character) {
    const char byte = static_cast<char>(code);
    lblLCD(cell).SetCaption(ToUnicode({&byte, 1}));
  } else {
    imgCustomChar(cell).SetPicture(imgSourceChar(code).Picture());
  }
  lblLCD(cell).setVisible(character);
  imgCustomChar(cell).setVisible(!character);
}

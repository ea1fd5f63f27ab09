#include "config/name_display.h"

#include <QHBoxLayout>

#include "panel/code_page.h"

namespace {

constexpr int CellChars = 2;

/// 0 refuses the key.
char16_t NameKey(char16_t key) {
  constexpr char16_t backspace = 8;
  constexpr std::u16string_view signs = u" .-/*#@():?";
  if (key >= u'a' && key <= u'z') return static_cast<char16_t>(key - 32);
  const bool passes = key == backspace || (key >= u'0' && key <= u'9') ||
                      (key >= u'A' && key <= u'Z') || signs.find(key) != signs.npos;
  return passes ? key : u'\0';
}

}  // namespace

NameDisplay::NameDisplay(int cells) : QGroupBox(QStringLiteral("As Displayed On Tamberloom 3")) {
  setObjectName(QStringLiteral("frmAsDisplayed"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(6, 3, 6, 4);
  row->setSpacing(1);
  row->setAlignment(Qt::AlignLeft);
  for (int i = 0; i < cells; ++i) {
    auto* cell = new Label;
    cell->SetWidthInChars(CellChars);
    cell->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    cell->SetAlignment(Qt::AlignCenter);
    cell->SetBackColor(Colors::PaleGrey);
    row->addWidget(cell);
    lblPanelChar.Add(cell, QStringLiteral("lblPanelChar"));
  }
}

void NameDisplay::ShowName(const std::string& name) {
  const QString text = ToUnicode(name);
  for (int i = 0; i < lblPanelChar.Count(); ++i) lblPanelChar(i).SetCaption(text.mid(i, 1));
  setAccessibleDescription(text.left(lblPanelChar.Count()));
}

void FilterNameKeys(TextBox& box) {
  box.KeyPress = NameKey;
  // Composed characters would come in past the filter.
  box.setAttribute(Qt::WA_InputMethodEnabled, false);
}

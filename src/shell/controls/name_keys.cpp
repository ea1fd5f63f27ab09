#include "shell/controls/name_keys.h"

#include <string_view>

namespace {

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

void FilterNameKeys(TextBox& box) {
  box.KeyPress = NameKey;
  // Composed characters would come in past the filter.
  box.setAttribute(Qt::WA_InputMethodEnabled, false);
}

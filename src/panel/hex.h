#pragma once

#include <string>
#include <string_view>

#include "panel/fixed_array.h"

/// The low eight bits of the value as two upper-case hexadecimal digits.
std::string HexByte(int value);

/// Puts them behind a text.
void AppendHexByte(std::string& text, int value);

/// The low sixteen bits of the value as four upper-case hexadecimal digits.
std::string HexWord(Int32 value);

/// The number in the first two characters of `text`, 0 to 255. Parsing stops at the first character
/// that is no hexadecimal digit; a text that starts with none gives 0.
Int32 ParseHexByte(std::string_view text);

/// The same for the first four characters, 0 to 65535.
Int32 ParseHexWord(std::string_view text);

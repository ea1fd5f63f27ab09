#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Windows-1252 bytes as Unicode. The five bytes that the code page leaves open become the control
/// characters of the same number, so that every byte survives the way there and back.
QString ToUnicode(std::string_view bytes);

/// Unicode as Windows-1252 bytes; a character outside the code page becomes "?".
std::string FromUnicode(const QString& text);

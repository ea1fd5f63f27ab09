#include "simulator/line/modem.h"

#include <cctype>

namespace simulator {

std::vector<TimedBytes> Modem::Receive(char byte) {
  constexpr std::size_t longestLine = 128;
  using std::chrono::milliseconds;
  if (Call) {
    Line = (Line + byte).substr(Line.size() < 4 ? 0 : 1);
    if (Line != "ATZ\r") return {};
    Call = false;
    Line.clear();
    return {{milliseconds(0), "\r\nOK\r\n"}};
  }
  std::vector<TimedBytes> output{{milliseconds(0), std::string(1, byte)}};
  if (byte != '\r') {
    if (Line.size() < longestLine)
      Line += static_cast<char>(std::toupper(static_cast<unsigned char>(byte)));
    return output;
  }
  for (TimedBytes& piece : Answer(Line)) output.push_back(std::move(piece));
  Line.clear();
  return output;
}

std::vector<TimedBytes> Modem::Answer(const std::string& line) {
  using std::chrono::milliseconds;
  // What came before "AT" is the rest of a command that never got its carriage return.
  const std::size_t at = line.rfind("AT");
  if (at == std::string::npos) return {};
  if (line.compare(at, 3, "ATD") != 0) return {{milliseconds(0), "\r\nOK\r\n"}};
  if (Setting.Busy) return {{Setting.DialTime, "\r\nNO CARRIER\r\n"}};
  Call = true;
  return {{Setting.DialTime, "\r\nCONNECT 9600/ARQ/V34/LAPM\r\n"}};
}

std::vector<TimedBytes> Modem::HangUp() {
  Call = false;
  Line.clear();
  return {{std::chrono::milliseconds(0), "\r\nNO CARRIER\r\n"}};
}

}  // namespace simulator

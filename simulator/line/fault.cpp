#include "simulator/line/fault.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include "simulator/line/frame.h"

namespace simulator {

namespace {

struct KindRow {
  Fault::Kind What;
  const char* Name;
  int DefaultAmount;
  const char* Help;
};

constexpr std::array<KindRow, 10> Kinds{{
    {Fault::Kind::Lost, "lost", 0, "lost            no reply at all"},
    {Fault::Kind::Late, "late", 1000, "late:MS         the reply comes MS milliseconds late"},
    {Fault::Kind::Short, "short", 1, "short:N         the last N characters are missing"},
    {Fault::Kind::Long, "long", 2, "long:N          N more data characters, checksum right"},
    {Fault::Kind::Junk, "junk", 3, "junk:N          N characters of noise before the reply"},
    {Fault::Kind::Split, "split", 2, "split:N:MS      in N pieces, MS milliseconds apart"},
    {Fault::Kind::Checksum, "checksum", 0, "checksum        the checksum is wrong"},
    {Fault::Kind::NonHex, "nonhex", 2,
     "nonhex:N        the first N data characters are no hex digits, checksum right"},
    {Fault::Kind::Drop, "drop", 0, "drop            no reply, and the connection breaks"},
    {Fault::Kind::Sum, "sum", 0, "sum             a wrong memory sum (counts those replies only)"},
}};

const KindRow& RowOf(Fault::Kind kind) {
  return *std::find_if(Kinds.begin(), Kinds.end(),
                       [kind](const KindRow& row) { return row.What == kind; });
}

/// A bound for characters as well as for milliseconds.
constexpr int MaxAmount = 60'000;

int Number(const QString& digits, int most = 1'000'000'000) {
  bool fits = false;
  const int number = digits.toInt(&fits);
  if (!fits || number > most) {
    throw std::invalid_argument("the number " + digits.toStdString() + " is too large");
  }
  return number;
}

bool IsSumCommand(std::string_view frame) {
  return frame.substr(0, 5) == "[0034";
}

std::string DataOf(const std::string& reply) {
  return reply.substr(1, reply.size() - 4);
}

/// Changes one hex digit into another one.
void SpoilDigit(std::string& text, std::size_t at) {
  text[at] = text[at] == '0' ? '1' : '0';
}

void Split(std::vector<TimedBytes>& pieces, const Fault& fault) {
  const TimedBytes whole = pieces.back();
  pieces.pop_back();
  const auto count = std::min(static_cast<std::size_t>(std::max(fault.Amount, 1)),
                              std::max<std::size_t>(whole.Bytes.size(), 1));
  std::size_t from = 0;
  for (std::size_t i = 1; i <= count; ++i) {
    const std::size_t to = whole.Bytes.size() * i / count;
    pieces.push_back({whole.After + std::chrono::milliseconds(fault.Gap) * static_cast<int>(i - 1),
                      whole.Bytes.substr(from, to - from)});
    from = to;
  }
}

/// Changes to the frame itself.
void Spoil(std::string& reply, const Fault& fault) {
  const auto amount = static_cast<std::size_t>(fault.Amount);
  switch (fault.What) {
    case Fault::Kind::Long:
      reply = FrameReply(DataOf(reply) + std::string(amount, '0'));
      break;
    case Fault::Kind::NonHex: {
      std::string data = DataOf(reply);
      for (std::size_t i = 0; i < std::min(amount, data.size()); ++i) data[i] = 'Z';
      reply = FrameReply(data);
      break;
    }
    case Fault::Kind::Sum: {
      std::string data = DataOf(reply);
      if (!data.empty()) SpoilDigit(data, data.size() - 1);
      reply = FrameReply(data);
      break;
    }
    case Fault::Kind::Checksum:
      SpoilDigit(reply, reply.size() - 2);
      break;
    default:
      break;
  }
}

/// Changes to how the finished frame travels.
void Hinder(Delivery& delivery, const Fault& fault) {
  if (delivery.Pieces.empty()) return;
  const auto amount = static_cast<std::size_t>(fault.Amount);
  std::string& last = delivery.Pieces.back().Bytes;
  switch (fault.What) {
    case Fault::Kind::Lost:
      delivery.Pieces.clear();
      break;
    case Fault::Kind::Drop:
      delivery.Pieces.clear();
      delivery.Drop = true;
      break;
    case Fault::Kind::Late:
      for (TimedBytes& piece : delivery.Pieces) {
        piece.After += std::chrono::milliseconds(fault.Amount);
      }
      break;
    case Fault::Kind::Short:
      last.resize(last.size() - std::min(amount, last.size()));
      break;
    case Fault::Kind::Junk: {
      std::string noise;
      for (std::size_t i = 0; i < amount; ++i) noise += "~\x11\xFF"[i % 3];
      delivery.Pieces.front().Bytes.insert(0, noise);
      break;
    }
    case Fault::Kind::Split:
      Split(delivery.Pieces, fault);
      break;
    default:
      break;
  }
}

}  // namespace

Fault ParseFault(const std::string& text) {
  static const QRegularExpression form(QRegularExpression::anchoredPattern(
      QStringLiteral(R"(([a-z]+)(?::(\d+))?(?::(\d+))?(?:@(\d+))?(?:x(\d+|\*))?)")));
  const QRegularExpressionMatch match = form.match(QString::fromStdString(text));
  if (!match.hasMatch()) {
    throw std::invalid_argument("\"" + text + "\" is not KIND[:AMOUNT[:GAP]][@FIRST][xCOUNT]");
  }
  const QString name = match.captured(1);
  const auto row = std::find_if(Kinds.begin(), Kinds.end(),
                                [&](const KindRow& r) { return name == QLatin1String(r.Name); });
  if (row == Kinds.end()) throw std::invalid_argument("no fault is called " + name.toStdString());
  Fault fault;
  fault.What = row->What;
  fault.Amount = match.hasCaptured(2) ? Number(match.captured(2), MaxAmount) : row->DefaultAmount;
  fault.Gap = match.hasCaptured(3) ? Number(match.captured(3), MaxAmount) : 20;
  const auto counted = [](const QString& digits, const char* what) {
    const int number = Number(digits);
    if (number == 0) throw std::invalid_argument(std::string(what) + " counts from 1");
    return number;
  };
  if (match.hasCaptured(4)) fault.First = counted(match.captured(4), "FIRST");
  if (match.hasCaptured(5)) {
    fault.Count = match.captured(5) == u"*" ? Fault::Always : counted(match.captured(5), "COUNT");
  }
  return fault;
}

std::string FaultText(const Fault& fault) {
  std::string text = std::string(RowOf(fault.What).Name) + ":" + std::to_string(fault.Amount);
  if (fault.What == Fault::Kind::Split) text += ":" + std::to_string(fault.Gap);
  return text + "@" + std::to_string(fault.First) + "x" +
         (fault.Count == Fault::Always ? "*" : std::to_string(fault.Count));
}

std::string FaultHelp() {
  std::string text;
  for (const KindRow& row : Kinds) text += std::string("  ") + row.Help + "\n";
  return text;
}

std::vector<Fault> FaultInjector::Pending() const {
  std::vector<Fault> pending;
  for (const Counted& counted : Faults) {
    Fault rest = counted.What;
    const int spoilt = std::max(counted.Seen - (rest.First - 1), 0);
    rest.First = std::max(rest.First - counted.Seen, 1);
    if (rest.Count != Fault::Always) rest.Count -= spoilt;
    pending.push_back(rest);
  }
  return pending;
}

Delivery FaultInjector::Deliver(std::string_view frame, const std::string& reply) {
  std::string text = reply;
  std::vector<Fault> acting;
  for (Counted& counted : Faults) {
    if (counted.What.What == Fault::Kind::Sum && !IsSumCommand(frame)) continue;
    if (counted.Seen < std::numeric_limits<int>::max()) ++counted.Seen;
    if (counted.Seen >= counted.What.First) acting.push_back(counted.What);
  }
  std::erase_if(Faults, [](const Counted& counted) {
    return counted.What.Count != Fault::Always &&
           counted.Seen - counted.What.First + 1 >= counted.What.Count;
  });
  for (const Fault& fault : acting) Spoil(text, fault);
  Delivery delivery{{{std::chrono::milliseconds(0), text}}, false};
  for (const Fault& fault : acting) Hinder(delivery, fault);
  return delivery;
}

}  // namespace simulator

#include "project/panel_at.h"

#include <unistd.h>

#include <QRegularExpression>
#include <QSerialPortInfo>
#include <cstdio>
#include <utility>

#include "line/line_hooks.h"
#include "line/panel_commands.h"
#include "line/session.h"
#include "panel/panel_record.h"
#include "panel/stopwatch.h"
#include "project/interrupt.h"
#include "project/output.h"

namespace {

int argumentCount = 1;
char programName[] = "tamberloom3-project";
char* argumentValues[] = {programName, nullptr};

struct AddressKind {
  const char* Prefix;
  const char* Shape;
  const char* Pattern;  ///< Of what stands behind the prefix.
  Int16 ConnectionType;
  void (*Fill)(LineSettings& settings, const QRegularExpressionMatch& parts);
};

const AddressKind AddressKinds[] = {
    {"tcp:", "tcp:HOST[:PORT], an IPv6 address in brackets",
     R"((?:\[([^\]]+)\]|([^:\[\]]+))(?::(\d{1,5}))?)", ConnectionTCP,
     [](LineSettings& settings, const QRegularExpressionMatch& parts) {
       settings.Host = parts.captured(1) + parts.captured(2);
       if (parts.hasCaptured(3)) settings.TcpPort = parts.captured(3).toUShort();
     }},
    {"serial:", "serial:DEVICE[@BAUD]", R"(([^@]+)(?:@([1-9]\d{0,6}))?)", ConnectionUSB,
     [](LineSettings& settings, const QRegularExpressionMatch& parts) {
       settings.Port = parts.captured(1);
       settings.Baud = parts.captured(2).toInt();
     }},
    {"modem:", "modem:DEVICE,NUMBER", R"(([^,]+),([0-9 ,-]+))", ConnectionModem,
     [](LineSettings& settings, const QRegularExpressionMatch& parts) {
       settings.Port = parts.captured(1);
       settings.PhoneNumber = parts.captured(2).toStdString();
     }},
};

void RefuseOddBaud(const PanelAddress& address) {
  const int baud = address.Settings.Baud;
  if (baud == 0 || QSerialPortInfo::standardBaudRates().contains(baud)) return;
  throw RunTimeFailure(QStringLiteral("%1: no port has %2 baud; 9600 and 115200 are usual")
                           .arg(address.Text)
                           .arg(baud)
                           .toStdString());
}

bool progressStands = false;  ///< Without its line end.

void EndProgressLine() {
  if (std::exchange(progressStands, false)) std::fputc('\n', stderr);
}

}  // namespace

std::optional<PanelAddress> ParsePanelAddress(const QString& word) {
  for (const AddressKind& kind : AddressKinds) {
    const QLatin1String prefix(kind.Prefix);
    if (!word.startsWith(prefix)) continue;
    const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(QLatin1String(kind.Pattern)));
    const QRegularExpressionMatch parts = pattern.match(word.mid(prefix.size()));
    PanelAddress address{word, kind.ConnectionType, {}};
    if (parts.hasMatch()) kind.Fill(address.Settings, parts);
    RefuseOddBaud(address);
    if (!parts.hasMatch() || address.Settings.TcpPort == 0) {
      throw RunTimeFailure(QStringLiteral("%1: a panel's address is %2; a file of that name is "
                                          "given as ./%1")
                               .arg(word, QLatin1String(kind.Shape))
                               .toStdString());
    }
    return address;
  }
  return std::nullopt;
}

PanelAddress AddressOf(const QString& word) {
  if (const auto address = ParsePanelAddress(word)) return *address;
  throw RunTimeFailure((word + ": is not a panel's address, such as tcp:10.0.0.7").toStdString());
}

PanelAt::PanelAt(const PanelAddress& address)
    : address_(address), application_(argumentCount, argumentValues) {
  address_.Settings.AwaitQuiet = address_.ConnectionType != ConnectionTCP;
  if (address_.ConnectionType == ConnectionModem) {
    HangUpOnInterrupt(address_.Text + ": interrupted");
  }
  Line.NotRemembered = [this](const QString& reason) {
    EndProgressLine();
    TellFailure(qUtf8Printable(address_.Text + ": what it holds is not remembered: " + reason));
  };
  try {
    ConnectPanel(address_.ConnectionType, address_.Settings);
  } catch (const RunTimeFailure& failure) {
    DisconnectPanel();
    ReplaceTransports(nullptr, nullptr);
    Line.NotRemembered = nullptr;
    Fail(QString::fromUtf8(failure.what()));
  }
}

PanelAt::~PanelAt() {
  Line.NotRemembered = nullptr;
  DisconnectPanel();
  ReplaceTransports(nullptr, nullptr);
}

void PanelAt::Fail(const QString& reason) const {
  EndProgressLine();
  throw PanelFailure((address_.Text + ": " + reason).toStdString());
}

int PanelAt::Points() {
  if (!points_) points_ = Answer(ReadPanelStatus()).Points;
  return *points_;
}

PanelImageType PanelAt::ReadMemory() {
  PanelImageType image;
  TransferWatch watch = ProgressOnTerminal();
  int reached = 0;
  watch.Block = [&reached, tell = watch.Block](int block, int nth, int count) {
    reached = block;
    if (tell) tell(block, nth, count);
  };
  switch (FetchImage(image, watch)) {
    case TransferOutcome::Complete:
      return image;
    case TransferOutcome::SumDiffers:
      Fail(QStringLiteral("the sum of what was read is not the panel's own; read it again"));
    case TransferOutcome::NoSum:
      Fail(QStringLiteral("the panel does not tell the sum of its memory"));
    default:
      Fail(QStringLiteral("the panel no longer answers at block %1 of %2")
               .arg(reached + 1)
               .arg(ImageBlockCount));
  }
}

TransferWatch ProgressOnTerminal() {
  if (isatty(STDERR_FILENO) == 0) return {};
  return {.Block = [clock = Stopwatch()](int, int nth, int count) {
    progressStands = nth < count;
    std::fprintf(stderr, "\r%3d %% %-20s%s", 100 * nth / count,
                 qUtf8Printable(TimeLeft(clock.ElapsedMs(), nth, count)),
                 progressStands ? "" : "\n");
    std::fflush(stderr);
  }};
}

#include <termios.h>

#include <QFile>
#include <algorithm>
#include <memory>
#include <optional>

#include "document/rules/uses.h"
#include "line/known_memory.h"
#include "line/panel_commands.h"
#include "line/session.h"
#include "panel/defaults.h"
#include "panel/panel_image.h"
#include "project/interrupt.h"
#include "project/live_commands.h"
#include "project/panel_at.h"
#include "project/places.h"

namespace {

/// Typed unseen; Ctrl+C ends the program as anywhere. Null without a terminal, which need not be
/// standard input: a project can come from there.
std::optional<QString> TypedPassword() {
  QFile terminal(QStringLiteral("/dev/tty"));
  if (!terminal.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) return std::nullopt;
  termios seen{};
  if (tcgetattr(terminal.handle(), &seen) != 0) return std::nullopt;
  termios unseen = seen;
  unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  unseen.c_lflag |= ECHONL;
  terminal.write("The panel's password: ");
  TellOnInterrupt(QStringLiteral("interrupted; nothing was written"));
  KeepTerminalOnInterrupt(terminal.handle());
  tcsetattr(terminal.handle(), TCSAFLUSH, &unseen);
  constexpr qint64 most = 100;
  const QByteArray typed = terminal.readLine(most);
  tcsetattr(terminal.handle(), TCSAFLUSH, &seen);
  return QString::fromUtf8(typed);
}

QString PasswordText(const CommandLine& line) {
  if (!line.PasswordFile.isEmpty()) {
    QFile file(line.PasswordFile);
    if (!file.open(QIODevice::ReadOnly)) {
      throw RunTimeFailure((line.PasswordFile + ": " + file.errorString()).toStdString());
    }
    constexpr qint64 most = 100;
    return QString::fromUtf8(file.readLine(most));
  }
  if (QString set = qEnvironmentVariable("TAMBERLOOM3_PASSWORD"); !set.isEmpty()) return set;
  if (const auto typed = TypedPassword()) return *typed;
  throw RunTimeFailure(
      "the panel's password is missing: --password-file FILE or TAMBERLOOM3_PASSWORD");
}

PasswordDigits Password(const CommandLine& line) {
  PasswordDigits digits{};
  const QString text = PasswordText(line).trimmed();
  const bool right =
      text.size() == static_cast<int>(digits.size()) &&
      std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
  if (!right) throw RunTimeFailure("a panel's password has six digits");
  for (std::size_t i = 0; i < digits.size(); ++i) {
    digits[i] = static_cast<Int16>(text[static_cast<int>(i)].digitValue());
  }
  return digits;
}

/// "16 at node 1, 8 at node 2", of blocks.
QString PointsByNode(const PointCounts& counts) {
  QStringList nodes;
  for (std::size_t node = 0; node < counts.size(); ++node) {
    if (counts[node] == 0) continue;
    nodes << QStringLiteral("%1 at node %2")
                 .arg(counts[node] * PointsOfBlock)
                 .arg(QString::number(node + 1, 16).toUpper());
  }
  return nodes.join(QStringLiteral(", "));
}

/// What forbids nothing. Of so few blocks as are changed, the nodes are not worth a question.
void TellOtherHardware(const PanelAt& panel, const Project& project, bool byNode) {
  const PanelStatus status = panel.Answer(ReadPanelStatus());
  const auto tell = [&](const QString& what) {
    TellFailure(qUtf8Printable(panel.Address().Text + ": " + what + "; it is sent all the same"));
  };
  const int points = InstalledPoints(project);
  if (status.Points != points) {
    tell(QStringLiteral("the panel has %1 relays and inputs, the project %2")
             .arg(status.Points)
             .arg(points));
  } else if (const auto counts = byNode ? ReadPointCounts() : std::nullopt) {
    PointCounts wanted{};
    // The project has one element more, which is no node's.
    std::copy_n(project.Panel.IOCount.elements.begin(), wanted.size(), wanted.begin());
    if (*counts != wanted) {
      tell(QStringLiteral("the panel has its relays and inputs as %1, the project as %2")
               .arg(PointsByNode(*counts), PointsByNode(wanted)));
    }
  }
  if (status.CardType != project.Panel.AddOnModuleType) {
    tell(QStringLiteral("the panel's add-on module is of type %1, the project's of type %2")
             .arg(status.CardType)
             .arg(project.Panel.AddOnModuleType));
  }
}

constexpr const char* HalfNew =
    "; the panel is half new and may not work properly until all of a project is sent";

constexpr const char* MaybeHalfNew =
    "; the panel may be half new: send all of a project again, as it may not work properly until "
    "then";

/// Progress, and what Ctrl+C leaves: before the first block a panel as it was.
TransferWatch WatchOfSending(const PanelAt& panel) {
  const QString interrupted = panel.Address().Text + QLatin1String(": interrupted");
  TellOnInterrupt(interrupted + QLatin1String("; nothing was written"));
  TransferWatch watch = ProgressOnTerminal();
  watch.Block = [interrupted, tell = watch.Block](int block, int nth, int count) {
    if (nth == 1) TellOnInterrupt(interrupted + QLatin1String(HalfNew));
    if (tell) tell(block, nth, count);
  };
  return watch;
}

ExitStatus StatusOfSending(const PanelAt& panel, TransferOutcome outcome) {
  switch (outcome) {
    case TransferOutcome::Complete:
      return StatusGood;
    case TransferOutcome::NothingChanged:
      TellFailure(qUtf8Printable(panel.Address().Text + ": nothing has changed"));
      return StatusGood;
    case TransferOutcome::HoldsSomethingElse:
      TellFailure(qUtf8Printable(
          panel.Address().Text +
          ": holds something else than was last sent or read; nothing is written. Compare it, or "
          "send all"));
      return StatusFound;
    case TransferOutcome::NotAnswered:
      panel.Done(false);
      return StatusFailed;
    case TransferOutcome::SumDiffers:
      panel.Fail(QStringLiteral("the panel's sum is not the project's") + QLatin1String(HalfNew));
    case TransferOutcome::NoSum:
      panel.Fail(QStringLiteral("the panel does not tell the sum of its memory: whether all has "
                                "arrived is not known") +
                 QLatin1String(MaybeHalfNew));
    default:
      panel.Fail(QStringLiteral("the panel no longer answers") + QLatin1String(HalfNew));
  }
}

}  // namespace

ExitStatus ReadPanel(const CommandLine& line, const QStringList& places) {
  RefuseOutput(places[1], places[0]);
  const PanelImageType image = PanelAt(AddressOf(places[0])).ReadMemory();
  StoreProject(places[1], UploadedOver(NewProject(), image, !line.NoNames));
  return StatusGood;
}

ExitStatus SendToPanel(const CommandLine& line, const QStringList& places) {
  const PanelAddress address = AddressOf(places[1]);
  const Project project = LoadWhole(places[0]);
  const PasswordDigits password = Password(line);
  const auto image = std::make_unique<PanelImageType>();
  BuildPanelImage(project, password, *image);
  PanelAt panel(address);
  if (panel.Answer(ReadPassWord()) != password) {
    panel.Fail(QStringLiteral("Password Invalid. Download Denied."));
  }
  const auto known = line.Changes ? KnownMemory(OpenedPanel()) : std::nullopt;
  if (line.Changes && !known) {
    panel.Fail(QStringLiteral("nothing is known of what the panel holds; read it, or send all"));
  }
  TellOtherHardware(panel, project, !line.Changes);
  const TransferWatch watch = WatchOfSending(panel);
  return StatusOfSending(
      panel, known ? SendChanges(*known, password, *image, watch) : SendImage(*image, watch));
}

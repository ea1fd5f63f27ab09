#pragma once

#include <QCoreApplication>
#include <optional>

#include "line/transfer.h"
#include "line/transport.h"

/// Where a panel is, as a script writes it: "tcp:HOST[:PORT]", "serial:DEVICE[@BAUD]" or
/// "modem:DEVICE,NUMBER".
struct PanelAddress {
  QString Text;
  Int16 ConnectionType;
  LineSettings Settings;
};

/// The address that a word is; none for the name of a file. Throws RunTimeFailure for what begins
/// as an address and is none.
std::optional<PanelAddress> ParsePanelAddress(const QString& word);

/// The address that a word must be; else RunTimeFailure.
PanelAddress AddressOf(const QString& word);

/// A panel that cannot be reached, or no longer answers; the text names it and the cause.
class PanelFailure : public RunTimeFailure {
 public:
  using RunTimeFailure::RunTimeFailure;
};

/// A panel that is connected as long as this lives; one at a time. Its functions throw
/// PanelFailure.
class PanelAt {
 public:
  explicit PanelAt(const PanelAddress& address);
  ~PanelAt();
  PanelAt(const PanelAt&) = delete;
  PanelAt& operator=(const PanelAt&) = delete;

  /// What a command has given.
  template <typename Reply>
  Reply Answer(std::optional<Reply> reply) const {
    if (!reply) Fail(QStringLiteral("the panel does not answer"));
    return *std::move(reply);
  }
  void Done(bool answered) const {
    if (!answered) Fail(QStringLiteral("the panel does not answer"));
  }
  [[noreturn]] void Fail(const QString& reason) const;

  /// All of its memory, with progress on standard error where that is a terminal.
  PanelImageType ReadMemory();

  const PanelAddress& Address() const { return address_; }
  /// Relays and inputs installed, asked for once.
  int Points();

 private:
  PanelAddress address_;
  QCoreApplication application_;
  std::optional<int> points_;
};

/// Tells the progress of a transfer on standard error where that is a terminal.
TransferWatch ProgressOnTerminal();

#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QTcpSocket>
#include <functional>
#include <string>

#include "simulator/program/panel_thread.h"

namespace simulator {

/// What the failure of the work says; "none" without one.
inline std::string FailureOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return "none";
}

/// A host on TCP that blocks while it waits.
class TcpHost {
 public:
  explicit TcpHost(PanelThread& panel) {
    Socket.connectToHost("127.0.0.1", panel.TcpPort());
    EXPECT_TRUE(Socket.waitForConnected(5000));
  }
  /// Sends the bytes and returns what has come when `length` bytes have or `timeoutMs` have
  /// passed without any.
  std::string Ask(const std::string& bytes, std::size_t length, int timeoutMs = 5000) {
    Socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
    QByteArray reply;
    while (static_cast<std::size_t>(reply.size()) < length && Socket.waitForReadyRead(timeoutMs)) {
      reply += Socket.readAll();
    }
    return reply.toStdString();
  }
  QTcpSocket Socket;
};

/// The same on a serial port.
class SerialHost {
 public:
  explicit SerialHost(const QString& path)
      : Port(open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY)) {
    EXPECT_GE(Port, 0);
  }
  ~SerialHost() { close(Port); }
  SerialHost(const SerialHost&) = delete;
  SerialHost& operator=(const SerialHost&) = delete;

  std::string Ask(const std::string& bytes, std::size_t length, int timeoutMs = 5000) {
    EXPECT_EQ(write(Port, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    std::string reply;
    pollfd waiting{Port, POLLIN, 0};
    while (reply.size() < length && poll(&waiting, 1, timeoutMs) == 1) {
      char buffer[512];
      const ssize_t count = read(Port, buffer, sizeof buffer);
      if (count <= 0) break;
      reply.append(buffer, static_cast<std::size_t>(count));
    }
    return reply;
  }

 private:
  int Port;
};

}  // namespace simulator

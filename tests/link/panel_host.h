#pragma once

#include <unistd.h>

#include "link/panel_image.h"
#include "link/panel_transact.h"
#include "screen_test.h"
#include "simulator/panel_thread.h"

/// The main window with the connection screen, and simulated panels for it to reach.
class PanelHostTest : public ScreenTest {
 protected:
  ~PanelHostTest() override {
    if (Link.DisconnectQZ) Link.DisconnectQZ();
  }

  /// A loopback address of this test's own: the port is the panel's and cannot be chosen.
  static QString OwnAddress() {
    static int count = 0;
    const int own = static_cast<int>(getpid()) * 16 + ++count;
    return QStringLiteral("127.%1.%2.%3")
        .arg(own / 62500 % 200 + 1)
        .arg(own / 250 % 250)
        .arg(own % 250 + 1);
  }

  static simulator::Options TcpPanel(const QString& address) {
    simulator::Options options;
    options.Host = address;
    options.TcpPort = 10001;
    return options;
  }

  void OpenConnect(Int16 type) {
    ConnectionType() = type;
    Menu("mnuConnect");
  }

  /// Connects over TCP; the document then has the panel's hardware.
  void ConnectTo(const QString& address) {
    TcpAddress() = address.toStdString();
    OpenConnect(2);
    Press("cmdConnect");
  }

  void Press(const char* button) { Click(Find<Button>(QString::fromLatin1(button))); }

  void TypePassWord(const char* name, const char* digits) {
    for (int i = 0; i < 6; ++i) {
      QTest::keyClick(&Find<TextBox>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i)),
                      digits[i]);
    }
  }

  void Download(const char* password = "000000") {
    Press("cmdDownLoadToT2");
    TypePassWord("txtPassWord", password);
    Press("cmdPassWordContinue");
  }

  QString LastMessage() const { return messages.empty() ? QString() : messages.back().Text; }
  QString LinkStatus() { return Find<Label>("StatusBar1(2)").Caption(); }
  bool MenusOn() { return Find<QAction>("mnuEdit").isEnabled(); }
  QString Text(const char* label) { return Find<Label>(QString::fromLatin1(label)).Caption(); }
};

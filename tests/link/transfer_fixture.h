#pragma once

#include <QTimer>

#include "link/panel_host.h"

/// The connection screen and a simulated panel that answers in earnest.
class TransferTest : public PanelHostTest {
 protected:
  /// A panel of its own for this test, connected.
  void ConnectToPanel(const char* password = "") {
    simulator::Options options = TcpPanel(OwnAddress());
    options.Password = password;
    panel.emplace(options);
    ConnectTo(options.Host);
  }

  /// That the panel's memory is the image, byte by byte.
  void ExpectMemoryIsImage() {
    const std::string memory = panel->With([](simulator::Panel& p) { return p.Memory.Content(); });
    for (int i = 0; i < PanelImageSize; ++i) {
      ASSERT_EQ(memory[static_cast<std::size_t>(i)], static_cast<char>(PanelImage(i))) << i;
    }
  }

  /// What a transfer tells in the end about one fault of the panel, after `questions`.
  void ExpectTold(const char* fault, const QString& told, bool staysConnected,
                  std::size_t questions, const std::function<void()>& transfer) {
    SCOPED_TRACE(fault);
    const PanelClock clock(panel);
    ConnectToPanel();
    panel->AddFault(fault);
    transfer();
    EXPECT_EQ(messages.size(), questions + 1);
    EXPECT_EQ(LastMessage(), told);
    EXPECT_EQ(Connected != 0, staysConnected);
    ExpectUsable();
    Link.DisconnectQZ();
  }

  /// What the user does while an answer is due: the panel holds it back until all is done.
  void WhileRefreshWaits(const std::function<void()>& actions) {
    const auto held = std::make_shared<QSemaphore>();
    QSemaphore begun;
    panel->With([&](simulator::Simulator& s) {
      const auto hold = [&begun, held] {
        begun.release();
        held->acquire();
      };
      QMetaObject::invokeMethod(&s, hold, Qt::QueuedConnection);
    });
    begun.acquire();
    const auto usual = WinSockQZ().LongWait;
    WinSockQZ().LongWait = [&, first = true]() mutable {
      if (!std::exchange(first, false)) return;
      QTimer::singleShot(0, window.get(), [&] {
        actions();
        held->release();
      });
    };
    Press("cmdRefresh");
    WinSockQZ().LongWait = usual;
  }

  /// Runs `action` once, when block `block` of a transfer shows.
  void AtBlock(int block, std::function<void()> action) {
    auto* watch = new QTimer(window.get());
    QObject::connect(watch, &QTimer::timeout, window.get(), [=, this] {
      auto* label = window->findChild<Label*>(QStringLiteral("lblActivityProgress"));
      const QString text = label ? label->Caption() : QString();
      const int at = text.section(u' ', 2, 2).toInt();
      if (at < block) return;
      watch->stop();
      action();
    });
    watch->start(0);
  }

  std::optional<simulator::PanelThread> panel;
};

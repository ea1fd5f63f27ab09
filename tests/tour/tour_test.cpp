#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <array>

// Does what the guide's first chapter says, in the program beside the simulated panel, each in a
// process of its own. With TAMBERLOOM_TOUR_PICTURES told, the chapter's pictures go into that
// folder, which is the programs' home, too, as pictures show its path.

namespace {

constexpr int StepMs = 20'000;

/// What steps look like, and the driver's word for them. The rest of a step is read by people.
struct StepForm {
  const char* Verb;
  const char* Form;
  const char* Of = "";  ///< What the step shows without its name, as the driver knows it.
};
constexpr std::array StepForms{
    StepForm{"until", "In the panel's window press %% until %% is %%"},
    StepForm{"open", "Open %%"},
    StepForm{"press", "Press %%"},
    StepForm{"type", "In %% type `([^`]+)`"},
    StepForm{"type", "In %% type `([^`]+)`, before `([^`]+)`"},
    StepForm{"choose", "In %% choose %%"},
    StepForm{"choose", "In the left one of the two lists below it choose %%", "Event"},
    StepForm{"see", "See %%"},
    StepForm{"see", "Wait for %%"},
    StepForm{"is", "Wait until %% is %%"},
};

struct Step {
  int Line;
  QString Text;
  QStringList Words;  ///< Verb first; "picture" and the file for a picture. Empty: not understood.
};

QStringList Understand(const QString& step) {
  for (const StepForm& form : StepForms) {
    QString pattern = QLatin1String(form.Form);
    pattern.replace("%%", "\\*\\*([^*]+)\\*\\*");
    const auto found = QRegularExpression("^" + pattern + "[^*`]*$").match(step);
    if (!found.hasMatch()) continue;
    QStringList words = QStringList(form.Verb) + found.capturedTexts().mid(1);
    if (*form.Of) words.insert(1, form.Of);
    return words;
  }
  return {};
}

std::vector<Step> ReadChapter() {
  QFile file(QStringLiteral(GUIDE_FOLDER "/first-evening.md"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  static const QRegularExpression step("^(\\d+)\\. (.*)$");
  static const QRegularExpression picture("^!\\[.*\\]\\(pictures/(.*)\\)$");
  std::vector<Step> steps;
  std::vector<Step> ofTheEnd;  // shown before the first step
  int number = 0;
  const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
  for (int i = 0; i < lines.size(); ++i) {
    if (const auto found = picture.match(lines[i]); found.hasMatch()) {
      (number == 0 ? ofTheEnd : steps).push_back({i + 1, lines[i], {"picture", found.captured(1)}});
    }
    const auto found = step.match(lines[i]);
    if (!found.hasMatch()) continue;
    EXPECT_EQ(found.captured(1).toInt(), ++number) << "line " << i + 1;
    QString text = found.captured(2);
    while (lines[i + 1].startsWith(' ')) text += ' ' + lines[++i].trimmed();
    steps.push_back({i + 1, text, Understand(text)});
  }
  steps.insert(steps.end(), ofTheEnd.begin(), ofTheEnd.end());
  return steps;
}

/// A program with the driver in it.
class Driven {
 public:
  Driven(const char* program, const QStringList& arguments, const QString& home) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    environment.insert("QT_LOGGING_RULES", "*.warning=false");
    environment.insert("QT_QPA_GENERIC_PLUGINS", "driver");
    environment.insert("QT_PLUGIN_PATH", DRIVER_PLUGINS);
    Process.setProcessEnvironment(environment);
    Process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    Process.start(program, arguments);
  }
  ~Driven() {
    Process.terminate();
    if (!Process.waitForFinished(StepMs)) Process.kill();
    EXPECT_EQ(Process.exitStatus(), QProcess::NormalExit) << "the signal is handled";
  }

  /// Whether the driver could do it now.
  bool Try(const QStringList& words) {
    Process.write(words.join('\t').toUtf8() + '\n');
    while (!Process.canReadLine() && Process.waitForReadyRead(StepMs)) {
    }
    return Process.readLine() == "ok\n";
  }

  bool Do(const QStringList& words, int ms = StepMs) {
    QElapsedTimer time;
    time.start();
    while (!Try(words)) {
      if (time.hasExpired(ms)) return false;
      QThread::msleep(20);
    }
    return true;
  }

 private:
  QProcess Process;
};

class TourTest : public testing::Test {
 protected:
  bool Follow(const Step& step) {
    const QStringList& words = step.Words;
    if (words.isEmpty()) return false;
    if (words[0] == "picture") return Pictures.isEmpty() || TakePicture(words[1]);
    if (words[0] == "until") {
      constexpr int most = 20;
      constexpr int shownMs = 300;
      WithPanel = true;
      for (int i = 0; i < most; ++i) {
        if (Panel.Do({"is", words[2], words[3]}, shownMs)) return true;
        if (!Panel.Do({"press", words[1]})) return false;
      }
      return false;
    }
    QStringList told = words;
    if (told[0] == "type" && told[2] == "127.0.0.1") told[2] = Address;
    const QString behind = told.size() > 3 ? told.takeLast() : QString();
    const bool set = told[0] == "type" || told[0] == "choose";
    return Host.Do(told) && (!set || Host.Do({"is", told[1], told[2] + behind}));
  }

  /// Of the program, and once the chapter has turned to it of the panel's window beside it.
  bool TakePicture(const QString& name) {
    const QString path = Pictures + '/' + name;
    if (!Host.Do({"picture", path})) return false;
    if (!WithPanel) return true;
    const QString behind = Folder.filePath(name);
    if (!Panel.Do({"picture", behind})) return false;
    const QImage host(path), panel(behind);
    QImage both(host.width() + panel.width(), std::max(host.height(), panel.height()),
                QImage::Format_ARGB32);
    both.fill(Qt::transparent);
    QPainter painter(&both);
    for (const auto& [at, window] : {std::pair(QPoint(), host), {QPoint(host.width(), 0), panel}}) {
      painter.drawImage(at, window);
      painter.drawRect(QRect(at, window.size()).adjusted(0, 0, -1, -1));
    }
    return both.save(path);
  }

  /// The port is the panel's and cannot be chosen, so that the address is this test's own.
  const QString Address =
      QStringLiteral("127.77.%1.%2").arg(getpid() / 250 % 250).arg(getpid() % 250 + 1);
  const QString Pictures = qEnvironmentVariable("TAMBERLOOM_TOUR_PICTURES");
  QTemporaryDir Folder;
  const QString Home = Pictures.isEmpty() ? Folder.path() : Pictures;
  bool WithPanel = false;
  Driven Panel{PANEL_PROGRAM,
               {"--window", "--beside", "0,0,740,600", "--host", Address, "--tcp", "10001"},
               Home};
  Driven Host{MAIN_PROGRAM, {}, Home};
};

TEST_F(TourTest, TheFirstEveningGoesAsTheGuideSays) {
  const std::vector<Step> steps = ReadChapter();
  ASSERT_FALSE(steps.empty());
  for (const Step& step : steps) {
    ASSERT_TRUE(Follow(step)) << "docs/guide/first-evening.md:" << step.Line << ": "
                              << step.Text.toStdString();
  }
}

}  // namespace

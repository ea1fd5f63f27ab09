#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QtTest/QTest>

#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "screen_table.h"
#include "shell/controls/in_place_list.h"
#include "shell/shell.h"
#include "shell/window/main_window.h"

/// In messages of tests.
inline std::ostream& operator<<(std::ostream& out, Screen screen) {
  return out << ScreenName(screen);
}

/// The real main window on a new panel, with a data folder of its own. Screens are driven by
/// control name; messages are recorded and answered from `answers`, then with Yes or OK.
class ScreenTest : public testing::Test {
 protected:
  ScreenTest() {
    oldHome = qgetenv("HOME");
    qputenv("HOME", folder.path().toLocal8Bit());
    PanelRecord = {};
    FennlinkRecords = {};
    shownMsgBox = MsgBoxSeam;
    MsgBoxSeam = [this](const Message& message) {
      messages.push_back(message);
      if (!answers.empty()) {
        const MsgAnswer answer = answers.front();
        answers.erase(answers.begin());
        return answer;
      }
      return message.Buttons == MsgButtons::Ok ? MsgAnswer::Ok : MsgAnswer::Yes;
    };
    shownAsk = AskSeam;
    AskSeam = [this](const QString& text, const QStringList& choices) {
      messages.push_back({text, MsgIcon::Question, {}, MsgButtons::Ok});
      const auto chosen = choices.indexOf(nextChoice);
      return static_cast<int>(chosen < 0 ? choices.size() - 1 : chosen);
    };
    shownAskText = AskTextSeam;
    AskTextSeam = [this](const QString&, const QString& about) {
      askedAbout = about;
      return nextText;
    };
    shownFileDialog = FileDialogSeam;
    FileDialogSeam = [this](const FileRequest& request) {
      fileRequests.push_back(request);
      return nextFileName;
    };
    StartAnew();
    QApplication::processEvents();
    // The second after the start, in which no mark stays, is over.
    window->tmrFix_Timer();
  }

  ~ScreenTest() override {
    window.reset();
    MsgBoxSeam = shownMsgBox;
    AskSeam = shownAsk;
    AskTextSeam = shownAskText;
    FileDialogSeam = shownFileDialog;
    qputenv("HOME", oldHome);
  }

  /// Ends the program, as it were, and starts it again.
  void StartAnew() {
    window.reset();
    window = std::make_unique<frmT3MasterMDI>(AllScreens());
    window->MDIForm_Load();
  }

  /// The text of the one message that there has been; of none or several, their number.
  QString OnlyMessage() const {
    return messages.size() == 1 ? messages[0].Text : QString::number(messages.size());
  }

  /// Opens a screen through its menu entry.
  void Menu(const char* entry) {
    auto* action = window->findChild<QAction*>(QString::fromLatin1(entry));
    ASSERT_NE(action, nullptr) << entry;
    ASSERT_TRUE(action->isEnabled()) << entry;
    action->trigger();
    QApplication::processEvents();
  }

  /// Shows every screen in turn, alone.
  void OnEveryScreen(const std::function<void(Screen, ChildForm&)>& look) {
    for (const ScreenEntry& entry : ScreenTable()) {
      if (!entry.Create) continue;
      SCOPED_TRACE(ScreenName(entry.Name));
      window->UnloadAllForms();
      ChildForm* form = window->ShowForm(entry.Name);
      QApplication::processEvents();
      look(entry.Name, *form);
    }
  }

  /// The project as a file has it.
  static std::string Bytes() { return EncodeProject(LiveProject); }

  template <typename Control>
  Control& Find(const QString& name) {
    auto* control = window->findChild<Control*>(name);
    if (!control) throw std::runtime_error("no control " + name.toStdString());
    return *control;
  }

  template <typename Control>
  Control& Find(const QString& name, int index) {
    return Find<Control>(QStringLiteral("%1(%2)").arg(name).arg(index));
  }

  Label& Cell(const QString& name, int index) { return Find<Label>(name, index); }

  QString Text(const char* label) { return Find<Label>(QString::fromLatin1(label)).Caption(); }
  QString LinkStatus() { return Text("StatusBar1(2)"); }
  QString Caption(const QString& name, int index) { return Cell(name, index).Caption(); }

  /// The captions of a column's cells, joined by "|".
  QString Captions(const QString& name, std::initializer_list<int> indices) {
    QStringList captions;
    for (const int index : indices) captions << Caption(name, index);
    return captions.join(u'|');
  }

  /// Whether the control would be seen, whatever the scroll position.
  bool Shown(QWidget& control) { return control.isVisibleTo(window.get()); }
  bool Shows(const QString& name) { return Shown(Find<QWidget>(name)); }
  bool Shows(const QString& name, int index) { return Shown(Find<QWidget>(name, index)); }

  /// What is chosen in a drop-down list, and in a list over the cells.
  int Chosen(const QString& list) { return Find<ComboBox>(list).ListIndex(); }
  QString ChosenText(const QString& list) { return Find<ComboBox>(list).currentText(); }
  int Offered(const QString& list) { return Find<InPlaceList>(list).ListIndex(); }

  void Click(QWidget& control) { QTest::mouseClick(&control, Qt::LeftButton); }
  void Press(const char* button) { Click(Find<Button>(QString::fromLatin1(button))); }

  /// Clicks the middle of a list's item as a user does.
  void ChooseInPlace(const QString& name, int index) {
    auto& list = Find<InPlaceList>(name);
    ASSERT_TRUE(list.isVisible()) << name.toStdString();
    list.scrollTo(list.model()->index(index, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.model()->index(index, 0)).center());
  }

  /// Opens the list over a cell and chooses an item.
  void Pick(const QString& cell, int index, const QString& list, int item) {
    Click(Cell(cell, index));
    ChooseInPlace(list, item);
  }

  /// A key, for the control that has the focus.
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, held);
  }

  /// Chooses a bus device where the screen has a list of them.
  void ChooseDevice(int device) {
    for (const char* list : {"cboFLinkDevice", "cboFennlinkDevice"}) {
      if (window->findChild<ComboBox*>(list)) Choose(list, device);
    }
  }

  /// A user's choice in a drop-down list; the item shown already may be chosen too.
  void Choose(const QString& name, int index) {
    auto& list = Find<ComboBox>(name);
    list.setCurrentIndex(index);
    Q_EMIT list.activated(index);
  }

  QTemporaryDir folder;
  QByteArray oldHome;
  std::function<MsgAnswer(const Message&)> shownMsgBox;  ///< The ones that users see.
  std::function<int(const QString&, const QStringList&)> shownAsk;
  std::function<std::optional<QString>(const QString&, const QString&)> shownAskText;
  std::function<QString(const FileRequest&)> shownFileDialog;
  std::vector<Message> messages;
  std::vector<MsgAnswer> answers;
  std::vector<FileRequest> fileRequests;
  QString nextFileName;
  QString nextChoice;               ///< Of a question with answers of its own; else the last.
  std::optional<QString> nextText;  ///< Typed into a question that asks for one.
  QString askedAbout;               ///< What stood above it.
  std::unique_ptr<frmT3MasterMDI> window;
};

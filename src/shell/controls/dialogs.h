#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "shell/controls/handlers.h"

class QWidget;

enum class MsgIcon { None, Information, Question, Exclamation, Critical };
enum class MsgButtons { Ok, YesNo, YesNoCancel };
enum class MsgAnswer { Ok, Yes, No, Cancel };

struct Message {
  QString Text;
  MsgIcon Icon;
  QString Title;
  MsgButtons Buttons;
  QString Detail = {};  ///< Smaller, below the text.
};

struct FileRequest {
  enum class Kind { Open, Save } Mode;
  QString Filter;  ///< Pairs of text and pattern, all joined by "|".
  /// A path, or a mask in the folder that the dialog starts in when nothing leads elsewhere.
  QString FileName;
  QString Ending = {};  ///< Behind a name typed without one: "pdf". Empty leaves names as typed.
  QString Title = {};   ///< Of the dialog; empty: the toolkit's own.
};

/// Shows a message and waits for the answer. A question has the focus on No: it is asked before
/// work is lost, so Yes never is the answer of a key pressed too often. While the program ends
/// nothing is shown, and a question is answered No.
MsgAnswer MsgBox(const QString& text, MsgIcon icon, const QString& title,
                 MsgButtons buttons = MsgButtons::Ok, const QString& detail = {});

/// Asks with answers of its own, the last of which leaves all as it is, and is given where nobody
/// is asked any more. Gives the answer's place.
int Ask(const QString& text, const QStringList& answers);

/// A line that the user types below the text; null when the user cancels. What it is about stands
/// above the text.
std::optional<QString> AskText(const QString& text, const QString& about);

/// The chosen path, or an empty string when the user cancels.
QString FileDialog(const FileRequest& request);

/// Asks the desktop to open an address or a file; what comes of it is ignored.
void OpenUrl(const QString& address);

/// Names the page of the guide that F1 shows while the focus is in this part of a window.
void SetGuidePage(QWidget& part, const char* page);
/// Of the innermost part around the control that has one; empty without.
QString GuidePageAround(const QWidget* control);

/// Tests answer and read the dialogs by putting their own functions here.
extern std::function<MsgAnswer(const Message&)> MsgBoxSeam;
extern std::function<int(const QString& text, const QStringList& answers)> AskSeam;
extern std::function<std::optional<QString>(const QString& text, const QString& about)> AskTextSeam;
extern std::function<QString(const FileRequest&)> FileDialogSeam;
extern std::function<void(const QString&)> OpenUrlSeam;

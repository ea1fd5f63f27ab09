#include "link/panel_link.h"

#include <QLabel>

#include "line/line_hooks.h"
#include "line/panel_transact.h"
#include "panel/live_project.h"
#include "panel/program_texts.h"
#include "shell/controls/child_form.h"
#include "shell/controls/dialogs.h"
#include "shell/shell.h"

void AttachLine() {
  Line.ConnectionType = [] { return ConnectionType(); };
  Line.LinkStatus = SetLinkStatus;
  Line.LongWait = PaintNow;
}

void PanelConnectionLost(const QString& left) {
  if (EndedWhileWaiting() || ProgramEnding()) return;
  if (Link.DisconnectQZ) Link.DisconnectQZ();
  UnloadAllForms();
  ChildForm* form = ShowForm(Screen::Connect);
  if (form) {
    if (auto* connect = form->findChild<QWidget*>(QStringLiteral("cmdConnect")))
      connect->setFocus();
  }
  MsgBox(QStringLiteral("Connection To Tamberloom 3 Panel Lost"), MsgIcon::Exclamation,
         ProgramTitle);
  if (auto* told = form ? form->findChild<QLabel*>(QStringLiteral("lblLeft")) : nullptr;
      told && !left.isEmpty()) {
    told->setText(left);
    told->setVisible(true);
  }
  UpdateStatusBar();
}

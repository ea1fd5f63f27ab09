#include "config/add_on_module_form.h"

#include "config/words_table.h"
#include "panel/code_page.h"

namespace {

struct AddOnModuleScreen {
  std::string_view Name;
  int Type;  ///< AddOnModuleType.
};

constexpr auto AddOnModuleScreens = std::to_array<AddOnModuleScreen>({
    {"frmT3AddOnModuleNone", 0},
    {"frmT3AddOnModuleN2", 3},
    {"frmT3AddOnModuleVoiceDTMF", 4},
    {"frmT3AddOnModuleBACnet", 5},
});

AddOnModule ModuleOf(const char* name) {
  return AddOnModuleOf(ScreenRow(AddOnModuleScreens, name).Type);
}

}  // namespace

AddOnModuleForm::AddOnModuleForm(const char* name)
    : ChildForm(QString::fromLatin1(name), ToUnicode(ModuleOf(name).EditorCaption)),
      Text(ToUnicode(ModuleOf(name).EditorText)) {}

void AddOnModuleForm::Form_Load() {
  AddLabel(AddRow(), "lblNoAddOnModule", Text);
}

#include "config/add_on_module_form.h"

#include "panel/code_page.h"
#include "panel/words.h"

namespace {

const AddOnModule& ModuleOf(Screen screen) {
  const auto* row =
      std::find_if(AddOnModules.begin(), AddOnModules.end(),
                   [screen](const AddOnModule& module) { return module.On == screen; });
  return AddOnModules.at(static_cast<std::size_t>(row - AddOnModules.begin()));
}

}  // namespace

AddOnModuleForm::AddOnModuleForm(Screen name)
    : ChildForm(name, ToUnicode(ModuleOf(name).EditorCaption)),
      Text(ToUnicode(ModuleOf(name).EditorText)) {}

void AddOnModuleForm::Form_Load() {
  AddLabel(AddRow(), "lblNoAddOnModule", Text);
}

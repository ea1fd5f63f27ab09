#pragma once

#include "shell/controls/controls.h"

/// A text box for names: typing gives upper case, digits and the signs that names may have. What a
/// paste or a loaded file brings stays as it is.
void FilterNameKeys(TextBox& box);

#pragma once

/// Changes a new panel to one with every code that the document has a word for, and the neighbours
/// that have none. Its document is tests/document/golden/every_code.txt.
void LoadEveryCode();

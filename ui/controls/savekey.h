#pragma once

class QAbstractButton;

// Ctrl+S presses a form's save button while it is on show and enabled. A shortcut of its own,
// because a button's setText() replaces the button's shortcut with the text's mnemonic.
namespace SaveKey {
void attach(QAbstractButton* save);
} // namespace SaveKey

#pragma once

class QBoxLayout;
class QDialog;
class QDialogButtonBox;
class QVBoxLayout;

/// The layout of a whole dialog, with its margins.
QVBoxLayout* AddDialogLayout(QDialog& dialog);

/// OK and Cancel at the end of a dialog, in the program's language; OK is the default one.
QDialogButtonBox* AddDialogButtons(QDialog& dialog, QBoxLayout& layout);
void EnableOk(QDialogButtonBox& buttons, bool enabled);

#pragma once

class QWidget;

/// Tells what the program is, and whose work it stands on.
void ShowAboutWindow(QWidget* parent);

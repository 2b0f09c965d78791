#pragma once

#include <cstddef>
#include <vector>

class CSettings;
class MainWindow;
class Workspace;

/// Puts stops on the clipboard as text.
void CopyStops(const Workspace& work, const std::vector<size_t>& rows);

/// Looks up each line of the clipboard's text, shows what was found and how well, and adds what the
/// user keeps.
void PasteStops(MainWindow& window, const CSettings& settings);

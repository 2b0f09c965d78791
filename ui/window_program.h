#pragma once

#include <string>
#include <vector>

#include "ui/look.h"

/// What has to be done before the application object is made.
void PrepareApplication(Look look);

/// Runs the window until it closes. `file`, in UTF-8, is opened at the start unless it is empty;
/// language and settings have been chosen, and `settingsMessages` are what the user has to know
/// about these. Returns the exit status of the program.
int RunWindowProgram(int& argumentCount, char** arguments, const std::string& file,
                     std::vector<std::string> settingsMessages);

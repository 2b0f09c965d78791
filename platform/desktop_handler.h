#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The command line of the program that the desktop has for a MIME type, or for the scheme of an
/// address ("x-scheme-handler/geo"): by the user's choice, else any program that declares it. `%u`
/// and its kin stand where the address or file goes. Empty when there is none.
std::vector<std::string> DesktopHandler(std::string_view mimeType);

/// The command line with `target` in place of the field codes, and the other codes left out.
std::vector<std::string> HandlerArguments(const std::vector<std::string>& command,
                                          const std::string& target);

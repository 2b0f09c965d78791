#pragma once

#include <string_view>

#include "base/wide_string.h"

/// The path of a data file that comes with the program: beside a program that was just built, in
/// the shared folder of an installed one. Empty where the file is not there.
WideString ProgramDataFile(std::string_view name);

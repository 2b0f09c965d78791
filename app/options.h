#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/directions_options.h"
#include "app/list_operations.h"
#include "app/service_options.h"
#include "base/wide_string.h"
#include "conversion/list_choice.h"
#include "settings/csv_layout.h"

/// Understands the value of --list; nothing for a value that means nothing.
std::optional<ListChoice> ParseListChoice(const std::string& text);

/// What is handed to the companion program of a device.
struct SendOptions {
  std::string target;  ///< as it is typed; empty: nothing is sent
  uint32_t stop = 0;   ///< one stop, from 1; 0 for the whole itinerary
};

/// What the command line asks for.
struct Options {
  std::vector<WideString> tokens;  ///< source, key and language, in the order given
  bool help = false;
  bool version = false;
  bool formats = false;
  bool inspect = false;
  bool json = false;
  bool quiet = false;
  bool check = false;
  bool strict = false;
  bool tolerant = false;
  bool fit = false;
  std::string encoding;
  bool force = false;
  bool noSync = false;
  bool merge = false;
  bool recursive = false;
  WideString from;  ///< key of the source's format; empty for that of its extension
  WideString output;
  ListChoice lists;
  uint32_t split = 0;
  std::string option;  ///< of the writer, as a word
  bool summary = false;
  std::vector<ListOperation> operations;  ///< in the order given
  bool settings = false;
  std::vector<std::string> assignments;  ///< KEY=VALUE
  std::optional<CCsvLayout> csvRead;
  bool findsCsvColumns = false;  ///< those of each file that is read
  std::optional<CCsvLayout> csvWrite;
  bool remember = false;  ///< store the CSV layouts
  ServiceOptions services;
  DirectionsOptions directions;
  SendOptions send;
};

/// Reads the arguments of the program. When they cannot be understood, nothing is returned and
/// `error` holds a sentence for the user in the current language.
std::optional<Options> ParseOptions(int argumentCount, char** arguments, std::string& error);

/// The help text in the current language.
std::string HelpText();

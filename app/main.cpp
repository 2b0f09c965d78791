#include <memory_resource>
#include <optional>
#include <string>

#include "app/command_line.h"
#include "app/console_text.h"
#include "app/conversion_services.h"
#include "app/format_listing.h"
#include "app/inspection.h"
#include "app/options.h"
#include "app/roads_command.h"
#include "app/send_command.h"
#include "app/service_commands.h"
#include "app/service_outcome.h"
#include "app/settings_command.h"
#include "app/unattended_conversion.h"
#include "app/way_command.h"
#include "base/format_text.h"
#include "base/product.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/conversion_context.h"
#include "conversion/format_search.h"
#include "planner/hand_off.h"
#include "planner/tomtom_home.h"
#include "planner/whole_format_table.h"
#include "platform/become_program.h"
#include "platform/console.h"
#include "platform/large_pages.h"
#include "platform/locale.h"
#include "platform/path_text.h"
#include "services/links/link_rows.h"
#include "settings/settings.h"

namespace {

constexpr uint32_t kSystemLanguage = 0;

constexpr char kWindowProgram[] = "corvanemap-window";

// The settings are loaded only where they decide: their file may be held by another program.
void SetLanguageOf(const std::vector<WideString>& tokens) {
  const WideString token = FindLanguageToken(tokens);
  SetLanguage(ChooseLanguage(token, kSystemLanguage, PrimaryLanguage()));
  if (!token.empty()) return;
  SetLanguage(ChooseLanguage(token, StoredLanguage(), PrimaryLanguage()));
}

// Whether the options keep something for the next time; then nothing else needs to be asked for.
bool KeepsSomething(const Options& options) {
  const bool keepsLayouts = options.remember && (options.csvRead || options.csvWrite);
  return keepsLayouts || !options.assignments.empty();
}

// The window is a program of its own, in a package of its own, and takes the same tokens. Comes
// back only where it cannot be had.
void BecomeWindow(int argumentCount, char** arguments) {
  std::vector<std::string> command(arguments, arguments + argumentCount);
  command.front() = kWindowProgram;
  if (CanShowWindow()) BecomeProgram(command);
}

int OpenWindow(int argumentCount, char** arguments) {
  BecomeWindow(argumentCount, arguments);
  Complain(FormatText(kTextNoWindow));
  Complain(FormatText(kTextUsage));
  return kExitWrongUsage;
}

// Keys that make no file: that of the hand-off to TomTom HOME, and with its option the row that
// hands over to Navigon Fresh.
void TakeCompanionKey(const FormatTable& table, Options& options) {
  if (options.inspect || options.tokens.size() < 2) return;
  const WideString key = ToLowerAscii(options.tokens[1]);
  const CItineraryFormat* const row = FindWriter(table, key);
  if (key == kTomTomHomeKey)
    options.send.target = FindDeviceTarget(kTargetTomTomHome)->name;
  else if (row && row->facts.option == WriterOption::kHandOff && options.split != 0)
    options.send.target = FindDeviceTarget(kTargetNavigonFresh)->name;
}

int Run(Options& options, int argumentCount, char** arguments) {
  if (options.help) {
    return WriteOutput(HelpText()) ? kExitConverted : kExitFailed;
  }
  if (options.version) {
    const std::string credit(LoadTextUtf8(kTextPlacesCredit));
    const std::string text = std::string(kProductName) + "\n" + credit + "\n";
    return WriteOutput(text) ? kExitConverted : kExitFailed;
  }
  if (const int status = ChangeSettings(options)) return status;
  if (options.remember && !RememberCsvLayouts(options)) return kExitFailed;
  if (options.settings) return RunSettings(options);
  if (const std::optional<int> status = RunServiceCommand(options)) return *status;
  if (options.directions.roads) return RunRoads(options);
  FormatTable table = WholeFormatTable();
  AddLinkFunctions(table);
  if (options.formats) {
    ListCompanionRows(table);
    return ListFormats(table, options.json) ? kExitConverted : kExitFailed;
  }
  DropLanguageTokens(options.tokens);
  ConversionContext context;
  context.csvLayouts.forReading = options.csvRead;
  context.csvLayouts.findsForReading = options.findsCsvColumns;
  context.encoding = options.encoding;
  context.csvLayouts.forWriting = options.csvWrite;
  context.lookups.lastForRun = true;
  if (options.directions.way && options.tokens.empty()) {
    AllowLookups(options, context.lookups);
    return RunWay(options, table, context);
  }
  TakeCompanionKey(table, options);
  if (!options.send.target.empty()) {
    AllowLookups(options, context.lookups);
    return RunSend(options, table, context);
  }
  if (options.inspect && options.tokens.size() == 1) {
    AllowLocalLookups(options, context.lookups);
    return RunInspection(options, table, context);
  }
  if (!options.inspect && options.tokens.size() >= 2) {
    AllowLookups(options, context.lookups);
    const int status = RunConversion(options, table, context);
    TellRequests(options);
    return status;
  }
  if (!options.inspect && options.tokens.empty() && KeepsSomething(options)) return kExitConverted;
  if (options.inspect) {
    Complain(FormatText(kTextUsage));
    return kExitWrongUsage;
  }
  return OpenWindow(argumentCount, arguments);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  PrepareProcess();
  std::pmr::set_default_resource(&LargePages());
  std::vector<WideString> tokens;
  for (int i = 1; i < argumentCount; ++i) tokens.push_back(WidePath(arguments[i]));
  // The window loads the settings itself, and tells in itself what is wrong with their file.
  const bool isForWindow =
      tokens.empty() || (tokens.size() == 1 && !tokens.front().starts_with(u'-'));
  if (isForWindow) BecomeWindow(argumentCount, arguments);
  // For what is wrong with the options, whose values are no tokens.
  SetLanguageOf(tokens);

  std::string error;
  std::optional<Options> options = ParseOptions(argumentCount, arguments, error);
  if (!options) {
    Complain(error);
    return kExitWrongUsage;
  }
  SetLanguageOf(options->tokens);
  return Run(*options, argumentCount, arguments);
}

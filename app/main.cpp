#include <optional>
#include <string>

#include "app/command_line.h"
#include "app/console_text.h"
#include "app/format_listing.h"
#include "app/inspection.h"
#include "app/options.h"
#include "app/service_commands.h"
#include "app/settings_command.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/product.h"
#include "base/text_ids.h"
#include "conversion/conversion_context.h"
#include "formats/format_rows.h"
#include "platform/become_program.h"
#include "platform/console.h"
#include "platform/locale.h"
#include "platform/path_text.h"
#include "settings/settings.h"

namespace {

constexpr uint32_t kSystemLanguage = 0;

constexpr char kWindowProgram[] = "corvanemap-window";

void SetLanguageOf(const std::vector<WideString>& tokens, uint32_t storedLanguage) {
  SetLanguage(ChooseLanguage(FindLanguageToken(tokens), storedLanguage, PrimaryLanguage()));
}

uint32_t StoredLanguage() { return static_cast<uint32_t>(CSettings::Instance().language); }

// Whether the options keep something for the next time; then nothing else needs to be asked for.
bool KeepsSomething(const Options& options) {
  const bool keepsLayouts = options.remember && (options.csvRead || options.csvWrite);
  return keepsLayouts || !options.assignments.empty();
}

// The window is a program of its own, in a package of its own, and takes the same tokens. Comes back
// only where it cannot be had.
int OpenWindow(int argumentCount, char** arguments) {
  std::vector<std::string> command(arguments, arguments + argumentCount);
  command.front() = kWindowProgram;
  if (HasDesktop()) BecomeProgram(command);
  Complain(FormatText(kTextNoWindow));
  Complain(FormatText(kTextUsage));
  return kExitWrongUsage;
}

int Run(Options& options, int argumentCount, char** arguments) {
  if (options.help) {
    return WriteOutput(HelpText()) ? kExitConverted : kExitFailed;
  }
  if (options.version) {
    return WriteOutput(std::string(kProductName) + "\n") ? kExitConverted : kExitFailed;
  }
  if (const int status = ChangeSettings(options)) return status;
  if (options.remember && !RememberCsvLayouts(options)) return kExitFailed;
  if (options.settings) return RunSettings(options);
  if (const std::optional<int> status = RunServiceCommand(options)) return *status;
  const FormatTable table = DefaultFormatTable();
  if (options.formats) {
    return ListFormats(table, options.json) ? kExitConverted : kExitFailed;
  }
  DropLanguageTokens(options.tokens);
  ConversionContext context;
  context.csvLayouts.forReading = options.csvRead;
  context.csvLayouts.forWriting = options.csvWrite;
  context.lookups.lastForRun = true;
  if (options.inspect && options.tokens.size() == 1) return RunInspection(options, table, context);
  if (!options.inspect && options.tokens.size() >= 2) return RunConversion(options, table, context);
  if (!options.inspect && options.tokens.empty() && KeepsSomething(options)) return kExitConverted;
  if (options.inspect) {
    Complain(FormatText(kTextUsage));
    return kExitWrongUsage;
  }
  return OpenWindow(argumentCount, arguments);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  PrepareConsoleProcess();
  std::vector<WideString> tokens;
  for (int i = 1; i < argumentCount; ++i) tokens.push_back(WidePath(arguments[i]));
  // For what is wrong with the settings and the options; the options' values are no tokens.
  SetLanguageOf(tokens, kSystemLanguage);
  LoadUserSettings();
  SetLanguageOf(tokens, StoredLanguage());

  std::string error;
  std::optional<Options> options = ParseOptions(argumentCount, arguments, error);
  if (!options) {
    Complain(error);
    return kExitWrongUsage;
  }
  SetLanguageOf(options->tokens, StoredLanguage());
  return Run(*options, argumentCount, arguments);
}

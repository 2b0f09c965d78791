#include <optional>
#include <string>

#include "app/console_text.h"
#include "app/format_listing.h"
#include "app/inspection.h"
#include "app/options.h"
#include "app/settings_command.h"
#include "app/unattended_conversion.h"
#include "core/command_line.h"
#include "core/product.h"
#include "core/settings.h"
#include "formats/format_rows.h"
#include "platform/console.h"
#include "platform/locale.h"
#include "platform/path_text.h"

namespace {

int Run(Options& options) {
  if (options.help) {
    WriteOutput(HelpText());
    return kExitConverted;
  }
  if (options.version) {
    WriteOutput(std::string(kProductName) + "\n");
    return kExitConverted;
  }
  if (options.settings || !options.assignments.empty()) return RunSettings(options);
  if (!ApplyCsvLayouts(options)) return kExitFailed;
  const FormatTable table = DefaultFormatTable();
  if (options.formats) {
    ListFormats(table, options.json);
    return kExitConverted;
  }
  DropLanguageTokens(options.tokens);
  if (options.inspect && options.tokens.size() == 1) return RunInspection(options, table);
  if (!options.inspect && options.tokens.size() >= 2) return RunConversion(options, table);
  Complain(Text(options.inspect ? kTextUsage : kTextNoWindow));
  if (!options.inspect) Complain(Text(kTextUsage));
  return kExitWrongUsage;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  PrepareConsoleProcess();
  std::vector<WideString> tokens;
  for (int i = 1; i < argumentCount; ++i) tokens.push_back(WidePath(arguments[i]));
  // Messages about the settings themselves are in the language of the user's locale.
  const WideString languageToken = FindLanguageToken(tokens);
  SetLanguage(ChooseLanguage(languageToken, 0, PrimaryLanguage()));
  LoadUserSettings();
  SetLanguage(ChooseLanguage(languageToken, static_cast<uint32_t>(CSettings::Instance().language),
                             PrimaryLanguage()));

  std::string error;
  std::optional<Options> options = ParseOptions(argumentCount, arguments, error);
  if (!options) {
    Complain(error);
    return kExitWrongUsage;
  }
  return Run(*options);
}

#include <memory_resource>
#include <string>
#include <utility>
#include <vector>

#include "app/command_line.h"
#include "app/console_text.h"
#include "app/conversion_services.h"
#include "app/service_outcome.h"
#include "app/settings_command.h"
#include "app/unattended_conversion.h"
#include "base/localized_text.h"
#include "conversion/conversion_context.h"
#include "planner/whole_format_table.h"
#include "platform/console.h"
#include "platform/large_pages.h"
#include "platform/locale.h"
#include "platform/path_text.h"
#include "services/links/link_rows.h"
#include "services/registered_providers.h"
#include "settings/settings.h"
#include "settings/settings_list.h"
#include "ui/window_program.h"

namespace {

// The token that names a format's key, or a language, starts no window.
int ConvertUnseen(std::vector<WideString> tokens) {
  Options options;
  options.tokens = std::move(tokens);
  ConversionContext context;
  context.lookups.lastForRun = true;
  AllowLookups(options, context.lookups);
  FormatTable table = WholeFormatTable();
  AddLinkFunctions(table);
  RunConversion(options, table, context);
  return 0;
}

bool IsOption(const WideString& token) { return token.starts_with(u"-"); }

}  // namespace

int main(int argumentCount, char** arguments) {
  PrepareProcess();
  std::pmr::set_default_resource(&LargePages());
  std::vector<WideString> tokens;
  for (int i = 1; i < argumentCount; ++i) tokens.push_back(WidePath(arguments[i]));
  // What is wrong with their file is told where the user is: in the window, if there will be one.
  CSettings::Instance().Load();
  SetLanguage(ChooseLanguage(FindLanguageToken(tokens), StoredLanguage(), PrimaryLanguage()));
  DropLanguageTokens(tokens);
  // Options are those of the windowing system.
  std::erase_if(tokens, IsOption);
  std::vector<std::string> messages = TakeSettingsMessages();
  PrepareServices();
  CSettings::Instance().CheckProvider(RegisteredProviders(CServiceRegistry::Instance()));
  if (tokens.size() < 2) {
    return RunWindowProgram(argumentCount, arguments,
                            tokens.empty() ? "" : PathBytes(tokens.front()), std::move(messages));
  }
  for (const std::string& message : messages) Complain(message);
  return ConvertUnseen(std::move(tokens));
}

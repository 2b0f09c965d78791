#include "app/options.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

#include <CLI/CLI.hpp>

#include "app/console_text.h"
#include "base/text.h"
#include "platform/folder.h"
#include "platform/path_text.h"
#include "settings/csv_layout_text.h"

namespace {

struct NamedChoice {
  std::string_view name;
  ListChoice::Which which;
};

constexpr NamedChoice kNamedChoices[] = {
    {"all", ListChoice::Which::kAll},       {"routes", ListChoice::Which::kRoutes},
    {"tracks", ListChoice::Which::kTracks}, {"waypoints", ListChoice::Which::kWaypoints},
    {"pois", ListChoice::Which::kPois},
};

// The tokens among what the parser made of no option. It is not asked for them itself because it
// would take a name in square brackets for a list.
std::vector<WideString> TakeTokens(const std::vector<std::string>& remaining) {
  std::vector<WideString> tokens;
  bool onlyTokens = false;
  for (const std::string& argument : remaining) {
    if (argument == "--" && !onlyTokens) {
      onlyTokens = true;
      continue;
    }
    const bool isOption =
        argument.size() > 1 && argument[0] == '-' && (argument[1] < '0' || argument[1] > '9');
    if (isOption && !onlyTokens) throw CLI::ExtrasError({argument});
    tokens.push_back(WidePath(argument));
  }
  return tokens;
}

bool ParseNumbers(std::string_view text, std::vector<size_t>& numbers) {
  std::vector<std::string_view> fields;
  SplitFields(text, ',', fields);
  for (const std::string_view field : fields) {
    size_t number = 0;
    const char* const end = field.data() + field.size();
    const auto parsed = std::from_chars(field.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end || number == 0) return false;
    numbers.push_back(number);
  }
  return true;
}

// Understands the layout that an option gives, if it was given. False, and why, if not.
bool TakeCsvLayout(const CLI::Option& option, const std::string& text,
                   std::optional<CCsvLayout>& layout, std::string& error) {
  if (option.count() == 0) return true;
  CsvLayoutText parsed = ParseCsvLayoutText(text);
  error = Printable(parsed.refusal);
  layout = parsed.layout;
  return layout.has_value();
}

// What to do about a file whose name was taken for an option; empty when there is none.
std::string DashHint(int argumentCount, char** arguments) {
  for (int i = 1; i < argumentCount; ++i) {
    const std::string argument = arguments[i];
    if (argument.starts_with('-') && FileAttributes(WidePath(argument)) != kNoAttributes)
      return "\n" + Text(kTextDashHint, "./" + argument);
  }
  return {};
}

struct OptionHelp {
  std::string_view option;
  uint32_t textId;
};

constexpr OptionHelp kOptionHelp[] = {
    {"SOURCE", kTextHelpSource},
    {"KEY", kTextHelpKey},
    {"-o, --output PATH", kTextHelpOutput},
    {"    --list WHICH", kTextHelpList},
    {"    --split N", kTextHelpSplit},
    {"    --check", kTextHelpCheck},
    {"    --strict", kTextHelpStrict},
    {"    --quiet", kTextHelpQuiet},
    {"    --formats", kTextHelpFormats},
    {"    --inspect FILE", kTextHelpInspect},
    {"    --json", kTextHelpJson},
    {"    --csv-read LAYOUT", kTextHelpCsvRead},
    {"    --csv-write LAYOUT", kTextHelpCsvWrite},
    {"    --remember", kTextHelpRemember},
    {"    --settings", kTextHelpSettings},
    {"    --set KEY=VALUE", kTextHelpSet},
    {"-h, --help", kTextHelpHelp},
    {"    --version", kTextHelpVersion},
};

}  // namespace

std::optional<ListChoice> ParseListChoice(const std::string& text) {
  ListChoice choice;
  choice.text = text;
  const auto* const named =
      std::find_if(std::begin(kNamedChoices), std::end(kNamedChoices),
                   [&text](const NamedChoice& row) { return row.name == text; });
  if (named != std::end(kNamedChoices)) {
    choice.which = named->which;
    return choice;
  }
  choice.which = ListChoice::Which::kNumbers;
  if (!ParseNumbers(text, choice.numbers)) return std::nullopt;
  return choice;
}

std::optional<Options> ParseOptions(int argumentCount, char** arguments, std::string& error) {
  Options options;
  std::string output;
  std::string lists;
  CLI::App parser;
  parser.set_help_flag();
  parser.allow_extras();
  parser.add_flag("-h,--help", options.help);
  parser.add_flag("--version", options.version);
  parser.add_flag("--formats", options.formats);
  parser.add_flag("--inspect", options.inspect);
  parser.add_flag("--json", options.json);
  parser.add_flag("--quiet", options.quiet);
  parser.add_flag("--check", options.check);
  parser.add_flag("--strict", options.strict);
  const CLI::Option* outputOption = parser.add_option("-o,--output", output);
  const CLI::Option* listOption = parser.add_option("--list", lists);
  parser.add_option("--split", options.split);
  std::string csvRead;
  std::string csvWrite;
  const CLI::Option* csvReadOption = parser.add_option("--csv-read", csvRead);
  const CLI::Option* csvWriteOption = parser.add_option("--csv-write", csvWrite);
  parser.add_flag("--remember", options.remember);
  parser.add_flag("--settings", options.settings);
  parser.add_option("--set", options.assignments)->expected(1)->take_all();
  try {
    parser.parse(argumentCount, arguments);
    options.tokens = TakeTokens(parser.remaining());
    if (outputOption->count() > 0 && output.empty()) throw CLI::ArgumentMismatch("--output \"\"");
  } catch (const CLI::ParseError& failure) {
    error = Text(kTextWrongUsage, std::string(failure.what())) + "\n" + Text(kTextUsage) +
            DashHint(argumentCount, arguments);
    return std::nullopt;
  }

  options.output = WidePath(output);
  if (listOption->count() > 0) {
    const std::optional<ListChoice> choice = ParseListChoice(lists);
    if (!choice) {
      error = Text(kTextWrongListChoice, lists);
      return std::nullopt;
    }
    options.lists = *choice;
  }
  if (!TakeCsvLayout(*csvReadOption, csvRead, options.csvRead, error) ||
      !TakeCsvLayout(*csvWriteOption, csvWrite, options.csvWrite, error)) {
    return std::nullopt;
  }
  return options;
}

std::string HelpText() {
  std::string text = Text(kTextUsage) + "\n" + Text(kTextPurpose) + "\n\n" + Text(kTextOptions);
  text += "\n";
  for (const OptionHelp& row : kOptionHelp)
    text += fmt::format("  {:<22}  {}\n", row.option, LoadTextUtf8(row.textId));
  return text;
}

#include "app/options.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <span>
#include <string_view>

#include <CLI/CLI.hpp>

#include "app/console_text.h"
#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"
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
  error = parsed.refusal;
  layout = parsed.layout;
  return layout.has_value();
}

// What to do about a file whose name was taken for an option; empty when there is none.
std::string DashHint(int argumentCount, char** arguments) {
  for (int i = 1; i < argumentCount; ++i) {
    const std::string argument = arguments[i];
    if (argument.starts_with('-') && FileAttributes(WidePath(argument)) != kNoAttributes)
      return "\n" + FormatText(kTextDashHint, "./" + argument);
  }
  return {};
}

/// The options that change the itinerary. They work in the order in which they were given.
class OperationOptions {
 public:
  explicit OperationOptions(CLI::App& parser)
      : m_parser(parser),
        m_reverse(parser.add_flag("--reverse")),
        m_sort(parser.add_flag("--sort")),
        m_unique(parser.add_flag("--unique")),
        m_simplify(parser.add_option("--simplify", m_metres)->expected(1)->take_all()),
        m_optimize(parser.add_flag("--optimize")) {}

  std::vector<ListOperation> Take() const {
    using Kind = ListOperation::Kind;
    std::vector<ListOperation> operations;
    size_t simplified = 0;
    size_t optimised = 0;
    for (const CLI::Option* option : m_parser.parse_order()) {
      if (option == m_reverse) operations.push_back({Kind::kReverse});
      if (option == m_sort) operations.push_back({Kind::kSort});
      if (option == m_unique) operations.push_back({Kind::kUnique});
      if (option == m_simplify) operations.push_back({Kind::kSimplify, m_metres.at(simplified++)});
      if (option == m_optimize)
        operations.push_back({KindOfSearch(m_optimize->results().at(optimised++))});
    }
    return operations;
  }

 private:
  static ListOperation::Kind KindOfSearch(const std::string& value) {
    if (value == kPlainSearch) return ListOperation::Kind::kOptimize;
    if (value == "best") return ListOperation::Kind::kOptimizeBest;
    throw CLI::ArgumentMismatch("--optimize=" + value);
  }

  // What the parser makes of a flag without a value.
  static constexpr std::string_view kPlainSearch = "true";

  const CLI::App& m_parser;
  std::vector<uint32_t> m_metres;
  const CLI::Option* m_reverse;
  const CLI::Option* m_sort;
  const CLI::Option* m_unique;
  const CLI::Option* m_simplify;
  const CLI::Option* m_optimize;
};

constexpr OptionHelp kOptionHelp[] = {
    {"SOURCE", kTextHelpSource},
    {"KEY", kTextHelpKey},
    {"-o, --output PATH", kTextHelpOutput},
    {"    --list WHICH", kTextHelpList},
    {"    --split N", kTextHelpSplit},
    {"    --reverse", kTextHelpReverse},
    {"    --sort", kTextHelpSort},
    {"    --unique", kTextHelpUnique},
    {"    --simplify METRES", kTextHelpSimplify},
    {"    --optimize[=best]", kTextHelpOptimize},
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
    {"    --send TARGET FILE", kTextHelpSend},
    {"    --point N", kTextHelpPoint},
};

constexpr OptionHelp kLastOptionHelp[] = {
    {"-h, --help", kTextHelpHelp},
    {"    --version", kTextHelpVersion},
};

void AppendHelp(std::string& text, std::span<const OptionHelp> rows) {
  for (const OptionHelp& row : rows)
    text += fmt::format("  {:<22}  {}\n", row.option, LoadTextUtf8(row.textId));
}

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
  const OperationOptions operationOptions(parser);
  std::string csvRead;
  std::string csvWrite;
  const CLI::Option* csvReadOption = parser.add_option("--csv-read", csvRead);
  const CLI::Option* csvWriteOption = parser.add_option("--csv-write", csvWrite);
  parser.add_flag("--remember", options.remember);
  parser.add_flag("--settings", options.settings);
  parser.add_option("--set", options.assignments)->expected(1)->take_all();
  parser.add_option("--send", options.send.target);
  parser.add_option("--point", options.send.stop)->check(CLI::PositiveNumber);
  AddServiceOptions(parser, options.services);
  AddDirectionsOptions(parser, options.directions);
  try {
    parser.parse(argumentCount, arguments);
    options.tokens = TakeTokens(parser.remaining());
    options.operations = operationOptions.Take();
    if (outputOption->count() > 0 && output.empty()) throw CLI::ArgumentMismatch("--output \"\"");
  } catch (const CLI::ParseError& failure) {
    error = FormatText(kTextWrongUsage, std::string(failure.what())) + "\n" +
            FormatText(kTextUsage) + DashHint(argumentCount, arguments);
    return std::nullopt;
  }

  options.output = WidePath(output);
  if (listOption->count() > 0) {
    const std::optional<ListChoice> choice = ParseListChoice(lists);
    if (!choice) {
      error = FormatText(kTextWrongListChoice, lists);
      return std::nullopt;
    }
    options.lists = *choice;
  }
  if (!TakeCsvLayout(*csvReadOption, csvRead, options.csvRead, error) ||
      !TakeCsvLayout(*csvWriteOption, csvWrite, options.csvWrite, error) ||
      !TakeServiceOptions(options.services, error) ||
      !TakeDirectionsOptions(options.directions, error)) {
    return std::nullopt;
  }
  return options;
}

std::string HelpText() {
  std::string text =
      FormatText(kTextUsage) + "\n" + FormatText(kTextPurpose) + "\n\n" + FormatText(kTextOptions);
  text += "\n";
  AppendHelp(text, kOptionHelp);
  AppendHelp(text, DirectionsOptionHelp());
  AppendHelp(text, ServiceOptionHelp());
  AppendHelp(text, kLastOptionHelp);
  return text;
}

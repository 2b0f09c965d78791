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
#include "conversion/text_encoding.h"
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

/// Why the arguments cannot be understood.
struct WrongUsage {
  std::string message;
};

// What the parser has to say, in the user's language. Its own words name the option.
std::string DescribeFailure(const CLI::ParseError& failure) {
  const std::string words = failure.what();
  const size_t start = std::min(words.find("--"), words.size());
  const std::string option = words.substr(start, words.find_first_of(" :=,", start) - start);
  const size_t equals = words.find(" = ");
  const std::string value = equals == std::string::npos ? "" : "=" + words.substr(equals + 3);
  const bool lacksValue = dynamic_cast<const CLI::ArgumentMismatch*>(&failure) != nullptr;
  return FormatText(lacksValue ? kTextOptionNeedsValue : kTextOptionValueWrong, option + value);
}

void RefuseEmpty(const CLI::Option& option, const std::string& value) {
  if (option.count() > 0 && value.empty())
    throw WrongUsage{FormatText(kTextOptionNeedsValue, option.get_name())};
}

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
    if (isOption && !onlyTokens) throw WrongUsage{FormatText(kTextUnknownOption, argument)};
    tokens.push_back(WidePath(argument));
  }
  return tokens;
}

// The value of --csv-read that lets the reader find the columns.
constexpr std::string_view kFindsColumns = "auto";

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
    throw WrongUsage{FormatText(kTextOptionValueWrong, "--optimize=" + value)};
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
    {"    --merge", kTextHelpMerge},
    {"    --recursive", kTextHelpRecursive},
    {"    --from KEY", kTextHelpFrom},
    {"    --list WHICH", kTextHelpList},
    {"    --split N", kTextHelpSplit},
    {"    --option WORD", kTextHelpOption},
    {"    --reverse", kTextHelpReverse},
    {"    --sort", kTextHelpSort},
    {"    --unique", kTextHelpUnique},
    {"    --simplify METRES", kTextHelpSimplify},
    {"    --optimize[=best]", kTextHelpOptimize},
    {"    --check", kTextHelpCheck},
    {"    --strict", kTextHelpStrict},
    {"    --force", kTextHelpForce},
    {"    --no-sync", kTextHelpNoSync},
    {"    --tolerant", kTextHelpTolerant},
    {"    --fit", kTextHelpFit},
    {"    --encoding NAME", kTextHelpEncoding},
    {"    --quiet", kTextHelpQuiet},
    {"    --formats", kTextHelpFormats},
    {"    --inspect FILE", kTextHelpInspect},
    {"    --summary", kTextHelpSummary},
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
  CLI::Option* const strict = parser.add_flag("--strict", options.strict);
  parser.add_flag("--tolerant", options.tolerant)->excludes(strict);
  parser.add_flag("--fit", options.fit);
  const CLI::Option* encodingOption = parser.add_option("--encoding", options.encoding);
  parser.add_flag("--force", options.force);
  parser.add_flag("--no-sync", options.noSync);
  parser.add_flag("--merge", options.merge);
  parser.add_flag("--recursive", options.recursive);
  std::string from;
  const CLI::Option* fromOption = parser.add_option("--from", from);
  const CLI::Option* outputOption = parser.add_option("-o,--output", output);
  const CLI::Option* listOption = parser.add_option("--list", lists);
  parser.add_option("--split", options.split);
  const CLI::Option* wordOption = parser.add_option("--option", options.option);
  parser.add_flag("--summary", options.summary);
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
    RefuseEmpty(*outputOption, output);
    RefuseEmpty(*fromOption, from);
    RefuseEmpty(*wordOption, options.option);
  } catch (const WrongUsage& wrong) {
    error = wrong.message;
  } catch (const CLI::ParseError& failure) {
    error = DescribeFailure(failure);
  }
  if (!error.empty()) {
    error = FormatText(kTextWrongUsage, error) + "\n" + FormatText(kTextUsage) +
            DashHint(argumentCount, arguments);
    return std::nullopt;
  }

  options.output = WidePath(output);
  options.from = ToLowerAscii(WidePath(from));
  if (listOption->count() > 0) {
    const std::optional<ListChoice> choice = ParseListChoice(lists);
    if (!choice) {
      error = FormatText(kTextWrongListChoice, lists);
      return std::nullopt;
    }
    options.lists = *choice;
  }
  if (encodingOption->count() > 0 && !IsFileEncoding(options.encoding)) {
    error = FormatText(kTextUnknownEncoding, options.encoding);
    return std::nullopt;
  }
  options.findsCsvColumns = ToLowerAscii(csvRead) == kFindsColumns;
  if (options.findsCsvColumns && options.remember) {
    error = FormatText(kTextAutoNotRemembered);
    return std::nullopt;
  }
  if ((!options.findsCsvColumns &&
       !TakeCsvLayout(*csvReadOption, csvRead, options.csvRead, error)) ||
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

#include "app/command_line.h"

#include <algorithm>

#include "base/languages.h"

namespace {

constexpr std::u16string_view kLanguageMark = u"LANG_";

bool NamesLanguage(const WideString& token) {
  return token.find(kLanguageMark) != WideString::npos;
}

}  // namespace

std::vector<WideString> ParseCommandLine(std::u16string_view commandLine, bool keepProgramName) {
  std::vector<WideString> tokens;
  commandLine = commandLine.substr(0, commandLine.find_last_not_of(u" \r") + 1);
  while (!commandLine.empty()) {
    commandLine.remove_prefix(std::min(commandLine.find_first_not_of(u' '), commandLine.size()));
    const bool quoted = commandLine.front() == u'"';
    if (quoted) commandLine.remove_prefix(1);
    const size_t end = std::min(commandLine.find(quoted ? u'"' : u' '), commandLine.size());
    tokens.emplace_back(commandLine.substr(0, end));
    commandLine.remove_prefix(std::min(end + 1, commandLine.size()));
  }
  if (!keepProgramName && !tokens.empty()) tokens.erase(tokens.begin());
  return tokens;
}

WideString FindLanguageToken(const std::vector<WideString>& tokens) {
  const auto found = std::find_if(tokens.begin(), tokens.end(), NamesLanguage);
  return found == tokens.end() ? WideString() : *found;
}

void DropLanguageTokens(std::vector<WideString>& tokens) { std::erase_if(tokens, NamesLanguage); }

Language ChooseLanguage(std::u16string_view token, uint32_t storedLanguage,
                        uint32_t localeLanguage) {
  const uint32_t wanted = storedLanguage != 0 ? storedLanguage : localeLanguage;
  for (const LanguageRow& row : kLanguages) {
    const bool fits =
        token.empty() ? static_cast<uint32_t>(row.language) == wanted : row.word == token;
    if (fits) return row.language;
  }
  return Language::kEnglish;
}

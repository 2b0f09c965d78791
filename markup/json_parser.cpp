#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "markup/json.h"

namespace {

constexpr size_t kNone = std::string_view::npos;

// What the keys of a document may take beyond the length of its text. Only keys without quotes can
// outgrow it: without commas between the members each begins where the first began.
constexpr size_t kSpareKeyBytes = size_t{1} << 20;

class CharacterSet {
 public:
  constexpr explicit CharacterSet(std::string_view characters) {
    for (const char c : characters) m_members[static_cast<unsigned char>(c)] = true;
  }
  constexpr bool Has(char c) const { return m_members[static_cast<unsigned char>(c)]; }

 private:
  std::array<bool, 256> m_members{};
};

constexpr CharacterSet kValueDelimiters("{[\",]}");
constexpr CharacterSet kMemberDelimiters("\"{[,:}");
constexpr CharacterSet kElementDelimiters(",]");
constexpr CharacterSet kSpace(" \t\n\v\f\r");
constexpr CharacterSet kDigits("0123456789");
constexpr CharacterSet kNonZeroDigits("123456789");
constexpr CharacterSet kSigns("+-");
constexpr CharacterSet kExponentMarks("eE");

// Takes characters of a set off the front of `text`: all that are there, or one at most.
std::string_view TakeAll(std::string_view& text, const CharacterSet& set) {
  size_t length = 0;
  while (length < text.size() && set.Has(text[length])) ++length;
  const std::string_view taken = text.substr(0, length);
  text.remove_prefix(length);
  return taken;
}

bool TakeOne(std::string_view& text, const CharacterSet& set) {
  if (text.empty() || !set.Has(text[0])) return false;
  text.remove_prefix(1);
  return true;
}

// Place of the first digit above 0 as a power of ten, for digits some of which are not 0.
int64_t LeadingPower(std::string_view whole, std::string_view fraction) {
  const auto firstOf = [](std::string_view digits) {
    size_t i = 0;
    while (i < digits.size() && !kNonZeroDigits.Has(digits[i])) ++i;
    return static_cast<int64_t>(i);
  };
  const int64_t zeros = firstOf(whole);
  const auto length = static_cast<int64_t>(whole.size());
  return zeros < length ? length - 1 - zeros : -1 - firstOf(fraction);
}

// Reads a number as a stream extraction in the classic locale does, and fails where the stream
// fails: without a digit, with an exponent mark that no digits follow, and on overflow. There is
// no "0x" here: of "0x10" the "0" is read.
bool ExtractNumber(std::string_view text, double& number) {
  number = 0.0;
  TakeAll(text, kSpace);
  const bool negative = !text.empty() && text[0] == '-';
  TakeOne(text, kSigns);

  const char* const start = text.data();
  const std::string_view whole = TakeAll(text, kDigits);
  std::string_view fraction;
  if (!text.empty() && text[0] == '.') {
    text.remove_prefix(1);
    fraction = TakeAll(text, kDigits);
  }
  if (whole.empty() && fraction.empty()) return false;

  int64_t exponent = 0;
  if (TakeOne(text, kExponentMarks)) {
    const bool negativeExponent = !text.empty() && text[0] == '-';
    TakeOne(text, kSigns);
    const std::string_view digits = TakeAll(text, kDigits);
    if (digits.empty()) return false;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc())
      exponent = std::numeric_limits<int64_t>::max() / 2;
    if (negativeExponent) exponent = -exponent;
  }

  double magnitude = 0.0;
  const auto parsed = std::from_chars(start, text.data(), magnitude);
  bool fits = true;
  if (parsed.ec == std::errc::result_out_of_range) {
    fits = LeadingPower(whole, fraction) + exponent < 0;  // then it is too small rather than large
    magnitude = fits ? 0.0 : std::numeric_limits<double>::max();
  }
  number = negative ? -magnitude : magnitude;
  return fits;
}

// The byte that up to two hexadecimal digits give; 0 when there is none.
char HexByte(std::string_view digits) {
  unsigned value = 0;
  digits = digits.substr(0, 2);
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return static_cast<char>(value);
}

// Takes an escape letter and what belongs to it off the front of `rest`, which must hold one, and
// returns the byte that it stands for.
char TakeEscape(std::string_view& rest) {
  const char letter = rest[0];
  size_t digits = 0;
  char byte = letter;
  switch (letter) {
    case 'b':
      byte = '\b';
      break;
    case 'f':
      byte = '\f';
      break;
    case 'n':
      byte = '\n';
      break;
    case 'r':
      byte = '\r';
      break;
    case 't':
      byte = '\t';
      break;
    case 'u':  // four digits, of which the lower two make a single byte and no UTF-8
      digits = 4;
      byte = rest.size() > 3 ? HexByte(rest.substr(3)) : '\0';
      break;
    case 'x':
      digits = 2;
      byte = HexByte(rest.substr(1));
      break;
    default:
      break;
  }
  rest.remove_prefix(std::min(1 + digits, rest.size()));
  return byte;
}

// Appends `raw` to `text` without its escapes. False at a backslash that nothing follows, which is
// kept; digits of an escape may have taken the one in front of it.
bool AppendUnescaped(std::string& text, std::string_view raw) {
  for (;;) {
    const size_t backslash = raw.find('\\');
    text.append(raw.substr(0, backslash));
    if (backslash == kNone) return true;
    raw.remove_prefix(backslash + 1);
    if (raw.empty()) {
      text.push_back('\\');
      return false;
    }
    text.push_back(TakeEscape(raw));
  }
}

// A word counts wherever it stands, so that "truex" and "nullify" are true and null.
void SetLiteral(CJsonValue& value, std::string_view literal) {
  const auto holds = [literal](std::string_view word) { return literal.find(word) != kNone; };
  if (literal.empty()) return;
  if (holds("true")) {
    value.type = kJsonBool;
    value.flag = true;
  } else if (holds("false")) {
    value.type = kJsonBool;
    value.flag = false;
  } else if (holds("null")) {
    value.type = kJsonNull;
  } else if (ExtractNumber(literal, value.number)) {
    value.type = kJsonNumber;
  }
}

// An array or object whose end has not been reached yet.
struct OpenContainer {
  CJsonValue* value;
  std::unique_ptr<CJsonValue> owned;    // null for the value at the top, which is the caller's
  bool hasElement = false;              // of an array
  std::optional<std::string_view> key;  // of an object: the one for its next value
  size_t bareKeyStart = 0;              // of an object: where a key without quotes would begin
};

// One pass over the text. Values that are still open stand on a stack of their own, the innermost
// last; a value joins its parent when it is complete.
class Scanner {
 public:
  Scanner(std::string_view text, CJsonValue& top) : m_text(text), m_top(top) {}

  // Returns the number of bytes taken.
  size_t Scan() {
    if (ScanValue(m_top)) return m_position;
    Open(m_top, nullptr);
    while (!m_open.empty()) {
      if (!SeekValue(m_open.back())) {
        Close();
        continue;
      }
      auto value = std::make_unique<CJsonValue>();
      if (!ScanValue(*value)) {
        CJsonValue& container = *value;
        Open(container, std::move(value));
      } else if (value->type != kJsonUndefined) {
        Append(std::move(value));
      }
    }
    return m_position;
  }

 private:
  [[noreturn]] void Fail(JsonError code) const {
    if (m_open.empty()) throw CJsonException(code, m_top.key);
    throw CJsonException(code, m_open.back().key.value_or(""));
  }

  // Where the next character of the set stands; the end of the text when there is none.
  size_t Find(const CharacterSet& set, size_t position) const {
    while (position < m_text.size() && !set.Has(m_text[position])) ++position;
    return position;
  }

  // Reads a plain value from here on, whatever stands ahead of it. False when an array or object
  // begins instead; then the position is behind its bracket.
  bool ScanValue(CJsonValue& value) {
    const size_t delimiter = Find(kValueDelimiters, m_position);
    if (delimiter == m_text.size()) Fail(kJsonValueCut);
    switch (m_text[delimiter]) {
      case '"':
        ScanString(value, delimiter + 1);
        return true;
      case '[':
      case '{':
        value.type = m_text[delimiter] == '[' ? kJsonArray : kJsonObject;
        m_position = delimiter + 1;
        return false;
      default:
        SetLiteral(value, m_text.substr(m_position, delimiter - m_position));
        m_position = delimiter;
        return true;
    }
  }

  // Reads the rest of a string, which ends at a quote with an even number of backslashes in front.
  void ScanString(CJsonValue& value, size_t start) {
    for (size_t quote = start;; ++quote) {
      quote = m_text.find('"', quote);
      if (quote == kNone) Fail(kJsonValueCut);
      size_t behindText = quote;
      while (behindText > start && m_text[behindText - 1] == '\\') --behindText;
      if ((quote - behindText) % 2 != 0) continue;

      m_position = quote + 1;
      value.type = kJsonString;
      value.text.clear();
      if (!AppendUnescaped(value.text, m_text.substr(start, quote - start))) Fail(kJsonNotString);
      return;
    }
  }

  // Goes on to where the next value begins. False when the end of the container or of the text has
  // been reached.
  bool SeekValue(OpenContainer& container) {
    return container.value->type == kJsonArray ? SeekElement(container) : SeekMember(container);
  }

  bool SeekElement(OpenContainer& array) {
    if (array.hasElement) {
      const size_t delimiter = Find(kElementDelimiters, m_position);
      if (delimiter == m_text.size()) Fail(kJsonArrayCut);
      m_position = delimiter + 1;
      if (m_text[delimiter] == ']') return false;
    }
    array.hasElement = true;
    return m_position < m_text.size();
  }

  bool SeekMember(OpenContainer& object) {
    size_t keyStart = kNone;  // of a key in quotes that has not been closed
    while (m_position < m_text.size()) {
      const size_t delimiter = Find(kMemberDelimiters, m_position);
      if (delimiter == m_text.size()) Fail(kJsonObjectCut);
      const bool isQuoted = keyStart != kNone;
      m_position = delimiter + 1;
      switch (m_text[delimiter]) {
        case '"':
          if (!isQuoted) {
            keyStart = m_position;
          } else if (m_text[delimiter - 1] != '\\') {  // one is enough here; none is undone either
            object.key = m_text.substr(keyStart, delimiter - keyStart);
            keyStart = kNone;
          }
          break;
        case ',':  // one in quotes counts too
          object.bareKeyStart = m_position;
          break;
        case ':':
          if (isQuoted) break;
          if (!object.key) object.key = TakeBareKey(object, delimiter);
          return true;
        case '}':
          if (isQuoted) break;
          return false;
        default:
          if (isQuoted) break;
          m_position = delimiter;
          return true;
      }
    }
    return false;
  }

  // The key without quotes that ends at `end`, without the blanks around it. Those in front are
  // passed for good: without a comma the next such key begins there again.
  std::string_view TakeBareKey(OpenContainer& object, size_t end) const {
    size_t& start = object.bareKeyStart;
    while (start < end && m_text[start] == ' ') ++start;
    while (end > start && m_text[end - 1] == ' ') --end;
    return m_text.substr(start, end - start);
  }

  void Open(CJsonValue& value, std::unique_ptr<CJsonValue> owned) {
    if (m_open.size() == kJsonDeepest) Fail(kJsonTooBig);
    OpenContainer& container = m_open.emplace_back();
    container.value = &value;
    container.owned = std::move(owned);
    container.bareKeyStart = m_position;
  }

  void Close() {
    std::unique_ptr<CJsonValue> closed = std::move(m_open.back().owned);
    m_open.pop_back();
    if (closed) Append(std::move(closed));
  }

  // Gives the innermost container a complete value, and it its key.
  void Append(std::unique_ptr<CJsonValue> value) {
    OpenContainer& container = m_open.back();
    if (container.value->type == kJsonArray) {
      container.value->array.Append(std::move(value));
      return;
    }
    if (container.key) {
      m_keyBytes += container.key->size();
      if (m_keyBytes > m_text.size() + kSpareKeyBytes) Fail(kJsonTooBig);
      value->key = *container.key;
      container.key.reset();
    }
    container.value->object.Append(std::move(value));
  }

  std::string_view m_text;
  CJsonValue& m_top;
  size_t m_position = 0;
  std::vector<OpenContainer> m_open;
  size_t m_keyBytes = 0;
};

}  // namespace

size_t CJsonValue::ParseValue(std::string_view source) { return Scanner(source, *this).Scan(); }

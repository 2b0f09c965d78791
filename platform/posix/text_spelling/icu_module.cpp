// The module that spells text in other letters, with ICU.

#include <memory>

#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/unistr.h>

#include "platform/posix/text_spelling/module.h"

namespace {

// Greek and Russian as road signs spell them for strangers; the rest by the rules of the standards.
constexpr char16_t kInLatin[] =
    u":: Greek-Latin/UNGEGN; :: Russian-Latin/BGN; :: Any-Latin; :: NFC;";
// The library's own rules make two commas of a low quote and leave the sign of the euro alone.
constexpr char16_t kInAscii[] =
    u":: NFD; :: [:Nonspacing Mark:] Remove; \u20AC > EUR; \u201E > \\\"; \u201A > \\'; "
    u":: Latin-ASCII;";

class IcuSpeller final : public TextSpeller {
 public:
  IcuSpeller() : m_latin(Rules(kInLatin)), m_ascii(Rules(kInAscii)) {}

  bool IsComplete() const { return m_latin && m_ascii; }

  std::string Compose(std::string_view text) const override {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2* const normalizer = icu::Normalizer2::getNFCInstance(error);
    if (U_FAILURE(error)) return std::string(text);
    const icu::UnicodeString composed = normalizer->normalize(Wide(text), error);
    return U_FAILURE(error) ? std::string(text) : Utf8(composed);
  }
  std::string InLatin(std::string_view text) const override { return Spelled(*m_latin, text); }
  std::string InAscii(std::string_view text) const override { return Spelled(*m_ascii, text); }

 private:
  static std::unique_ptr<icu::Transliterator> Rules(const char16_t* rules) {
    UErrorCode error = U_ZERO_ERROR;
    UParseError place;
    std::unique_ptr<icu::Transliterator> made(icu::Transliterator::createFromRules(
        icu::UnicodeString(u"Corvane"), rules, UTRANS_FORWARD, place, error));
    return U_FAILURE(error) ? nullptr : std::move(made);
  }

  static icu::UnicodeString Wide(std::string_view text) {
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
  }

  static std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
  }

  static std::string Spelled(const icu::Transliterator& rules, std::string_view text) {
    icu::UnicodeString wide = Wide(text);
    rules.transliterate(wide);
    return Utf8(wide);
  }

  const std::unique_ptr<icu::Transliterator> m_latin;
  const std::unique_ptr<icu::Transliterator> m_ascii;
};

}  // namespace

extern "C" const TextSpeller* CorvaneTextSpeller();

const TextSpeller* CorvaneTextSpeller() {
  static const IcuSpeller speller;
  return speller.IsComplete() ? &speller : nullptr;
}

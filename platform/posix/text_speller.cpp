#include "platform/text_speller.h"

#include "platform/posix/text_spelling/module.h"
#include "platform/program_module.h"

const TextSpeller* LoadTextSpeller() {
  static const auto load = reinterpret_cast<TextSpellingModuleEntry>(
      LoadModuleEntry(kTextSpellingModule, kTextSpellingModuleEntry));
  return load ? load() : nullptr;
}

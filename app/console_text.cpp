#include "app/console_text.h"

#include "base/format_text.h"
#include "base/text.h"

std::string ShownPath(const WideString& path) { return WideToUtf8Lossy(path); }

void Complain(const std::string& message) { WriteError(message + "\n"); }

void Complain(const WideString& path, const std::string& message) {
  Complain(Printable(ShownPath(path)) + ": " + message);
}

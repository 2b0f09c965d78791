#include "planner/script_error.h"

#include <fmt/format.h>

namespace {

std::string DescribeHresult(uint32_t hresult) {
  switch (hresult) {
    case kScriptNoPage:
      return "there is no page";
    case kScriptNoSuchMember:
      return "no such member";
    case kScriptUnknownName:
      return "unknown name";
    case kScriptWrongType:
      return "a value has the wrong type";
    case kScriptBadIndex:
      return "no such list or index";
    case kScriptTooFewArguments:
      return "too few arguments";
    default:
      return fmt::format("the call has failed (0x{:08X})", hresult);
  }
}

}  // namespace

ScriptError::ScriptError(uint32_t hresult)
    : std::runtime_error(DescribeHresult(hresult)), number(hresult) {}

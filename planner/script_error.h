#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

/// Why a call between program and page has failed: HRESULT values, which the page finds as `number`
/// of the error that it catches.
enum ScriptErrorCode : uint32_t {
  kScriptFailed = 0x80004005,           ///< E_FAIL: everything without a number of its own
  kScriptNoPage = 0x80020001,           ///< DISP_E_UNKNOWNINTERFACE: no page is there to be called
  kScriptNoSuchMember = 0x80020003,     ///< DISP_E_MEMBERNOTFOUND
  kScriptUnknownName = 0x80020006,      ///< DISP_E_UNKNOWNNAME
  kScriptWrongType = 0x80020008,        ///< DISP_E_BADVARTYPE
  kScriptBadIndex = 0x8002000B,         ///< DISP_E_BADINDEX: also an unknown list
  kScriptTooFewArguments = 0x8002000E,  ///< DISP_E_BADPARAMCOUNT
};

/// The number of a transport error, for instance 12029, as the page gets it: FACILITY_WIN32 with
/// the low 16 bits.
constexpr uint32_t TransportHresult(uint32_t transportError) {
  return 0x80070000 | (transportError & 0xFFFF);
}

/// A failed call. The text is for whoever debugs the page.
class ScriptError : public std::runtime_error {
 public:
  explicit ScriptError(uint32_t hresult);
  ScriptError(uint32_t hresult, const std::string& text)
      : std::runtime_error(text), number(hresult) {}

  uint32_t number;  ///< an HRESULT
};

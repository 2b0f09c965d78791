#include "planner/codec_objects.h"

#include "base/text.h"
#include "net/url.h"

namespace {

using Codec = std::string (*)(const std::string& text);

class CodecObject : public ScriptObject {
 public:
  CodecObject(Codec encode, Codec decode) : m_encode(encode), m_decode(decode) {}

  std::optional<ScriptValue> Get(std::string_view) override { return std::nullopt; }
  ScriptValue Invoke(std::string_view name, ScriptArguments arguments) override {
    const Codec codec = Find(name);
    if (!codec) throw ScriptError(kScriptUnknownName);
    if (arguments.empty()) throw ScriptError(kScriptTooFewArguments);
    return codec(arguments.front().AsText());
  }
  std::vector<std::string_view> PropertyNames() const override { return {}; }
  std::vector<std::string_view> MethodNames() const override { return {"Encode", "Decode"}; }

 private:
  Codec Find(std::string_view name) const {
    if (name == "Encode") return m_encode;
    if (name == "Decode") return m_decode;
    return nullptr;
  }

  Codec m_encode;
  Codec m_decode;
};

std::string EncodeBase64(const std::string& text) {
  std::string encoded;
  Base64Encode(NarrowUtf8(text), encoded);
  return encoded;
}

std::string DecodeBase64(const std::string& text) {
  return WidenToUtf8(Base64Decode(NarrowUtf8(text)));
}

std::string EncodeUtf8(const std::string& text) { return WidenToUtf8(text); }

std::string DecodeUtf8Bytes(const std::string& text) { return MendUtf8(NarrowUtf8(text)); }

}  // namespace

ScriptObjectPtr MakeBase64Object() {
  return std::make_shared<CodecObject>(EncodeBase64, DecodeBase64);
}

ScriptObjectPtr MakeUtf8Object() {
  return std::make_shared<CodecObject>(EncodeUtf8, DecodeUtf8Bytes);
}

#include "model/name_index.h"

#include <array>
#include <random>

namespace {

struct Key {
  uint64_t first;
  uint64_t second;
};

const Key& RunKey() {
  static const Key key = [] {
    std::random_device device;
    const auto draw = [&device] { return uint64_t{device()} << 32 | device(); };
    return Key{draw(), draw()};
  }();
  return key;
}

// The state of SipHash: four words that one round stirs together.
struct State {
  explicit State(const Key& key)
      : words{key.first ^ 0x736F6D6570736575, key.second ^ 0x646F72616E646F6D,
              key.first ^ 0x6C7967656E657261, key.second ^ 0x7465646279746573} {}

  void Round() {
    auto& [a, b, c, d] = words;
    a += b;
    b = std::rotl(b, 13) ^ a;
    a = std::rotl(a, 32);
    c += d;
    d = std::rotl(d, 16) ^ c;
    a += d;
    d = std::rotl(d, 21) ^ a;
    c += b;
    b = std::rotl(b, 17) ^ c;
    c = std::rotl(c, 32);
  }

  void Take(uint64_t word) {
    words[3] ^= word;
    Round();
    words[0] ^= word;
  }

  uint64_t Finish() {
    words[2] ^= 0xFF;
    for (int i = 0; i < 3; ++i) Round();
    return words[0] ^ words[1] ^ words[2] ^ words[3];
  }

  std::array<uint64_t, 4> words;
};

uint64_t LoadWord(std::string_view bytes) {
  uint64_t word = 0;
  for (size_t i = 0; i < bytes.size(); ++i)
    word |= uint64_t{static_cast<uint8_t>(bytes[i])} << (8 * i);
  return word;
}

}  // namespace

uint64_t HashName(std::string_view name) {
  State state(RunKey());
  const uint64_t length = uint64_t{name.size()} << 56;
  for (; name.size() >= 8; name.remove_prefix(8)) state.Take(LoadWord(name.substr(0, 8)));
  state.Take(length | LoadWord(name));
  return state.Finish();
}

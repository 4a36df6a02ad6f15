// The bytes that decide everything in a run. Once they are spent every choice is the first one, and nothing
// that is done one time in many is done any more.
#pragma once

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace calls {

class Input {
 public:
  Input() = default;
  Input(const std::uint8_t* data, std::size_t size) : next(data), end(data + size) {}

  bool IsSpent() const { return next == end; }
  int Byte() { return IsSpent() ? 0 : *next++; }
  int Below(int count) { return Byte() % count; }
  bool OneIn(int count) { return Below(count) == count - 1; }

  template <class List>
  auto& OneOf(List& list) {
    return list[static_cast<std::size_t>(Byte()) % std::size(list)];
  }

  // Mostly a small number; now and then one at the end of its range.
  int Int() {
    static constexpr int kExtremes[] = {INT_MIN, INT_MAX, -1, INT_MIN + 1, INT_MAX - 1, 1 << 20, 0, -128};
    return OneIn(6) ? OneOf(kExtremes) : Below(24) - 2;
  }
  float Float() {
    static constexpr float kExtremes[] = {NAN,      INFINITY, -INFINITY, FLT_MAX,
                                          -FLT_MAX, FLT_MIN,  -0.0F,     1e-30F};
    return OneIn(6) ? OneOf(kExtremes) : static_cast<float>(Below(7) - 3) / 2;
  }
  // A text that a plugin may pass, null now and then.
  const char* Text();

 private:
  const std::uint8_t* next = nullptr;
  const std::uint8_t* end = nullptr;
};

extern Input gInput;

}  // namespace calls

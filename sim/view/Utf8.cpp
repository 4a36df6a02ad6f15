#include "view/Utf8.h"

#include <cstddef>

namespace sim {
namespace {

constexpr char32_t kNoCharacter = 0xFFFD;
constexpr char32_t kLargest = 0x10FFFF;

struct Lead {
  std::size_t size;  // bytes of the character; 0 for a byte that begins none
  char32_t bits;
  char32_t smallest;  // smaller ones must be written shorter
};

Lead ReadLead(unsigned char byte) {
  if (byte < 0x80U) return {1, byte, 0};
  if ((byte & 0xE0U) == 0xC0U) return {2, byte & 0x1FU, 0x80};
  if ((byte & 0xF0U) == 0xE0U) return {3, byte & 0x0FU, 0x800};
  if ((byte & 0xF8U) == 0xF0U) return {4, byte & 0x07U, 0x10000};
  return {0, 0, 0};
}

bool IsSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

}  // namespace

char32_t TakeCharacter(std::string_view& text) {
  const Lead lead = ReadLead(static_cast<unsigned char>(text.front()));
  char32_t character = lead.bits;
  bool isWhole = lead.size != 0 && lead.size <= text.size();
  for (std::size_t index = 1; isWhole && index < lead.size; ++index) {
    const auto byte = static_cast<unsigned char>(text[index]);
    isWhole = (byte & 0xC0U) == 0x80U;
    character = character << 6U | (byte & 0x3FU);
  }
  isWhole = isWhole && character >= lead.smallest && character <= kLargest && !IsSurrogate(character);
  text.remove_prefix(isWhole ? lead.size : 1);
  return isWhole ? character : kNoCharacter;
}

}  // namespace sim

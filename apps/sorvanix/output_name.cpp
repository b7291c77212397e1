#include "apps/sorvanix/output_name.h"

#include <fmt/format.h>

namespace sorvanix::cli {

namespace {

// The length of a token such as %d or %04d at the beginning of a text, with its digits; 0 for none.
// Printf is no help here: a template is not to be trusted with it.
std::size_t FrameFormat(std::string_view text, std::size_t& digits) {
  constexpr std::size_t kMostDigits = 9;
  if (!text.starts_with('%')) return 0;
  digits = 0;
  std::size_t place = 1;
  for (; place < text.size() && text[place] >= '0' && text[place] <= '9'; ++place) {
    digits = digits * 10 + static_cast<std::size_t>(text[place] - '0');
    if (digits > kMostDigits) return 0;
  }
  return place < text.size() && text[place] == 'd' ? place + 1 : 0;
}

}  // namespace

std::string FillName(std::string_view nameTemplate, const NameParts& parts) {
  constexpr std::string_view kMaterial = "<material>";
  constexpr std::string_view kChannel = "<channel>";
  constexpr std::string_view kFrame = "<frame>";
  std::string name;
  while (!nameTemplate.empty()) {
    std::size_t digits = 0;
    if (nameTemplate.starts_with(kMaterial)) {
      name += parts.material;
      nameTemplate.remove_prefix(kMaterial.size());
    } else if (nameTemplate.starts_with(kChannel)) {
      name += parts.channel;
      nameTemplate.remove_prefix(kChannel.size());
    } else if (parts.frame && nameTemplate.starts_with(kFrame)) {
      name += fmt::format("{:04}", *parts.frame);
      nameTemplate.remove_prefix(kFrame.size());
    } else if (const std::size_t length = FrameFormat(nameTemplate, digits);
               parts.frame && length != 0) {
      name += fmt::format("{:0{}}", *parts.frame, digits);
      nameTemplate.remove_prefix(length);
    } else {
      name += nameTemplate.front();
      nameTemplate.remove_prefix(1);
    }
  }
  return name;
}

bool HasFrameToken(std::string_view nameTemplate) {
  return FillName(nameTemplate, {.frame = 0}) != FillName(nameTemplate, {.frame = 1});
}

}  // namespace sorvanix::cli

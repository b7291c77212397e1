#include "apps/sorvanix/output_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

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
  const auto text = [](std::optional<int> number, std::size_t digits) {
    return number ? std::optional(fmt::format("{:0{}}", *number, digits)) : std::nullopt;
  };
  const std::pair<std::string_view, std::optional<std::string>> tokens[] = {
      {"<material>", parts.material},
      {"<channel>", parts.channel},
      {"<scene>", parts.scene},
      {"<frame>", text(parts.frame, 4)},
      {"<UDIM>", text(parts.udim, 4)}};
  std::string name;
  while (!nameTemplate.empty()) {
    const auto* const token =
        std::find_if(std::begin(tokens), std::end(tokens),
                     [&](const auto& t) { return t.second && nameTemplate.starts_with(t.first); });
    std::size_t digits = 0;
    if (token != std::end(tokens)) {
      name += *token->second;
      nameTemplate.remove_prefix(token->first.size());
    } else if (const std::size_t length = FrameFormat(nameTemplate, digits);
               parts.frame && length != 0) {
      name += *text(parts.frame, digits);
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

bool HasUdimToken(std::string_view nameTemplate) {
  return FillName(nameTemplate, {.udim = 1}) != FillName(nameTemplate, {.udim = 2});
}

}  // namespace sorvanix::cli

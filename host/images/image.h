// A picture in memory: rows of red, green and blue, the first row at the top.
#pragma once

#include <cstddef>
#include <vector>

namespace sorvanix::host {

struct Image {
  int width = 0;
  int height = 0;
  std::vector<float> rgb;  // width * height * 3 values, not limited to 0..1

  Image() = default;
  Image(int imageWidth, int imageHeight)
      : width(imageWidth),
        height(imageHeight),
        rgb(static_cast<std::size_t>(imageWidth) * static_cast<std::size_t>(imageHeight) * 3) {}

  /// The first of the three values of a pixel.
  std::size_t IndexOf(int x, int y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
            static_cast<std::size_t>(x)) *
           3;
  }
};

}  // namespace sorvanix::host

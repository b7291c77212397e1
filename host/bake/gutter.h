// The gutter of a baked chart: its edge repeated outwards.
#pragma once

#include <vector>

#include "host/bake/uv_chart.h"

namespace sorvanix::host {

/// Fills texels outside the chart from their neighbours, as many texels wide, so that filters at a
/// chart's edge find its colour. What is farther out keeps its colour.
void DilateGutter(const UvChart& chart, int texels, std::vector<float>& rgb);

}  // namespace sorvanix::host

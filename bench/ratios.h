// The design's bounds: ratios of zephctl to a floor, measured side by side in one run.
#pragma once

namespace bench {

void printRatios();

}  // namespace bench

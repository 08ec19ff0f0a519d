#include "tools/zephtop/graph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zephtop {

namespace {

constexpr std::size_t kMostSamples = 1800;
constexpr int kStepsPerRow = 4;

// The dots of a braille character's two columns with 0 to 4 dots filled from below.
constexpr unsigned kLeftDots[] = {0x00, 0x40, 0x44, 0x46, 0x47};
constexpr unsigned kRightDots[] = {0x00, 0x80, 0xA0, 0xB0, 0xB8};
constexpr char kAsciiDots[] = " .:|#";

/// Returns U+2800 plus the dots, in UTF-8.
std::string braille(unsigned dots) {
  return {'\xE2', static_cast<char>(0xA0U | dots >> 6U), static_cast<char>(0x80U | (dots & 0x3FU))};
}

/// Returns the height of a sample in steps. Every measured sample is at least one step high, even 0.
int stepsOf(float sample, int rows, float scale) {
  if (sample < 0) return 0;
  const int all = rows * kStepsPerRow;
  return std::clamp(static_cast<int>(std::lround(sample / scale * static_cast<float>(all))), 1, all);
}

/// Returns how many steps of a row, counted from below, a bar of `steps` fills.
int stepsInRow(int steps, int row) { return std::clamp(steps - row * kStepsPerRow, 0, kStepsPerRow); }

}  // namespace

void Series::push(float sample) {
  if (samples.size() == kMostSamples) samples.erase(samples.begin());
  samples.push_back(sample < 0 ? kGap : sample);
}

float Series::at(int age) const {
  const auto back = static_cast<std::size_t>(age);
  return back < samples.size() ? samples[samples.size() - 1 - back] : kGap;
}

float Series::largest(int age, int count) const {
  float found = 0;
  for (int back = age; back < age + count; ++back) found = std::max(found, at(back));
  return found;
}

int samplesIn(int columns, GraphStyle style) { return style == GraphStyle::Braille ? 2 * columns : columns; }

float scaleFor(float largest, float least) {
  float decade = least;
  while (true) {
    for (const float step : {1.0F, 2.0F, 5.0F}) {
      if (largest <= decade * step || !std::isfinite(decade)) return decade * step;
    }
    decade *= 10;
  }
}

std::vector<std::string> drawGraph(const Series& series, int age, int columns, int rows, float scale,
                                   GraphStyle style) {
  std::vector<std::string> lines;
  for (int row = rows - 1; row >= 0; --row) {
    std::string line;
    const auto filled = [&](int back) { return stepsInRow(stepsOf(series.at(age + back), rows, scale), row); };
    for (int right = columns - 1; right >= 0; --right) {
      if (style == GraphStyle::Ascii) {
        line += kAsciiDots[filled(right)];
      } else {
        line += braille(kLeftDots[filled(2 * right + 1)] | kRightDots[filled(2 * right)]);
      }
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace zephtop

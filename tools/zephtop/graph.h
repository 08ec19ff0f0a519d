// A time series and its graph in rows of characters.
#pragma once

#include <string>
#include <vector>

namespace zephtop {

/// A missing sample; shown as a gap in the graph.
inline constexpr float kGap = -1;

/// The samples of one quantity over the last half hour, one per second. Drops the oldest.
class Series {
 public:
  /// Negative numbers count as kGap.
  void push(float sample);

  /// Returns the sample taken `age` samples before the newest; kGap if there is none.
  float at(int age) const;

  /// Returns the largest of `count` samples, the newest of which was taken `age` samples before the newest of all. At
  /// least 0.
  float largest(int age, int count) const;

  /// Returns the number of samples.
  int size() const { return static_cast<int>(samples.size()); }

 private:
  std::vector<float> samples;
};

enum class GraphStyle {
  Braille,  ///< UTF-8; two samples per column, four steps per row
  Ascii,    ///< one sample per column, four steps per row
};

/// Returns how many samples a graph of this width shows.
int samplesIn(int columns, GraphStyle style);

/// Returns the upper end of a scale for `largest`: the next of 1, 2, 5, 10, 20, 50 and so on, at least `least`.
float scaleFor(float largest, float least);

/// Returns the rows of a graph from top to bottom. It is `columns` wide; its rightmost sample was taken `age` samples
/// before the newest. `scale` is the value at full height.
std::vector<std::string> drawGraph(const Series& series, int age, int columns, int rows, float scale, GraphStyle style);

}  // namespace zephtop

// A running graph in characters: the course of a number, and how it is drawn in a few rows of text.
#pragma once

#include <string>
#include <vector>

namespace zephtop {

/// A sample where there was nothing to measure; it leaves a hole in the graph.
inline constexpr float kGap = -1;

/// The latest samples of one number, one a second, of half an hour. The oldest fall out.
class Series {
 public:
  /// Negative numbers count as kGap.
  void push(float sample);

  /// The sample taken `age` samples before the newest; kGap where there is none.
  float at(int age) const;

  /// The largest of `count` samples, the newest of them taken `age` samples before the newest of all. At least 0.
  float largest(int age, int count) const;

  /// How many samples there are.
  int size() const { return static_cast<int>(samples.size()); }

 private:
  std::vector<float> samples;
};

enum class GraphStyle {
  Braille,  ///< UTF-8; two samples to a column, four steps to a row
  Ascii,    ///< one sample to a column, four steps to a row
};

/// How many samples a graph of this width shows.
int samplesIn(int columns, GraphStyle style);

/// The end of a scale that holds `largest`: the next of 1, 2, 5, 10, 20, 50 and so on, at least `least`.
float scaleFor(float largest, float least);

/// The rows of a graph from top to bottom, `columns` wide, on the right the sample taken `age` samples before the
/// newest. `scale` is the height.
std::vector<std::string> drawGraph(const Series& series, int age, int columns, int rows, float scale, GraphStyle style);

}  // namespace zephtop

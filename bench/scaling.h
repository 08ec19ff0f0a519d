// Measures costs that should be linear, at several sizes: the cost per unit should be constant.
#pragma once

namespace bench {

/// `runs`: number of consecutive runs of the program.
void printScaling(int runs);

}  // namespace bench

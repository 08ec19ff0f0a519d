// What should be linear, at several sizes: the cost of each unit should stay the same.
#pragma once

namespace bench {

/// `runs`: of the program, one after the other.
void printScaling(int runs);

}  // namespace bench

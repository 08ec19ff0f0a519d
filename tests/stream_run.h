// Streams as tests see them: blocks, and runs that are ended from outside.
#pragma once

#include <string>
#include <vector>

#include "tests/process.h"
#include "tests/scripted_daemon.h"

namespace tests {

/// `json` in the form in which the program prints it.
std::string styled(const std::string& json);

/// One record of a stream as it stands in the output; `json` may have any form.
std::string block(const std::string& label, const std::string& json);
std::string errorBlock(unsigned code, const std::string& type, const std::string& message);

/// What `words` print up to that many blocks on standard output; then the run is killed.
ProgramRun streamed(const Answers& answers, int blocks, const std::vector<std::string>& words = {"stats"});

}  // namespace tests

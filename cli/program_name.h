// The name under which the program was started, for its messages.
#pragma once

namespace cli {

/// Stores the part of `argv0` after its last "/", or after its last "\" if there is no "/", cut to 511 bytes. Call
/// once, before anything else. Null leaves the name empty.
void setProgramName(const char* argv0);

const char* programName();

}  // namespace cli

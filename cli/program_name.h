// The name under which the program was started, as every message of its own shows it.
#pragma once

namespace cli {

/// Keeps what stands in `argv0` behind its last "/" or, without one, behind its last "\", cut to 511 bytes.
/// To be called once, before anything else; null leaves the name empty.
void setProgramName(const char* argv0);

const char* programName();

}  // namespace cli

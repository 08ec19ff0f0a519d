#include "tests/stream_run.h"

#include <gtest/gtest.h>
#include <json/json.h>

#include <sstream>

#include "tests/program_case.h"

namespace tests {

std::string styled(const std::string& json) {
  Json::Value value;
  std::istringstream(json) >> value;
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

std::string block(const std::string& label, const std::string& json) {
  return "[\"" + label + "\",\n" + styled(json) + "]\n\n";
}

std::string errorBlock(unsigned code, const std::string& type, const std::string& message) {
  return "[\"error\",\n" + errorObject(code, type, message) + "]\n\n";
}

ProgramRun streamed(const Answers& answers, int blocks, const std::vector<std::string>& words) {
  ScriptedDaemon daemon(answers);
  std::vector<std::string> all{ZEPHCTL_PATH, "-p", std::to_string(daemon.port())};
  all.insert(all.end(), words.begin(), words.end());
  Process run(all);
  EXPECT_TRUE(run.waitForOutput("]\n\n", blocks));
  run.kill();
  return run.finish();
}

}  // namespace tests

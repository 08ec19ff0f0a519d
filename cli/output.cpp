#include "cli/output.h"

#include <memory>
#include <sstream>

#include "cli/console.h"
#include "sdk/errors.h"

namespace cli {

namespace {

std::unique_ptr<Json::StreamWriter> makeWriter() {
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
}

}  // namespace

void writeJson(std::FILE* stream, const Json::Value& value) {
  // Streams print from the channel thread while the main thread only sleeps: one writer serves.
  static const std::unique_ptr<Json::StreamWriter> writer = makeWriter();
  std::ostringstream text;
  writer->write(value, &text);
  writeText(stream, text.str());
}

void printError(const ZephlinkSDK_Result& record) {
  Json::Value error(Json::objectValue);
  error["errorCode"] = record.errorCode;
  error["errorType"] = zephlinksdk::errorText(record.errorCode);
  error["errorMessage"] = record.errorMessage;
  writeJson(stderr, error);
}

}  // namespace cli

#include "cli/output.h"

#include <memory>
#include <sstream>
#include <string>

#include "cli/console.h"
#include "sdk/errors.h"

namespace cli {

namespace {

// Streams print from the channel thread while the main thread only sleeps: one writer and one text serve. The text
// keeps its room from record to record.
std::ostringstream g_text;
bool g_inBlock = false;

std::unique_ptr<Json::StreamWriter> makeWriter() {
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
}

void writeCollected(std::FILE* stream) {
  writeText(stream, g_text.view());
  static const std::string empty;
  g_text.str(empty);  // an rvalue would take the room away
}

}  // namespace

void writeJson(std::FILE* stream, const Json::Value& value) {
  static const std::unique_ptr<Json::StreamWriter> writer = makeWriter();
  writer->write(value, &g_text);
  if (!g_inBlock) writeCollected(stream);
}

OutputBlock::OutputBlock(std::FILE* stream, std::string_view head, std::string_view tail)
    : output(stream), ending(tail) {
  g_text << head;
  g_inBlock = true;
}

OutputBlock::~OutputBlock() {
  g_text << ending;
  g_inBlock = false;
  writeCollected(output);
}

void printError(const ZephlinkSDK_Result& record) {
  Json::Value error(Json::objectValue);
  error["errorCode"] = record.errorCode;
  error["errorType"] = zephlinksdk::errorText(record.errorCode);
  error["errorMessage"] = record.errorMessage;
  writeJson(stderr, error);
}

}  // namespace cli

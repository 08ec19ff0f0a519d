#include "cli/output.h"

#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "base/utf8.h"
#include "platform/console.h"
#include "zephlinksdk/errors.h"

namespace cli {

namespace {

std::unique_ptr<Json::StreamWriter> makeWriter() {
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
}

/// Printed text that is not yet written. The text keeps its capacity between records.
struct Output {
  std::ostringstream text;
  std::unique_ptr<Json::StreamWriter> writer = makeWriter();
};

// One object for both threads: the channel thread prints streams while the main thread only waits. Constructed at run
// time: the first C++ stream of a process initializes the locale, which takes longer than the rest of the start-up.
std::optional<Output> g_output;
bool g_inBlock = false;

Output& output() {
  if (!g_output) g_output.emplace();
  return *g_output;
}

// The text that printError prints for a failure of the library, prepared because memory may have run out.
constexpr std::string_view kNoMemory =
    "{\n"
    "\t\"errorCode\" : 3840,\n"
    "\t\"errorMessage\" : \"An error in the SDK\",\n"
    "\t\"errorType\" : \"An error in the SDK\"\n"
    "}";

/// Allocates no memory.
void clearCollected() {
  if (!g_output) return;
  static const std::string empty;
  g_output->text.clear();
  g_output->text.str(empty);  // an rvalue would discard the capacity
}

/// Throws std::bad_alloc if the text is incomplete.
void writeCollected(std::FILE* stream) {
  // A C++ stream does not propagate the exception of a failed allocation.
  if (!output().text) throw std::bad_alloc();
  const std::string_view text = output().text.view();
  if (zephlinksdk::utf8PrefixLength(text) == text.size()) {
    zephlinksdk::writeText(stream, text);
  } else {
    zephlinksdk::writeText(stream, zephlinksdk::toUtf8(text));
  }
  clearCollected();
}

}  // namespace

void prepareOutput() { output(); }

void writeJson(std::FILE* stream, const Json::Value& value) {
  output().writer->write(value, &output().text);
  if (!g_inBlock) writeCollected(stream);
}

void openBlock(const char* label) {
  output().text << "[\"" << label << "\",\n";
  g_inBlock = true;
}

void closeBlock(std::FILE* stream) {
  g_inBlock = false;
  output().text << "]\n\n";
  writeCollected(stream);
}

void printError(const ZephlinkSDK_Result& head) {
  Json::Value error(Json::objectValue);
  error["errorCode"] = head.errorCode;
  error["errorType"] = ZephlinkSDK_errorText(head.errorCode);
  error["errorMessage"] = head.errorMessage;
  writeJson(stderr, error);
}

void printNoMemory() {
  clearCollected();
  zephlinksdk::writeText(stderr, kNoMemory);
}

void printNoMemoryBlock() {
  g_inBlock = false;
  zephlinksdk::writeText(stderr, "[\"error\",\n");
  printNoMemory();
  zephlinksdk::writeText(stderr, "]\n\n");
}

}  // namespace cli

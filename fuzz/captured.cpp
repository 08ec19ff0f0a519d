#include "fuzz/captured.h"

#include <json/json.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

#include "cli/actions.h"
#include "cli/program_name.h"
#include "fuzz/at_once.h"
#include "fuzz/check.h"

namespace fuzz {

namespace {

constexpr std::string_view kPrompts[] = {"Enter password : ", "Enter oauth token : "};

/// Captures an output stream of the program in memory. Does not redirect descriptors 1 and 2, which the sanitizers use.
class Captured {
 public:
  explicit Captured(const char* name) : descriptor(::memfd_create(name, MFD_CLOEXEC)) {
    file = ::fdopen(descriptor, "w");
    check(file != nullptr, "the memory file is created");
  }

  std::FILE* stream() const { return file; }

  std::string take() {
    std::fflush(file);
    const off_t size = ::lseek(descriptor, 0, SEEK_CUR);
    std::string text(static_cast<std::size_t>(size), '\0');
    check(::pread(descriptor, text.data(), text.size(), 0) == size, "written data can be read");
    std::rewind(file);
    check(::ftruncate(descriptor, 0) == 0, "the memory file is truncated");
    return text;
  }

 private:
  int descriptor;
  std::FILE* file;
};

/// Removes one JSON value from the start of `text`.
bool takeJson(std::string_view& text, Json::Value& value) {
  // The reader stops after the first value; the value's offset limit is the position.
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["allowTrailingCommas"] = false;
  static const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) return false;
  text.remove_prefix(static_cast<std::size_t>(value.getOffsetLimit()));
  return true;
}

bool isError(const Json::Value& value) {
  return value.isObject() && value.size() == 3 && value["errorCode"].isUInt() && value["errorMessage"].isString() &&
         value["errorType"].isString() && value["errorCode"].asUInt() != 0;
}

/// The writer's "1e+9999" for infinity is JSON, but its own reader rejects the number.
std::string withFiniteNumbers(std::string text) {
  constexpr std::string_view kInfinite = "1e+9999";
  for (std::size_t at = text.find(kInfinite); at != std::string::npos; at = text.find(kInfinite, at)) {
    text.replace(at, kInfinite.size(), "1e+99");
  }
  return text;
}

/// Checks one record, or the records of a stream: each is an array of label and record, followed by an empty line.
void checkRecords(std::string_view printed, bool errors) {
  const std::string whole = withFiniteNumbers(std::string(printed));
  std::string_view text = whole;
  while (!text.empty()) {
    const bool inStream = text.starts_with("[\"");
    Json::Value value;
    check(takeJson(text, value), "output parses as JSON", whole);
    if (errors) {
      const bool labelled = value.isArray() && value.size() == 2 && value[0] == "error";
      check(isError(labelled ? value[1] : value), "a printed error is an error object", whole);
    }
    if (text.empty()) return;
    check(inStream && text.starts_with("\n\n"), "only records of a stream follow one another", whole);
    text.remove_prefix(2);
  }
}

std::string_view withoutPrompt(std::string_view output) {
  for (const std::string_view prompt : kPrompts) {
    if (output.starts_with(prompt)) output.remove_prefix(prompt.size());
  }
  while (output.starts_with("\n")) output.remove_prefix(1);
  return output;
}

}  // namespace

Outcome runAction(std::vector<std::string> words) {
  static Captured output("stdout");
  static Captured errors("stderr");
  cli::setProgramName("zephctl");
  if (cli::g_sdk == nullptr) cli::g_sdk = makeSdk();
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());

  std::FILE* const ownOutput = std::exchange(stdout, output.stream());
  std::FILE* const ownErrors = std::exchange(stderr, errors.stream());
  const int status = cli::dispatch(pointers);
  stdout = ownOutput;
  stderr = ownErrors;
  return {status, output.take(), errors.take()};
}

void checkOutcome(const std::vector<std::string>& words, const Outcome& outcome) {
  const std::string& errors = outcome.errors;
  switch (outcome.status) {
    case cli::kSuccess:
      if (words[0] == "help")
        return check(outcome.output.starts_with("zephctl v"), "help prints the usage", outcome.output);
      if (words[0] == "esni" && outcome.output.empty()) return check(!errors.empty(), "an error is printed");
      checkRecords(withoutPrompt(outcome.output), false);
      // Errors within a stream do not end it.
      checkRecords(errors, true);
      return;
    case cli::kFailed:
      check(withoutPrompt(outcome.output).empty(), "a failure prints no record", outcome.output);
      check(!errors.empty(), "a failure prints an error");
      return checkRecords(errors, true);
    case cli::kInvalidParameters:
    case cli::kMissingParameters: {
      const char* kind = outcome.status == cli::kInvalidParameters ? "Invalid parameters: " : "Missing parameters: ";
      check(errors.starts_with(std::string(kind) + "zephctl "), "an error message starts with its kind", errors);
      break;
    }
    case cli::kUnknownAction:
      check(!errors.empty(), "an unknown action prints the usage");
      break;
    default:
      fail("the status is known", std::to_string(outcome.status));
  }
  check(errors.ends_with("\n"), "an error message ends with a line feed", errors);
  check(outcome.output.empty(), "an error prints nothing else", outcome.output);
  check(sentRequests().empty(), "refused arguments send nothing");
}

}  // namespace fuzz

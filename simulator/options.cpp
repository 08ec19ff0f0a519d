#include "simulator/options.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace zephsim {
namespace {

/// One option. `set` gets the option's value, or null if `argument` is null; it returns false for an invalid value.
struct Option {
  const char* name;
  const char* argument;
  const char* help;
  bool (*set)(Options&, const char* word);
};

template <typename Number>
bool parseNumber(const char* word, Number& number) {
  const char* end = word + std::strlen(word);
  const auto [stop, error] = std::from_chars(word, end, number);
  return error == std::errc() && stop == end;
}

template <auto Member>
bool setFlag(Options& options, const char*) {
  return options.*Member = true;
}

template <auto Member>
bool setNumber(Options& options, const char* word) {
  return parseNumber(word, options.*Member);
}

bool setDelay(Options& options, const char* word) {
  std::uint32_t milliseconds = 0;
  if (!parseNumber(word, milliseconds)) return false;
  options.delay = std::chrono::milliseconds(milliseconds);
  return true;
}

bool addRefused(Options& options, const char* word) {
  options.refused.insert(word);
  return true;
}

constexpr Option kOptions[] = {
    {"--port", "N", "listen on 127.0.0.1:N, 0 for a free port (9330)", setNumber<&Options::port>},
    {"--print", nullptr, "print requests (<), reports (>) and unknown requests (?)", setFlag<&Options::print>},
    {"--print-secrets", nullptr, "print passwords and tokens, not ***", setFlag<&Options::printSecrets>},
    {"--fast", nullptr, "reduce simulated delays to a tenth", setFlag<&Options::fast>},
    {"--seed", "N", "seed of the random behaviour (1)", setNumber<&Options::seed>},
    {"--delay", "MS", "wait MS milliseconds before each answer", setDelay},
    {"--drop-after", "N", "drop a connection after N messages, received and sent", setNumber<&Options::dropAfter>},
    {"--close-after", "N", "send a close frame after N messages, received and sent", setNumber<&Options::closeAfter>},
    {"--silent", nullptr, "answer nothing", setFlag<&Options::silent>},
    {"--garble", nullptr, "answer with broken JSON", setFlag<&Options::garble>},
    {"--refuse", "REQUEST", "refuse this request with a settings error; may be repeated", addRefused},
    {"--flood", "N", "send N statistics at once after each stat_subscribe", setNumber<&Options::flood>},
};

void printHelp() {
  std::printf("Usage: zephsim [option] ...\nA simulated daemon.\n");
  for (const Option& option : kOptions) {
    const std::string left = std::string(option.name) + (option.argument ? std::string(" ") + option.argument : "");
    std::printf("  %-18s %s\n", left.c_str(), option.help);
  }
  std::printf("  %-18s %s\n", "--help", "print this");
}

const Option* findOption(std::string_view name) {
  for (const Option& option : kOptions) {
    if (name == option.name) return &option;
  }
  return nullptr;
}

}  // namespace

std::optional<Options> parseOptions(int argc, const char* const* argv, int& exitStatus) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--help") == 0) {
      printHelp();
      exitStatus = 0;
      return std::nullopt;
    }
    const Option* option = findOption(argv[i]);
    const char* word = option && option->argument && i + 1 < argc ? argv[i + 1] : nullptr;
    if (!option || (option->argument && !word) || !option->set(options, word)) {
      std::fprintf(stderr, "zephsim: invalid option: %s%s%s (see --help)\n", argv[i], word ? " " : "",
                   word ? word : "");
      exitStatus = 2;
      return std::nullopt;
    }
    if (option->argument) ++i;
  }
  return options;
}

}  // namespace zephsim

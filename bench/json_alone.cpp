// Parses each line of standard input and writes the members of the event, like zephctl, with jsoncpp alone.
#include <json/json.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

int main() {
  std::ios::sync_with_stdio(false);
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  const std::unique_ptr<Json::StreamWriter> writer(builder.newStreamWriter());
  std::string line;
  while (std::getline(std::cin, line)) {
    Json::Value event;
    std::string errors;
    if (!reader->parse(line.data(), line.data() + line.size(), &event, &errors)) return 1;
    std::ostringstream text;
    writer->write(event[1], &text);
    std::fputs(text.str().c_str(), stdout);
    std::fflush(stdout);
  }
  return 0;
}

#include "tests/case_file.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <map>
#include <set>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tests {

namespace {

using Lines = std::span<const CaseLine>;

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

/// Returns the first word of a text and the rest after it.
std::pair<std::string, std::string> headAndRest(const std::string& text) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string::npos) return {text, {}};
  return {text.substr(0, blank), text.substr(blank + 1)};
}

std::vector<std::string> cells(const std::string& row, std::string_view divider = " | ") {
  std::vector<std::string> found;
  std::size_t start = 0;
  for (std::size_t end = 0; end != std::string::npos; start = end + divider.size()) {
    end = row.find(divider, start);
    found.push_back(trimmed(row.substr(start, end == std::string::npos ? end : end - start)));
  }
  return found;
}

/// Splits a line into words: blanks separate them, quotes group them, and a backslash in quotes escapes the next
/// character.
std::vector<std::string> words(const std::string& line) {
  std::vector<std::string> found;
  bool quoted = false;
  bool inside = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == ' ' && !quoted) {
      inside = false;
      continue;
    }
    if (!std::exchange(inside, true)) found.emplace_back();
    if (line[i] == '"') {
      quoted = !quoted;
    } else {
      if (quoted && line[i] == '\\') ++i;
      found.back() += line.at(i);
    }
  }
  return found;
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

/// Merges members, those of `over` replacing existing ones; merges array elements by index.
void lay(Json::Value& value, const Json::Value& over) {
  if (over.isObject() && value.isObject()) {
    for (const std::string& name : over.getMemberNames()) lay(value[name], over[name]);
  } else if (over.isArray() && value.isArray()) {
    for (Json::ArrayIndex i = 0; i < over.size(); ++i) lay(value[i], over[i]);
  } else {
    value = over;
  }
}

/// Reads a JSON text, or several separated by `++`, each merged over the previous ones. Returns it as the program
/// prints it.
std::string value(const std::string& text) {
  Json::Value result;
  for (const std::string& piece : cells(text, " ++ ")) lay(result, parsed(piece));
  return printed(result);
}

/// Returns the seconds since the epoch of a local time `year-month-dayThour:minute:second`.
std::string localTime(const std::string& text) {
  std::tm time{};
  std::istringstream(text) >> std::get_time(&time, "%Y-%m-%dT%H:%M:%S");
  time.tm_isdst = -1;
  return std::to_string(std::mktime(&time));
}

class Reader {
 public:
  void read(Lines lines) {
    while (!lines.empty()) lines = lines.subspan(item(lines));
  }

  std::vector<ProgramCase> cases;
  /// The number of the current line.
  int at = 0;

  using Fault = ProgramCase (*)(std::vector<std::string> words, const std::string& usage);
  inline static const std::map<std::string, Fault> kFaults{
      {"invalid", invalidCase}, {"missing", missingCase}, {"unknown", unknownCase}};

 private:
  inline static const std::set<std::string> kDetails{">",  "<", "=",      "*",     "*!",   "|",
                                                     "2|", "!", "status", "lasts", "input"};

  struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
  };

  /// Reads a definition, a loop, a list of errors or a case. Returns the number of lines read.
  std::size_t item(Lines lines) {
    const CaseLine& first = lines[0];
    at = first.number;
    const auto [word, rest] = headAndRest(first.text);
    if (word == "let") {
      names.insert_or_assign(headAndRest(rest).first, trimmed(headAndRest(rest).second));
    } else if (word == "table") {
      tables.insert_or_assign(headAndRest(rest).first, table(headAndRest(rest).second, first.rows));
    } else if (word == "for") {
      const Lines body = until(lines, [](const std::string& mark) { return mark.empty(); });
      repeat(loop(rest), body.subspan(1));
      return body.size();
    } else if (const auto fault = kFaults.find(word); fault != kFaults.end()) {
      for (const std::string& row : first.rows) {
        for (const std::string& line : cells(row)) {
          cases.push_back(fault->second(words(expanded(line)), expanded(rest)));
          cases.back().line = first.number;
        }
      }
    } else if (word == "$" || word == "$~") {
      const Lines own = until(lines, [](const std::string& mark) { return !kDetails.contains(mark); });
      cases.push_back(one(own));
      cases.back().line = first.number;
      return own.size();
    } else if (!word.empty()) {
      throw std::runtime_error("no such line: " + first.text);
    }
    return 1;
  }

  /// Returns the first line and the following ones up to a line whose first word is an end.
  template <class IsEnd>
  static Lines until(Lines lines, IsEnd isEnd) {
    const auto end = std::find_if(lines.begin() + 1, lines.end(),
                                  [&](const CaseLine& line) { return isEnd(headAndRest(line.text).first); });
    return lines.first(static_cast<std::size_t>(end - lines.begin()));
  }

  static Table table(const std::string& columns, const std::vector<std::string>& rows) {
    Table made{.columns = cells(columns), .rows = {}};
    for (const std::string& row : rows) {
      made.rows.push_back(cells(row));
      if (made.rows.back().size() != made.columns.size()) throw std::runtime_error("not a row of its table: " + row);
    }
    return made;
  }

  /// Returns a table by its name, or parses `column = cell | cell`.
  Table loop(const std::string& text) const {
    const auto [name, list] = headAndRest(text);
    if (list.starts_with("= ")) return table(name, cells(list.substr(2)));
    const auto found = tables.find(name);
    if (found == tables.end()) throw std::runtime_error("no such table: " + name);
    return found->second;
  }

  /// Reads the body once for each row, with the row's cells defined under the names of their columns.
  void repeat(const Table& table, Lines body) {
    if (loops == kMaxLoops) throw std::runtime_error("more than two nested loops");
    ++loops;
    const std::map<std::string, std::string> outer = names;
    for (const std::vector<std::string>& row : table.rows) {
      for (std::size_t i = 0; i < row.size(); ++i) names.insert_or_assign(table.columns[i], row[i]);
      read(body);
    }
    names = outer;
    --loops;
  }

  /// Expands `<<...>>`, the innermost first: `1..9 text`, `text*9`, or a name with an argument for its `#`.
  std::string meaning(const std::string& text) const {
    const auto [name, argument] = headAndRest(text);
    std::string all;
    int first = 0;
    int last = 0;
    if (std::sscanf(name.c_str(), "%d..%d", &first, &last) == 2) {
      const char* between = argument.starts_with(' ') ? "" : ",";
      for (int i = first; i <= last; ++i) {
        all += (i == first ? "" : between) + replaced(argument, "#", std::to_string(i));
      }
      return all;
    }
    const std::size_t star = text.rfind('*');
    if (star != std::string::npos && text.find_first_not_of("0123456789", star + 1) == std::string::npos) {
      for (int i = std::stoi(text.substr(star + 1)); i > 0; --i) all += text.substr(0, star);
      return all;
    }
    if (name == "local") return localTime(argument);
    const auto found = names.find(name);
    if (found == names.end()) throw std::runtime_error("no such name: " + text);
    return argument.empty() ? found->second : replaced(found->second, "#", argument);
  }

  std::string expanded(std::string text) const {
    for (std::size_t end = 0; (end = text.find(">>")) != std::string::npos;) {
      const std::size_t start = text.rfind("<<", end);
      if (start == std::string::npos) throw std::runtime_error("a >> without its <<: " + text);
      text.replace(start, end + 2 - start, meaning(text.substr(start + 2, end - start - 2)));
    }
    return text;
  }

  /// Returns the error object for `code type: message` as the program prints it.
  static std::string error(const std::string& text) {
    const auto [code, rest] = headAndRest(text);
    const std::size_t colon = rest.find(':');
    if (colon == std::string::npos) throw std::runtime_error("an error without its message: " + text);
    return errorObject(static_cast<unsigned>(std::stoul(code)), rest.substr(0, colon), trimmed(rest.substr(colon + 1)));
  }

  /// Returns a raw message, or a report with its data.
  static std::string answerOf(const std::string& text) {
    if (text.empty() || std::string_view(R"([{")").find(text[0]) != std::string_view::npos) return text;
    const auto [name, data] = headAndRest(text);
    return event(name, data.empty() ? "null" : data);
  }

  /// Reads one case. The first line contains its arguments.
  ProgramCase one(Lines lines) {
    ProgramCase made;
    std::string* last = nullptr;
    const auto line = [&last](std::string& to, const std::string& text) {
      to += (last == &to ? "\n" : "") + text;
      last = &to;
    };
    std::vector<std::string>* answers = nullptr;
    for (const CaseLine& each : lines) {
      at = each.number;
      const auto [mark, rest] = headAndRest(expanded(each.text));
      const auto [name, data] = headAndRest(rest);
      if (mark == "$" || mark == "$~") {
        made.words = words(rest);
        made.endless = mark == "$~";
      } else if (mark == ">") {
        made.sent.push_back(data.empty() ? request(name) : request(name, data));
        answers = &made.answers[name];
      } else if (mark == "<") {
        if (answers == nullptr) throw std::runtime_error("an answer without a request");
        for (const std::string& answer : cells(rest)) answers->push_back(answerOf(answer));
      } else if (mark == "=") {
        made.out += value(rest);
      } else if (mark == "*") {
        made.out += block(name, value(data));
      } else if (mark == "*!") {
        made.err += block("error", error(rest));
      } else if (mark == "!") {
        made.err += error(rest);
        made.status = 1;
      } else if (mark == "|") {
        line(made.out, rest);
      } else if (mark == "2|") {
        line(made.err, rest);
      } else if (mark == "status") {
        made.status = std::stoi(rest);
      } else if (mark == "lasts") {
        made.duration = std::chrono::seconds(std::stoi(rest));
      } else if (mark == "input") {
        made.input = parsed(rest).asString();
      }
    }
    return made;
  }

  /// A reader of the file has to follow them all.
  static constexpr int kMaxLoops = 2;

  int loops = 0;
  std::map<std::string, std::string> names{{"newline", "\n"}};
  std::map<std::string, Table> tables;
};

/// Adds a line of a file to the previous ones: an indentation of two blanks continues a line or starts a row, a larger
/// one continues a row.
void append(std::vector<CaseLine>& lines, int number, const std::string& text) {
  if (!text.starts_with("  ")) {
    lines.push_back({.number = number, .text = text});
    return;
  }
  if (lines.empty()) throw std::runtime_error("a continuation without a line");
  CaseLine& line = lines.back();
  const std::string word = headAndRest(line.text).first;
  const bool hasRows = word == "table" || Reader::kFaults.contains(word);
  if (hasRows && (text[2] != ' ' || line.rows.empty())) {
    line.rows.push_back(text.substr(2));
  } else {
    std::string& before = hasRows ? line.rows.back() : line.text;
    const bool continues = before.ends_with(',') || before.ends_with('[') || before.ends_with('{');
    before += (continues ? "" : " ") + trimmed(text);
  }
}

void readGroups(const std::filesystem::path& path, std::vector<CaseGroup>& groups) {
  const std::string file = path.stem().string();
  std::vector<CaseLine> shared;
  std::vector<CaseLine>* lines = &shared;
  std::ifstream stream(path, std::ios::binary);
  std::string text;
  for (int number = 1; std::getline(stream, text); ++number) {
    if (text.starts_with("#")) continue;
    if (text.starts_with("== ")) {
      groups.push_back({.file = file, .title = text.substr(3), .lines = shared});
      lines = &groups.back().lines;
    } else {
      append(*lines, number, text);
    }
  }
}

}  // namespace

std::vector<CaseGroup> groupsIn(const std::filesystem::path& folder) {
  std::vector<CaseGroup> groups;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".cases") readGroups(entry.path(), groups);
  }
  return groups;
}

std::vector<ProgramCase> casesOf(const CaseGroup& group) {
  Reader reader;
  try {
    reader.read(group.lines);
    return std::move(reader.cases);
  } catch (const std::exception& fault) {
    throw std::runtime_error(group.file + ".cases:" + std::to_string(reader.at) + ": " + fault.what());
  }
}

}  // namespace tests

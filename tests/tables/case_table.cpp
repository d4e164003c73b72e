#include "tests/tables/case_table.h"

#include <fstream>
#include <stdexcept>

#include "base/utf8.h"

namespace horalo {
namespace {

[[noreturn]] void fail(const std::string& message) {
  throw std::runtime_error("case table: " + message);
}

// Takes what stands before `end` off the front of `text`, and `end` with it.
std::string_view takeUntil(std::string_view& text, char end) {
  const std::size_t length = text.find(end);
  if (length == std::string_view::npos) fail("an escape without its end");
  const std::string_view taken = text.substr(0, length);
  text.remove_prefix(length + 1);
  return taken;
}

std::string unescaped(std::string_view cell);

// Appends what the escape at the start of `rest`, behind its backslash, stands for.
void appendEscape(std::string& text, std::string_view& rest) {
  if (rest.empty()) fail("a backslash at the end of a cell");
  const char letter = rest.front();
  rest.remove_prefix(1);
  switch (letter) {
    case 's':
      text += ' ';
      break;
    case 't':
      text += '\t';
      break;
    case 'r':
      text += '\r';
      break;
    case 'n':
      text += '\n';
      break;
    case '\\':
      text += '\\';
      break;
    case 'x':
      if (rest.size() < 2) fail("\\x without two digits");
      text += static_cast<char>(std::stoi(std::string(rest.substr(0, 2)), nullptr, 16));
      rest.remove_prefix(2);
      break;
    case 'u':
      if (!rest.starts_with('{')) fail("\\u without {");
      rest.remove_prefix(1);
      appendUtf8(text,
                 static_cast<char32_t>(std::stoul(std::string(takeUntil(rest, '}')), nullptr, 16)));
      break;
    case '(': {
      std::string_view repeated = takeUntil(rest, ')');
      const std::string piece = unescaped(takeUntil(repeated, '*'));
      for (int count = std::stoi(std::string(repeated)); count > 0; --count) text += piece;
      break;
    }
    default:
      fail(std::string("unknown escape \\") + letter);
  }
}

std::string unescaped(std::string_view cell) {
  std::string text;
  while (!cell.empty()) {
    const char c = cell.front();
    cell.remove_prefix(1);
    if (c == '\\') {
      appendEscape(text, cell);
    } else {
      text += c;
    }
  }
  return text;
}

std::vector<std::string> cellsOf(std::string_view line) {
  std::vector<std::string> cells;
  while (true) {
    const std::size_t tab = line.find('\t');
    cells.push_back(unescaped(line.substr(0, tab)));
    if (tab == std::string_view::npos) return cells;
    line.remove_prefix(tab + 1);
  }
}

}  // namespace

const std::string& CaseRow::cell(std::size_t i) const {
  static const std::string none;
  return i < cells.size() ? cells[i] : none;
}

std::vector<CaseRow> readCaseTable(std::string_view name) {
  const std::string fileName(name);
  std::ifstream file(std::string(HORALO_TEST_DATA) + "/" + fileName);
  if (!file) fail("cannot read " + fileName);
  std::vector<CaseRow> rows;
  std::string line, zone, now;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.starts_with('#')) continue;
    if (line.starts_with("@zone ")) {
      zone = line.substr(6);
    } else if (line.starts_with("@now ")) {
      now = line.substr(5);
    } else {
      rows.push_back({fileName + ":" + std::to_string(number), zone, now, cellsOf(line)});
    }
  }
  return rows;
}

}  // namespace horalo

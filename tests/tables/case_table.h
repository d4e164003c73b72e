#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace horalo {

// One row of a table of cases.
struct CaseRow {
  std::string place;  // "numbers.tsv:12", for messages
  std::string zone;   // what the nearest "@zone" line above says
  std::string now;    // ... and "@now"
  std::vector<std::string> cells;

  // Empty where the row has no such cell.
  const std::string& cell(std::size_t i) const;
};

// The rows of tests/data/`name`: cells between tabs, one row a line; "#" starts a comment line.
// In cells stand for themselves all characters but these:
//
//   \s \t \r \n   blank, tab, carriage return, line feed      \u{A0}    a code point
//   \\            backslash                                   \xFF      a byte
//   \(0*400)      four hundred zeros
//
// Throws std::runtime_error where the file cannot be read or holds an unknown escape.
std::vector<CaseRow> readCaseTable(std::string_view name);

}  // namespace horalo

#include "cli/convert_options.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/utf8.h"
#include "engine/iso8601.h"

namespace horalo {
namespace {

constexpr std::size_t kShownInMessage = 80;

constexpr std::array<std::pair<std::string_view, RowKind>, kRowCount> kRowNames{
    {{"unix-s", RowKind::unixSeconds},
     {"unix-ms", RowKind::unixMilliseconds},
     {"iso", RowKind::iso8601},
     {"formatted", RowKind::formatted},
     {"relative", RowKind::relative}}};

std::string quoted(std::string_view text) {
  return '"' + printable(text, kShownInMessage) + '"';
}

// "-" and what starts like a negative number are texts; every other word with a dash in front is
// meant as an option.
bool looksLikeOption(std::string_view word) {
  if (word.size() < 2 || word.front() != '-') return false;
  return !((word[1] >= '0' && word[1] <= '9') || word[1] == '.');
}

std::optional<UsageError> setZone(ConvertOptions& options, std::string_view value) {
  options.zone = std::nullopt;
  if (value == "local") return std::nullopt;
  options.zone = TimeZone::find(value);
  if (options.zone) return std::nullopt;
  return UsageError{"unknown zone " + quoted(value) +
                    ": give an IANA name such as Europe/Paris, UTC or local"};
}

std::optional<UsageError> setNow(ConvertOptions& options, std::string_view value) {
  options.now = parseISO8601(value);
  if (options.now) return std::nullopt;
  return UsageError{"--now takes an ISO 8601 instant such as 2024-01-01T00:00:00Z, not " +
                    quoted(value)};
}

std::optional<UsageError> setOnly(ConvertOptions& options, std::string_view value) {
  const auto* const row = std::find_if(kRowNames.begin(), kRowNames.end(),
                                       [value](const auto& name) { return name.first == value; });
  if (row == kRowNames.end()) {
    return UsageError{"unknown row " + quoted(value) +
                      ": give one of unix-s, unix-ms, iso, formatted, relative"};
  }
  options.only = row->second;
  return std::nullopt;
}

using Setter = std::optional<UsageError> (*)(ConvertOptions&, std::string_view);
constexpr std::array<std::pair<std::string_view, Setter>, 3> kValueOptions{
    {{"--zone", setZone}, {"--now", setNow}, {"--only", setOnly}}};

// The words of a command line, one after the other.
class Words {
 public:
  explicit Words(const std::vector<std::string_view>& words) : words_(words) {}
  std::optional<std::string_view> next() {
    if (place_ == words_.size()) return std::nullopt;
    return words_[place_++];
  }

 private:
  const std::vector<std::string_view>& words_;
  std::size_t place_ = 0;
};

// Takes one option, with its value from behind "=" or from the next word.
std::optional<UsageError> takeOption(ConvertOptions& options, std::string_view word, Words& words) {
  if (word == "--json") {
    options.json = true;
    return std::nullopt;
  }
  if (word == "--help" || word == "-h") {
    options.help = true;
    return std::nullopt;
  }
  const std::size_t equals = word.find('=');
  const std::string_view name = word.substr(0, equals);
  const auto* const option = std::find_if(kValueOptions.begin(), kValueOptions.end(),
                                          [name](const auto& o) { return o.first == name; });
  if (option == kValueOptions.end()) {
    return UsageError{"unknown option " + quoted(word) + "; see horalo convert --help"};
  }
  if (equals != std::string_view::npos) return option->second(options, word.substr(equals + 1));
  const std::optional<std::string_view> value = words.next();
  if (!value) return UsageError{std::string(name) + " needs a value; see horalo convert --help"};
  return option->second(options, *value);
}

void addWord(std::optional<std::string>& text, std::string_view word) {
  if (text) {
    *text += ' ';
    *text += word;
  } else {
    text = word;
  }
}

}  // namespace

std::variant<ConvertOptions, UsageError> parseConvertOptions(
    const std::vector<std::string_view>& allWords) {
  ConvertOptions options;
  Words words(allWords);
  bool optionsEnded = false;
  while (const std::optional<std::string_view> word = words.next()) {
    if (optionsEnded || !looksLikeOption(*word)) {
      addWord(options.text, *word);
    } else if (*word == "--") {
      optionsEnded = true;
    } else if (std::optional<UsageError> error = takeOption(options, *word, words)) {
      return *std::move(error);
    }
  }
  if (options.only && options.json) {
    return UsageError{"--only and --json exclude each other: --only prints a bare value"};
  }
  return options;
}

}  // namespace horalo

#include "cli/convert_command.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "base/utf8.h"
#include "cli/convert_options.h"
#include "cli/help.h"
#include "cli/line_reader.h"
#include "cli/output.h"
#include "cli/result_json.h"
#include "engine/timestamp_parser.h"

namespace horalo {
namespace {

constexpr int kSuccess = 0;
constexpr int kNotParsed = 1;
constexpr int kWrongUsage = 2;

constexpr std::string_view kParseError = "Could not parse input";
constexpr std::size_t kShownOfText = 200;  // characters in a message
constexpr std::size_t kLabelWidth = 11;    // the longest label and two blanks

// The current instant as one text sees it: read at most once for each, so that the phrase for
// "now + 2h" counts from the same now as the sum.
class TextClock final : public Clock {
 public:
  Instant now() const override {
    if (!now_) now_ = clock_.now();
    return *now_;
  }
  void forget() { now_.reset(); }

 private:
  SystemClock clock_;
  mutable std::optional<Instant> now_;
};

// Prints conversions in the form that was asked for.
class Converter {
 public:
  Converter(const ConvertOptions& options, Output& out, Output& messages)
      : options_(options),
        out_(out),
        messages_(messages),
        ordered_(out.leadsWhere(messages)),
        fixedClock_(options.now.value_or(Instant{})),
        parser_(clock(), zone_),
        context_{clock(), zone_, LocaleTexts::shared()} {}

  // Converts one text; false where it could not be parsed.
  bool convert(std::string_view bytes) {
    std::string replaced;
    std::string_view text = bytes;
    if (!isValidUtf8(bytes)) text = replaced = toValidUtf8(bytes);

    textClock_.forget();
    std::optional<ParseResult> parsed = parser_.parse(text);
    if (!parsed) {
      printFailure(text);
      return false;
    }
    const ConversionResult result{parsed->date, std::move(parsed->source), shownZone()};
    if (options_.json) {
      appendJson(out_.pending(), text, result, context_);
      out_.write('\n');
    } else if (options_.only) {
      appendRowValue(out_.pending(), *options_.only, result, context_);
      out_.write('\n');
    } else {
      printBlock(result);
    }
    return true;
  }

 private:
  const Clock& clock() const {
    return options_.now ? static_cast<const Clock&>(fixedClock_) : textClock_;
  }

  // A row that is the same in every zone asks for none.
  TimeZone shownZone() const {
    const bool matters = !options_.only || *options_.only == RowKind::iso8601 ||
                         *options_.only == RowKind::formatted;
    if (!matters) return TimeZone::utc();
    return options_.zone ? *options_.zone : zone_.current();
  }

  void printFailure(std::string_view text) {
    if (options_.json) {
      appendJsonError(out_.pending(), text, kParseError);
      out_.write('\n');
      return;
    }
    if (ordered_) out_.flush();
    messages_.write(kParseError);
    messages_.write(": ");
    messages_.write(printable(text, kShownOfText));
    messages_.write('\n');
    if (ordered_) messages_.flush();
    if (options_.only) out_.write('\n');
  }

  void printBlock(const ConversionResult& result) {
    if (!firstBlock_) out_.write('\n');
    firstBlock_ = false;
    for (const ResultRow& row : rows(result, context_)) {
      out_.write(row.label);
      out_.write(std::string(kLabelWidth - row.label.size(), ' '));
      out_.write(row.value);
      out_.write('\n');
    }
    out_.write("Detected: ");
    out_.write(description(result.source));
    out_.write('\n');
  }

  const ConvertOptions& options_;
  Output& out_;
  Output& messages_;
  bool ordered_;
  bool firstBlock_ = true;
  TextClock textClock_;
  FixedClock fixedClock_;
  SystemZone systemZone_;
  ZoneReadOnce zone_{systemZone_};
  TimestampParser parser_;
  RowContext context_;
};

// Converts the lines of standard input; whatever is ready is handed on before waiting for more.
bool convertLines(Converter& converter, Output& out, Output& messages, int& readError) {
  LineReader reader(STDIN_FILENO, [&] {
    out.flush();
    messages.flush();
  });
  bool allParsed = true;
  while (out.error() == 0) {
    const std::optional<std::string_view> line = reader.next();
    if (!line) break;
    if (!converter.convert(*line)) allParsed = false;
  }
  readError = reader.error();
  return allParsed;
}

}  // namespace

int runConvert(const std::vector<std::string_view>& words) {
  // A reader that went away shows as an error of writing and ends the program quietly.
  std::signal(SIGPIPE, SIG_IGN);
  Output out(STDOUT_FILENO);
  Output messages(STDERR_FILENO);

  const std::variant<ConvertOptions, UsageError> read = parseConvertOptions(words);
  if (const auto* error = std::get_if<UsageError>(&read)) {
    messages.write("horalo convert: " + error->message + '\n');
    return kWrongUsage;
  }
  const auto& options = std::get<ConvertOptions>(read);
  if (options.help) {
    out.write(convertHelp());
    return kSuccess;
  }

  Converter converter(options, out, messages);
  int readError = 0;
  const bool allParsed = options.text ? converter.convert(*options.text)
                                      : convertLines(converter, out, messages, readError);
  out.flush();
  for (const auto& [error, what] : {std::pair(readError, "cannot read standard input: "),
                                    std::pair(out.error(), "cannot write: ")}) {
    if (error == 0 || error == EPIPE) continue;
    messages.write(std::string("horalo convert: ") + what + std::strerror(error) + '\n');
    return kNotParsed;
  }
  return allParsed ? kSuccess : kNotParsed;
}

}  // namespace horalo

#include <charconv>

#include "app/update/feed.h"

namespace horalo {
namespace {

constexpr QByteArrayView kTitle = "sparkle-signatures:";
constexpr QByteArrayView kSignature = "edSignature:";
constexpr QByteArrayView kLength = "length:";

std::string_view textOf(QByteArrayView bytes) {
  return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

// The inside of the comment with which the document ends.
std::optional<QByteArrayView> lastComment(QByteArrayView document) {
  document = document.trimmed();
  if (!document.endsWith("-->")) return std::nullopt;
  document.chop(3);
  const auto begin = document.lastIndexOf("<!--");
  if (begin < 0) return std::nullopt;
  return document.sliced(begin + 4).trimmed();
}

struct Claim {
  std::string_view signature;
  qsizetype length = -1;
};

std::optional<Claim> claimOf(QByteArrayView comment) {
  if (!comment.startsWith(kTitle)) return std::nullopt;
  comment = comment.sliced(kTitle.size());
  Claim claim;
  while (!comment.isEmpty()) {
    const auto newline = comment.indexOf('\n');
    const QByteArrayView line = (newline < 0 ? comment : comment.first(newline)).trimmed();
    comment = newline < 0 ? QByteArrayView() : comment.sliced(newline + 1);
    if (line.startsWith(kSignature))
      claim.signature = textOf(line.sliced(kSignature.size()).trimmed());
    if (line.startsWith(kLength)) {
      const std::string_view digits = textOf(line.sliced(kLength.size()).trimmed());
      const char* const end = digits.data() + digits.size();
      const auto [stop, error] = std::from_chars(digits.data(), end, claim.length);
      if (error != std::errc() || stop != end) return std::nullopt;
    }
  }
  if (claim.signature.empty() || claim.length <= 0) return std::nullopt;
  return claim;
}

}  // namespace

SignedFeed checkFeedSignature(const QByteArray& document, const UpdateKeys& keys) {
  const auto comment = lastComment(document);
  const auto claim = comment ? claimOf(*comment) : std::nullopt;
  if (!claim) return {};
  if (claim->length > document.size()) return {FeedTrust::forged, {}};
  const QByteArray content = document.first(claim->length);
  if (!keys.verify(content, claim->signature)) return {FeedTrust::forged, {}};
  return {FeedTrust::trusted, content};
}

}  // namespace horalo

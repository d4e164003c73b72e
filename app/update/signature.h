#pragma once

#include <QByteArray>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace horalo {

// The Ed25519 public keys whose signatures this copy of the program trusts. There may be a second
// one, whose private half is kept offline for the day on which the first is lost.
class UpdateKeys {
 public:
  // Each key is the base64 text of 32 bytes. Nothing where there is none, or where any of them is
  // not a key: the placeholder of zeros, for example, or one of the points for which signatures can
  // be made without a private key.
  static std::optional<UpdateKeys> parse(std::span<const std::string_view> texts);

  // Whether `signature`, the base64 text of 64 bytes, is by one of the keys over `message`.
  bool verify(QByteArrayView message, std::string_view signature) const;

 private:
  std::vector<QByteArray> keys_;
};

}  // namespace horalo

#include "app/update/signature.h"

#include <sodium.h>

#include <algorithm>
#include <utility>

namespace horalo {
namespace {

const unsigned char* unsignedBytes(QByteArrayView bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

// Exactly `size` bytes from their base64 text, which has nothing before or after it.
std::optional<QByteArray> decode(std::string_view text, std::size_t size) {
  QByteArray bytes(static_cast<qsizetype>(size), '\0');
  std::size_t decoded = 0;
  const char* end = nullptr;
  const int failed =
      sodium_base642bin(reinterpret_cast<unsigned char*>(bytes.data()), size, text.data(),
                        text.size(), nullptr, &decoded, &end, sodium_base64_VARIANT_ORIGINAL);
  if (failed != 0 || decoded != size || end != text.data() + text.size()) return std::nullopt;
  return bytes;
}

}  // namespace

std::optional<UpdateKeys> UpdateKeys::parse(std::span<const std::string_view> texts) {
  if (texts.empty() || sodium_init() < 0) return std::nullopt;
  UpdateKeys keys;
  for (const std::string_view text : texts) {
    auto key = decode(text, crypto_sign_PUBLICKEYBYTES);
    if (!key || crypto_core_ed25519_is_valid_point(unsignedBytes(*key)) != 1) return std::nullopt;
    keys.keys_.push_back(*std::move(key));
  }
  return keys;
}

bool UpdateKeys::verify(QByteArrayView message, std::string_view signature) const {
  const auto bytes = decode(signature, crypto_sign_BYTES);
  return bytes && std::any_of(keys_.begin(), keys_.end(), [&](const QByteArray& key) {
           return crypto_sign_verify_detached(unsignedBytes(*bytes), unsignedBytes(message),
                                              static_cast<unsigned long long>(message.size()),
                                              unsignedBytes(key)) == 0;
         });
}

}  // namespace horalo

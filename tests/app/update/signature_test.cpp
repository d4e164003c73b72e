#include "app/update/signature.h"

#include <gtest/gtest.h>

#include "tests/app/update/test_release.h"

namespace horalo {
namespace {

std::string base64(const QByteArray& bytes) {
  return bytes.toBase64().toStdString();
}

bool isKey(const std::string& text) {
  const std::string_view view = text;
  return UpdateKeys::parse({&view, 1}).has_value();
}

QByteArray flipped(const QByteArray& bytes, qsizetype bit) {
  QByteArray changed = bytes;
  changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << (bit % 8)));
  return changed;
}

TEST(Signature, holdsForTheMessageAlone) {
  const TestKey key;
  const QByteArray message("what was signed");
  const std::string signature = key.sign(message);
  const UpdateKeys keys = key.keys();
  EXPECT_TRUE(keys.verify(message, signature));
  EXPECT_FALSE(keys.verify(message + " ", signature));
  EXPECT_FALSE(keys.verify("", signature));
  EXPECT_FALSE(TestKey().keys().verify(message, signature));

  const QByteArray bytes = QByteArray::fromBase64(QByteArray::fromStdString(signature));
  int flips = 0;
  for (qsizetype bit = 0; bit < bytes.size() * 8; ++bit, ++flips) {
    EXPECT_FALSE(keys.verify(message, base64(flipped(bytes, bit)))) << bit;
  }
  for (qsizetype bit = 0; bit < message.size() * 8; ++bit, ++flips) {
    EXPECT_FALSE(keys.verify(flipped(message, bit), signature)) << bit;
  }
  EXPECT_EQ(flips, 512 + 120);
}

TEST(Signature, isReadToItsLastLetter) {
  const TestKey key;
  const QByteArray message("x");
  const std::string signature = key.sign(message);
  const UpdateKeys keys = key.keys();
  EXPECT_FALSE(keys.verify(message, signature + "A"));
  EXPECT_FALSE(keys.verify(message, signature + " "));
  EXPECT_FALSE(keys.verify(message, " " + signature));
  EXPECT_FALSE(keys.verify(message, signature + signature));
  EXPECT_FALSE(keys.verify(message, signature.substr(0, 84)));
  EXPECT_FALSE(keys.verify(message, ""));
  EXPECT_FALSE(keys.verify(message, std::string(1 << 20, 'A')));
}

TEST(Signature, isGoodByAnyOfTheKeys) {
  const TestKey first;
  const TestKey second;
  const TestKey stranger;
  const std::vector<std::string_view> texts = {first.publicText(), second.publicText()};
  const auto keys = UpdateKeys::parse(texts);
  ASSERT_TRUE(keys);
  EXPECT_TRUE(keys->verify("m", first.sign("m")));
  EXPECT_TRUE(keys->verify("m", second.sign("m")));
  EXPECT_FALSE(keys->verify("m", stranger.sign("m")));
}

TEST(Signature, hasNoPlaceholderForAKey) {
  EXPECT_TRUE(isKey(TestKey().publicText()));
  EXPECT_FALSE(isKey(""));
  EXPECT_FALSE(isKey("YOUR KEY HERE"));
  EXPECT_FALSE(isKey(base64(QByteArray(32, '\0'))));
  EXPECT_FALSE(isKey(base64(QByteArray(32, '\xff'))));
  EXPECT_FALSE(isKey(base64(QByteArray(1, '\1') + QByteArray(31, '\0')))) << "the identity";
  EXPECT_FALSE(isKey(TestKey().publicText() + "A"));
  const QByteArray bytes =
      QByteArray::fromBase64(QByteArray::fromStdString(TestKey().publicText()));
  EXPECT_FALSE(isKey(base64(bytes.first(31))));
  EXPECT_FALSE(isKey(base64(bytes + 'x')));
}

TEST(Signature, isNotCheckedByHalfOfTheKeys) {
  const TestKey key;
  const std::vector<std::string_view> texts = {key.publicText(), "placeholder"};
  EXPECT_FALSE(UpdateKeys::parse(texts));
  EXPECT_FALSE(UpdateKeys::parse({}));
}

}  // namespace
}  // namespace horalo

#include "hotkey/key_combo.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace horalo {
namespace {

constexpr ModifierFlags kAll = ModifierFlags::shortcut;

TEST(ModifierFlagsTest, fourPassEitherWay) {
  struct {
    ModifierFlags flag;
    std::uint32_t raw;
    std::uint32_t carbonFlag;
    std::string glyph;
  } const rows[] = {
      {ModifierFlags::control, 0x40000, 0x1000, "\u2303"},
      {ModifierFlags::option, 0x80000, 0x800, "\u2325"},
      {ModifierFlags::shift, 0x20000, 0x200, "\u21E7"},
      {ModifierFlags::command, 0x100000, 0x100, "\u2318"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.flag.rawValue, row.raw);
    EXPECT_EQ(row.flag.carbonFlags(), row.carbonFlag);
    EXPECT_TRUE(ModifierFlags::fromCarbonFlags(row.carbonFlag) == row.flag);
    EXPECT_EQ(row.flag.description(), row.glyph);
  }
  EXPECT_EQ(kAll.carbonFlags(), 0x1B00U);
  EXPECT_EQ(ModifierFlags::fromCarbonFlags(0x1B00).rawValue, 0x1E0000U);
  EXPECT_EQ(kAll.description(), "\u2303\u2325\u21E7\u2318");
}

TEST(ModifierFlagsTest, everythingElseIsDropped) {
  EXPECT_EQ((ModifierFlags::capsLock | ModifierFlags::command).carbonFlags(), 0x100U);
  EXPECT_EQ(ModifierFlags{~0x1E0000U}.carbonFlags(), 0U);
  EXPECT_EQ(ModifierFlags{~0x1E0000U}.description(), "");
  EXPECT_EQ(ModifierFlags::fromCarbonFlags(~0x1B00U).rawValue, 0U);
  EXPECT_EQ(ModifierFlags{0xFFFFFFFF}.carbonFlags(), 0x1B00U);
}

TEST(KeyComboTest, twoNumbers) {
  EXPECT_EQ(KeyCombo(14).carbonModifiers, 0U);
  const KeyCombo combo(Key::e,
                       ModifierFlags::shift | ModifierFlags::command | ModifierFlags::capsLock);
  EXPECT_EQ(combo.carbonKeyCode, 14U);
  EXPECT_EQ(combo.carbonModifiers, 0x300U);
  EXPECT_TRUE(combo == KeyCombo(14, 0x300));
  EXPECT_FALSE(combo == KeyCombo(14, 0x100));
  EXPECT_FALSE(combo == KeyCombo(15, 0x300));
  EXPECT_TRUE(combo.isValid());
  EXPECT_TRUE(KeyCombo(52, 0xFFFFFFFF).isValid());
}

TEST(KeyComboTest, keyAndModifiersCanBeSet) {
  KeyCombo combo;
  combo.setKey(Key::f13);
  EXPECT_EQ(combo.carbonKeyCode, 105U);
  EXPECT_TRUE(combo.key() == Key(Key::f13));
  combo.setModifiers(kAll | ModifierFlags::capsLock);
  EXPECT_EQ(combo.carbonModifiers, 0x1B00U);
  EXPECT_TRUE(combo.modifiers() == kAll);
  combo.setKey(std::nullopt);
  EXPECT_EQ(combo.carbonKeyCode, 0U);
}

TEST(KeyComboTest, describesItself) {
  EXPECT_EQ(KeyCombo(14, 0x300).description(), "\u21E7\u2318E");
  EXPECT_EQ(KeyCombo(49, 0x1B00).description(), "\u2303\u2325\u21E7\u2318\u2423");
  EXPECT_EQ(KeyCombo(52, 0x300).description(), "\u21E7\u2318");
  EXPECT_FALSE(KeyCombo(52).key());
  EXPECT_EQ(KeyCombo(52).description(), "");
}

TEST(KeyComboTest, dictionaryAndBack) {
  const KeyCombo combo(0xFFFFFFFF, 0x1B00);
  const QVariantMap dictionary = combo.dictionary();
  EXPECT_EQ(dictionary.size(), 2);
  EXPECT_EQ(dictionary.value(QStringLiteral("keyCode")), QVariant(qint64{4294967295}));
  EXPECT_EQ(dictionary.value(QStringLiteral("modifiers")), QVariant(qint64{0x1B00}));
  EXPECT_EQ(dictionary.value(QStringLiteral("modifiers")).typeId(), QMetaType::LongLong);
  EXPECT_TRUE(KeyCombo::fromDictionary(dictionary) == combo);
}

TEST(KeyComboTest, dictionariesThatAreNone) {
  const QVariant wrong[] = {
      QVariant(),
      QVariant(-1),
      QVariant(qint64{4294967296}),
      QVariant(std::numeric_limits<qint64>::min()),
      QVariant(std::numeric_limits<quint64>::max()),
      QVariant(true),
      QVariant(14.0),
      QVariant(QStringLiteral("14")),
      QVariant(QByteArray("14")),
      QVariant(QVariantList{14}),
  };
  int refused = 0;
  for (const QVariant& value : wrong) {
    for (const auto& name : {QStringLiteral("keyCode"), QStringLiteral("modifiers")}) {
      QVariantMap dictionary = KeyCombo(14, 0x300).dictionary();
      dictionary[name] = value;
      EXPECT_FALSE(KeyCombo::fromDictionary(dictionary)) << name.toStdString() << ' ' << refused;
      dictionary.remove(name);
      EXPECT_FALSE(KeyCombo::fromDictionary(dictionary));
      ++refused;
    }
  }
  EXPECT_EQ(refused, 20);
  EXPECT_FALSE(KeyCombo::fromDictionary({}));
}

TEST(KeyComboTest, integersOfEveryWidthAreIntegers) {
  for (const QVariant& value :
       {QVariant(14), QVariant(14U), QVariant(qint64{14}), QVariant(quint64{14})}) {
    const auto combo = KeyCombo::fromDictionary({{QStringLiteral("keyCode"), value},
                                                 {QStringLiteral("modifiers"), value},
                                                 {QStringLiteral("other"), true}});
    ASSERT_TRUE(combo) << value.typeName();
    EXPECT_TRUE(*combo == KeyCombo(14, 14));
  }
}

TEST(KeyComboTest, standardKeyCombos) {
  std::string texts;
  const auto combos = KeyCombo::standardKeyCombos();
  for (const KeyCombo& combo : combos) texts += combo.description() + ' ';
  EXPECT_EQ(combos.size(), 46U);
  EXPECT_EQ(texts,
            "⌘, ⌘H ⌥⌘H ⌘Q ⌘N ⌘O ⌘W ⌘S ⇧⌘S ⌘R ⇧⌘P ⌘P ⌘Z ⇧⌘Z ⌘X ⌘C ⌘V ⌥⇧⌘V ⌘A ⌘F ⌥⌘F ⌘G ⇧⌘G ⌘E ⌘J "
            "⇧⌘; ⌘; ⌘T ⌘B ⌘I ⌘U ⇧⌘= ⌘- ⇧⌘C ⌥⌘C ⌥⌘V ⇧⌘[ ⇧⌘\\ ⇧⌘] ⌃⌘C ⌃⌘V ⌥⌘T ⌃⌘S ⌃⌘F ⌘M ⇧⌘/ ");
}

TEST(KeyComboTest, theDesktopTellsNoneOfItsOwn) {
  EXPECT_TRUE(KeyCombo::systemKeyCombos().empty());
}

}  // namespace
}  // namespace horalo

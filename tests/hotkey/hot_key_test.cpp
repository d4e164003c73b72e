#include "hotkey/hot_key.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "hotkey/hotkeys_controller.h"
#include "tests/fakes/fake_hotkey_backend.h"

namespace horalo {
namespace {

class HotKeyTest : public testing::Test {
 protected:
  std::vector<std::uint32_t> numbers() const {
    std::vector<std::uint32_t> result;
    for (const auto& [number, box] : controller_.hotKeys()) result.push_back(number);
    return result;
  }
  OSStatus handle(std::uint32_t number, std::uint32_t kind = kEventHotKeyPressed) const {
    const HotKeyEvent event{.number = number, .kind = kind};
    return controller_.handleEvent(&event);
  }
  HotKey::Action count() {
    return [this] { ++runs_; };
  }

  FakeHotKeyBackend backend_;
  HotKeysController controller_{backend_};
  int runs_ = 0;
  const KeyCombo combo_{14, 0x300};
};

using Numbers = std::vector<std::uint32_t>;

TEST_F(HotKeyTest, theSignatureIsQvHk) {
  EXPECT_EQ(eventHotKeySignature, 0x5176486BU);
}

TEST_F(HotKeyTest, isRegisteredFromItsMakingToItsEnd) {
  auto hotKey = HotKey::create(controller_, combo_);
  ASSERT_EQ(numbers(), Numbers{1});
  const HotKeyBox& box = controller_.hotKeys().at(1);
  EXPECT_EQ(box.identifier, hotKey->identifier());
  EXPECT_EQ(box.hotKey.lock(), hotKey);
  EXPECT_EQ(box.carbonHotKeyID, 1U);
  EXPECT_TRUE(box.isRegistered);
  EXPECT_FALSE(hotKey->isPaused());
  EXPECT_EQ(backend_.registered.at(1), combo_);

  auto second = hotKey;
  hotKey.reset();
  EXPECT_EQ(numbers(), Numbers{1}) << "somebody still holds it";
  second.reset();
  EXPECT_TRUE(numbers().empty());
  EXPECT_TRUE(backend_.registered.empty());
}

TEST_F(HotKeyTest, canBeMadeFromCodesAndFromAKey) {
  const auto byCodes = HotKey::create(controller_, 40, 0x1B00);
  const auto byKey = HotKey::create(controller_, Key(Key::k), ModifierFlags::shortcut);
  EXPECT_EQ(byCodes->keyCombo(), KeyCombo(40, 0x1B00));
  EXPECT_EQ(byKey->keyCombo(), byCodes->keyCombo());
  EXPECT_NE(byKey->identifier(), byCodes->identifier());
  EXPECT_FALSE(byKey->identifier().isNull());
}

TEST_F(HotKeyTest, numbersGrowAndAreNeverUsedAgain) {
  for (std::uint32_t number = 1; number <= 200; ++number) {
    auto hotKey = HotKey::create(controller_, combo_);
    EXPECT_EQ(numbers(), Numbers{number});
  }
  EXPECT_TRUE(numbers().empty());
  EXPECT_EQ(backend_.registerCalls, 200);
  EXPECT_EQ(backend_.unregisterCalls, 200);
}

TEST_F(HotKeyTest, aSecondRegistrationIsIgnored) {
  const auto hotKey = HotKey::create(controller_, combo_);
  controller_.registerHotKey(hotKey);
  EXPECT_EQ(numbers(), Numbers{1});
  EXPECT_EQ(backend_.registerCalls, 1);
}

TEST_F(HotKeyTest, aFailureIsSilentAndKeepsItsBox) {
  backend_.isFree = false;
  const auto hotKey = HotKey::create(controller_, combo_, count());
  ASSERT_EQ(numbers(), Numbers{1});
  EXPECT_FALSE(controller_.hotKeys().at(1).isRegistered);
  backend_.tell(1, HotKeyEventKind::pressed);
  EXPECT_EQ(runs_, 1) << "the backend got it later, under the same number";
}

TEST_F(HotKeyTest, pausingUnregistersAndGoingOnTakesANewNumber) {
  const auto hotKey = HotKey::create(controller_, combo_, count());
  hotKey->setPaused(true);
  EXPECT_TRUE(hotKey->isPaused());
  EXPECT_TRUE(numbers().empty());
  EXPECT_TRUE(backend_.registered.empty());
  hotKey->setPaused(true);
  EXPECT_EQ(backend_.unregisterCalls, 1);
  hotKey->setPaused(false);
  EXPECT_EQ(numbers(), Numbers{2});
  hotKey->setPaused(false);
  EXPECT_EQ(numbers(), Numbers{2});
  EXPECT_EQ(handle(1), eventNotHandledErr);
  EXPECT_EQ(handle(2), noErr);
}

TEST_F(HotKeyTest, releasingAPausedOneUnregistersNothing) {
  auto hotKey = HotKey::create(controller_, combo_);
  hotKey->setPaused(true);
  hotKey.reset();
  EXPECT_EQ(backend_.unregisterCalls, 1);
}

TEST_F(HotKeyTest, runsTheHandlerOfTheKind) {
  int downs = 0;
  int ups = 0;
  const auto hotKey = HotKey::create(
      controller_, combo_, [&] { ++downs; }, [&] { ++ups; });
  EXPECT_EQ(handle(1), noErr);
  EXPECT_EQ(downs, 1);
  EXPECT_EQ(ups, 0);
  EXPECT_EQ(handle(1, kEventHotKeyReleased), noErr);
  EXPECT_EQ(downs, 1);
  EXPECT_EQ(ups, 1);
}

TEST_F(HotKeyTest, whatIsNotHandled) {
  EXPECT_EQ(controller_.handleEvent(nullptr), -9874);
  const auto hotKey = HotKey::create(controller_, combo_, count());

  for (const OSStatus status : {-9870, -9874, -1, 1}) {
    const HotKeyEvent unreadable{.readStatus = status, .number = 1};
    EXPECT_EQ(controller_.handleEvent(&unreadable), status);
  }
  for (const std::uint32_t signature : {0U, 0x6B487651U, eventHotKeySignature + 1}) {
    const HotKeyEvent foreign{.signature = signature, .number = 1};
    EXPECT_EQ(controller_.handleEvent(&foreign), -9874);
  }
  for (const std::uint32_t number : {0U, 2U, 0xFFFFFFFFU}) EXPECT_EQ(handle(number), -9874);
  for (const std::uint32_t kind : {0U, 1U, 4U, 7U, 0xFFFFFFFFU}) EXPECT_EQ(handle(1, kind), -9874);
  EXPECT_EQ(handle(1, kEventHotKeyReleased), -9874) << "it has no handler for that";
  EXPECT_EQ(runs_, 0);
  EXPECT_EQ(handle(1), 0);
  EXPECT_EQ(runs_, 1);
}

TEST_F(HotKeyTest, aPausedOneThatIsInTheTableIsNotHandled) {
  const auto hotKey = HotKey::create(controller_, combo_, count(), count());
  hotKey->setPaused(true);
  controller_.registerHotKey(hotKey);
  ASSERT_EQ(numbers(), Numbers{2});
  EXPECT_EQ(handle(2), -9874);
  EXPECT_EQ(handle(2, kEventHotKeyReleased), -9874);
  EXPECT_EQ(runs_, 0);
}

TEST_F(HotKeyTest, theBackendsEventsArrive) {
  int ups = 0;
  const auto hotKey = HotKey::create(controller_, combo_, count(), [&] { ++ups; });
  backend_.tell(1, HotKeyEventKind::pressed);
  backend_.tell(1, HotKeyEventKind::released);
  backend_.tell(2, HotKeyEventKind::pressed);
  EXPECT_EQ(runs_, 1);
  EXPECT_EQ(ups, 1);
}

TEST_F(HotKeyTest, aHandlerMayReplaceItsHotKey) {
  std::shared_ptr<HotKey> hotKey;
  std::size_t liveTogether = 0;
  hotKey = HotKey::create(controller_, combo_, [&] {
    hotKey.reset();
    liveTogether = backend_.registered.size();
    hotKey = HotKey::create(controller_, combo_);
  });
  EXPECT_EQ(handle(1), noErr);
  EXPECT_EQ(liveTogether, 0U);
  EXPECT_EQ(numbers(), Numbers{2});
}

TEST_F(HotKeyTest, aHandlerMayBeReplaced) {
  const auto hotKey = HotKey::create(controller_, combo_, [] { FAIL(); });
  hotKey->keyDownHandler = count();
  EXPECT_EQ(handle(1), noErr);
  hotKey->keyDownHandler = nullptr;
  EXPECT_EQ(handle(1), eventNotHandledErr);
  EXPECT_EQ(runs_, 1);
}

TEST_F(HotKeyTest, afterTheRegistryNothingIsHeard) {
  {
    HotKeysController shortLived(backend_);
    const auto hotKey = HotKey::create(shortLived, combo_, count());
  }
  backend_.tell(1, HotKeyEventKind::pressed);
  EXPECT_EQ(runs_, 0);
}

TEST(HotKeyNumbersDeathTest, overflowStopsTheProgram) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  FakeHotKeyBackend backend;
  HotKeysController controller(backend, 0xFFFFFFFE);
  const auto last = HotKey::create(controller, KeyCombo(14));
  EXPECT_EQ(controller.hotKeys().begin()->first, 0xFFFFFFFFU);
  EXPECT_DEATH(HotKey::create(controller, KeyCombo(15)), "used up");
}

}  // namespace
}  // namespace horalo

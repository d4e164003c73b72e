#include "hotkey/shortcut_recorder.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace horalo {
namespace {

constexpr std::uint32_t kShift = 0x20000;
constexpr std::uint32_t kControl = 0x40000;
constexpr std::uint32_t kOption = 0x80000;
constexpr std::uint32_t kCommand = 0x100000;

// Writes down what the recorder asks for and tells, in order.
class RecorderTest : public testing::Test, public ShortcutRecorderSurface {
 protected:
  RecorderTest() {
    recorder_.onConfigurationChange = [this](const HotkeyConfiguration& configuration) {
      EXPECT_TRUE(recorder_.isRecording());
      EXPECT_EQ(recorder_.configuration(), configuration);
      log_ += "change " + std::to_string(configuration.keyCode) + ' ' +
              std::to_string(configuration.modifiers) + "; ";
    };
    recorder_.onRecordingChange = [this](bool isRecording) {
      EXPECT_EQ(recorder_.isRecording(), isRecording);
      log_ += isRecording ? "started; " : "ended; ";
    };
  }

  void redraw() override { ++redraws_; }
  void beep() override { log_ += "beep; "; }
  void takeKeyboard() override { log_ += "take; "; }
  void releaseKeyboard() override { log_ += "release; "; }

  void start() {
    recorder_.click();
    log_.clear();
    redraws_ = 0;
  }
  bool press(std::uint32_t keyCode, std::uint32_t modifiers) {
    return recorder_.keyDown(keyCode, ModifierFlags{modifiers});
  }

  ShortcutRecorder recorder_{*this, HotkeyConfiguration{}};
  std::string log_;
  int redraws_ = 0;
};

TEST_F(RecorderTest, idleShowsTheShortcut) {
  EXPECT_FALSE(recorder_.isRecording());
  EXPECT_FALSE(recorder_.isHovered());
  EXPECT_EQ(recorder_.text(), "\u21E7\u2318E");
  EXPECT_FALSE(press(40, kCommand)) << "not its business while idle";
  EXPECT_FALSE(press(53, 0));
  recorder_.flagsChanged();
  recorder_.endRecording();
  EXPECT_EQ(log_, "");
  EXPECT_EQ(redraws_, 0);
  EXPECT_EQ(recorder_.configuration(), HotkeyConfiguration{});
}

TEST_F(RecorderTest, aClickStartsAndAClickEnds) {
  recorder_.click();
  EXPECT_EQ(log_, "started; take; ");
  EXPECT_TRUE(recorder_.isRecording());
  EXPECT_EQ(recorder_.text(), "Type shortcut...");
  EXPECT_GE(redraws_, 1);
  recorder_.click();
  EXPECT_EQ(log_, "started; take; ended; release; ");
  EXPECT_FALSE(recorder_.isRecording());
  EXPECT_EQ(recorder_.text(), "\u21E7\u2318E");
  EXPECT_EQ(recorder_.configuration(), HotkeyConfiguration{});
}

TEST_F(RecorderTest, rowsOfKeys) {
  struct {
    const char* what;
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    const char* log;
  } const rows[] = {
      {"Escape", 53, 0, "ended; release; "},
      {"Escape with modifiers", 53, kCommand | kShift, "ended; release; "},
      {"a letter", 0, 0, "beep; "},
      {"Shift and a letter", 0, kShift, "beep; "},
      {"Caps Lock and a letter", 0, 0x10000, "beep; "},
      {"a function key", 122, 0x800000, "beep; "},
      {"Shift alone, told as a key", 56, kShift, "beep; "},
      {"right Command alone", 54, kCommand, ""},
      {"left Command alone", 55, kCommand, ""},
      {"left Shift after Command", 56, kCommand | kShift, ""},
      {"left Option alone", 58, kOption, ""},
      {"left Control alone", 59, kControl, ""},
      {"right Shift after Option", 60, kOption | kShift, ""},
      {"right Option alone", 61, kOption, ""},
      {"right Control alone", 62, kControl, ""},
      {"Command and Caps Lock's key", 57, kCommand, "change 57 1048576; ended; release; "},
      {"Command and fn's key", 63, kCommand, "change 63 1048576; ended; release; "},
      {"Command-E", 14, kCommand, "change 14 1048576; ended; release; "},
      {"Control-A", 0, kControl, "change 0 262144; ended; release; "},
      {"Option-Space", 49, kOption, "change 49 524288; ended; release; "},
      {"Command-F13", 105, kCommand, "change 105 1048576; ended; release; "},
      {"all four and K", 40, 0x1E0000, "change 40 1966080; ended; release; "},
      {"all flags and K", 40, 0xFFFFFFFF, "change 40 1966080; ended; release; "},
      {"Command and a code without a key", 52, kCommand, "change 52 1048576; ended; release; "},
      {"Command-Return", 36, kCommand, "change 36 1048576; ended; release; "},
      {"Control-Tab", 48, kControl, "change 48 262144; ended; release; "},
  };
  int count = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    recorder_.setConfiguration({});
    start();
    EXPECT_TRUE(press(row.keyCode, row.modifiers));
    EXPECT_EQ(log_, row.log);
    const bool ends = log_.find("ended") != std::string::npos;
    const bool changes = log_.find("change") != std::string::npos;
    EXPECT_EQ(recorder_.isRecording(), !ends);
    EXPECT_EQ(redraws_ > 0, ends);
    if (changes) {
      EXPECT_EQ(recorder_.configuration().keyCode, row.keyCode);
    } else {
      EXPECT_EQ(recorder_.configuration(), HotkeyConfiguration{});
    }
    recorder_.endRecording();
    ++count;
  }
  EXPECT_EQ(count, 26);
}

TEST_F(RecorderTest, beepsUntilACombinationComes) {
  start();
  press(0, kShift);
  press(0, 0);
  press(55, kCommand);
  press(40, kCommand | kControl);
  press(41, kCommand);
  EXPECT_EQ(log_, "beep; beep; change 40 1310720; ended; release; ");
  EXPECT_EQ(recorder_.text(), "\u2303\u2318K");
}

TEST_F(RecorderTest, losingTheKeyboardEndsItOnce) {
  start();
  recorder_.endRecording();
  recorder_.endRecording();
  EXPECT_EQ(log_, "ended; release; ");
  EXPECT_EQ(recorder_.configuration(), HotkeyConfiguration{});
}

TEST_F(RecorderTest, aModifierRedrawsWhileRecording) {
  start();
  recorder_.flagsChanged();
  EXPECT_EQ(redraws_, 1);
  EXPECT_EQ(log_, "");
}

TEST_F(RecorderTest, hoveringIsTracked) {
  recorder_.setHovered(true);
  EXPECT_TRUE(recorder_.isHovered());
  recorder_.setHovered(false);
  EXPECT_FALSE(recorder_.isHovered());
  EXPECT_EQ(redraws_, 2);
}

TEST_F(RecorderTest, worksWithNobodyListening) {
  recorder_.onConfigurationChange = nullptr;
  recorder_.onRecordingChange = nullptr;
  recorder_.click();
  press(40, kCommand);
  EXPECT_FALSE(recorder_.isRecording());
  EXPECT_EQ(recorder_.text(), "\u2318K");
}

TEST_F(RecorderTest, aListenerMayEndTheRecording) {
  int ends = 0;
  recorder_.onRecordingChange = [&](bool isRecording) {
    if (isRecording) {
      recorder_.endRecording();
    } else {
      ++ends;
    }
  };
  recorder_.click();
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(log_, "release; ") << "it must not take the keyboard after its end";
}

}  // namespace
}  // namespace horalo

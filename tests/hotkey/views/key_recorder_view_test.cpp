#include "hotkey/views/key_recorder_view.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <string>

#include "platform/key_codes.h"
#include "ui/colors.h"

namespace horalo {
namespace {

// X key codes of some positions.
constexpr quint32 kEscape = 9;
constexpr quint32 kTab = 23;
constexpr quint32 kReturn = 36;
constexpr quint32 kLeftControl = 37;
constexpr quint32 kA = 38;
constexpr quint32 kK = 45;
constexpr quint32 kCapsLock = 66;
constexpr quint32 kMenu = 135;
constexpr quint32 kF13 = 191;

constexpr Qt::KeyboardModifiers kAll =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

// The recorder in a window, with a neighbour that the keyboard can go to.
class KeyRecorderViewTest : public testing::Test {
 protected:
  KeyRecorderViewTest() {
    auto* const layout = new QVBoxLayout(&window_);
    neighbour_ = new QPushButton(QStringLiteral("Neighbour"));
    neighbour_->setFocusPolicy(Qt::StrongFocus);
    view_ = new KeyRecorderView(HotkeyConfiguration{}, [](std::uint32_t scanCode) {
      return virtualKeyCode(scanCode - kXKeyCodeOffset);
    });
    layout->addWidget(neighbour_);
    layout->addWidget(view_);
    view_->onConfigurationChange = [this](const HotkeyConfiguration& configuration) {
      log_ += "change " + configuration.displayString() + "; ";
      recorded_ = configuration;
    };
    view_->onRecordingChange = [this](bool isRecording) {
      log_ += isRecording ? "started; " : "ended; ";
      isRecording_ = isRecording;
    };
    window_.show();
    QApplication::setActiveWindow(&window_);
    neighbour_->setFocus();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  void send(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, quint32 scanCode,
            bool autoRepeat = false) {
    QWidget* const target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr);
    QKeyEvent event(type, key, modifiers, scanCode, 0, 0, {}, autoRepeat);
    QApplication::sendEvent(target, &event);
  }
  void press(int key, Qt::KeyboardModifiers modifiers, quint32 scanCode) {
    send(QEvent::KeyPress, key, modifiers, scanCode);
  }
  void click(Qt::MouseButton button = Qt::LeftButton) { QTest::mouseClick(view_, button); }
  bool isRecording() const { return isRecording_; }
  QString description() {
    return QAccessible::queryAccessibleInterface(view_)->text(QAccessible::Description);
  }

  std::string log_;
  bool isRecording_ = false;
  HotkeyConfiguration recorded_;
  QWidget window_;  // its end, too, is written down
  QPushButton* neighbour_ = nullptr;
  QPointer<KeyRecorderView> view_;
};

TEST_F(KeyRecorderViewTest, isAButtonThatTellsItsText) {
  const QAccessibleInterface* const node = QAccessible::queryAccessibleInterface(view_);
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->role(), QAccessible::Button);
  EXPECT_EQ(node->text(QAccessible::Name), QStringLiteral("Keyboard shortcut"));
  EXPECT_EQ(description(), QStringLiteral("\u21E7\u2318E"));
  EXPECT_TRUE(node->state().focusable);
  EXPECT_EQ(view_->sizeHint(), QSize(120, 24));
  click();
  EXPECT_EQ(description(), QStringLiteral("Type shortcut..."));
}

TEST_F(KeyRecorderViewTest, aScreenReaderCanPressIt) {
  QAccessibleInterface* const node = QAccessible::queryAccessibleInterface(view_);
  auto* const actions = node->actionInterface();
  ASSERT_NE(actions, nullptr);
  ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(isRecording());
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(log_, "started; ended; ");
}

TEST_F(KeyRecorderViewTest, aClickTogglesOnThePress) {
  QTest::mousePress(view_, Qt::LeftButton);
  EXPECT_TRUE(isRecording());
  EXPECT_TRUE(view_->hasFocus());
  QTest::mouseRelease(view_, Qt::LeftButton);
  EXPECT_TRUE(isRecording());
  click();
  EXPECT_FALSE(isRecording());
  EXPECT_FALSE(view_->hasFocus());
  EXPECT_EQ(log_, "started; ended; ");
  click(Qt::RightButton);
  EXPECT_EQ(log_, "started; ended; ");
}

TEST_F(KeyRecorderViewTest, recordsACombination) {
  click();
  press(Qt::Key_Control, Qt::NoModifier, kLeftControl);
  send(QEvent::KeyRelease, Qt::Key_Control, Qt::ControlModifier, kLeftControl);
  press(Qt::Key_K, kAll | Qt::KeypadModifier | Qt::GroupSwitchModifier, kK);
  EXPECT_EQ(log_, "started; change \u2303\u2325\u21E7\u2318K; ended; ");
  EXPECT_EQ(recorded_, (HotkeyConfiguration{40, 0x1E0000}));
  EXPECT_EQ(description(), QStringLiteral("\u2303\u2325\u21E7\u2318K"));
  EXPECT_FALSE(view_->hasFocus());
}

TEST_F(KeyRecorderViewTest, goesByThePositionNotByTheLetter) {
  click();
  press(Qt::Key_Period, Qt::MetaModifier, 26);
  EXPECT_EQ(recorded_.keyCode, 14U) << "where a US keyboard has its E";
}

TEST_F(KeyRecorderViewTest, modifiersAloneAreWaitedOut) {
  click();
  for (const quint32 scanCode : {50U, 62U, 37U, 105U, 64U, 108U, 133U, 134U, kCapsLock}) {
    press(Qt::Key_Shift, kAll, scanCode);
    press(Qt::Key_Shift, Qt::NoModifier, scanCode);
  }
  EXPECT_EQ(log_, "started; ");
  EXPECT_TRUE(isRecording());
}

TEST_F(KeyRecorderViewTest, keysWithoutACodeAndRepeatsAreIgnored) {
  click();
  press(Qt::Key_Menu, Qt::ControlModifier, kMenu);
  press(Qt::Key_K, Qt::ControlModifier, 0);
  send(QEvent::KeyPress, Qt::Key_K, Qt::ControlModifier, kK, true);
  EXPECT_TRUE(isRecording());
  press(Qt::Key_A, Qt::ShiftModifier, kA);
  EXPECT_TRUE(isRecording()) << "Shift alone is not enough";
  EXPECT_EQ(log_, "started; ");
}

TEST_F(KeyRecorderViewTest, escapeLeavesEverythingAsItWas) {
  click();
  press(Qt::Key_Escape, Qt::NoModifier, kEscape);
  EXPECT_EQ(log_, "started; ended; ");
  EXPECT_EQ(description(), QStringLiteral("\u21E7\u2318E"));
  EXPECT_TRUE(window_.isVisible());
}

TEST_F(KeyRecorderViewTest, aKeyWithoutANameShowsTheGlyphsAlone) {
  click();
  press(Qt::Key_F13, Qt::MetaModifier, kF13);
  EXPECT_EQ(log_, "started; change \u2318; ended; ");
  EXPECT_EQ(recorded_.keyCode, 105U);
}

TEST_F(KeyRecorderViewTest, locksOfThePCKeyboardAreKeys) {
  click();
  press(Qt::Key_NumLock, Qt::ControlModifier, 77);
  click();
  press(Qt::Key_ScrollLock, Qt::ControlModifier, 78);
  EXPECT_EQ(recorded_.keyCode, 107U) << "F14";
  EXPECT_EQ(log_, "started; change \u2303; ended; started; change \u2303; ended; ");
}

TEST_F(KeyRecorderViewTest, aLetterThatIsAModifierInThisMapIsWaitedOut) {
  click();
  press(Qt::Key_Control, Qt::ControlModifier, kA);
  EXPECT_EQ(log_, "started; ");
}

TEST_F(KeyRecorderViewTest, tabAndShortcutsAreRecordedLikeAnyKey) {
  int triggered = 0;
  QAction action;
  action.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_K));
  window_.addAction(&action);
  QObject::connect(&action, &QAction::triggered, [&] { ++triggered; });
  click();
  QKeyEvent wish(QEvent::ShortcutOverride, Qt::Key_K, Qt::ControlModifier, kK, 0, 0);
  wish.ignore();
  QApplication::sendEvent(view_, &wish);
  EXPECT_TRUE(wish.isAccepted());
  press(Qt::Key_K, Qt::ControlModifier, kK);
  click();
  press(Qt::Key_Tab, Qt::ControlModifier, kTab);
  EXPECT_EQ(log_, "started; change \u2303K; ended; started; change \u2303\u21E5; ended; ");
  EXPECT_EQ(triggered, 0);

  wish.ignore();
  QApplication::sendEvent(view_, &wish);
  EXPECT_FALSE(wish.isAccepted()) << "while idle shortcuts are the window's";
}

TEST_F(KeyRecorderViewTest, losingTheKeyboardEndsIt) {
  click();
  neighbour_->setFocus();
  EXPECT_EQ(log_, "started; ended; ");
  EXPECT_TRUE(neighbour_->hasFocus());
  EXPECT_EQ(description(), QStringLiteral("\u21E7\u2318E"));
}

TEST_F(KeyRecorderViewTest, closingTheWindowEndsIt) {
  click();
  window_.close();
  EXPECT_EQ(log_, "started; ended; ");
  window_.show();
  EXPECT_FALSE(isRecording());
}

TEST_F(KeyRecorderViewTest, itsEndEndsIt) {
  click();
  delete view_.data();
  EXPECT_EQ(log_, "started; ended; ");
}

TEST_F(KeyRecorderViewTest, worksWithTheKeyboardAlone) {
  QTest::keyClick(neighbour_, Qt::Key_Tab);
  ASSERT_TRUE(view_->hasFocus());
  QTest::keyClick(view_, Qt::Key_Space);
  EXPECT_TRUE(isRecording());
  press(Qt::Key_K, Qt::ControlModifier, kK);
  EXPECT_TRUE(view_->hasFocus()) << "Tab goes on from here";
  press(Qt::Key_Return, Qt::NoModifier, kReturn);
  EXPECT_TRUE(isRecording());
  send(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, kReturn, true);
  send(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, kReturn);
  press(Qt::Key_Escape, Qt::NoModifier, kEscape);
  EXPECT_EQ(log_, "started; change \u2303K; ended; started; ended; ");
  QTest::keyClick(view_, Qt::Key_Tab);
  EXPECT_FALSE(view_->hasFocus());
}

TEST_F(KeyRecorderViewTest, idleKeysAreTheWindows) {
  view_->setFocus();
  QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, kEscape, 0, 0);
  QApplication::sendEvent(view_, &event);
  EXPECT_FALSE(event.isAccepted());
  EXPECT_EQ(log_, "");
}

TEST_F(KeyRecorderViewTest, showsAnotherShortcutWithoutTellingAnybody) {
  view_->setConfiguration({49, 0x1E0000});
  EXPECT_EQ(description(), QStringLiteral("\u2303\u2325\u21E7\u2318Space"));
  EXPECT_EQ(log_, "");
}

TEST_F(KeyRecorderViewTest, isDrawnInTheColoursOfItsState) {
  const auto colorAt = [this](QPoint point) {
    QImage image(view_->size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    view_->render(&image, {}, {}, QWidget::DrawChildren);
    return image.pixelColor(point);
  };
  const QPoint inside(8, 12);
  const QPoint corner(0, 0);
  const QPoint edge(60, 0);
  EXPECT_EQ(colorAt(inside), color(ColorRole::controlBackground));
  EXPECT_EQ(colorAt(corner).alpha(), 0);
  const QColor idleEdge = colorAt(edge);
  click();
  QColor fill = color(ColorRole::accent);
  fill.setAlphaF(0.15F);
  EXPECT_NEAR(colorAt(inside).alphaF(), 0.15, 0.01);
  EXPECT_NEAR(colorAt(inside).hueF(), fill.hueF(), 0.05);
  EXPECT_NE(colorAt(edge), idleEdge);
}

}  // namespace
}  // namespace horalo

#include "app/views/converter_input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <set>

#include "tests/fakes/fake_pasteboard.h"
#include "tests/fakes/manual_timers.h"
#include "ui/colors.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;

struct Field {
  Field() {
    input.resize(400, 54);
    input.show();
    input.activateWindow();
    input.setFocus();
    EXPECT_TRUE(QTest::qWaitFor([this] { return input.hasFocus(); }));
  }

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&input, key, modifiers);
  }
  void openMenu() {
    QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 20}, input.mapToGlobal(QPoint(50, 20)));
    QCoreApplication::sendEvent(&input, &event);
  }

  FakePasteboard pasteboard;
  ManualTimers timers;
  std::vector<std::string> copies;
  ConverterInput input{{.pasteboard = pasteboard,
                        .timers = timers,
                        .copy = [this](const std::string& text) { copies.push_back(text); }}};
};

TEST(ConverterInput, EveryPasteIsFetchedBesideTheEventLoop) {
  struct Case {
    const char* what;
    std::function<void(Field&)> paste;
    bool mouseSelection;
  };
  const std::vector<Case> cases = {
      {"Ctrl+V", [](Field& field) { field.press(Qt::Key_V, Qt::ControlModifier); }, false},
      {"Command-V", [](Field& field) { field.press(Qt::Key_V, Qt::MetaModifier); }, false},
      {"Shift+Insert", [](Field& field) { field.press(Qt::Key_Insert, Qt::ShiftModifier); }, false},
      {"Ctrl+Shift+Insert",
       [](Field& field) { field.press(Qt::Key_Insert, Qt::ControlModifier | Qt::ShiftModifier); },
       true},
      {"middle button",
       [](Field& field) {
         QTest::mouseClick(&field.input, Qt::MiddleButton, {}, {390, 27});
       },
       true},
      {"menu",
       [](Field& field) {
         field.openMenu();
         QMenu* menu = field.input.findChild<QMenu*>();
         ASSERT_NE(menu, nullptr);
         for (QAction* action : menu->actions()) {
           if (action->text().contains(QStringLiteral("Paste"))) action->trigger();
         }
         menu->close();
       },
       false},
  };
  int run = 0;
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    Field field;
    field.input.setText(QStringLiteral("1"));
    field.pasteboard.copy("704067200\nsecond line");
    test.paste(field);
    EXPECT_THAT(field.input.text(), Eq(QStringLiteral("1")));  // nothing was waited for
    ASSERT_THAT(field.pasteboard.readLimits().size(), Eq(1U));
    const Pasteboard::ReadLimits limits = field.pasteboard.readLimits().front();
    EXPECT_THAT(limits.seconds, Eq(1.0));
    EXPECT_THAT(limits.bytes, Eq(std::size_t{1} << 20));
    EXPECT_TRUE(limits.firstLineOnly);
    EXPECT_THAT(limits.mouseSelection, Eq(test.mouseSelection));
    EXPECT_THAT(field.pasteboard.answerReads(), Eq(1U));
    EXPECT_THAT(field.input.text(), Eq(QStringLiteral("1704067200")));
    ++run;
  }
  EXPECT_THAT(run, Eq(6));
}

TEST(ConverterInput, TheFirstLineCounts) {
  struct Case {
    std::optional<std::string> copied;
    QString shown;
  };
  const std::vector<Case> cases = {
      {"now", QStringLiteral("now")},
      {"\r\n\n1704067200\r\nmore", QStringLiteral("1704067200")},
      {"a\xE2\x80\xA9"
       "b",
       QStringLiteral("a")},  // a paragraph separator
      {"  two words ", QStringLiteral("  two words ")},
      {"\n\n", QString()},
      {"", QString()},
      {std::nullopt, QString()},
  };
  int run = 0;
  for (const Case& test : cases) {
    Field field;
    field.pasteboard.copy(test.copied);
    field.press(Qt::Key_V, Qt::ControlModifier);
    field.pasteboard.answerReads();
    EXPECT_THAT(field.input.text(), Eq(test.shown));
    ++run;
  }
  EXPECT_THAT(run, Eq(7));
}

TEST(ConverterInput, APasteReplacesTheSelectionAndCanBeUndone) {
  Field field;
  field.press(Qt::Key_A);
  field.press(Qt::Key_A, Qt::ControlModifier);
  field.pasteboard.copy("now");
  field.press(Qt::Key_V, Qt::ControlModifier);
  field.pasteboard.answerReads();
  EXPECT_THAT(field.input.text(), Eq(QStringLiteral("now")));
  field.press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_THAT(field.input.text(), Eq(QStringLiteral("a")));
}

TEST(ConverterInput, ALongLineIsPastedWhole) {
  Field field;
  const std::string digits(1 << 16, '7');
  field.pasteboard.copy(digits);
  field.press(Qt::Key_V, Qt::ControlModifier);
  field.pasteboard.answerReads();
  EXPECT_THAT(field.input.text().toStdString(), Eq(digits));
}

TEST(ConverterInput, AnEndlessLineSaysThatItGoesOn) {
  const auto pasted = [](const std::string& before, const std::string& text) {
    Field field;
    field.input.setText(QString::fromStdString(before));
    field.pasteboard.copy(text);
    field.press(Qt::Key_V, Qt::ControlModifier);
    field.pasteboard.answerReads();
    return field.input.text();
  };
  constexpr int longest = 1 << 16;
  const QString cut = pasted("12", std::string((1 << 20) - 1, '7'));
  EXPECT_THAT(cut.size(), Eq(longest));
  EXPECT_TRUE(cut.startsWith(QStringLiteral("1277")));
  EXPECT_TRUE(cut.endsWith(QStringLiteral("7\u2026")));
  EXPECT_THAT(pasted("", "now" + std::string(longest, ' ')), Eq(QStringLiteral("now")));
  EXPECT_THAT(pasted(std::string(longest, '1'), "now").size(), Eq(longest));
}

TEST(ConverterInput, APasteIsGivenUpWhenThePanelCloses) {
  Field field;
  field.pasteboard.copy("now");
  field.press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_THAT(field.pasteboard.readsUnderWay(), Eq(1U));
  field.input.hide();
  EXPECT_THAT(field.pasteboard.readsUnderWay(), Eq(0U));
  field.pasteboard.answerReads();
  EXPECT_THAT(field.input.text(), Eq(QString()));
}

TEST(ConverterInput, CopiesAndCutsAreOurOwn) {
  struct Case {
    const char* what;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    QString left;
  };
  const QString all = QStringLiteral("now");
  const std::vector<Case> cases = {
      {"Ctrl+C", Qt::Key_C, Qt::ControlModifier, all},
      {"Command-C", Qt::Key_C, Qt::MetaModifier, all},
      {"Ctrl+Insert", Qt::Key_Insert, Qt::ControlModifier, all},
      {"Ctrl+X", Qt::Key_X, Qt::ControlModifier, {}},
      {"Command-X", Qt::Key_X, Qt::MetaModifier, {}},
      {"Shift+Delete", Qt::Key_Delete, Qt::ShiftModifier, {}},
  };
  int run = 0;
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    Field field;
    field.input.setText(all);
    field.input.selectAll();
    field.press(test.key, test.modifiers);
    EXPECT_THAT(field.copies, ElementsAre("now"));
    EXPECT_THAT(field.input.text(), Eq(test.left));
    ++run;
  }
  EXPECT_THAT(run, Eq(6));
}

TEST(ConverterInput, NothingSelectedMeansNothingCopied) {
  Field field;
  field.input.setText(QStringLiteral("now"));
  field.press(Qt::Key_C, Qt::ControlModifier);
  field.press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_THAT(field.copies, IsEmpty());
  EXPECT_THAT(field.input.text(), Eq(QStringLiteral("now")));
}

TEST(ConverterInput, CommandWithALetterTypesNothing) {
  Field field;
  QTest::keyClick(&field.input, Qt::Key_K, Qt::MetaModifier);
  EXPECT_THAT(field.input.text(), Eq(QString()));
  field.press(Qt::Key_N);
  field.press(Qt::Key_A, Qt::MetaModifier);
  EXPECT_THAT(field.input.selectedText(), Eq(QStringLiteral("n")));
}

TEST(ConverterInput, ItsMenuOffersWhatThereIsToDo) {
  Field field;
  field.input.setText(QStringLiteral("now"));
  field.openMenu();
  QMenu* menu = field.input.findChild<QMenu*>();
  ASSERT_NE(menu, nullptr);
  QStringList enabled;
  for (const QAction* action : menu->actions()) {
    if (action->isEnabled() && !action->isSeparator()) {
      enabled << action->text().section(u'\t', 0, 0).remove(u'&');
    }
  }
  EXPECT_THAT(enabled, Eq(QStringList{QStringLiteral("Paste"), QStringLiteral("Select All")}));
  menu->close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return field.input.findChild<QMenu*>() == nullptr; }));
}

TEST(ConverterInput, ItsCaretHasTheAccentColour) {
  Field field;
  field.input.setText(QStringLiteral("17"));
  const QImage image = field.input.grab().toImage();
  const QColor accent = color(ColorRole::accent);
  QRect caret;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) == accent) caret |= QRect(x, y, 1, 1);
    }
  }
  EXPECT_THAT(caret.width(), Eq(2));
  EXPECT_THAT(caret.height(), testing::Gt(18));
  const int textEnd = ConverterInput::kTextInset +
                      field.input.fontMetrics().horizontalAdvance(QStringLiteral("17"));
  EXPECT_THAT(caret.left(), testing::AllOf(testing::Ge(textEnd - 1), testing::Le(textEnd + 1)));
}

TEST(ConverterInput, ItsCaretStandsClearOfTheFirstLetter) {
  for (const char* text : {"", "17"}) {
    Field field;
    field.input.setText(QString::fromLatin1(text));
    field.input.home(false);
    const QImage image = field.input.grab().toImage();
    const int middle = static_cast<int>(field.input.textCentre());
    const QColor accent = color(ColorRole::accent);
    EXPECT_THAT(image.pixelColor(0, middle), Eq(accent));
    EXPECT_THAT(image.pixelColor(ConverterInput::kTextInset - 1, middle), Eq(accent));
    EXPECT_THAT(image.pixelColor(ConverterInput::kTextInset, middle), testing::Ne(accent));
  }
}

// The library would draw a line of its own in the colour of the text.
TEST(ConverterInput, ItHasOneCaretAtEveryScale) {
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    Field field;
    field.input.setText(QStringLiteral(" "));
    QImage image(field.input.size() * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    field.input.render(&image, {}, {}, QWidget::DrawChildren);
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) colours.insert(image.pixel(x, y));
    }
    EXPECT_THAT(colours, testing::UnorderedElementsAre(QColor(Qt::white).rgba(),
                                                       color(ColorRole::accent).rgba()))
        << scale;
  }
}

TEST(ConverterInput, ItTellsWhereItsTextStands) {
  Field field;
  field.input.setText(QStringLiteral("HHHH"));
  field.input.clearFocus();
  const QImage image = field.input.grab().toImage();
  int top = -1;
  int bottom = -1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < 60; ++x) {
      if (qGray(image.pixel(x, y)) > 128 || qAlpha(image.pixel(x, y)) < 128) continue;
      if (top < 0) top = y;
      bottom = y + 1;
    }
  }
  ASSERT_THAT(top, testing::Gt(0));
  EXPECT_THAT((top + bottom) / 2.0, testing::DoubleNear(field.input.textCentre(), 1));
}

TEST(ConverterInput, OnlyItsOwnCaretWakesTheProgram) {
  Field field;
  EXPECT_EQ(field.timers.pendingCount(), 1U);
  int looked = 0;
  for (QObject* part : field.input.findChildren<QObject*>()) {
    EXPECT_THAT(QAbstractEventDispatcher::instance()->registeredTimers(part), IsEmpty());
    ++looked;
  }
  EXPECT_THAT(looked, testing::Ge(1));
}

TEST(ConverterInput, NoCaretBlinksUnderASelectionOrElsewhere) {
  Field field;
  field.input.setText(QStringLiteral("1704067200"));
  field.input.selectAll();
  EXPECT_EQ(field.timers.pendingCount(), 0U);
  field.press(Qt::Key_End);
  EXPECT_EQ(field.timers.pendingCount(), 1U);
  field.input.clearFocus();
  EXPECT_EQ(field.timers.pendingCount(), 0U);
}

TEST(ConverterInput, ForgetsItsEditsOnceItIsClosed) {
  Field field;
  QTest::keyClicks(&field.input, QStringLiteral("1704067200"));
  field.press(Qt::Key_Left, Qt::ShiftModifier);
  ASSERT_TRUE(field.input.isUndoAvailable());
  field.input.hide();
  EXPECT_FALSE(field.input.isUndoAvailable());
  EXPECT_THAT(field.input.text(), Eq(QStringLiteral("1704067200")));
  EXPECT_THAT(field.input.selectedText(), Eq(QStringLiteral("0")));
}

}  // namespace
}  // namespace horalo

#include "platform/x11/x11_pasteboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <optional>

#include "tests/x11/child_program.h"
#include "tests/x11/event_loop_gap.h"
#include "tests/x11/virtual_display.h"

namespace horalo {
namespace {

using Text = std::optional<std::string>;

// What came of a read.
struct Outcome {
  bool answered = false;
  Text text;
  double seconds = 0;  // until the answer
};

class X11PasteboardTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(display_.isRunning()); }

  std::unique_ptr<ChildProgram> badOwner(const QStringList& arguments) {
    return start(QStringLiteral(HORALO_BAD_OWNER), arguments);
  }
  std::unique_ptr<ChildProgram> manager(const QString& mode) {
    return start(QStringLiteral(HORALO_CLIPBOARD_MANAGER), {mode});
  }
  std::unique_ptr<ChildProgram> start(const QString& program, const QStringList& arguments) {
    auto started = std::make_unique<ChildProgram>(program, arguments, display_.name());
    EXPECT_TRUE(started->waitForWord("ready"));
    return started;
  }

  // Another program copies `text` and keeps it.
  std::unique_ptr<ChildProgram> copy(const QByteArray& text,
                                     const QString& selection = QStringLiteral("clipboard")) {
    const auto before = pasteboard_.changeCount();
    auto xclip = std::make_unique<ChildProgram>(
        QStringLiteral("xclip"),
        QStringList{QStringLiteral("-quiet"), QStringLiteral("-selection"), selection},
        display_.name(), text);
    if (selection == QStringLiteral("clipboard")) {
      EXPECT_TRUE(waitUntil([&] { return pasteboard_.changeCount() > before; }));
    }
    return xclip;
  }

  // What another program gets when it pastes.
  std::string paste(const QStringList& arguments = {}) {
    ChildProgram xclip(QStringLiteral("xclip"),
                       QStringList{QStringLiteral("-o"), QStringLiteral("-selection"),
                                   QStringLiteral("clipboard")} +
                           arguments,
                       display_.name());
    xclip.waitForEnd();
    return xclip.output().toStdString();
  }

  Outcome read(const Pasteboard::ReadLimits& limits = {}) {
    Outcome outcome;
    QElapsedTimer elapsed;
    elapsed.start();
    const auto read = pasteboard_.read(limits, [&](Text text) {
      outcome.answered = true;
      outcome.text = std::move(text);
    });
    EXPECT_FALSE(outcome.answered) << "an answer came from within read()";
    waitUntil([&] { return outcome.answered; });
    outcome.seconds = static_cast<double>(elapsed.elapsed()) / 1000;
    return outcome;
  }

  // Waits until everything that other programs have done so far was told.
  void settle() { read({.seconds = 0.2}); }

  VirtualDisplay display_;
  X11Pasteboard pasteboard_{display_.name().toStdString()};
};

TEST_F(X11PasteboardTest, countsEachCopyOfOthers) {
  EXPECT_EQ(pasteboard_.changeCount(), 0);
  const auto first = copy("1700000000");
  EXPECT_EQ(pasteboard_.changeCount(), 1);
  const auto same = copy("1700000000");
  EXPECT_EQ(pasteboard_.changeCount(), 2);
}

TEST_F(X11PasteboardTest, countsCopiesOfItsOwnOnce) {
  int told = 0;
  pasteboard_.onChange([&] { ++told; });
  EXPECT_TRUE(pasteboard_.write("one"));
  EXPECT_TRUE(pasteboard_.write("one"));
  settle();
  EXPECT_EQ(pasteboard_.changeCount(), 2);
  EXPECT_EQ(told, 2);
}

TEST_F(X11PasteboardTest, doesNotCountAnOwnerThatEnds) {
  const auto xclip = copy("1700000000");
  xclip->terminate();
  EXPECT_EQ(xclip->waitForEnd(), -1);
  settle();
  EXPECT_EQ(pasteboard_.changeCount(), 1);
}

TEST_F(X11PasteboardTest, doesNotCountWhatTheMouseSelects) {
  pasteboard_.changeCount();
  const auto primary = copy("1700000000", QStringLiteral("primary"));
  EXPECT_TRUE(waitUntil([&] {
    ChildProgram xclip(QStringLiteral("xclip"), {QStringLiteral("-o")}, display_.name());
    xclip.waitForEnd();
    return xclip.output() == "1700000000";
  }));
  settle();
  EXPECT_EQ(pasteboard_.changeCount(), 0);
}

TEST_F(X11PasteboardTest, doesNotCountAManagerThatTakesACopyOver) {
  const auto taker = manager(QStringLiteral("grabs"));
  const auto xclip = copy("1700000000");
  EXPECT_TRUE(taker->waitForWord("has 1700000000"));
  EXPECT_EQ(read().text, "1700000000");
  EXPECT_EQ(pasteboard_.changeCount(), 1);
  const auto next = copy("1700000001");
  EXPECT_TRUE(taker->waitForWord("has 1700000001"));
  settle();
  EXPECT_EQ(pasteboard_.changeCount(), 2);
}

TEST_F(X11PasteboardTest, doesNotCountAWindowManagerThatKeepsTheTextOfAProgramThatEnded) {
  const auto keeper = manager(QStringLiteral("wm-adopts"));
  auto xclip = copy("1700000000");
  EXPECT_TRUE(keeper->waitForWord("knows 1700000000"));
  xclip->kill();
  EXPECT_TRUE(keeper->waitForWord("has 1700000000"));
  settle();
  EXPECT_EQ(pasteboard_.changeCount(), 1);
  EXPECT_EQ(read().text, "1700000000");
  xclip = copy("1700000001");
  EXPECT_EQ(pasteboard_.changeCount(), 2);
}

TEST_F(X11PasteboardTest, countsWhatAWindowManagerCopiesByItself) {
  pasteboard_.changeCount();
  const auto xclip = copy("1700000000");
  const auto copier = manager(QStringLiteral("wm-copies"));
  settle();
  EXPECT_EQ(pasteboard_.changeCount(), 2);
}

TEST_F(X11PasteboardTest, countsAProgramThatUsedToBeTheManager) {
  {
    const auto old = manager(QStringLiteral("silent"));
    pasteboard_.changeCount();
  }
  const auto next = manager(QStringLiteral("silent"));
  const auto xclip = copy("1");
  EXPECT_EQ(pasteboard_.changeCount(), 1);
}

TEST_F(X11PasteboardTest, readsWhatOthersCopied) {
  const auto xclip = copy("1700000000");
  const Outcome outcome = read();
  EXPECT_EQ(outcome.text, "1700000000");
  EXPECT_LT(outcome.seconds, 0.5);
}

TEST_F(X11PasteboardTest, readsNothingWhereNothingIs) {
  const Outcome outcome = read();
  EXPECT_EQ(outcome.text, std::nullopt);
  EXPECT_LT(outcome.seconds, 0.5);
}

TEST_F(X11PasteboardTest, readsItsOwnCopy) {
  pasteboard_.write("für");
  EXPECT_EQ(read().text, "für");
}

TEST_F(X11PasteboardTest, readsEveryKindOfText) {
  struct Row {
    QStringList owner;
    Text expected;
  };
  const auto words = [](const char* text) {
    return QString::fromUtf8(text).split(QLatin1Char(' '));
  };
  const Row rows[] = {
      {words("bytes 66c3bc72"), "für"},
      {words("bytes 66fc72 STRING"), "für"},
      {words("bytes 66c3bc72 text/plain;charset=utf-8"), "für"},
      {words("bytes 66c3bc72 text/plain"), "für"},
      {words("bytes 66fc72 text/plain"), "für"},
      {words("bytes 3137 text/html"), std::nullopt},
      {words("bytes 3137ff3138"),
       "17\xEF\xBF\xBD"
       "18"},
      {words("bytes 31370a"), "17\n"},
      {words("no-targets 1700000000"), "1700000000"},
      {words("refuses-utf8 1700000000"), "1700000000"},
      {words("hint secret 1700000000"), std::nullopt},
      {words("hint public 1700000000"), "1700000000"},
      {words("pieces 4096"), std::string(4096, '7')},
      {words("pieces 4097"), std::nullopt},
      {words("at-once 4096"), std::string(4096, '7')},
      {words("at-once 4097"), std::nullopt},
      {words("no-text"), std::nullopt},
  };
  int count = 0;
  for (const Row& row : rows) {
    const auto owner = badOwner(row.owner);
    EXPECT_EQ(read().text, row.expected) << row.owner.join(QLatin1Char(' ')).toStdString();
    ++count;
  }
  EXPECT_EQ(count, 17);
}

TEST_F(X11PasteboardTest, readsASecretForWhoAsksForIt) {
  const auto owner =
      badOwner({QStringLiteral("hint"), QStringLiteral("secret"), QStringLiteral("1700000000")});
  EXPECT_EQ(read({.secretsAreText = true}).text, "1700000000");
}

TEST_F(X11PasteboardTest, readsLongTextsInPiecesFromXclip) {
  const QByteArray text(900'000, '5');
  const auto xclip = copy(text);
  EXPECT_EQ(read({.bytes = 1 << 20}).text, text.toStdString());
  EXPECT_EQ(read().text, std::nullopt);
}

TEST_F(X11PasteboardTest, cutsTheFirstLineOutOfAVeryLongText) {
  const auto xclip = copy("1700000000\n" + QByteArray(20'000'000, '5'));
  EXPECT_EQ(read({.bytes = 1 << 20, .firstLineOnly = true}).text, "1700000000");
}

TEST_F(X11PasteboardTest, givesUpWithoutAnAnswer) {
  const auto owner = badOwner({QStringLiteral("silent")});
  bool answered = false;
  auto given = pasteboard_.read({.seconds = 0.05}, [&](Text) { answered = true; });
  given.reset();
  EXPECT_FALSE(read({.seconds = 0.2}).text);
  EXPECT_FALSE(answered);
}

TEST_F(X11PasteboardTest, lastsThroughAReadThatIsDestroyedByItsOwnAnswer) {
  const auto xclip = copy("1700000000");
  std::unique_ptr<Pasteboard::Read> first;
  Text text;
  first = pasteboard_.read({}, [&](Text answer) {
    first.reset();
    text = std::move(answer);
  });
  EXPECT_TRUE(waitUntil([&] { return text.has_value(); }));
  const auto silent = badOwner({QStringLiteral("silent")});
  bool timedOut = false;
  first = pasteboard_.read({.seconds = 0.05}, [&](Text) {
    first.reset();
    timedOut = true;
  });
  EXPECT_TRUE(waitUntil([&] { return timedOut; }));
}

TEST_F(X11PasteboardTest, asksTheManagerAnewWhenItTakesOverInTheMiddleOfARead) {
  const auto silent = badOwner({QStringLiteral("silent")});
  Outcome outcome;
  const auto read = pasteboard_.read({}, [&](Text text) {
    outcome.answered = true;
    outcome.text = std::move(text);
  });
  const auto xclip = copy("1700000000");
  EXPECT_TRUE(waitUntil([&] { return outcome.answered; }));
  EXPECT_EQ(outcome.text, "1700000000");
}

TEST_F(X11PasteboardTest, offersItsCopyInEveryUsualForm) {
  pasteboard_.write("17 \xE2\x82\xAC f\xC3\xBCr");
  const std::string utf8 = "17 \xE2\x82\xAC f\xC3\xBCr";
  struct Row {
    const char* target;
    std::string expected;
  };
  const Row rows[] = {
      {"UTF8_STRING", utf8},
      {"text/plain;charset=utf-8", utf8},
      {"text/plain", utf8},
      {"STRING", "17 ? f\xFCr"},
      {"TEXT", utf8},
      {"TARGETS",
       "TARGETS\nMULTIPLE\nTIMESTAMP\nSAVE_TARGETS\nUTF8_STRING\ntext/plain;charset=utf-8\n"
       "text/plain\nSTRING\nTEXT\n"},
  };
  int count = 0;
  for (const Row& row : rows) {
    EXPECT_EQ(paste({QStringLiteral("-t"), QString::fromUtf8(row.target)}), row.expected)
        << row.target;
    ++count;
  }
  EXPECT_EQ(count, 6);
  EXPECT_EQ(paste({QStringLiteral("-t"), QStringLiteral("image/png")}), "");
}

TEST_F(X11PasteboardTest, answersForSeveralFormsAndTheTimeAtOnce) {
  pasteboard_.write("1700000000");
  ChildProgram asker(QStringLiteral(HORALO_MULTIPLE_ASKER), {}, display_.name());
  EXPECT_EQ(asker.waitForEnd(), 0);
  EXPECT_EQ(asker.output(),
            "UTF8_STRING 1700000000\nSTRING 1700000000\nTIMESTAMP a number\nimage/png refused\n");
}

TEST_F(X11PasteboardTest, sendsALongTextInPieces) {
  std::string text;
  for (int i = 0; text.size() < 3'000'000; ++i) text += std::to_string(i) + "\n";
  pasteboard_.write(text);
  EXPECT_EQ(paste(), text);
  EXPECT_EQ(paste(), text);
}

TEST_F(X11PasteboardTest, keepsALongTextThatIsBeingSentOverAnotherCopy) {
  const std::string text(3'000'000, '4');
  pasteboard_.write(text);
  ChildProgram xclip(
      QStringLiteral("xclip"),
      {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")},
      display_.name());
  EXPECT_TRUE(waitUntil([&] { return !xclip.output().isEmpty() || !xclip.isRunning(); }));
  pasteboard_.write("short");
  EXPECT_EQ(xclip.waitForEnd(), 0);
  EXPECT_EQ(xclip.output().toStdString(), text);
  EXPECT_EQ(paste(), "short");
}

TEST_F(X11PasteboardTest, servesTheLastOfSeveralCopiesInARow) {
  for (int i = 0; i < 50; ++i) pasteboard_.write(std::to_string(i));
  EXPECT_EQ(paste(), "49");
}

TEST_F(X11PasteboardTest, losesItsCopyToTheNextProgram) {
  pasteboard_.write("ours");
  settle();
  const auto xclip = copy("theirs");
  EXPECT_EQ(read().text, "theirs");
  EXPECT_EQ(paste(), "theirs");
}

TEST_F(X11PasteboardTest, handsItsCopyToTheClipboardManager) {
  const auto keeper = manager(QStringLiteral("saves"));
  {
    X11Pasteboard ending(display_.name().toStdString());
    ending.write("1700000000");
    QElapsedTimer elapsed;
    elapsed.start();
    ending.handOver(1);
    EXPECT_LT(elapsed.elapsed(), 800);
  }
  EXPECT_TRUE(keeper->waitForWord("has 1700000000"));
  EXPECT_EQ(paste({QStringLiteral("-t"), QStringLiteral("UTF8_STRING")}), "1700000000");
}

TEST_F(X11PasteboardTest, waitsForASilentManagerAsLongAsItMay) {
  const auto silent = manager(QStringLiteral("silent"));
  pasteboard_.write("1700000000");
  QElapsedTimer elapsed;
  elapsed.start();
  pasteboard_.handOver(0.3);
  EXPECT_GE(elapsed.elapsed(), 290);
  EXPECT_LT(elapsed.elapsed(), 900);
}

TEST_F(X11PasteboardTest, handsNothingOverThatIsNotItsOwn) {
  const auto silent = manager(QStringLiteral("silent"));
  pasteboard_.write("ours");
  settle();
  const auto xclip = copy("theirs");
  QElapsedTimer elapsed;
  elapsed.start();
  pasteboard_.handOver(5);
  EXPECT_LT(elapsed.elapsed(), 1000);
}

TEST_F(X11PasteboardTest, handsNothingOverWhereThereIsNoManager) {
  pasteboard_.write("ours");
  QElapsedTimer elapsed;
  elapsed.start();
  pasteboard_.handOver(5);
  EXPECT_LT(elapsed.elapsed(), 1000);
}

TEST_F(X11PasteboardTest, fallsSilentWithItsServer) {
  EXPECT_EQ(pasteboard_.status().reason, "");
  EXPECT_TRUE(pasteboard_.write("ours"));
  const auto silent = badOwner({QStringLiteral("silent")});
  Outcome outcome;
  const auto underWay = pasteboard_.read({}, [&](Text) { outcome.answered = true; });
  display_.server().kill();
  EXPECT_TRUE(waitUntil([&] { return outcome.answered; }));
  EXPECT_TRUE(waitUntil([&] { return !pasteboard_.status().reason.empty(); }));
  EXPECT_FALSE(pasteboard_.write("ours"));
  EXPECT_EQ(read().text, std::nullopt);
  pasteboard_.handOver(5);
}

TEST(X11PasteboardWithoutServer, saysSo) {
  X11Pasteboard pasteboard(":4711");
  EXPECT_EQ(pasteboard.changeCount(), 0);
  EXPECT_EQ(pasteboard.status().backend, "x11");
  EXPECT_NE(pasteboard.status().reason, "");
  EXPECT_FALSE(pasteboard.write("ours"));
  bool answered = false;
  const auto read = pasteboard.read({}, [&](Text text) { answered = !text.has_value(); });
  EXPECT_FALSE(answered);
  EXPECT_TRUE(waitUntil([&] { return answered; }));
}

}  // namespace
}  // namespace horalo

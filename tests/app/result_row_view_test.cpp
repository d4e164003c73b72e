#include "app/views/result_row_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "tests/app/panel_window.h"
#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/fonts.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;

constexpr int kValueLeft = 12 + 70 + 12;

// Presses at one place of a row and lets go at another.
void drag(QWidget& row, QPoint from, QPoint to) {
  QTest::mousePress(&row, Qt::LeftButton, {}, from);
  QTest::mouseMove(&row, (from + to) / 2);
  QTest::mouseMove(&row, to);
  QTest::mouseRelease(&row, Qt::LeftButton, {}, to);
}

struct Row {
  Row() {
    row.resize(464, 32);
    row.render(content);
    row.show();
  }
  void render() { row.render(content); }
  QImage picture() { return row.grab().toImage(); }

  ResultRowView::Content content{.label = QStringLiteral("Unix (s)"),
                                 .value = QStringLiteral("1704067200")};
  ResultRowView row;
};

// The leftmost inked column of the value.
int valueLeft(const QImage& image) {
  for (int x = kValueLeft; x < image.width(); ++x) {
    for (int y = 0; y < image.height(); ++y) {
      if (image.pixelColor(x, y) == color(ColorRole::primary)) return x;
    }
  }
  return -1;
}

TEST(ResultRowView, DraggingSelectsAndDoesNotCopy) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  drag(panel.row(0), {kValueLeft, 16}, {kValueLeft + 200, 16});
  EXPECT_THAT(panel.row(0).selectedText(), Eq(QStringLiteral("1704067200")));
  EXPECT_THAT(panel.pasteboard.written(), IsEmpty());
  EXPECT_TRUE(panel.input().hasFocus());
}

TEST(ResultRowView, APartOfAValueCanBeSelectedInBothDirections) {
  Row row;
  const int digit = QFontMetrics(fixedFont(14)).horizontalAdvance(u'0');
  drag(row.row, {kValueLeft + 2 * digit, 16}, {kValueLeft + 5 * digit, 16});
  EXPECT_THAT(row.row.selectedText(), Eq(QStringLiteral("040")));
  drag(row.row, {kValueLeft + 5 * digit, 16}, {kValueLeft + 2 * digit, 30});
  EXPECT_THAT(row.row.selectedText(), Eq(QStringLiteral("040")));
}

TEST(ResultRowView, ATremblingHandStillClicks) {
  Row row;
  QSignalSpy clicked(&row.row, &ResultRowView::clicked);
  drag(row.row, {200, 16}, {202, 15});
  EXPECT_THAT(clicked.count(), Eq(1));
  drag(row.row, {200, 16}, {200, 90});  // let go elsewhere
  EXPECT_THAT(clicked.count(), Eq(1));
}

TEST(ResultRowView, OtherButtonsDoNothing) {
  Row row;
  QSignalSpy clicked(&row.row, &ResultRowView::clicked);
  QTest::mouseClick(&row.row, Qt::RightButton);
  QTest::mouseClick(&row.row, Qt::MiddleButton);
  EXPECT_THAT(clicked.count(), Eq(0));
}

TEST(ResultRowView, EachOfTwoClicksCounts) {
  Row row;
  QSignalSpy clicked(&row.row, &ResultRowView::clicked);
  QTest::mouseClick(&row.row, Qt::LeftButton, {}, {200, 16});
  QTest::mouseDClick(&row.row, Qt::LeftButton, {}, {200, 16});
  QTest::mouseRelease(&row.row, Qt::LeftButton, {}, {200, 16});
  EXPECT_THAT(clicked.count(), Eq(2));
}

TEST(ResultRowView, CtrlCCopiesWhatIsSelectedAndThePanelStays) {
  PanelWindow panel;
  panel.preferences.setCloseWindowAfterCopy(true);
  int announced = 0;
  panel.notifications.observe(notification::appDidCopyToClipboard,
                              [&](const std::any&) { ++announced; });
  panel.type(QStringLiteral("1704067200"));
  drag(panel.row(1), {kValueLeft, 16}, {kValueLeft + 250, 16});
  panel.press(Qt::Key_C, Qt::ControlModifier);
  panel.press(Qt::Key_C, Qt::MetaModifier);
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("1704067200000", "1704067200000"));
  EXPECT_THAT(announced, Eq(2));
  EXPECT_THAT(panel.calls, IsEmpty());
}

TEST(ResultRowView, OneSelectionAtATime) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  drag(panel.row(0), {kValueLeft, 16}, {kValueLeft + 250, 16});
  drag(panel.row(1), {kValueLeft, 16}, {kValueLeft + 250, 16});
  EXPECT_THAT(panel.row(0).selectedText(), Eq(QString()));
  panel.input().selectAll();
  EXPECT_THAT(panel.row(1).selectedText(), Eq(QString()));
  panel.press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("1704067200"));
}

TEST(ResultRowView, ASelectionGoesWithItsValue) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  drag(panel.row(0), {kValueLeft, 16}, {kValueLeft + 250, 16});
  panel.type(QStringLiteral("0"));
  EXPECT_THAT(panel.row(0).selectedText(), Eq(QString()));
}

TEST(ResultRowView, TheHintAndTheCheckMarkNeverMoveTheValue) {
  Row row;
  std::vector<QImage> values;
  for (int state = 0; state < 4; ++state) {
    row.content.isSelected = (state & 1) != 0;
    row.content.isCopied = (state & 2) != 0;
    row.render();
    values.push_back(row.picture());
  }
  for (const QImage& image : values) EXPECT_THAT(valueLeft(image), Eq(valueLeft(values[0])));
  EXPECT_THAT(valueLeft(values[0]),
              testing::AllOf(testing::Ge(kValueLeft), testing::Le(kValueLeft + 3)));
}

TEST(ResultRowView, ShowsTheHintOnTheHighlightedRowAndTheCheckMarkInItsPlace) {
  Row row;
  const auto slot = [&] {
    row.render();
    return row.picture().copy(464 - 12 - 60, 0, 60, 32);
  };
  const auto greens = [](const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QColor pixel = image.pixelColor(x, y);
        count += pixel.green() > pixel.red() + 60 ? 1 : 0;
      }
    }
    return count;
  };
  const QImage plain = slot();
  row.content.isSelected = true;
  const QImage hint = slot();
  EXPECT_THAT(hint, testing::Ne(plain));
  EXPECT_THAT(greens(hint), Eq(0));
  row.content.isCopied = true;
  EXPECT_THAT(greens(slot()), testing::Gt(8));
  row.content.isSelected = false;
  EXPECT_THAT(greens(slot()), testing::Gt(8));
}

TEST(ResultRowView, ALongValueStaysWithinItsPlace) {
  Row row;
  row.content.isSelected = true;
  row.render();
  const QImage usual = row.picture();
  row.content.value = QString(200, u'8');
  row.render();
  const QImage longer = row.picture();
  const int valueRight = 464 - 12 - 60 - 12;
  EXPECT_THAT(longer.copy(valueRight, 0, 84, 32), Eq(usual.copy(valueRight, 0, 84, 32)));

  // Dragging beyond the edge reaches its end.
  drag(row.row, {kValueLeft, 16}, {kValueLeft + 9000, 16});
  EXPECT_THAT(row.row.selectedText().size(), Eq(200));
  const QImage scrolled = row.picture();
  EXPECT_THAT(scrolled.copy(valueRight, 0, 84, 32), Eq(usual.copy(valueRight, 0, 84, 32)));
  EXPECT_THAT(scrolled.copy(0, 0, kValueLeft - 2, 32), Eq(usual.copy(0, 0, kValueLeft - 2, 32)));
}

TEST(ResultRowView, ValuesOfEveryScriptStandAtTheLeft) {
  Row row;
  row.content.direction = Qt::LayoutDirectionAuto;
  row.content.value = QStringLiteral("\u06F1\u06F1 \u062F\u06CC \u06F1\u06F4\u06F0\u06F2");
  row.render();
  const int left = valueLeft(row.picture());
  EXPECT_THAT(left, testing::AllOf(testing::Ge(kValueLeft), testing::Le(kValueLeft + 8)));
}

TEST(ResultRowView, IsAListItemNamedAfterLabelAndValue) {
  Row row;
  row.content.isSelected = true;
  row.render();
  QAccessibleInterface* node = QAccessible::queryAccessibleInterface(&row.row);
  EXPECT_THAT(node->role(), Eq(QAccessible::ListItem));
  EXPECT_THAT(node->text(QAccessible::Name), Eq(QStringLiteral("Unix (s): 1704067200")));
  EXPECT_TRUE(node->state().selected);
  EXPECT_TRUE(node->state().selectable);
}

// Digits stand below each other also where the longest value has to become smaller.
TEST(ResultsView, LargeValuesAreAllOfOneSize) {
  DesktopAppearance desktop;
  desktop.textScale = 1.6;
  Appearance::shared().setDesktop(desktop);
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  const int usual = 14;
  const int large = qRound(1.6 * usual);
  EXPECT_THAT(panel.row(0).fittingValueSize(), Eq(large));
  EXPECT_THAT(panel.row(2).fittingValueSize(),
              testing::AllOf(testing::Ge(usual), testing::Lt(large)));
  EXPECT_THAT(panel.row(0).valueSize(), Eq(panel.row(2).fittingValueSize()));
  EXPECT_THAT(panel.row(3).valueSize(), Eq(panel.row(2).fittingValueSize()));
  Appearance::shared().setDesktop({});
  EXPECT_THAT(panel.row(0).valueSize(), Eq(usual));
}

TEST(ResultsView, LargeTextsGiveUpPaddingAndThenScroll) {
  struct Case {
    double scale;
    bool fits;
  };
  const std::vector<Case> cases = {{1, true}, {1.25, true}, {1.5, true}, {3, false}};
  int run = 0;
  for (const Case& test : cases) {
    SCOPED_TRACE(test.scale);
    DesktopAppearance desktop;
    desktop.textScale = test.scale;
    Appearance::shared().setDesktop(desktop);
    PanelWindow panel;
    panel.type(QStringLiteral("1704067200"));
    auto& results = panel.find<ResultsView>();
    EXPECT_THAT(panel.row(4).geometry().bottom() < results.height(), Eq(test.fits));
    for (int i = 0; i < 4; ++i) panel.press(Qt::Key_Down);
    EXPECT_TRUE(results.rect().contains(panel.row(4).geometry()));
    for (int i = 0; i < 4; ++i) panel.press(Qt::Key_Up);
    EXPECT_TRUE(results.rect().contains(panel.row(0).geometry()));
    ++run;
  }
  Appearance::shared().setDesktop({});
  EXPECT_THAT(run, Eq(4));
}

}  // namespace
}  // namespace horalo

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/panel_window.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PreparedPanel, IsDrawnWhereNobodySeesIt) {
  PanelWindow panel;
  panel.view.hide();
  panel.view.prepare();
  EXPECT_FALSE(panel.view.isVisible());
  EXPECT_THAT(panel.timers.pendingCount(), 0U);
  EXPECT_THAT(panel.calls, IsEmpty());
  EXPECT_EQ(panel.rowText(0), ": ") << "the example stays in no row";
  EXPECT_EQ(panel.viewModel.input(), "");
  panel.show();
  EXPECT_THAT(panel.labels(), ElementsAre("Type a timestamp or date",
                                          "Try: 1704067200, 2024-01-01T00:00:00Z, or \"now\""));
}

}  // namespace
}  // namespace horalo

#include "app/update/views/update_window.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

namespace horalo {
namespace {

using Page = UpdateScreen::Page;

UpdateScreen offer() {
  UpdateScreen screen;
  screen.page = Page::offer;
  screen.headline = QStringLiteral("Horalo 2.0 is available");
  screen.text = QStringLiteral("You have version 1.3.0.");
  screen.notes = QStringLiteral("<b>Not bold</b> & <img src='file:///etc/passwd'>");
  screen.link = QUrl(QStringLiteral("https://example.org/?a=1&b=\"'><i>"));
  screen.canInstall = true;
  screen.canSkip = true;
  return screen;
}

class UpdateWindowTest : public testing::Test {
 protected:
  QStringList buttons() const {
    QStringList texts;
    for (const auto* button : window_.findChildren<QPushButton*>()) {
      if (button->isVisible()) texts << button->text();
    }
    return texts;
  }

  void press(const char* text) {
    for (auto* button : window_.findChildren<QPushButton*>()) {
      if (button->isVisible() && button->text() == QLatin1String(text)) {
        QTest::mouseClick(button, Qt::LeftButton);
        return;
      }
    }
    ADD_FAILURE() << "no button " << text;
  }

  UpdateWindow window_;
  QSignalSpy install_{&window_, &UpdateWindow::installClicked};
  QSignalSpy skip_{&window_, &UpdateWindow::skipClicked};
  QSignalSpy close_{&window_, &UpdateWindow::closeClicked};
};

TEST_F(UpdateWindowTest, comesAndGoesWithTheScreen) {
  EXPECT_EQ(window_.windowTitle(), QStringLiteral("Horalo Update"));
  EXPECT_FALSE(window_.isVisible());
  window_.render(offer(), true);
  EXPECT_TRUE(window_.isVisible());
  window_.render({}, true);
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(UpdateWindowTest, offersWhatCanBeDone) {
  UpdateScreen screen = offer();
  window_.render(screen, true);
  EXPECT_EQ(buttons().size(), 3);
  press("Install and Relaunch");
  press("Skip This Version");
  press("Later");
  EXPECT_EQ(install_.count(), 1);
  EXPECT_EQ(skip_.count(), 1);
  EXPECT_EQ(close_.count(), 1);

  const auto buttonsOf = [this](const UpdateScreen& shown) {
    window_.render({}, true);
    window_.render(shown, true);
    return buttons();
  };
  screen.canInstall = screen.canSkip = false;
  EXPECT_EQ(buttonsOf(screen), QStringList{QStringLiteral("Later")});
  screen.page = Page::message;
  EXPECT_EQ(buttonsOf(screen), QStringList{QStringLiteral("OK")});
  screen.page = Page::checking;
  EXPECT_EQ(buttonsOf(screen), QStringList{QStringLiteral("Cancel")});
  screen.page = Page::downloading;
  EXPECT_EQ(buttonsOf(screen), QStringList{QStringLiteral("Cancel")});
  screen.page = Page::installing;
  EXPECT_EQ(buttonsOf(screen), QStringList());
}

TEST_F(UpdateWindowTest, showsTextsAsTheyStand) {
  window_.render(offer(), true);
  const auto* const notes = window_.findChild<QPlainTextEdit*>();
  EXPECT_EQ(notes->toPlainText(), offer().notes);
  EXPECT_TRUE(notes->isReadOnly());
  int links = 0;
  for (const auto* label : window_.findChildren<QLabel*>()) {
    if (!label->openExternalLinks()) {
      EXPECT_EQ(label->textFormat(), Qt::PlainText);
      continue;
    }
    EXPECT_FALSE(label->text().contains(QStringLiteral("<i>")));
    ++links;
  }
  EXPECT_EQ(links, 1);
}

TEST_F(UpdateWindowTest, showsHowFarADownloadIs) {
  UpdateScreen screen;
  screen.page = Page::downloading;
  screen.total = 25'000'000;
  window_.render(screen, true);
  const auto* const bar = window_.findChild<QProgressBar*>();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(bar->value(), 0);
  screen.received = 12'500'000;
  window_.render(screen, true);
  EXPECT_EQ(bar->value() * 2, bar->maximum());
  screen.received = 99'000'000;
  window_.render(screen, true);
  EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(UpdateWindowTest, listensToTheKeyboard) {
  window_.render(offer(), true);
  QTest::keyClick(&window_, Qt::Key_Escape);
  EXPECT_EQ(close_.count(), 1);
  QTest::keyClick(window_.focusWidget(), Qt::Key_Return);
  EXPECT_EQ(install_.count(), 1);
}

TEST_F(UpdateWindowTest, leavesItsEndToTheFlow) {
  window_.render(offer(), true);
  window_.close();
  EXPECT_TRUE(window_.isVisible());
  EXPECT_EQ(close_.count(), 1);
}

}  // namespace
}  // namespace horalo

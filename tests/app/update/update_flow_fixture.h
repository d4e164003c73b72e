#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <string>

#include "app/update/update_flow.h"
#include "tests/app/update/loopback_server.h"
#include "tests/app/update/test_release.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {

// An installed bundle, a server with a feed and an archive, and an update between them.
class UpdateFlowTest : public testing::Test {
 protected:
  using Page = UpdateScreen::Page;

  // Where they are on the server.
  const QString kFeed = QStringLiteral("feed");
  const QString kArchive = QStringLiteral("a.tar.xz");

  UpdateFlowTest() {
    clock_.set({1'704'448'800, 0});  // when the feed of makeFeed() was published
    installed_.version = "1.3.0";
    installed_.keys = {key_.publicText()};
    installed_.feedUrl = server_.address(kFeed);
    newer_ = installed_;
    newer_.version = "2.0";
    newer_.program = "new";
    install(installed_);
  }

  void install(const TestBundle& bundle) {
    std::filesystem::remove_all(bundlePath());
    for (const TarEntry& entry : bundle.entries()) {
      const std::filesystem::path path = home_ / entry.path;
      if (entry.content.empty()) {
        std::filesystem::create_directories(path);
      } else {
        std::filesystem::create_directories(path.parent_path());
        writeText(path, entry.content);
      }
    }
    held_ = FileDescriptor(open(bundlePath().c_str(), O_RDONLY | O_DIRECTORY));
  }

  std::filesystem::path bundlePath() const { return home_ / "Horalo.app"; }

  // Serves an archive and a feed that offers it, both signed.
  TestItem release(const QByteArray& archive, const std::string& version = "2.0") {
    server_.serve(kArchive, archive);
    const TestItem item{
        version, server_.address(kArchive), std::to_string(archive.size()), key_.sign(archive), "",
        ""};
    serveFeed(makeFeed({item}));
    return item;
  }
  TestItem release(const TestBundle& bundle, const std::string& version = "2.0") {
    return release(makeTar(bundle.entries()), version);
  }
  void serveFeed(const QByteArray& feed) { server_.serve(kFeed, signedFeed(feed, key_)); }

  // A new session; what it remembers is in the state file.
  void begin(bool askedByUser = true) {
    flow_ = std::make_unique<UpdateFlow>(
        UpdateFlow::Installed{bundlePath(), held_.get(), readBundleInfo(bundlePath())}, state_,
        clock_, network_);
    ended_ = done_ = false;
    QObject::connect(flow_.get(), &UpdateFlow::ended, flow_.get(), [this] { ended_ = true; });
    QObject::connect(flow_.get(), &UpdateFlow::installed, flow_.get(), [this] { done_ = true; });
    flow_->check(askedByUser);
  }

  // Lets the session go on until it waits for somebody.
  void wait() {
    QEventLoop loop;
    QTimer patience;
    patience.start(120'000);
    QObject::connect(&patience, &QTimer::timeout, &loop, [&] {
      ADD_FAILURE() << "nothing happens";
      loop.quit();
    });
    const auto settled = [this] {
      return ended_ || done_ || page() == Page::message || page() == Page::offer;
    };
    QObject::connect(flow_.get(), &UpdateFlow::screenChanged, &loop, [&] {
      if (settled()) loop.quit();
    });
    QObject::connect(flow_.get(), &UpdateFlow::ended, &loop, &QEventLoop::quit);
    QObject::connect(flow_.get(), &UpdateFlow::installed, &loop, &QEventLoop::quit);
    if (!settled()) loop.exec();
  }

  Page page() const { return flow_->screen().page; }
  std::string headline() const { return flow_->screen().headline.toStdString(); }

  // The headline at the end of a check that the user asked for.
  std::string check() {
    begin();
    wait();
    return headline();
  }

  // The same at the end of an update to what is offered; "installed" where it went through.
  std::string update() {
    check();
    if (page() != Page::offer) return headline();
    flow_->install();
    wait();
    return done_ ? "installed" : headline();
  }

  static std::string text(const Problem& problem) { return problem.message.toStdString(); }

  void expectUntouched() {
    EXPECT_EQ(textOf(bundlePath() / "Contents/Linux/horalo"), installed_.program);
    EXPECT_EQ(textOf(bundlePath() / "Contents/Info.plist"), installed_.info());
    flow_.reset();
    EXPECT_EQ(namesIn(home_ / "").size(), 1U) << "something was left beside the bundle";
  }

  TestKey key_;
  LoopbackServer server_;
  TemporaryFolder home_;
  TemporaryFolder stateFolder_;
  ManualClock clock_;
  ManualTimers timers_;
  UpdateState state_{stateFolder_ / "updates.plist", timers_};
  QNetworkAccessManager network_;
  TestBundle installed_;
  TestBundle newer_;
  FileDescriptor held_;
  std::unique_ptr<UpdateFlow> flow_;
  bool ended_ = false;
  bool done_ = false;
};

}  // namespace horalo

// A hostile server, and a bundle that must stay as it was.
#include "app/update/update_flow.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QEventLoop>
#include <QTimer>

#include "tests/app/update/loopback_server.h"
#include "tests/app/update/test_release.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using Page = UpdateScreen::Page;

const QString kFeed = QStringLiteral("feed");
const QString kArchive = QStringLiteral("a.tar.xz");

class UpdateFlowTest : public testing::Test {
 protected:
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
    fs::remove_all(bundlePath());
    for (const TarEntry& entry : bundle.entries()) {
      const fs::path path = home_ / entry.path;
      if (entry.content.empty()) {
        fs::create_directories(path);
      } else {
        fs::create_directories(path.parent_path());
        writeText(path, entry.content);
      }
    }
    held_ = FileDescriptor(open(bundlePath().c_str(), O_RDONLY | O_DIRECTORY));
  }

  fs::path bundlePath() const { return home_ / "Horalo.app"; }

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
    patience.start(20'000);
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

TEST_F(UpdateFlowTest, updates) {
  release(newer_);
  EXPECT_EQ(check(), "Horalo 2.0 is available");
  EXPECT_TRUE(flow_->screen().canInstall);
  flow_->install();
  EXPECT_EQ(page(), Page::downloading);
  wait();
  EXPECT_TRUE(done_);
  EXPECT_EQ(textOf(bundlePath() / "Contents/Linux/horalo"), "new");
  EXPECT_EQ(fs::status(bundlePath()).permissions(), fs::perms(0755));
  // The old version stands beside it, whole, to go back to.
  EXPECT_EQ(textOf(flow_->staging()->path() / "Contents/Linux/horalo"), installed_.program);
  EXPECT_TRUE(flow_->staging()->exchangeBack());
  expectUntouched();
}

TEST_F(UpdateFlowTest, saysThatThereIsNothingNew) {
  release(installed_, "1.3.0");
  EXPECT_EQ(check(), "Horalo is up to date");
  EXPECT_THAT(flow_->screen().text.toStdString(), testing::HasSubstr("5 January 2024"));
  EXPECT_EQ(state_.failures(), 0);
  flow_->close();
  EXPECT_TRUE(ended_);
  expectUntouched();
}

TEST_F(UpdateFlowTest, saysHowOldAFrozenFeedIs) {
  release(installed_, "1.3.0");
  clock_.advance(std::chrono::hours(24 * 400));
  EXPECT_EQ(check(), "Horalo is up to date");
  EXPECT_THAT(flow_->screen().text.toStdString(), testing::HasSubstr("400 days ago"));
}

TEST_F(UpdateFlowTest, isSilentWhereNobodyAskedAndNothingIsNew) {
  release(installed_, "1.3.0");
  begin(false);
  wait();
  EXPECT_TRUE(ended_);
  EXPECT_EQ(page(), Page::none);
  server_.serve(kFeed, "", 404);
  begin(false);
  wait();
  EXPECT_TRUE(ended_);
  EXPECT_EQ(page(), Page::none);
}

TEST_F(UpdateFlowTest, speaksUpWhereNobodyAskedAndSomethingIsNew) {
  release(newer_);
  begin(false);
  wait();
  EXPECT_EQ(page(), Page::offer);
  flow_->skip();
  EXPECT_TRUE(ended_);
  begin(false);
  wait();
  EXPECT_TRUE(ended_) << "what was skipped is not offered again";
  EXPECT_EQ(check(), "Horalo 2.0 is available") << "but to whom asks";
}

TEST_F(UpdateFlowTest, answersTheUserWhoAsksDuringASilentCheck) {
  release(installed_, "1.3.0");
  begin(false);
  flow_->show();
  EXPECT_EQ(page(), Page::checking);
  wait();
  EXPECT_EQ(headline(), "Horalo is up to date");
}

TEST_F(UpdateFlowTest, refusesAnArchiveWithOneBitFlipped) {
  const QByteArray archive = makeTar(newer_.entries());
  int cases = 0;
  for (const qsizetype at : {qsizetype{0}, archive.size() / 2, archive.size() - 1}) {
    release(archive);
    QByteArray flipped = archive;
    flipped[at] = static_cast<char>(flipped[at] ^ 1);
    server_.serve(kArchive, flipped);
    EXPECT_EQ(update(), text(problem::forgedArchive()));
    expectUntouched();
    ++cases;
  }
  EXPECT_EQ(cases, 3);
}

TEST_F(UpdateFlowTest, refusesAnArchiveSignedBySomebodyElse) {
  const QByteArray archive = makeTar(newer_.entries());
  TestItem item = release(archive);
  item.signature = TestKey().sign(archive);
  serveFeed(makeFeed({item}));
  EXPECT_EQ(update(), text(problem::forgedArchive()));
  item.signature = "AAAA";
  serveFeed(makeFeed({item}));
  EXPECT_EQ(update(), text(problem::forgedArchive()));
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesAFeedThatWasChangedOrSwapped) {
  const TestItem item = release(newer_);
  const QByteArray feed = makeFeed({item});
  server_.serve(kFeed, signedFeed(feed, key_).replace("2.0", "9.9"));
  EXPECT_EQ(check(), text(problem::forgedFeed()));
  server_.serve(kFeed, signedFeed(feed, TestKey()));
  EXPECT_EQ(check(), text(problem::forgedFeed()));
  server_.serve(kFeed, feed);
  EXPECT_EQ(check(), text(problem::notAFeed()));
  server_.serve(kFeed, "<html>Please sign in</html>");
  EXPECT_EQ(check(), text(problem::notAFeed()));
  server_.serve(kFeed, signedFeed("<rss>", key_));
  EXPECT_EQ(check(), text(problem::brokenFeed()));
  server_.serve(kFeed, signedFeed("<!DOCTYPE rss>" + feed.mid(feed.indexOf("<rss")), key_));
  EXPECT_EQ(check(), text(problem::brokenFeed()));
  EXPECT_EQ(server_.requests(kArchive), 0);
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesAnOldVersionUnderANewNumber) {
  TestBundle old = newer_;
  old.version = "1.0";
  release(old, "9.9");
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesToGoBackBehindWhatItHasSeen) {
  release(newer_);
  EXPECT_EQ(check(), "Horalo 2.0 is available");
  flow_->close();
  TestBundle between = newer_;
  between.version = "1.9";
  release(between, "1.9");
  EXPECT_EQ(check(), text(problem::outdatedFeed()));
  EXPECT_EQ(state_.highestVersion(), "2.0");
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesAnotherProgram) {
  TestBundle other = newer_;
  other.identifier = "org.example.Other";
  release(other);
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesAVersionAfterWhichNothingCouldBeUpdated) {
  TestBundle dead = newer_;
  for (const auto& keys : {std::vector<std::string>(), std::vector<std::string>{"placeholder"},
                           std::vector<std::string>{std::string(43, 'A') + "="}}) {
    dead.keys = keys;
    release(dead);
    EXPECT_EQ(update(), text(problem::wrongBundle({})));
  }
  dead = newer_;
  dead.feedUrl = "ftp://example.org/";
  release(dead);
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  auto entries = newer_.entries();
  entries[2].permissions = 0644;
  release(makeTar(entries));
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesArchivesThatReachOut) {
  auto entries = newer_.entries();
  entries.push_back({"Horalo.app/../evil", 0100000, 0644, "x", "", false});
  release(makeTar(entries));
  EXPECT_EQ(update(), text(problem::badArchive({})));
  entries.back() = {"Horalo.app/l", 0120000, 0777, "", "/etc/passwd", false};
  release(makeTar(entries));
  EXPECT_EQ(update(), text(problem::badArchive({})));
  release("<html>no archive</html>");
  EXPECT_EQ(update(), text(problem::badArchive({})));
  expectUntouched();
}

TEST_F(UpdateFlowTest, doesNotAskAServerWithoutAGoodKey) {
  release(newer_);
  for (const auto& keys :
       {std::vector<std::string>(), std::vector<std::string>{std::string(43, 'A') + "="},
        std::vector<std::string>{key_.publicText(), "x"}}) {
    installed_.keys = keys;
    install(installed_);
    EXPECT_EQ(check(), text(problem::badBundle({})));
    begin(false);
    wait();
    EXPECT_TRUE(ended_);
  }
  EXPECT_EQ(server_.requests(kFeed), 0);
  expectUntouched();
}

TEST_F(UpdateFlowTest, doesNotAskAServerInTheOpen) {
  for (const char* url : {"http://example.org/feed", "file:///etc/passwd", "", "nonsense"}) {
    installed_.feedUrl = url;
    install(installed_);
    EXPECT_EQ(check(), text(problem::badBundle({}))) << url;
  }
}

TEST_F(UpdateFlowTest, endsInAWindowWhateverTheServerDoes) {
  server_.serve(kFeed, "", 404);
  EXPECT_EQ(check(), text(problem::refusedByServer(404)));
  EXPECT_GT(flow_->screen().text.size(), 5);
  server_.serve(kFeed, QByteArray((1 << 20) + 1, ' '));
  EXPECT_EQ(check(), text(problem::tooLong()));
  server_.serveRaw(kFeed, "");
  EXPECT_EQ(check(), text(problem::unreachable({})));
  server_.serveRaw(kFeed,
                   "HTTP/1.1 302 x\r\nLocation: file:///etc/passwd\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(check(), text(problem::badRedirect()));
}

TEST_F(UpdateFlowTest, takesNoPartOfADownload) {
  const QByteArray archive = makeTar(newer_.entries());
  release(archive);
  server_.serve(kArchive, archive.chopped(1));
  EXPECT_EQ(update(), text(problem::wrongLength()));
  server_.serve(kArchive, archive + "x");
  EXPECT_EQ(update(), text(problem::tooLong()));
  server_.serveRaw(kArchive, "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + archive.chopped(9));
  EXPECT_EQ(update(), text(problem::wrongLength()));
  expectUntouched();
}

TEST_F(UpdateFlowTest, refusesAnAbsurdLengthBeforeItAsks) {
  TestItem item = release(newer_);
  item.length = "99999999999";
  serveFeed(makeFeed({item}));
  EXPECT_EQ(update(), text(problem::tooLong()));
  item.length = std::to_string(200 << 20);  // five times that is what must be free
  serveFeed(makeFeed({item}));
  check();
  EXPECT_EQ(server_.requests(kArchive), 0);
  expectUntouched();
}

TEST_F(UpdateFlowTest, standsOddVersions) {
  const TestItem item = release(newer_);
  std::vector<TestItem> items(6, item);
  items[0].version = std::string(10'000, '9');
  items[1].version = "-1";
  items[2].version = "&#x202e;2";
  items[3].version = "../../2";
  items[4].version = "";
  serveFeed(makeFeed(items));
  check();
  EXPECT_NE(page(), Page::none);
  items[1].version = "9223372036854775808";
  serveFeed(makeFeed(items));
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowTest, canBeCancelledWhileItDownloads) {
  release(newer_);
  server_.on(kArchive, [](QTcpSocket& socket) {
    socket.write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nx");
  });
  check();
  flow_->install();
  EXPECT_EQ(namesIn(home_ / "").size(), 2U);
  flow_->close();
  EXPECT_TRUE(ended_);
  expectUntouched();
}

TEST_F(UpdateFlowTest, leavesACopyAloneThatAnotherHasUpdatedMeanwhile) {
  release(newer_);
  check();
  fs::rename(bundlePath(), home_ / "moved");
  const FileDescriptor running = std::move(held_);
  install(newer_);
  held_ = FileDescriptor(dup(running.get()));
  flow_->install();
  wait();
  EXPECT_EQ(headline(), text(problem::alreadyReplaced()));
  EXPECT_EQ(textOf(bundlePath() / "Contents/Linux/horalo"), "new");
}

TEST_F(UpdateFlowTest, installsOnlyWhatWasOffered) {
  TestItem item = release(newer_);
  item.more = "<sparkle:informationalUpdate/><link>https://example.org/</link>";
  serveFeed(makeFeed({item}));
  check();
  EXPECT_EQ(page(), Page::offer);
  EXPECT_FALSE(flow_->screen().canInstall);
  EXPECT_EQ(flow_->screen().link, QUrl(QStringLiteral("https://example.org/")));
  flow_->install();
  EXPECT_EQ(page(), Page::offer);
  EXPECT_EQ(server_.requests(kArchive), 0);
}

TEST_F(UpdateFlowTest, seesBeforeTheDownloadThatItMayNotWrite) {
  if (geteuid() == 0) {
    // The administrator may write everywhere but where nothing may be written at all.
    const auto staging = Staging::make("/proc/self/Horalo.app", 1);
    EXPECT_EQ(text(std::get<Problem>(staging)), text(problem::notWritable({})));
    return;
  }
  release(newer_);
  fs::permissions(home_ / "", fs::perms(0555));
  EXPECT_EQ(update(), text(problem::notWritable({})));
  EXPECT_EQ(server_.requests(kArchive), 0);
  fs::permissions(home_ / "", fs::perms(0755));
  expectUntouched();
}

}  // namespace
}  // namespace horalo

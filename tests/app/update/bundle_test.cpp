#include <gtest/gtest.h>

#include "app/update/allowed_url.h"
#include "app/update/bundle_info.h"
#include "app/update/bundle_path.h"
#include "app/update/leftovers.h"
#include "tests/app/update/test_release.h"
#include "tests/fakes/files.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

TEST(Bundle, isTheNearestFolderThatEndsInApp) {
  EXPECT_EQ(bundleOf("/home/a/Horalo.app/Contents/Linux/horalo"), "/home/a/Horalo.app");
  EXPECT_EQ(bundleOf("/a.app/b.app/c"), "/a.app/b.app");
  EXPECT_EQ(bundleOf("/a.app/b"), "/a.app");
  EXPECT_EQ(bundleOf("/a/My Horalo 2.app/x"), "/a/My Horalo 2.app");
  EXPECT_EQ(bundleOf("/usr/bin/horalo"), "");
  EXPECT_EQ(bundleOf("/home/a/Horalo.app"), "") << "a file of that name";
  EXPECT_EQ(bundleOf("/home/a/Horalo.APP/horalo"), "");
  EXPECT_EQ(bundleOf("/home/a/.app/horalo"), "");
  EXPECT_EQ(bundleOf("/home/a/.Horalo.app.Xq3b9K/Contents/Linux/horalo"), "");
  EXPECT_EQ(bundleOf(""), "");
}

TEST(Bundle, tellsAboutItself) {
  TestBundle bundle;
  bundle.version = "2.5";
  bundle.keys = {"k1", "k2"};
  const TemporaryFolder folder;
  fs::create_directories(folder / "H.app/Contents");
  writeText(folder / "H.app/Contents/Info.plist", bundle.info());
  const BundleInfo info = readBundleInfo(folder / "H.app");
  EXPECT_EQ(info.identifier, "org.horalo.Horalo");
  EXPECT_EQ(info.version, "2.5");
  EXPECT_EQ(info.shownVersion, "2.5");
  EXPECT_EQ(info.feedUrl, QUrl(QStringLiteral("https://example.org/feed")));
  EXPECT_EQ(info.keys, (std::vector<std::string>{"k1", "k2"}));
}

TEST(Bundle, hasAVersionInAnyCase) {
  const TemporaryFolder folder;
  for (const char* document :
       {"", "nonsense", "<plist><array/></plist>", "<plist><dict/></plist>",
        "<plist><dict><key>CFBundleShortVersionString</key><real>2.5</real></dict></plist>"}) {
    const BundleInfo info = parseBundleInfo(document);
    EXPECT_EQ(info.shownVersion, "1.3.0") << document;
    EXPECT_EQ(info.version, "1.3.0") << document;
    EXPECT_TRUE(info.keys.empty()) << document;
  }
  EXPECT_EQ(readBundleInfo(folder / "none.app").version, "1.3.0");
}

TEST(Bundle, keepsAKeyThatIsNoTextForOneThatIsWrong) {
  const BundleInfo info = parseBundleInfo(
      "<plist><dict><key>SUPublicEDKey</key><array><string>a</string><true/></array></dict></"
      "plist>");
  EXPECT_EQ(info.keys, (std::vector<std::string>{"a", ""}));
  EXPECT_EQ(
      parseBundleInfo("<plist><dict><key>SUPublicEDKey</key><string>a</string></dict></plist>")
          .keys,
      (std::vector<std::string>{"a"}));
}

TEST(Bundle, tellsWhyItCanNeverBeUpdated) {
  BundleInfo info;
  info.feedUrl = QUrl(QStringLiteral("https://example.org/feed"));
  EXPECT_EQ(obstacleToUpdates(info), "this bundle was made without a key to check updates with");
  info.keys = {TestKey().publicText()};
  EXPECT_EQ(obstacleToUpdates(info), "");
  info.keys = {TestKey().publicText(), TestKey().publicText()};
  EXPECT_EQ(obstacleToUpdates(info), "");
  for (const std::string& placeholder :
       {std::string(), std::string("YOUR KEY HERE"), std::string(43, 'A') + "=",
        TestKey().publicText() + "x", " " + TestKey().publicText()}) {
    info.keys[1] = placeholder;
    EXPECT_EQ(obstacleToUpdates(info), "a key of this bundle is not valid") << placeholder;
  }
  info.keys.pop_back();
  for (const char* url : {"", "nonsense", "https://"}) {
    info.feedUrl = QUrl(QString::fromLatin1(url), QUrl::StrictMode);
    EXPECT_EQ(obstacleToUpdates(info), "this bundle does not say where to look for updates") << url;
  }
}

TEST(Leftovers, areKnownByTheirNames) {
  const fs::path bundle = "/a/Horalo.app";
  EXPECT_EQ(leftoverPattern(bundle), ".Horalo.app.XXXXXX");
  EXPECT_TRUE(isLeftover(".Horalo.app.Xq3b9K", bundle));
  for (const char* name : {".Horalo.app", "Horalo.app", ".Horalo.app.", ".Horalo.app.Xq3b9",
                           ".Horalo.app.Xq3b9Kx", ".Horalo.app.Xq3b9-", ".Other.app.Xq3b9K"}) {
    EXPECT_FALSE(isLeftover(name, bundle)) << name;
  }
}

TEST(AllowedUrl, isHttpsOrThisComputer) {
  const auto allowed = [](const char* url) {
    return isAllowedUrl(QUrl(QString::fromLatin1(url), QUrl::StrictMode));
  };
  for (const char* url :
       {"https://example.org/f", "https://example.org:8443/f", "http://127.0.0.1:80/f",
        "http://127.9.9.9/", "http://[::1]:9/", "http://localhost:1/"}) {
    EXPECT_TRUE(allowed(url)) << url;
  }
  for (const char* url :
       {"http://example.org/f", "http://localhost.example.org/", "http://127.0.0.1.example.org/",
        "http://10.0.0.1/", "http://0.0.0.0/", "ftp://127.0.0.1/", "file:///etc/passwd",
        "file://127.0.0.1/etc/passwd", "javascript:alert(1)", "data:text/plain,x",
        "https:", "https://", "HTTPS//x", "", "127.0.0.1"}) {
    EXPECT_FALSE(allowed(url)) << url;
  }
}

TEST(AllowedUrl, isNeverLeftForAWeakerOne) {
  const QUrl secure(QStringLiteral("https://example.org/"));
  const QUrl local(QStringLiteral("http://127.0.0.1/"));
  EXPECT_TRUE(isAllowedRedirect(secure, QUrl(QStringLiteral("https://other.example.org/"))));
  EXPECT_TRUE(isAllowedRedirect(local, secure));
  EXPECT_TRUE(isAllowedRedirect(local, local));
  EXPECT_FALSE(isAllowedRedirect(secure, local));
  EXPECT_FALSE(isAllowedRedirect(secure, QUrl(QStringLiteral("http://example.org/"))));
  EXPECT_FALSE(isAllowedRedirect(local, QUrl(QStringLiteral("http://example.org/"))));
  EXPECT_FALSE(isAllowedRedirect(local, QUrl(QStringLiteral("file:///etc/passwd"))));
}

}  // namespace
}  // namespace horalo

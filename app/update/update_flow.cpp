#include "app/update/update_flow.h"

#include <gnu/libc-version.h>

#include <QLocale>
#include <QRandomGenerator>
#include <algorithm>
#include <utility>

#include "app/update/allowed_url.h"
#include "app/update/version_order.h"

namespace horalo {
namespace {

using Page = UpdateScreen::Page;

constexpr qint64 kLongestArchive = qint64{256} << 20;
// Slower than this many bytes a second, a download is given up in the end.
constexpr qint64 kSlowest = 16 * 1024;
// Room for the archive's contents beside the bundle, as a multiple of its length: a bundle has 91
// MB and its archive 25.
constexpr int kUnpacked = 5;
// A list of versions that was not renewed for so many days is worth a word.
constexpr qint64 kOldFeed = 90;

FetchLimits archiveLimits(qint64 length) {
  FetchLimits limits;
  limits.bytes = length;
  limits.exact = true;
  limits.total += std::chrono::seconds(length / kSlowest);
  return limits;
}

UpdateScreen screenOf(Page page, const QString& headline, const QString& text = {}) {
  UpdateScreen screen;
  screen.page = page;
  screen.headline = headline;
  screen.text = text;
  return screen;
}

QString ofDate(const QDateTime& date) {
  return QLocale(QLocale::English).toString(date.toUTC().date(), QStringLiteral("d MMMM yyyy"));
}

QString ageOf(const QDateTime& published, Instant now) {
  if (!published.isValid()) return {};
  QString text = QStringLiteral(" The list of versions was signed on %1").arg(ofDate(published));
  const qint64 days = (now.seconds - published.toSecsSinceEpoch()) / 86'400;
  if (days > kOldFeed) {
    text += QStringLiteral(
                ", %1 days ago. If you know of a newer version, download it from where you got "
                "Horalo")
                .arg(days);
  }
  return text + QStringLiteral(".");
}

}  // namespace

UpdateFlow::UpdateFlow(Installed installed, UpdateState& state, const Clock& clock,
                       QNetworkAccessManager& network)
    : installed_(std::move(installed)), state_(state), clock_(clock), network_(network) {
  const auto& texts = installed_.info.keys;
  keys_ = UpdateKeys::parse(std::vector<std::string_view>(texts.begin(), texts.end()));
}

UpdateFlow::~UpdateFlow() {
  if (worker_) worker_->wait();
}

void UpdateFlow::check(bool askedByUser) {
  askedByUser_ = askedByUser;
  if (!keys_) {
    fail(problem::badBundle(
        installed_.info.keys.empty()
            ? QStringLiteral("It was made without a key to check updates with.")
            : QStringLiteral("One of its keys to check updates with is not valid.")));
    return;
  }
  if (!isAllowedUrl(installed_.info.feedUrl)) {
    fail(problem::badBundle(QStringLiteral("It does not say where to look for updates.")));
    return;
  }
  if (askedByUser_) showPage(screenOf(Page::checking, QStringLiteral("Checking for updates...")));
  FetchLimits limits;
  limits.bytes = kLongestFeed;
  fetch_ = std::make_unique<Fetch>(network_, installed_.info.feedUrl, limits);
  connect(fetch_.get(), &Fetch::finished, this, &UpdateFlow::feedArrived);
}

void UpdateFlow::show() {
  askedByUser_ = true;
  if (screen_.page == Page::none && fetch_)
    showPage(screenOf(Page::checking, QStringLiteral("Checking for updates...")));
}

void UpdateFlow::fail(const Problem& problem) {
  fetch_.reset();
  if (!askedByUser_) {
    Q_EMIT ended();
    return;
  }
  showPage(screenOf(Page::message, problem.message, problem.advice));
}

void UpdateFlow::showPage(UpdateScreen screen) {
  screen_ = std::move(screen);
  Q_EMIT screenChanged();
}

void UpdateFlow::feedArrived(const Outcome<QByteArray>& result) {
  if (const auto* const problem = std::get_if<Problem>(&result)) {
    fail(*problem);
    return;
  }
  const SignedFeed trusted = checkFeedSignature(std::get<QByteArray>(result), *keys_);
  fetch_.reset();
  if (trusted.trust == FeedTrust::unsignedFeed) {
    fail(problem::notAFeed());
  } else if (trusted.trust == FeedTrust::forged) {
    fail(problem::forgedFeed());
  } else if (const auto feed = parseFeed(trusted.content)) {
    decide(*feed);
  } else {
    fail(problem::brokenFeed());
  }
}

void UpdateFlow::decide(const Feed& feed) {
  if (!state_.rolloutGroup()) state_.setRolloutGroup(QRandomGenerator::global()->bounded(7));
  UpdateSituation situation;
  situation.installedVersion = installed_.info.version;
  situation.highestVersion = state_.highestVersion();
  situation.skippedVersion = state_.skippedVersion();
  situation.systemVersion = gnu_get_libc_version();
  situation.rolloutGroup = state_.rolloutGroup().value_or(0);
  situation.now = clock_.now();
  situation.askedByUser = askedByUser_;

  const UpdateChoice choice = chooseUpdate(feed, situation);
  if (choice.outcome == UpdateChoice::Outcome::outdatedFeed) {
    fail(problem::outdatedFeed());
    return;
  }
  state_.setFailures(0);
  state_.setHighestVersion(choice.highestVersion);
  if (choice.item) {
    item_ = *choice.item;
    offer();
  } else {
    upToDate(feed);
  }
}

void UpdateFlow::offer() {
  askedByUser_ = true;  // whatever happens from here on, someone is looking
  UpdateScreen screen =
      screenOf(Page::offer, QStringLiteral("Horalo %1 is available").arg(item_.shownVersion));
  screen.text = QStringLiteral("You have version %1.")
                    .arg(QString::fromStdString(installed_.info.shownVersion));
  if (item_.published.isValid())
    screen.text += QStringLiteral(" The new one was released on %1.").arg(ofDate(item_.published));
  if (item_.critical) screen.text += QStringLiteral(" It mends something important.");
  screen.notes = item_.notes;
  screen.link = item_.link;
  screen.canInstall = !item_.informational;
  screen.canSkip = !item_.critical;
  showPage(std::move(screen));
}

void UpdateFlow::upToDate(const Feed& feed) {
  if (!askedByUser_) {
    Q_EMIT ended();
    return;
  }
  showPage(screenOf(Page::message, QStringLiteral("Horalo is up to date"),
                    QStringLiteral("Version %1 is the newest one.")
                            .arg(QString::fromStdString(installed_.info.shownVersion)) +
                        ageOf(feed.published, clock_.now())));
}

void UpdateFlow::install() {
  if (screen_.page != Page::offer || !screen_.canInstall) return;
  if (item_.archiveLength > kLongestArchive) {
    fail(problem::tooLong());
    return;
  }
  auto staging = Staging::make(installed_.bundle, kUnpacked * item_.archiveLength);
  if (const auto* const problem = std::get_if<Problem>(&staging)) {
    fail(*problem);
    return;
  }
  staging_.emplace(std::get<Staging>(std::move(staging)));

  UpdateScreen screen = screenOf(
      Page::downloading, QStringLiteral("Downloading Horalo %1...").arg(item_.shownVersion));
  screen.total = item_.archiveLength;
  showPage(std::move(screen));
  fetch_ = std::make_unique<Fetch>(network_, item_.archive, archiveLimits(item_.archiveLength));
  connect(fetch_.get(), &Fetch::progressed, this, [this](qint64 received) {
    screen_.received = received;
    Q_EMIT screenChanged();
  });
  connect(fetch_.get(), &Fetch::finished, this, &UpdateFlow::archiveArrived);
}

void UpdateFlow::skip() {
  if (screen_.page != Page::offer || !screen_.canSkip) return;
  state_.setSkippedVersion(item_.version);
  close();
}

void UpdateFlow::close() {
  if (screen_.page == Page::installing) return;
  fetch_.reset();
  staging_.reset();
  showPage({});
  Q_EMIT ended();
}

void UpdateFlow::archiveArrived(const Outcome<QByteArray>& result) {
  if (const auto* const problem = std::get_if<Problem>(&result)) {
    staging_.reset();
    fail(*problem);
    return;
  }
  showPage(screenOf(Page::installing,
                    QStringLiteral("Installing Horalo %1...").arg(item_.shownVersion)));
  InstallationOrder order{std::get<QByteArray>(result), item_, installed_.info,
                          state_.highestVersion(), *keys_};
  fetch_.reset();
  // Unpacking takes seconds, in which the window must stay alive.
  worker_.reset(QThread::create([this, order = std::move(order)] {
    installationProblem_ = horalo::install(order, *staging_, installed_.held);
  }));
  connect(worker_.get(), &QThread::finished, this, &UpdateFlow::installationEnded);
  worker_->start();
}

void UpdateFlow::installationEnded() {
  worker_->wait();
  if (installationProblem_) {
    staging_.reset();
    fail(*installationProblem_);
    return;
  }
  showPage({});
  Q_EMIT installed();
}

}  // namespace horalo

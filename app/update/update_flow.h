#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <QThread>
#include <filesystem>
#include <memory>
#include <optional>

#include "app/update/bundle_info.h"
#include "app/update/choose_update.h"
#include "app/update/fetch.h"
#include "app/update/installation.h"
#include "app/update/update_screen.h"
#include "app/update/update_state.h"
#include "base/clock.h"

namespace horalo {

// One update from the check to the exchange. In this order, each step only after the one before:
// the feed is fetched, its signature is checked, it is read, a version is chosen; the user agrees;
// the place is checked, the archive is fetched, its length and signature are checked, it is
// unpacked, what it says about itself is checked, and it is put in the place of the bundle.
class UpdateFlow : public QObject {
  Q_OBJECT
 public:
  struct Installed {
    std::filesystem::path bundle;
    int held = -1;  // its folder, open
    BundleInfo info;
  };

  // The state, the clock and the network must outlive this object.
  UpdateFlow(Installed installed, UpdateState& state, const Clock& clock,
             QNetworkAccessManager& network);
  ~UpdateFlow() override;

  // Begins; to be called once. A check that the user did not ask for shows nothing, and ends,
  // unless there is a new version.
  void check(bool askedByUser);

  // From now on the user wants to know how it ends.
  void show();

  const UpdateScreen& screen() const { return screen_; }
  // What an ended attempt of the caller comes to.
  void fail(const Problem& problem);

  // The buttons of the window. What does not fit the page is ignored.
  void install();
  void skip();
  void close();  // also later, cancel and OK; not while it installs

  // After the exchange: the two bundles, and the version that is now in place.
  Staging* staging() { return staging_ ? &*staging_ : nullptr; }
  QString newVersion() const { return item_.shownVersion; }  // as people see it
  const std::string& newVersionNumber() const { return item_.version; }

 Q_SIGNALS:
  void screenChanged();
  void installed();
  // There is nothing more to do.
  void ended();

 private:
  void showPage(UpdateScreen screen);
  void feedArrived(const Outcome<QByteArray>& result);
  void decide(const Feed& feed);
  void offer();
  void upToDate(const Feed& feed);
  void archiveArrived(const Outcome<QByteArray>& result);
  void installationEnded();

  Installed installed_;
  UpdateState& state_;
  const Clock& clock_;
  QNetworkAccessManager& network_;
  std::optional<UpdateKeys> keys_;
  bool askedByUser_ = false;
  UpdateScreen screen_;
  std::unique_ptr<Fetch> fetch_;
  FeedItem item_;
  std::optional<Staging> staging_;
  std::unique_ptr<QThread> worker_;
  std::optional<Problem> installationProblem_;
};

}  // namespace horalo

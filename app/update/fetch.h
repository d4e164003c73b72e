#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <memory>
#include <optional>

#include "app/update/problem.h"

namespace horalo {

struct FetchLimits {
  qint64 bytes = 0;                        // more is an error
  bool exact = false;                      // and so is less
  std::chrono::milliseconds idle{30'000};  // without a byte
  std::chrono::milliseconds total{60'000};
};

// Fetches one file into memory, and gives up on servers that are slow, endless, or lead elsewhere.
// Destroying it stops it.
class Fetch : public QObject {
  Q_OBJECT
 public:
  // `url` is one that isAllowedUrl(). The network must outlive this object.
  Fetch(QNetworkAccessManager& network, const QUrl& url, const FetchLimits& limits);
  ~Fetch() override;

 Q_SIGNALS:
  void progressed(qint64 received);
  // Once, and last. Never before the event loop runs.
  void finished(const horalo::Outcome<QByteArray>& result);

 private:
  void ask(const QUrl& url);
  void drop();
  std::optional<QUrl> redirect() const;
  void checkLength();
  void receive();
  void end();
  void giveUp(const Problem& problem);
  std::optional<Problem> failure() const;

  QNetworkAccessManager& network_;
  FetchLimits limits_;
  std::unique_ptr<QNetworkReply> reply_;
  QUrl url_;
  int redirects_ = 0;
  QTimer deadline_;
  QByteArray received_;
  std::optional<Problem> problem_;
  bool ended_ = false;
};

}  // namespace horalo

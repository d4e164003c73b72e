#include "app/update/fetch.h"

#include <QNetworkRequest>

#include "app/update/allowed_url.h"

namespace horalo {
namespace {

// What is kept unread on the way; more would starve the window of an endless answer.
constexpr qint64 kReadBuffer = 256 * 1024;
constexpr int kMostRedirects = 5;

QNetworkRequest requestFor(const QUrl& url, const FetchLimits& limits) {
  QNetworkRequest request(url);
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Horalo"));
  // The bytes are signed as they stand, so they come as they stand.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setTransferTimeout(static_cast<int>(limits.idle.count()));
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  return request;
}

}  // namespace

Fetch::Fetch(QNetworkAccessManager& network, const QUrl& url, const FetchLimits& limits)
    : network_(network), limits_(limits) {
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { giveUp(problem::tooSlow()); });
  deadline_.start(limits.total);
  ask(url);
}

Fetch::~Fetch() {
  drop();
}

void Fetch::ask(const QUrl& url) {
  drop();
  received_.clear();
  url_ = url;
  reply_.reset(network_.get(requestFor(url, limits_)));
  QNetworkReply* const reply = reply_.get();
  reply->setReadBufferSize(kReadBuffer);
  connect(reply, &QNetworkReply::metaDataChanged, this, &Fetch::checkLength);
  connect(reply, &QNetworkReply::readyRead, this, &Fetch::receive);
  // Later, so that whoever hears of it may destroy this object.
  connect(reply, &QNetworkReply::finished, this, &Fetch::end, Qt::QueuedConnection);
}

void Fetch::drop() {
  if (!reply_) return;
  reply_->disconnect(this);
  reply_->abort();
}

// Where the answer sends us; nothing where it is the answer itself.
std::optional<QUrl> Fetch::redirect() const {
  const QVariant target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute);
  if (!target.isValid()) return std::nullopt;
  return url_.resolved(target.toUrl());
}

void Fetch::checkLength() {
  const QVariant status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
  const QVariant length = reply_->header(QNetworkRequest::ContentLengthHeader);
  if (status.toInt() != 200 || !length.isValid()) return;
  if (length.toLongLong() > limits_.bytes) giveUp(problem::tooLong());
}

void Fetch::receive() {
  received_.append(reply_->readAll());
  if (received_.size() > limits_.bytes) {
    giveUp(problem::tooLong());
  } else {
    Q_EMIT progressed(received_.size());
  }
}

void Fetch::end() {
  if (ended_) return;
  if (!problem_ && reply_->bytesAvailable() > 0) receive();
  const auto target = problem_ ? std::nullopt : redirect();
  if (target && isAllowedRedirect(url_, *target) && ++redirects_ <= kMostRedirects) {
    ask(*target);
    return;
  }
  if (target) problem_ = problem::badRedirect();
  if (!problem_) problem_ = failure();
  deadline_.stop();
  ended_ = true;
  if (problem_) {
    Q_EMIT finished(*problem_);
  } else {
    Q_EMIT finished(std::move(received_));
  }
}

void Fetch::giveUp(const Problem& problem) {
  if (problem_) return;
  problem_ = problem;
  deadline_.stop();
  drop();
  // Later, as every end.
  QMetaObject::invokeMethod(this, &Fetch::end, Qt::QueuedConnection);
}

std::optional<Problem> Fetch::failure() const {
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  switch (reply_->error()) {
    case QNetworkReply::NoError:
      break;
    case QNetworkReply::OperationCanceledError:  // only the idle limit is left to have done it
    case QNetworkReply::TimeoutError:
      return problem::tooSlow();
    case QNetworkReply::SslHandshakeFailedError:
      return problem::untrustedServer(reply_->errorString());
    default:
      if (status >= 400) return problem::refusedByServer(status);
      return problem::unreachable(reply_->errorString());
  }
  if (status < 200) return problem::unreachable(QStringLiteral("the connection was closed"));
  if (status != 200) return problem::refusedByServer(status);
  if (limits_.exact && received_.size() != limits_.bytes) return problem::wrongLength();
  return std::nullopt;
}

}  // namespace horalo

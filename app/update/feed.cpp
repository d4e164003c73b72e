#include "app/update/feed.h"

#include <QLocale>
#include <QXmlStreamReader>

#include "app/update/allowed_url.h"
#include "app/update/version_order.h"

namespace horalo {
namespace {

constexpr QLatin1String kAppcast("http://www.andymatuschak.org/xml-namespaces/sparkle");
constexpr qsizetype kMostItems = 1000;
constexpr qsizetype kLongestNotes = 20'000;

// "Fri, 05 Jan 2024 10:00:00 +0000"
QDateTime dateOf(const QString& text) {
  return QDateTime::fromString(text.trimmed(), Qt::RFC2822Date);
}

class Reader {
 public:
  explicit Reader(const QByteArray& content) : xml_(content) {}

  std::optional<Feed> document() {
    while (!xml_.atEnd()) {
      switch (xml_.readNext()) {
        case QXmlStreamReader::DTD:
          return std::nullopt;
        case QXmlStreamReader::StartElement:
          element();
          break;
        default:
          break;
      }
    }
    if (xml_.hasError() || !isFeed_) return std::nullopt;
    return std::move(feed_);
  }

 private:
  bool isPlain(QLatin1String name) const {
    return xml_.namespaceUri().isEmpty() && xml_.name() == name;
  }
  bool isAppcast(QLatin1String name) const {
    return xml_.namespaceUri() == kAppcast && xml_.name() == name;
  }
  QString text() { return xml_.readElementText(QXmlStreamReader::SkipChildElements); }
  std::string word() { return text().trimmed().toStdString(); }

  // The document is one rss element with channels; whatever else is at these levels is left out.
  void element() {
    if (!isPlain(QLatin1String("rss"))) {
      xml_.skipCurrentElement();
      return;
    }
    isFeed_ = true;
    while (xml_.readNextStartElement()) {
      if (isPlain(QLatin1String("channel"))) {
        channel();
      } else {
        xml_.skipCurrentElement();
      }
    }
  }

  void channel() {
    while (xml_.readNextStartElement()) {
      if (isPlain(QLatin1String("item"))) {
        FeedItem read = item();
        if (static_cast<qsizetype>(feed_.items.size()) < kMostItems)
          feed_.items.push_back(std::move(read));
      } else if (isPlain(QLatin1String("pubDate"))) {
        feed_.published = dateOf(text());
      } else {
        xml_.skipCurrentElement();
      }
    }
  }

  FeedItem item() {
    FeedItem item;
    while (xml_.readNextStartElement()) {
      if (xml_.namespaceUri() == kAppcast) {
        appcastElement(item);
      } else if (xml_.namespaceUri().isEmpty()) {
        plainElement(item);
      } else {
        xml_.skipCurrentElement();
      }
    }
    if (item.shownVersion.isEmpty()) item.shownVersion = QString::fromStdString(item.version);
    return item;
  }

  void plainElement(FeedItem& item) {
    if (isPlain(QLatin1String("pubDate"))) {
      item.published = dateOf(text());
    } else if (isPlain(QLatin1String("link"))) {
      const QUrl link(text().trimmed(), QUrl::StrictMode);
      if (link.isValid() && link.scheme() == QLatin1String("https")) item.link = link;
    } else if (isPlain(QLatin1String("description"))) {
      item.notes = text().trimmed().left(kLongestNotes);
    } else if (isPlain(QLatin1String("enclosure"))) {
      enclosure(item);
    } else {
      xml_.skipCurrentElement();
    }
  }

  void appcastElement(FeedItem& item) {
    const QString name = xml_.name().toString();
    if (name == QLatin1String("version")) {
      item.version = word();
    } else if (name == QLatin1String("shortVersionString")) {
      item.shownVersion = text().simplified().left(kLongestVersion);
    } else if (name == QLatin1String("minimumSystemVersion")) {
      item.minimumSystemVersion = word();
    } else if (name == QLatin1String("minimumUpdateVersion")) {
      item.minimumUpdateVersion = word();
    } else if (name == QLatin1String("channel")) {
      item.channel = word();
    } else if (name == QLatin1String("phasedRolloutInterval")) {
      item.rolloutInterval = text().trimmed().toDouble();
    } else if (name == QLatin1String("criticalUpdate")) {
      item.critical = true;
      item.criticalBelow =
          xml_.attributes().value(kAppcast, QLatin1String("version")).toString().toStdString();
      xml_.skipCurrentElement();
    } else if (name == QLatin1String("informationalUpdate")) {
      informational(item);
    } else {
      xml_.skipCurrentElement();
    }
  }

  void informational(FeedItem& item) {
    item.informational = true;
    while (xml_.readNextStartElement()) {
      if (isAppcast(QLatin1String("version"))) {
        item.informationalFor.push_back(word());
      } else if (isAppcast(QLatin1String("belowVersion"))) {
        item.informationalBelow = word();
      } else {
        xml_.skipCurrentElement();
      }
    }
  }

  void enclosure(FeedItem& item) {
    const QXmlStreamAttributes attributes = xml_.attributes();
    const QUrl url(attributes.value(QLatin1String("url")).toString().trimmed(), QUrl::StrictMode);
    if (isAllowedUrl(url)) item.archive = url;
    const qint64 length = attributes.value(QLatin1String("length")).toLongLong();
    item.archiveLength = length > 0 ? length : 0;
    const auto appcast = [&](const char* name) {
      return attributes.value(kAppcast, QLatin1String(name)).trimmed().toString().toStdString();
    };
    item.archiveSignature = appcast("edSignature");
    item.system = appcast("os");
    // Older feeds tell these here.
    if (item.version.empty()) item.version = appcast("version");
    if (item.shownVersion.isEmpty())
      item.shownVersion =
          QString::fromStdString(appcast("shortVersionString")).left(kLongestVersion);
    xml_.skipCurrentElement();
  }

  QXmlStreamReader xml_;
  Feed feed_;
  bool isFeed_ = false;
};

}  // namespace

std::optional<Feed> parseFeed(const QByteArray& content) {
  if (content.size() > kLongestFeed) return std::nullopt;
  return Reader(content).document();
}

}  // namespace horalo

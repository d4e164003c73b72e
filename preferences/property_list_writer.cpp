#include <QString>
#include <QXmlStreamWriter>
#include <array>
#include <charconv>
#include <cmath>

#include "preferences/property_list.h"

namespace horalo::plist {
namespace {

// What XML cannot hold is replaced, so that the document can be read back.
QString xmlText(const std::string& utf8) {
  QString text = QString::fromStdString(utf8);
  for (QChar& c : text) {
    const bool control = c < u' ' && c != u'\t' && c != u'\n' && c != u'\r';
    if (control || c == QChar(0xFFFE) || c == QChar(0xFFFF)) c = QChar::ReplacementCharacter;
  }
  return text;
}

// The shortest text that reads back as the same number.
QString realText(double number) {
  if (std::isnan(number)) return QStringLiteral("nan");
  if (std::isinf(number))
    return number > 0 ? QStringLiteral("+infinity") : QStringLiteral("-infinity");
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return QString::fromLatin1(text.data(), end - text.data());
}

class Writer {
 public:
  explicit Writer(QByteArray* document) : xml_(document) {
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(-1);  // one tab
  }

  void document(const Dictionary& dictionary) {
    xml_.writeStartDocument();
    xml_.writeDTD(
        QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
    xml_.writeStartElement(QStringLiteral("plist"));
    xml_.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    (*this)(dictionary);
    xml_.writeEndDocument();
  }

  void operator()(bool value) {
    xml_.writeEmptyElement(value ? QStringLiteral("true") : QStringLiteral("false"));
  }
  void operator()(std::int64_t value) { element("integer", QString::number(value)); }
  void operator()(std::uint64_t value) { element("integer", QString::number(value)); }
  void operator()(double value) { element("real", realText(value)); }
  void operator()(const std::string& value) { element("string", xmlText(value)); }
  void operator()(const Date& value) { element("date", xmlText(value.text)); }
  void operator()(const Data& value) {
    element("data", QString::fromLatin1(QByteArray::fromStdString(value.bytes).toBase64()));
  }

  void operator()(const Array& array) {
    xml_.writeStartElement(QStringLiteral("array"));
    for (const Value& value : array) std::visit(*this, value.content);
    xml_.writeEndElement();
  }

  void operator()(const Dictionary& dictionary) {
    xml_.writeStartElement(QStringLiteral("dict"));
    for (const auto& [key, value] : dictionary) {
      element("key", xmlText(key));
      std::visit(*this, value.content);
    }
    xml_.writeEndElement();
  }

 private:
  void element(const char* name, const QString& text) {
    xml_.writeStartElement(QString::fromLatin1(name));
    // A reader takes a carriage return for the end of a line unless it is written as a reference.
    const auto parts = text.split(u'\r');
    for (qsizetype i = 0; i < parts.size(); ++i) {
      if (i > 0) xml_.writeEntityReference(QStringLiteral("#13"));
      xml_.writeCharacters(parts[i]);
    }
    xml_.writeEndElement();
  }

  QXmlStreamWriter xml_;
};

}  // namespace

QByteArray write(const Dictionary& dictionary) {
  QByteArray document;
  Writer(&document).document(dictionary);
  return document;
}

}  // namespace horalo::plist

#include "preferences/property_list.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace horalo {
namespace {

using plist::Array;
using plist::Data;
using plist::Date;
using plist::Dictionary;
using plist::Value;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

QByteArray documentOf(const std::string& body) {
  return QByteArray::fromStdString(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n");
}

// The value under "k" in a dictionary that holds nothing else.
std::optional<Value> valueIn(const std::string& element) {
  const auto values = plist::read(documentOf("<dict><key>k</key>" + element + "</dict>"));
  if (!values || !values->contains("k")) return std::nullopt;
  return values->at("k");
}

const Dictionary& everyType() {
  static const Dictionary values{
      {"array", Array{1, "two", Array{}, Dictionary{}}},
      {"bytes", Data{std::string("\0\xff{}", 4)}},
      {"date", Date{"2024-01-01T00:00:00Z"}},
      {"dictionary", Dictionary{{"inner", true}}},
      {"false", false},
      {"integer", std::numeric_limits<std::int64_t>::min()},
      {"large", std::numeric_limits<std::uint64_t>::max()},
      {"none", ""},
      {"real", 0.1},
      {"string", " <&>\"'\t\r\n\r]]> \xE2\x87\xA7\xF0\x9F\x98\x80 "},
      {"true", true},
      {"whole", 60.0},
  };
  return values;
}

TEST(PropertyList, whatIsWrittenIsReadBack) {
  EXPECT_EQ(plist::read(plist::write(everyType())), everyType());
  EXPECT_EQ(plist::read(plist::write({})), Dictionary{});
}

TEST(PropertyList, realsKeepEveryBit) {
  for (const double real : {1e300, 5e-324, -0.0, 393.5, 1.0 / 3, HUGE_VAL, -HUGE_VAL}) {
    const auto values = plist::read(plist::write({{"k", real}}));
    ASSERT_TRUE(values);
    EXPECT_EQ(values->at("k"), Value(real));
    EXPECT_EQ(std::signbit(*values->at("k").number()), std::signbit(real));
  }
  const auto values = plist::read(plist::write({{"k", std::nan("")}}));
  ASSERT_TRUE(values);
  EXPECT_TRUE(std::isnan(values->at("k").number().value_or(0)));
}

TEST(PropertyList, isWrittenInTheUsualForm) {
  EXPECT_EQ(plist::write({{"b", 60.0}, {"a", true}}).toStdString(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "\t<dict>\n"
            "\t\t<key>a</key>\n"
            "\t\t<true/>\n"
            "\t\t<key>b</key>\n"
            "\t\t<real>60</real>\n"
            "\t</dict>\n"
            "</plist>\n");
}

TEST(PropertyList, whatXmlCannotHoldIsReplaced) {
  const auto values = plist::read(plist::write({{"k", std::string("a\0b\x1b\xff", 5)}}));
  ASSERT_TRUE(values);
  EXPECT_EQ(*values->at("k").string(), "a\uFFFDb\uFFFD\uFFFD");
}

TEST(PropertyList, typesAreKeptApart) {
  EXPECT_EQ(Value(1).boolean(), std::nullopt);
  EXPECT_EQ(Value(true).number(), std::nullopt);
  EXPECT_EQ(Value("60").number(), std::nullopt);
  EXPECT_EQ(Value("x").data(), nullptr);
  EXPECT_EQ(Value(Data{"x"}).string(), nullptr);
  EXPECT_EQ(Value(Array{}).dictionary(), nullptr);
  EXPECT_EQ(Value(Dictionary{}).array(), nullptr);
  EXPECT_EQ(Value(60).number(), 60.0);
  EXPECT_EQ(Value(std::uint64_t{1} << 63).number(), 0x1p63);
  EXPECT_FALSE(Value(60) == Value(60.0));
}

TEST(PropertyList, readsEveryElement) {
  const std::vector<std::tuple<const char*, std::optional<Value>>> rows{
      {"<true/>", true},
      {"<true></true>", true},
      {"<false />", false},
      {"<integer>60</integer>", 60},
      {"<integer> -1\n</integer>", -1},
      {"<integer>+7</integer>", 7},
      {"<integer>0x1F</integer>", 31},
      {"<integer>-0x10</integer>", -16},
      {"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
      {"<integer>-9223372036854775809</integer>", std::nullopt},
      {"<integer>9223372036854775808</integer>", std::uint64_t{1} << 63},
      {"<integer>18446744073709551616</integer>", std::nullopt},
      {"<integer>1.5</integer>", std::nullopt},
      {"<integer>--1</integer>", std::nullopt},
      {"<integer/>", std::nullopt},
      {"<real>60</real>", 60.0},
      {"<real>+1.5e3</real>", 1500.0},
      {"<real>.5</real>", 0.5},
      {"<real>inf</real>", HUGE_VAL},
      {"<real>-Infinity</real>", -HUGE_VAL},
      {"<real>+infinity</real>", HUGE_VAL},
      {"<real>+-1</real>", std::nullopt},
      {"<real>1,5</real>", std::nullopt},
      {"<real>x</real>", std::nullopt},
      {"<string>a &lt;b&gt; &amp; &#x21E7;<![CDATA[<c>]]></string>", "a <b> & \u21E7<c>"},
      {"<string>a<!-- no -->b</string>", "ab"},
      {"<string/>", ""},
      {"<string>a\r\nb</string>", "a\nb"},
      {"<data>\n\te2F9\n\tYg==\n\t</data>", Data{"{a}b"}},
      {"<data></data>", Data{""}},
      {"<data>e2F9!</data>", std::nullopt},
      {"<date>2024-01-01T00:00:00Z</date>", Date{"2024-01-01T00:00:00Z"}},
      {"<array><true/><what/><integer>x</integer>text<integer>2</integer></array>", Array{true, 2}},
      {"<dict/>", Dictionary{}},
      {"<what>ever<true/></what>", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& [element, expected] : rows) EXPECT_EQ(valueIn(element), expected) << element;
  EXPECT_EQ(rows.size(), 36U);
}

TEST(PropertyList, oneBadEntryLeavesTheOthers) {
  const auto values = plist::read(
      documentOf("<dict><!-- c --><key>a</key><key>b</key><true/>"  // a has no value
                 "<integer>3</integer>"                             // no key
                 "<key>c</key><colour/><key>d</key><integer>x</integer>"
                 "<key>e</key><string>first</string><key>e</key><string>last</string></dict>"));
  ASSERT_TRUE(values);
  EXPECT_THAT(*values, ElementsAre(Pair("b", Value(true)), Pair("e", Value("last"))));
}

TEST(PropertyList, marksAndEndsOfLines) {
  const QByteArray document = plist::write(everyType());
  EXPECT_EQ(plist::read("\xEF\xBB\xBF" + document), everyType()) << "byte order mark";
  QByteArray crlf = plist::write({{"a", 1}, {"b", "x"}});
  crlf.replace("\n", "\r\n");
  EXPECT_EQ(plist::read(crlf), (Dictionary{{"a", 1}, {"b", "x"}}));
  EXPECT_EQ(plist::read("<dict><key>a</key><true/></dict>"), (Dictionary{{"a", true}}))
      << "without the outer element";
}

TEST(PropertyList, whatIsNoneIsRefused) {
  const QByteArray whole = plist::write(everyType());
  std::vector<QByteArray> documents{"",
                                    " \n",
                                    QByteArray(1000, '\0'),
                                    "bplist00\xd0\x08",
                                    "{\"isUTC\": true}",
                                    "<plist/>",
                                    documentOf(""),
                                    documentOf("<array/>"),
                                    documentOf("<string>x</string>"),
                                    documentOf("<dict><key>a</key>"),
                                    documentOf("<dict/>") + "<x/>",
                                    documentOf("<dict><key>a<b/></key><true/></dict>"),
                                    documentOf("<dict>&unknown;</dict>"),
                                    "<?xml version=\"1.0\" encoding=\"ebcdic\"?><dict/>"};
  for (const double share : {0.1, 0.5, 0.9, 0.99}) {
    documents.push_back(
        whole.first(static_cast<qsizetype>(share * static_cast<double>(whole.size()))));
  }
  for (const QByteArray& document : documents) {
    EXPECT_EQ(plist::read(document), std::nullopt) << document.left(200).toStdString();
  }
  EXPECT_EQ(documents.size(), 18U);
}

TEST(PropertyList, sizeAndDepthHaveLimits) {
  const auto sized = [](qsizetype size) {
    const QByteArray frame = documentOf("<dict><key>k</key><string></string></dict>");
    QByteArray document = frame;
    document.insert(frame.indexOf("</string>"), QByteArray(size - frame.size(), 'x'));
    return document;
  };
  EXPECT_TRUE(plist::read(sized(plist::kLongestDocument)));
  EXPECT_FALSE(plist::read(sized(plist::kLongestDocument + 1)));

  const auto nested = [](int depth) {
    std::string body = "<dict><key>k</key>";
    for (int i = 0; i < depth; ++i) body += "<array>";
    for (int i = 0; i < depth; ++i) body += "</array>";
    return documentOf(body + "</dict>");
  };
  EXPECT_TRUE(plist::read(nested(200)));
  EXPECT_FALSE(plist::read(nested(300)));
  EXPECT_FALSE(plist::read(nested(60'000)));
}

TEST(PropertyList, entitiesDoNotExplode) {
  QByteArray bomb = "<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\">";
  for (char c = 'b'; c <= 'j'; ++c) {
    const QByteArray previous = QByteArray("&").append(static_cast<char>(c - 1)).append(";");
    bomb += QByteArray("<!ENTITY ").append(c).append(" \"") + previous.repeated(10) + "\">";
  }
  bomb += "]><plist><dict><key>k</key><string>&j;</string></dict></plist>";
  EXPECT_EQ(plist::read(bomb), std::nullopt);
}

// A document with one or two places damaged.
QByteArray damaged(QByteArray document, std::mt19937& random) {
  static const std::vector<QByteArray> pieces{"<",
                                              ">",
                                              "</",
                                              "/>",
                                              "&",
                                              ";",
                                              "<dict>",
                                              "</dict>",
                                              "<key>",
                                              "<true/>",
                                              "<array>",
                                              "]]>",
                                              "<!--",
                                              "-->",
                                              "<?x",
                                              "0x",
                                              "-",
                                              "9",
                                              QByteArray(1, '\0'),
                                              "\xff"};
  const auto below = [&](qsizetype limit) {
    return std::uniform_int_distribution<qsizetype>(0, limit - 1)(random);
  };
  for (auto places = below(2) + 1; places > 0; --places) {
    const auto position = below(document.size());
    switch (below(3)) {
      case 0:
        document.remove(position, below(40));
        break;
      case 1:
        document.insert(position, pieces[static_cast<std::size_t>(below(std::ssize(pieces)))]);
        break;
      default:
        document[position] = static_cast<char>(random());
    }
    if (document.isEmpty()) break;
  }
  return document;
}

TEST(PropertyList, whateverIsReadOfDamagedDocumentsIsWrittenAndReadBack) {
  std::mt19937 random(20240101);
  const QByteArray whole = plist::write(everyType());
  int read = 0;
  int refused = 0;
  for (int i = 0; i < 20'000; ++i) {
    const QByteArray document = damaged(whole, random);
    const auto values = plist::read(document);
    ++(values ? read : refused);
    if (!values) continue;
    const auto again = plist::read(plist::write(*values));
    ASSERT_TRUE(again) << document.toStdString();
    EXPECT_EQ(plist::write(*again), plist::write(*values)) << document.toStdString();
  }
  EXPECT_EQ(read + refused, 20'000);
  EXPECT_GT(read, 1'000);
  EXPECT_GT(refused, 1'000);
}

class Python {
 public:
  // Standard output of a program that reads `input`; fails the test where it fails.
  static QByteArray run(const char* program, const QByteArray& input) {
    QProcess python;
    python.start(QStringLiteral(HORALO_PYTHON),
                 {QStringLiteral("-Bc"), QString::fromLatin1(program)});
    python.write(input);
    python.closeWriteChannel();
    EXPECT_TRUE(python.waitForFinished(-1));
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    return python.readAllStandardOutput();
  }
};

TEST(PropertyList, pythonReadsWhatIsWritten) {
  const QByteArray told = Python::run(
      "import plistlib, sys\n"
      "for key, value in sorted(plistlib.loads(sys.stdin.buffer.read()).items()):\n"
      "    print(key, type(value).__name__, ascii(value))\n",
      plist::write(everyType()));
  EXPECT_EQ(told.toStdString(),
            "array list [1, 'two', [], {}]\n"
            "bytes bytes b'\\x00\\xff{}'\n"
            "date datetime datetime.datetime(2024, 1, 1, 0, 0)\n"
            "dictionary dict {'inner': True}\n"
            "false bool False\n"
            "integer int -9223372036854775808\n"
            "large int 18446744073709551615\n"
            "none str ''\n"
            "real float 0.1\n"
            "string str ' <&>\"\\'\\t\\r\\n\\r]]> \\u21e7\\U0001f600 '\n"
            "true bool True\n"
            "whole float 60.0\n");
}

TEST(PropertyList, readsWhatPythonWrites) {
  const QByteArray document = Python::run(
      "import plistlib, sys, datetime\n"
      "plistlib.dump({'yes': True, 'count': -1, 'large': 2**64 - 1, 'real': 1e300,\n"
      "    'nan': float('nan'), 'inf': float('-inf'), 'text': 'a<b>\\u21e7', 'bytes': b'{}' * "
      "100,\n"
      "    'date': datetime.datetime(2024, 1, 1), 'list': [1, [2.5]], 'empty': {}},\n"
      "    sys.stdout.buffer)\n",
      {});
  auto values = plist::read(document);
  ASSERT_TRUE(values);
  EXPECT_TRUE(std::isnan(values->at("nan").number().value_or(0)));
  values->erase("nan");
  std::string bytes;
  for (int i = 0; i < 100; ++i) bytes += "{}";
  EXPECT_EQ(*values, (Dictionary{{"yes", true},
                                 {"count", -1},
                                 {"large", std::numeric_limits<std::uint64_t>::max()},
                                 {"real", 1e300},
                                 {"inf", -HUGE_VAL},
                                 {"text", "a<b>\u21E7"},
                                 {"bytes", Data{bytes}},
                                 {"date", Date{"2024-01-01T00:00:00Z"}},
                                 {"list", Array{1, Array{2.5}}},
                                 {"empty", Dictionary{}}}));
}

}  // namespace
}  // namespace horalo

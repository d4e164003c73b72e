#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPainter>
#include <QTextStream>

#include "tests/app/panel_fixture.h"
#include "ui/appearance.h"

// Draws the panel in each of its states into pictures, for a person to look at:
//
//   QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=1.25 panel_gallery --dark --locale fa_IR FOLDER

namespace {

using namespace horalo;

struct State {
  const char* name;
  const char* input;
  int selected;
  bool utc;
  bool copied;
};

constexpr State kStates[] = {
    {"empty", "", 0, false, false},
    {"result", "1704067200", 1, true, false},
    {"copied", "2024-02-29 12:34:56", 3, false, true},
    {"error", "next tuesdy", 0, false, false},
    {"far", "now + 900000 years", 4, false, false},
    {"now", "now", 0, false, false},
    {"long", "1704067200 and a text that goes on and on and on beyond the field", 0, false, false},
};

void press(QWidget& widget, int key) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

QImage picture(const State& state, const std::string& locale) {
  PanelFixture fixture(locale);
  fixture.preferences.setCloseWindowAfterCopy(false);
  ConverterView view(fixture.environment(), fixture.callbacks());
  view.setAttribute(Qt::WA_TranslucentBackground);
  view.setLayoutDirection(Qt::LeftToRight);
  view.resize(480, 280);
  view.setBackdrop(Backdrop::translucent);
  view.show();
  view.activateWindow();
  if (state.utc) fixture.viewModel.toggleUTC();
  fixture.viewModel.setInput(state.input);
  QCoreApplication::processEvents();
  auto& input = *view.findChild<QLineEdit*>();
  for (int i = 0; i < state.selected; ++i) press(input, Qt::Key_Down);
  if (state.copied) press(input, Qt::Key_Return);
  QCoreApplication::processEvents();
  return view.grab().toImage();
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QCommandLineParser options;
  options.addOptions(
      {{QStringLiteral("dark"), QStringLiteral("Dark instead of light.")},
       {QStringLiteral("locale"), {}, QStringLiteral("LOCALE"), QStringLiteral("en_US")},
       {QStringLiteral("text-scale"), {}, QStringLiteral("FACTOR"), QStringLiteral("1")}});
  options.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Where pictures go."));
  options.process(application);
  if (options.positionalArguments().size() != 1) options.showHelp(2);

  const bool dark = options.isSet(QStringLiteral("dark"));
  DesktopAppearance desktop;
  desktop.dark = dark;
  desktop.textScale = options.value(QStringLiteral("text-scale")).toDouble();
  desktop.reducedMotion = true;  // a picture shows where the switch comes to rest
  Appearance::shared().setDesktop(desktop);
  const std::string locale = options.value(QStringLiteral("locale")).toStdString();

  const QDir folder(options.positionalArguments().constFirst());
  folder.mkpath(QStringLiteral("."));
  QImage sheet;
  int y = 0;
  for (const State& state : kStates) {
    const QImage image = picture(state, locale);
    if (sheet.isNull()) {
      const int count = static_cast<int>(std::size(kStates));
      sheet = QImage(2 * image.width() + 60, (count + 1) / 2 * (image.height() + 20) + 20,
                     QImage::Format_RGB32);
      sheet.fill(dark ? QColor(0x1D, 0x24, 0x30) : QColor(0xC9, 0xD6, 0xE8));
    }
    QPainter painter(&sheet);
    QImage flat = image;
    flat.setDevicePixelRatio(1);
    const int column = y % 2;
    painter.drawImage(20 + column * (image.width() + 20), 20 + y / 2 * (image.height() + 20), flat);
    ++y;
  }
  const QString name = folder.filePath(QStringLiteral("panel.png"));
  if (!sheet.save(name)) return 1;
  QTextStream(stdout) << name << '\n';
  return 0;
}

#include "app/views/guides_window.h"

#include <QPainter>
#include <cmath>

namespace horalo {
namespace {

constexpr int kDash = 6;
constexpr int kGap = 6;

// The dashes of a line, each one pixel wide.
template <typename Each>
void forEachDash(const GuideLine& line, Each each) {
  const bool vertical = line.from.x == line.to.x;
  const int length = static_cast<int>(vertical ? line.to.y : line.to.x);
  const int at = static_cast<int>(std::floor(vertical ? line.from.x : line.from.y));
  for (int start = 0; start < length; start += kDash + kGap) {
    const int dash = std::min(kDash, length - start);
    each(vertical ? QRect(at, start, 1, dash) : QRect(start, at, dash, 1));
  }
}

}  // namespace

GuidesWindow::GuidesWindow(WindowBackend& backend, const Rect& defaultFrame,
                           const Rect& screenFrame)
    : lines_(guideLines(defaultFrame, screenFrame)), translucent_(backend.isComposited()) {
  setWindowTitle(QStringLiteral("Horalo Guides"));
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_ShowWithoutActivating);
  backend.configure(*this, WindowRole::guides);
  resize(static_cast<int>(screenFrame.width), static_cast<int>(screenFrame.height));
  if (!translucent_) setMask(shape());
  backend.setFrameOrigin(*this, {screenFrame.x, screenFrame.y});
}

QRegion GuidesWindow::shape() const {
  QRegion region;
  for (const GuideLine& line : lines_) {
    forEachDash(line, [&region](const QRect& dash) { region += dash; });
  }
  return region;
}

void GuidesWindow::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  const QColor grey = QColor::fromRgbF(0.5F, 0.5F, 0.5F, translucent_ ? 0.6F : 1.0F);
  for (const GuideLine& line : lines_) {
    forEachDash(line, [&](const QRect& dash) { painter.fillRect(dash, grey); });
  }
}

}  // namespace horalo

#include "converter/views/timezone_picker_view.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <cmath>
#include <utility>

#include "converter/time_zone_choices.h"
#include "ui/appearance.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/symbols.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr TextStyle kLabel{.size = kCaptionSize, .color = ColorRole::secondary};
constexpr double kGlobeSize = 12;
constexpr double kSpacing = 4;
constexpr double kRingRadius = 4;
constexpr double kMostTextWidth = 170;  // longer identifiers end in an ellipsis

// A menu takes "&" for the mark of a mnemonic.
QString menuTitle(std::string_view title) {
  QString text = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size()));
  return text.replace(u'&', QStringLiteral("&&"));
}

}  // namespace

TimezonePickerView::TimezonePickerView(const Clock& clock, const ZoneSource& zones,
                                       OnChange onChange, QWidget* parent)
    : QAbstractButton(parent), clock_(clock), zones_(zones), onChange_(std::move(onChange)) {
  setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard where it is
  connect(this, &QAbstractButton::clicked, this, &TimezonePickerView::showMenu);
  connect(&Appearance::shared(), &Appearance::changed, this, qOverload<>(&QWidget::update));
}

void TimezonePickerView::render(const TimeZone& selected) {
  const QString label = QString::fromStdString(timeZoneLabel(selected, clock_.now()));
  if (label == text()) return;
  setText(label);
  announceName(this);
}

QSize TimezonePickerView::sizeHint() const {
  const QFontMetricsF metrics(fontOf(kLabel));
  const double label = std::min(metrics.horizontalAdvance(text()), scaledLength(kMostTextWidth));
  const double globe = scaledLength(kGlobeSize);
  return {static_cast<int>(std::ceil(globe + kSpacing + label)) + 2 * kFocusRingMargin,
          static_cast<int>(std::ceil(std::max(globe, metrics.height()))) + 2 * kFocusRingMargin};
}

void TimezonePickerView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  const QRectF area = QRectF(rect()).adjusted(kFocusRingMargin, kFocusRingMargin, -kFocusRingMargin,
                                              -kFocusRingMargin);
  const QColor colour = isDown() || underMouse() ? color(ColorRole::primary) : colorOf(kLabel);
  const double globe = scaledLength(kGlobeSize);
  drawSymbol(painter, Symbol::globe, QPointF(area.left() + globe / 2, area.center().y()), globe,
             colour);
  drawLine(painter, area.adjusted(globe + kSpacing, 0, 1, 0), Qt::AlignLeft, text(), fontOf(kLabel),
           colour);
  if (hasFocus()) drawFocusRing(painter, area, kRingRadius);
}

void TimezonePickerView::showMenu() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto choose = [this](const TimeZone& zone) {
    if (onChange_) onChange_(zone);
  };
  menu->addAction(menuTitle(localTimeZoneTitle(zones_.current(), clock_.now())), this,
                  [this, choose] { choose(zones_.current()); });
  menu->addSeparator();
  for (const TimeZoneChoice& choice : timeZoneChoices()) {
    menu->addAction(menuTitle(choice.title), this,
                    [choose, zone = choice.timezone] { choose(zone); });
  }
  menu->popup(mapToGlobal(QPoint(kFocusRingMargin, height())));
}

void TimezonePickerView::mousePressEvent(QMouseEvent* event) {
  // A menu opens at the press, so that one movement can go on to the choice.
  if (event->button() == Qt::LeftButton) {
    showMenu();
  } else {
    QAbstractButton::mousePressEvent(event);
  }
}

void TimezonePickerView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      showMenu();
      break;
    default:
      event->ignore();
  }
}

void TimezonePickerView::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  update();
}

void TimezonePickerView::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  update();
}

void TimezonePickerView::amendAccessibleState(QAccessible::State& state) const {
  state.hasPopup = true;
}

QStringList TimezonePickerView::accessibleActions() const {
  return {QAccessibleActionInterface::showMenuAction(), QAccessibleActionInterface::pressAction()};
}

void TimezonePickerView::doAccessibleAction(const QString& name) {
  Q_UNUSED(name);
  showMenu();
}

}  // namespace horalo

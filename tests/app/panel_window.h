#pragma once

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "app/views/converter_view.h"
#include "app/views/result_row_view.h"
#include "tests/app/panel_fixture.h"
#include "ui/switch.h"
#include "ui/symbol_button.h"

namespace horalo {

// A converter view in a window that has the keyboard, and hands for it.
struct PanelWindow : PanelFixture {
  explicit PanelWindow(const std::string& locale = "en_US")
      : PanelFixture(locale), view(environment(), callbacks()) {
    preferences.setCloseWindowAfterCopy(false);
    view.resize(480, 280);
    show();
  }

  void show() {
    view.show();
    view.activateWindow();
    turn();
  }

  // Lets the event loop run until it has nothing more to do.
  static void turn() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }

  template <typename Widget>
  Widget& find(const QString& accessibleName = {}) {
    for (Widget* widget : view.findChildren<Widget*>()) {
      if (accessibleName.isEmpty() || widget->accessibleName() == accessibleName) return *widget;
    }
    throw std::runtime_error("there is no such widget");
  }

  ConverterInput& input() { return find<ConverterInput>(); }
  SymbolButton& clear() { return find<SymbolButton>(); }
  Switch& utc() { return find<Switch>(); }
  ResultRowView& row(int index) { return *view.findChildren<ResultRowView*>().at(index); }

  // Presses and releases a key where the keyboard is.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    turn();
  }
  void type(const QString& text) {
    QTest::keyClicks(&input(), text);
    turn();
  }

  QString name(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
  }
  // The text of the row as a screen reader tells it.
  std::string rowText(int index) { return name(row(index)).toStdString(); }
  // The rows that a screen reader takes for highlighted.
  std::vector<int> highlighted() {
    std::vector<int> found;
    for (int i = 0; i < 5; ++i) {
      if (QAccessible::queryAccessibleInterface(&row(i))->state().selected) found.push_back(i);
    }
    return found;
  }
  // Every label that can be seen.
  std::vector<std::string> labels() {
    std::vector<std::string> found;
    for (TextLabel* label : view.findChildren<TextLabel*>()) {
      if (label->isVisible()) found.push_back(label->text().toStdString());
    }
    return found;
  }

  ConverterView view;
};

}  // namespace horalo

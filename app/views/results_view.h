#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "app/views/result_row_view.h"
#include "engine/conversion_result.h"
#include "ui/accessible_node.h"

namespace horalo {

// The five rows of a result. Where large texts make them taller than the panel has room for, they
// first give up their padding and then scroll.
class ResultsView : public QWidget, public AccessibleNode {
  Q_OBJECT
 public:
  explicit ResultsView(QWidget* parent = nullptr);

  void render(const std::array<ResultRow, kRowCount>& rows, int selectedIndex,
              std::optional<int> copiedRowIndex);

  // The part of a value that was selected with the mouse; empty where there is none.
  QString selectedText() const;
  void clearSelection();

  QAccessible::Role accessibleRole() const override { return QAccessible::List; }

 Q_SIGNALS:
  // A row was clicked: its number and the value that it shows (UTF-8).
  void rowClicked(int index, const std::string& value);
  void selectionStarted();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void layOut();
  void fitValues();
  int rowTop(int index) const;
  int overflow() const;  // how much taller the rows are than the view
  void scrollTo(int offset);
  void reveal(int index);

  std::array<ResultRowView, kRowCount> views_;
  std::array<std::string, kRowCount> values_;
  int selectedIndex_ = 0;
  int rowHeight_ = 0;
  int scroll_ = 0;
};

}  // namespace horalo

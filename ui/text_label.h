#pragma once

#include <QWidget>

#include "ui/accessible_node.h"
#include "ui/text_style.h"

namespace horalo {

// One line of text, cut with an ellipsis where it is too long. Clicks go through to what is behind.
class TextLabel : public QWidget, public AccessibleNode {
  Q_OBJECT
 public:
  explicit TextLabel(const TextStyle& style, const QString& text = {}, QWidget* parent = nullptr);

  const QString& text() const { return text_; }
  void setText(const QString& text);
  // Left until told otherwise.
  void setAlignment(Qt::Alignment alignment);

  QSize sizeHint() const override;

  QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
  QString accessibleText() const override { return text_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void updateLook();

  TextStyle style_;
  QString text_;
  QFont font_;
  Qt::Alignment alignment_ = Qt::AlignLeft;
};

}  // namespace horalo

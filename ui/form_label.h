#pragma once

#include <QLabel>
#include <map>
#include <optional>

#include "ui/text_style.h"

namespace horalo {

// A paragraph in a form, broken into lines where it is wider than its place. Made a buddy of a
// control, it names that control to screen readers.
class FormLabel : public QLabel {
  Q_OBJECT
 public:
  explicit FormLabel(const TextStyle& style, const QString& text = {}, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  // What the layouts around it ask for again and again; measuring a text takes long.
  struct Measures {
    QString text;
    QSize oneLine;
    int longestWord = 0;
    std::map<int, int> heights;  // by width
  };

  void updateLook();
  Measures& measures() const;
  QSize withMargins(QSize size) const;

  TextStyle style_;
  mutable std::optional<Measures> measures_;
};

}  // namespace horalo

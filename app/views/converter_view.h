#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "app/views/error_view.h"
#include "app/views/footer_view.h"
#include "app/views/input_row.h"
#include "app/views/placeholder_view.h"
#include "app/views/results_view.h"
#include "base/timers.h"
#include "clipboard/pasteboard.h"
#include "converter/converter_view_model.h"
#include "engine/conversion_result.h"
#include "preferences/notification_center.h"
#include "preferences/preferences.h"
#include "ui/material.h"

namespace horalo {

// The whole content of the panel: the input line, the rows (or the placeholder, or the message) and
// the footer. All conversion state is the view model's; what changes there within one turn of the
// event loop is drawn once. The view itself knows which row is highlighted and which shows that it
// was copied, and it has the panel's keys.
class ConverterView : public QWidget {
  Q_OBJECT
 public:
  // What the view works with; all must outlive it.
  struct Environment {
    ConverterViewModel& viewModel;
    Preferences& preferences;
    NotificationCenter& notifications;
    Pasteboard& pasteboard;
    Timers& timers;
    const RowContext& rowContext;
    KeyCodeOf keyCodeOf = {};  // as the input wants it
  };
  struct Callbacks {
    std::function<void()> onDismiss;  // hides the panel
    std::function<void()> onOpenSettings;
    std::function<void()> onShowCopiedToast;
  };

  static constexpr int kRadius = 12;  // of the panel's corners

  ConverterView(const Environment& environment, Callbacks callbacks, QWidget* parent = nullptr);

  void setBackdrop(Backdrop backdrop);

  // Loads the fonts, the symbols and the locale's words that the first show and the first result
  // need, by drawing both where nobody sees it. For a view that is hidden.
  void prepare();

  // Selects all of the input, if that is where the keyboard is.
  void selectAllInput();

  // Copies the value of the highlighted row as it is at this moment.
  void copySelectedValue();
  // Puts a row's value on the clipboard and says so: on the row, or with a toast as the panel goes.
  void copyToClipboard(int index, const std::string& value);

  int selectedIndex() const { return selectedIndex_; }
  std::optional<int> copiedRowIndex() const { return copiedRowIndex_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void inputChanged();
  void submit();
  // True where the key is the panel's own and nobody else is to have it.
  bool handleKey(const QKeyEvent& event);
  void select(int index);
  void setCopiedRow(std::optional<int> index);
  void writeOwnCopy(const std::string& text);
  void scheduleRender();
  void render();
  void layOut();

  Environment environment_;
  Callbacks callbacks_;
  InputRow inputRow_;
  ResultsView results_;
  ErrorView error_;
  PlaceholderView placeholder_;
  FooterView footer_;

  int selectedIndex_ = 0;
  std::optional<int> copiedRowIndex_;
  Backdrop backdrop_ = Backdrop::opaque;
  bool renderScheduled_ = false;
};

}  // namespace horalo

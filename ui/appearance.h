#pragma once

#include <QObject>

#include "base/desktop_appearance.h"

namespace horalo {

// The looks that all windows share: light or dark, the size of texts, motion. Widgets repaint
// themselves when it changes. Belongs to the GUI thread; needs a QApplication.
class Appearance : public QObject {
  Q_OBJECT
 public:
  static Appearance& shared();

  // What the desktop told; to be called again whenever it tells anew.
  void setDesktop(const DesktopAppearance& desktop);

  bool isDark() const { return dark_; }
  // What the desktop itself told, which holds for its panels as well; nothing where it told
  // nothing.
  std::optional<bool> desktopIsDark() const { return desktop_.dark; }
  // 0xRRGGBB of the desktop's own accent; nothing where it has none.
  std::optional<std::uint32_t> accent() const { return accent_; }
  double textScale() const { return textScale_; }
  bool reducedMotion() const { return desktop_.reducedMotion; }

 Q_SIGNALS:
  void changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Appearance();
  // Reads the palette where the desktop told nothing; true where anything came out differently.
  bool update();
  // Lends our colours to the library's own widgets where its palette is light and the desktop dark,
  // or the other way round.
  void dressStandardWidgets();

  DesktopAppearance desktop_;
  bool dark_ = false;
  std::optional<std::uint32_t> accent_;
  double textScale_ = 1;
  bool paletteIsDark_ = false;  // the desktop's own palette
  bool paletteIsOurs_ = false;  // ours stands in for it
};

}  // namespace horalo

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "clipboard/pasteboard.h"

namespace horalo {

// The CLIPBOARD selection of an X server, over a connection of its own that is opened at the first
// use. What the mouse selects (PRIMARY) can be read and is otherwise another matter.
class X11Pasteboard final : public Pasteboard {
 public:
  // `display` as in DISPLAY; empty takes that variable.
  explicit X11Pasteboard(std::string display = {});
  ~X11Pasteboard() override;

  std::int64_t changeCount() const override;
  void onChange(std::function<void()> changed) override;
  std::unique_ptr<Read> read(const ReadLimits& limits, Answer answer) override;
  bool write(const std::string& text) override;
  void handOver(double seconds) override;
  PasteboardStatus status() const override;

 private:
  class Server;

  Server& server() const;

  std::string display_;
  mutable std::unique_ptr<Server> server_;  // none before the first use
};

}  // namespace horalo

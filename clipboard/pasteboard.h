#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace horalo {

struct PasteboardStatus {
  std::string backend;  // "x11", "data-control" or "none"
  std::string reason;   // why the clipboard cannot be watched; empty where it can
};

// The desktop's clipboard. Nothing here ever waits for another program.
class Pasteboard {
 public:
  // The text (UTF-8), or nothing: no text offered, marked secret, too large, no answer in time, or
  // the owner went away.
  using Answer = std::function<void(std::optional<std::string> text)>;

  struct ReadLimits {
    double seconds = 1.0;         // for the whole transfer
    std::size_t bytes = 4096;     // longer texts are no text ...
    bool firstLineOnly = false;   // ... unless only the first line that is not empty counts
    bool secretsAreText = false;  // whether text that a password manager marked secret counts
    // Reads what the mouse selected last instead, on desktops that keep it for the middle button.
    bool mouseSelection = false;
  };

  // A read that is under way; destroying it gives up, and the answer never comes. It must not
  // outlive the pasteboard.
  class Read {
   public:
    virtual ~Read() = default;
  };

  virtual ~Pasteboard() = default;

  // Grows by one for each copy that any program makes, ours included, also of the same text again.
  virtual std::int64_t changeCount() const = 0;

  // Called after the count grew; one observer. Where a backend cannot tell, it never calls.
  virtual void onChange(std::function<void()> changed) = 0;

  // Fetches the text beside the event loop; `answer` is called once, never from within read().
  [[nodiscard]] virtual std::unique_ptr<Read> read(const ReadLimits& limits, Answer answer) = 0;

  // Puts a text on the clipboard in place of what is there. False where the desktop refused.
  virtual bool write(const std::string& text) = 0;

  // Called when the program quits: leaves a copy of ours with the desktop's clipboard manager,
  // waiting at most `seconds` for it.
  virtual void handOver(double seconds) = 0;

  virtual PasteboardStatus status() const = 0;
};

}  // namespace horalo

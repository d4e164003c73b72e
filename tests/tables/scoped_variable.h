#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace horalo {

// Sets or removes a variable of the environment until the end of a scope.
class ScopedVariable {
 public:
  // Nothing removes it.
  ScopedVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* const earlier = std::getenv(name)) earlier_ = earlier;
    assign(value);
  }
  ~ScopedVariable() { assign(earlier_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  void assign(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> earlier_;
};

}  // namespace horalo

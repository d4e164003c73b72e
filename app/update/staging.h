#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/update/problem.h"
#include "base/file_descriptor.h"

namespace horalo {

// A folder beside the bundle, for nobody but its owner, in which the new version is put together;
// and the exchange of the two. It is deleted with this object, unless it was exchanged: then the
// old version is in it, and stays until a later start deletes it.
class Staging {
 public:
  // Fails where the folder beside the bundle cannot be written to, does not let the bundle be
  // renamed, or has less than `bytes` free.
  static Outcome<Staging> make(const std::filesystem::path& bundle, std::int64_t bytes);

  Staging(Staging&&) noexcept = default;
  Staging& operator=(Staging&&) = delete;
  ~Staging();

  // The folder, open.
  int folder() const { return folder_.get(); }
  // Where it stands, for messages.
  std::filesystem::path path() const { return bundle_.parent_path() / name_; }
  std::filesystem::path parentPath() const { return bundle_.parent_path(); }

  // Puts the new version in the place of the bundle in one step, with everything safely on the disk
  // before and after: whenever power fails, one or the other is there and whole. `held` is the
  // folder of the running version, open: where another one has taken its place meanwhile, nothing
  // happens. Nothing where it worked.
  std::optional<Problem> exchange(int held);

  // Takes the exchange back. False where that does not work.
  bool exchangeBack();

  // Whether some program runs from the new version, after the exchange.
  bool isInUse();

 private:
  Staging(std::filesystem::path bundle, FileDescriptor parent, std::string name,
          FileDescriptor folder);

  std::string bundleName() const { return bundle_.filename().string(); }
  bool isAt(int folder, const std::string& name) const;

  std::filesystem::path bundle_;
  FileDescriptor parent_;
  std::string name_;
  FileDescriptor folder_;
  bool exchanged_ = false;
};

// Deletes what updates left beside the bundle, but for what is still in use.
void sweepLeftovers(const std::filesystem::path& bundle);

}  // namespace horalo

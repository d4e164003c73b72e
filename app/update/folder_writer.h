#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/file_descriptor.h"

namespace horalo {

// Makes files and folders below one folder and nowhere else: every step of a path is opened in the
// step before it and links are never followed, so that no path, and nobody who changes the folder
// meanwhile, leads out of it. Paths are relative, of plain names joined by slashes.
class FolderWriter {
 public:
  // `folder` is an open folder, which must outlive this object.
  explicit FolderWriter(int folder) : folder_(folder) {}

  // Makes what is missing of the path; one that is there already is fine. False with errno set
  // where that fails.
  bool makeFolder(std::string_view path);

  // Begins a file that must not be there yet, in folders that are made where they are missing. Not
  // open, with errno set, where that fails.
  FileDescriptor makeFile(std::string_view path, bool executable);

 private:
  FileDescriptor openFolder(std::string_view path);

  int folder_;
};

// Writes all of `bytes`. False with errno set where that fails.
bool writeAll(int file, std::span<const char> bytes);

// Deletes a folder in `parent` with everything in it; links are deleted, not followed. False where
// something is left.
bool removeTree(int parent, const std::string& name);

}  // namespace horalo

// An INI file on disk. Every read sees what the file holds at that moment; every change replaces the file in
// one step.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "base/ini_document.h"

namespace quorvex {

// What one look at an INI file found: its content, empty when there is none or it cannot be read.
struct IniSnapshot {
  enum class State { kRead, kMissing, kUnreadable };

  State state;
  IniDocument document;

  // A key's value, at most its first `limit` characters; empty when the key is missing.
  [[nodiscard]] std::string String(std::string_view section, std::string_view key, std::size_t limit) const;

  // A key's number (IniInteger); `missing` when the key is missing or empty.
  [[nodiscard]] int Integer(std::string_view section, std::string_view key, int missing) const;
};

class IniFile {
 public:
  enum class Result {
    kDone,
    kUnreadable,  // the file exists and cannot be read; it was left alone
    kFailed,      // it cannot be written; it holds what it held
  };

  IniFile() = default;
  explicit IniFile(std::string filePath) : path(std::move(filePath)) {}

  [[nodiscard]] const std::string& Path() const { return path; }

  [[nodiscard]] IniSnapshot Read() const;

  // Reads the file, lets `change` edit its content, and puts the new content in place as one step: a program
  // that is killed on the way leaves the old or the new content. Other Quorvex processes take turns; a file
  // that stays busy for longer than a key press may take ends the attempt with kFailed. Unchanged content is
  // not written.
  Result Update(const std::function<void(IniDocument&)>& change) const;

 private:
  std::string path;
};

}  // namespace quorvex

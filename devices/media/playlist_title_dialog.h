// The small dialog that asks for the title of a play list.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>

namespace quorvex {

class PlaylistTitleDialog {
 public:
  // `albums`: the titles there are. `edited`: the one to change; empty to name a new album.
  PlaylistTitleDialog(std::span<const std::string> albums, std::string edited)
      : titles(albums), editedTitle(std::move(edited)) {}

  // Shows the dialog, centred over its owner, until it is closed. Answers a title that no album has; none
  // when the user cancels it or leaves the title as it is.
  std::optional<std::string> Run(HWND owner);

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  void OnStart(HWND dialog) const;
  void OnOk(HWND dialog);
  [[nodiscard]] bool IsTaken(const std::string& title) const;

  std::span<const std::string> titles;
  std::string editedTitle;
  std::optional<std::string> answer;
};

}  // namespace quorvex

// The six pages of the Setup sheet.
#pragma once

#include <memory>

#include "setup/setup_page.h"
#include "setup/shell_options.h"

namespace quorvex {

std::unique_ptr<SetupPage> MakeGeneralPage(const ShellOptions& options);
std::unique_ptr<SetupPage> MakeMediaFilesPage();
std::unique_ptr<SetupPage> MakeTvPage();
std::unique_ptr<SetupPage> MakeCapturePage();
std::unique_ptr<SetupPage> MakeDvdPage();
std::unique_ptr<SetupPage> MakeCdPage();

}  // namespace quorvex

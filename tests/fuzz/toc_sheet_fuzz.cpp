// TOC sheets. A file that a sheet names has as many bytes as its name says (plan_check.h).
#include "platform/cd/toc_sheet.h"

#include "tests/fuzz/plan_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::CheckPlan(quorvex::PlanTocSheet(quorvex::TextOf(bytes, size), quorvex::OpenSized));
  return 0;
}
